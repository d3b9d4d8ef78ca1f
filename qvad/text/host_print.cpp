#include "qvad/text/host_print.h"

#include <cstdio>
#include <mutex>

namespace qvad {
namespace {

std::mutex& hookMutex() {
    static std::mutex m;
    return m;
}

HostPrintHook& currentHook() {
    static HostPrintHook hook;
    return hook;
}

} // namespace

void setHostPrintHook(HostPrintHook hook) {
    std::lock_guard lock(hookMutex());
    currentHook() = std::move(hook);
}

void hostPrint(std::string_view line) {
    HostPrintHook hook;
    {
        std::lock_guard lock(hookMutex());
        hook = currentHook();
    }
    // Called outside the lock so that a hook may print again or replace itself.
    if (hook) {
        hook(line);
        return;
    }
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

} // namespace qvad
