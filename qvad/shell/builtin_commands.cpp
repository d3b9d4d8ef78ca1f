// The host's own commands, registered in the group "QVAD" under their global names.

#include "qvad/shell/builtin_commands.h"

namespace qvad::shell {
namespace {

struct BuiltinRow {
    const char* name;
    OdEdCommandFunction handler;
};

// Host commands are not module commands: no flags, no resources.
constexpr BuiltinRow kBuiltins[] = {
    // Without a dialog, LAYER is the command-line version too (programs run "_.LAYER").
    {"-LAYER", cmdLayer},    {"LAYER", cmdLayer}, {"UCS", cmdUcs},   {"SETVAR", cmdSetVar},
    {"CECOLOR", cmdCeColor}, {"UNDO", cmdUndo},   {"U", cmdU},       {"REDO", cmdRedo},
    {"SELECT", cmdSelect},   {"ERASE", cmdErase}, {"LIST", cmdList}, {"SAVE", cmdSave},
    {"SAVEAS", cmdSaveAs},   {"QUIT", cmdQuit},
};

} // namespace

void registerBuiltinCommands(OdEdCommandStack& stack) {
    for (const BuiltinRow& row : kBuiltins) stack.addCommand("QVAD", row.name, row.name, 0, row.handler);
}

} // namespace qvad::shell
