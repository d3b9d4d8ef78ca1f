#pragma once
// The host's load gate: modules ask it, by the exported C name "CheckCmdLoadAsName", before they
// register each command group. A person refuses groups in the host's settings file APPDATADIR/qvad.ini,
// section "QVAD", key "RefusedCommandGroups" (names separated by commas, compared without regard to
// case); nothing is refused by default.

#include <string>
#include <string_view>

namespace qvad::shell {

// Whether group is among the comma-separated names (spaces around names do not count).
bool groupListed(std::string_view refusedList, std::string_view group);

} // namespace qvad::shell

extern "C" __attribute__((visibility("default"))) int CheckCmdLoadAsName(const char* group);
