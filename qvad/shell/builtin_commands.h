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

// builtin_save.cpp
void cmdSave();
void cmdSaveAs();

// builtin_quit.cpp
void cmdQuit();

// builtin_select.cpp, builtin_erase.cpp, builtin_list.cpp
void cmdSelect();
void cmdErase();
void cmdList();

// builtin_layer.cpp, builtin_ucs.cpp, builtin_setvar.cpp, builtin_cecolor.cpp
void cmdLayer();
void cmdUcs();
void cmdSetVar();
void cmdCeColor();

void registerBuiltinCommands(OdEdCommandStack& stack);

} // namespace qvad::shell
