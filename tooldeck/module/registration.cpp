#include "tooldeck/module/registration.h"

#include "qvad/shell/OdEdCommandStack.h"
#include "tooldeck/commands/cleanup/overkill_settings.h"
#include "tooldeck/module/command_table.h"
#include "tooldeck/module/resource_library.h"

#include <cstring>

namespace qvtd {

CheckCmdLoadAsNameFunction findHostLoadGate() {
    HMODULE host = GetModuleHandleA("qvad.exe");
    if (!host) return nullptr;
    return reinterpret_cast<CheckCmdLoadAsNameFunction>(GetProcAddress(host, "CheckCmdLoadAsName"));
}

void registerCommands(CheckCmdLoadAsNameFunction gate, HMODULE resources) {
    std::span<const CommandRow> table = commandTable();
    for (const char* group : kCommandGroups) {
        if (gate && !gate(group)) continue;
        for (const CommandRow& row : table) {
            if (std::strcmp(row.group, group) != 0) continue;
            // One stack reference per command, taken and given back around the call.
            OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
            if (!stack) continue;
            stack->addCommand(OdString(row.group), OdString(row.globalName), OdString(row.localName),
                              kCommandFlags, row.handler, nullptr, -1, resources, nullptr);
            stack.release();
        }
    }
}

void removeCommandGroups() {
    for (const char* group : kGroupsRemovedOnUnload) {
        OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
        if (stack) stack->removeGroup(OdString(group));
    }
}

int loadModule() {
    // Options kept for the module's lifetime start afresh with every load.
    overkill::resetModuleSettings();
    // A missing library is reported but not fatal: every text has a fallback.
    if (!openResourceLibrary())
        MessageBoxA(nullptr, "Can't load QvTooldeckRes.dll", "QVAD", MB_OK | MB_ICONERROR);
    registerCommands(findHostLoadGate(), resourceLibrary());
    return 0;
}

} // namespace qvtd
