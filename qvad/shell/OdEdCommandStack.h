#pragma once
// The host's table of commands: every command a person can type, in named groups, each under a global
// name (language-independent, reached with a "_" prefix) and a local name (what is usually typed).
// Modules add and remove their groups here; the command processor looks names up here.

#include "qvad/shell/OdRxObject.h"

#include <cstdint>
#include <vector>

typedef void (*OdEdCommandFunction)();

// What a registered command is.
struct OdEdCommand {
    OdString group;
    OdString globalName;
    OdString localName;
    std::int32_t flags = 0;
    OdEdCommandFunction handler = nullptr;
    void* uiContext = nullptr;
    int functionCode = -1;
    void* resourceHandle = nullptr;
};

class OdEdCommandStack : public OdRxObject {
public:
    // Registers a command. eDuplicateKey when the global or local name is already taken (by another
    // group: names are unique across the stack, compared without regard to case); eInvalidInput for an
    // empty name or null handler. The new command is handed back through command when given.
    virtual OdResult addCommand(const OdString& group, const OdString& globalName, const OdString& localName,
                                std::int32_t flags, OdEdCommandFunction handler, void* uiContext = nullptr,
                                int functionCode = -1, void* resourceHandle = nullptr,
                                const OdEdCommand** command = nullptr) = 0;
    // Removes every command of the group; eKeyNotFound when it has none (harmless).
    virtual OdResult removeGroup(const OdString& group) = 0;
    // By local name, or by global name when written with a leading "_"; case does not matter.
    // nullptr when unknown.
    virtual const OdEdCommand* lookupCmd(const OdString& name) const = 0;
    // Every command, groups in the order first registered, commands in the order added.
    virtual std::vector<const OdEdCommand*> commands() const = 0;
};

// The host's one command stack, with a reference taken for the caller.
OdSmartPtr<OdEdCommandStack> odedRegCmds();
