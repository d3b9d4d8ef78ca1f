#pragma once
// One handler per command row (two pairs of rows share one); the host calls them without arguments.

namespace qvtd::cmd {

#define QV_COMMAND(group, globalName, localName, handler) void handler();
#include "tooldeck/module/command_list.inc"
#undef QV_COMMAND

} // namespace qvtd::cmd
