#pragma once
// Registration of the command table with the host's command stack, and its removal.

#include "qvad/shell/OdRxModule.h"
#include "qvad/win32/windows_calls.h"

#include <array>

namespace qvtd {

// Removed on unload, in this order. The first is not a group of this module; removing it costs nothing.
inline constexpr std::array<const char*, 4> kGroupsRemovedOnUnload = {"QVTOOLDECKCMD", "OrmelCADtools",
                                                                      "quantitiestool", "QvTooldeck"};

// The host's gate as it exports it from "qvad.exe"; null when the host has none.
CheckCmdLoadAsNameFunction findHostLoadGate();

// Offers each group to the gate (null gate: every group may load) and registers the rows of the groups
// it lets through. A command the stack refuses (a name clash) is left out; the rest still register.
void registerCommands(CheckCmdLoadAsNameFunction gate, HMODULE resources);

void removeCommandGroups();

// The whole of load message 1: resource library (with a message box when it is missing), then the
// commands. Returns 0.
int loadModule();

} // namespace qvtd
