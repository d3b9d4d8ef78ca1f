#pragma once
// The host's own commands. One file per command (or close family); builtin_commands.cpp holds the
// table that registers them in the group "QVAD" under their global names (the local name is the same).
// Handlers talk to the user and the drawing through the exported host interface, exactly as module
// commands do.

#include "qvad/shell/OdEdCommandStack.h"

namespace qvad::shell {

// builtin_undo.cpp
void cmdUndo();
void cmdU();
void cmdRedo();

void registerBuiltinCommands(OdEdCommandStack& stack);

} // namespace qvad::shell
