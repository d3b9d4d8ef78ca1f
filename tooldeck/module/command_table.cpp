#include "tooldeck/module/command_table.h"

#include "tooldeck/module/command_handlers.h"

namespace qvtd {

namespace {

constexpr CommandRow kRows[] = {
#define QV_COMMAND(group, globalName, localName, handler) {group, globalName, localName, &cmd::handler},
#include "tooldeck/module/command_list.inc"
#undef QV_COMMAND
};

} // namespace

std::span<const CommandRow> commandTable() {
    return kRows;
}

} // namespace qvtd
