// The one command stack of the host. Commands live in groups; each command is owned by its group so
// that the pointers handed out stay valid until the group is removed.

#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/builtin_commands.h"

#include <algorithm>
#include <cctype>
#include <memory>

namespace {

bool sameName(const std::string& a, const std::string& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::toupper(static_cast<unsigned char>(x)) ==
                      std::toupper(static_cast<unsigned char>(y));
           });
}

class CommandStack final : public OdEdCommandStack {
public:
    OdResult addCommand(const OdString& group, const OdString& globalName, const OdString& localName,
                        std::int32_t flags, OdEdCommandFunction handler, void* uiContext, int functionCode,
                        void* resourceHandle, const OdEdCommand** command) override {
        if (group.isEmpty() || globalName.isEmpty() || localName.isEmpty() || !handler) return eInvalidInput;
        for (const Group& existing : m_groups)
            for (const auto& cmd : existing.commands)
                if (sameName(cmd->globalName.str(), globalName.str()) ||
                    sameName(cmd->localName.str(), localName.str()))
                    return eDuplicateKey;
        auto cmd = std::make_unique<OdEdCommand>();
        cmd->group = group;
        cmd->globalName = globalName;
        cmd->localName = localName;
        cmd->flags = flags;
        cmd->handler = handler;
        cmd->uiContext = uiContext;
        cmd->functionCode = functionCode;
        cmd->resourceHandle = resourceHandle;
        if (command) *command = cmd.get();
        groupNamed(group).commands.push_back(std::move(cmd));
        return eOk;
    }

    OdResult removeGroup(const OdString& group) override {
        auto found = std::find_if(m_groups.begin(), m_groups.end(),
                                  [&](const Group& g) { return sameName(g.name, group.str()); });
        if (found == m_groups.end()) return eKeyNotFound;
        m_groups.erase(found);
        return eOk;
    }

    const OdEdCommand* lookupCmd(const OdString& name) const override {
        const std::string& text = name.str();
        if (!text.empty() && text[0] == '_') return find(text.substr(1), &OdEdCommand::globalName);
        if (const OdEdCommand* local = find(text, &OdEdCommand::localName)) return local;
        return find(text, &OdEdCommand::globalName);
    }

    std::vector<const OdEdCommand*> commands() const override {
        std::vector<const OdEdCommand*> all;
        for (const Group& group : m_groups)
            for (const auto& cmd : group.commands) all.push_back(cmd.get());
        return all;
    }

private:
    struct Group {
        std::string name;
        std::vector<std::unique_ptr<OdEdCommand>> commands;
    };

    Group& groupNamed(const OdString& name) {
        for (Group& group : m_groups)
            if (sameName(group.name, name.str())) return group;
        m_groups.push_back(Group{name.str(), {}});
        return m_groups.back();
    }

    const OdEdCommand* find(const std::string& name, OdString OdEdCommand::*field) const {
        if (name.empty()) return nullptr;
        for (const Group& group : m_groups)
            for (const auto& cmd : group.commands)
                if (sameName((*cmd.*field).str(), name)) return cmd.get();
        return nullptr;
    }

    std::vector<Group> m_groups;
};

} // namespace

OdSmartPtr<OdEdCommandStack> odedRegCmds() {
    // Held for the life of the process; the host's own commands are there before any module asks.
    static CommandStack* const stack = [] {
        auto* created = new CommandStack;
        created->addRef();
        qvad::shell::registerBuiltinCommands(*created);
        return created;
    }();
    return OdSmartPtr<OdEdCommandStack>(stack);
}
