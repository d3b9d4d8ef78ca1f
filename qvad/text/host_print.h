#pragma once

#include <functional>
#include <string_view>

namespace qvad {

// Host messages that are not answers to a prompt (font fall-backs, message boxes) go through this one
// hook, so the application decides where they appear and tests can capture them.
using HostPrintHook = std::function<void(std::string_view line)>;

// An empty hook restores the default, which writes each line to standard error.
void setHostPrintHook(HostPrintHook hook);
void hostPrint(std::string_view line);

} // namespace qvad
