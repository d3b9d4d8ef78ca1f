// Running commands by name, and the Command: prompt. Every top-level command is one undo step; a
// command run from inside another (qvedCommand) belongs to the outer one's step.

#include "qvad/shell/command_processor.h"

#include "qvad/api/answers.h"
#include "qvad/api/console.h"
#include "qvad/api/input_state.h"
#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/drawing_session.h"

#include <algorithm>
#include <cctype>
#include <deque>
#include <exception>
#include <memory>
#include <sstream>

namespace qvad::shell {
namespace {

int g_depth = 0;
std::string g_lastCommand;

std::string upper(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    return text;
}

struct TypedName {
    std::string name; // without prefixes
    bool global = false;
    bool builtin = false;
};

TypedName parseTypedName(std::string_view typed) {
    TypedName parsed;
    typed = trimmed(typed);
    while (!typed.empty() && (typed.front() == '_' || typed.front() == '.' || typed.front() == '\'')) {
        if (typed.front() == '_') parsed.global = true;
        if (typed.front() == '.') parsed.builtin = true;
        typed.remove_prefix(1);
    }
    parsed.name = typed;
    return parsed;
}

const OdEdCommand* findCommand(const OdEdCommandStack& stack, const TypedName& typed) {
    const OdString lookup = typed.global ? OdString("_" + typed.name) : OdString(typed.name);
    if (typed.builtin) {
        // The host's own command wins over a module's of the same name.
        const std::string wanted = upper(typed.name);
        for (const OdEdCommand* cmd : stack.commands()) {
            if (upper(cmd->group.str()) != "QVAD") continue;
            if (upper(cmd->globalName.str()) == wanted ||
                (!typed.global && upper(cmd->localName.str()) == wanted))
                return cmd;
        }
    }
    return stack.lookupCmd(lookup);
}

std::string describe(const std::exception& e) {
    std::string what = e.what();
    return what.empty() ? std::string("internal error") : what;
}

// Runs the handler; the message of anything it throws, empty when it threw nothing.
std::string invoke(const OdEdCommand& cmd, bool& threw) {
    threw = false;
    try {
        cmd.handler();
        return {};
    } catch (const std::exception& e) {
        threw = true;
        return describe(e);
    } catch (...) {
        threw = true;
        return "internal error";
    }
}

} // namespace

std::string unknownCommandMessage(std::string_view typedName) {
    return "Unknown command \"" + upper(parseTypedName(typedName).name) +
           "\".  Type a command name, or press Enter to repeat the last one.\n";
}

bool commandRunning() {
    return g_depth > 0;
}

int commandDepth() {
    return g_depth;
}

CommandOutcome runCommand(std::string_view typedName, bool nested) {
    const TypedName typed = parseTypedName(typedName);
    OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
    const OdEdCommand* cmd = typed.name.empty() ? nullptr : findCommand(*stack, typed);
    if (!cmd) {
        api::console().write(unknownCommandMessage(typedName));
        return CommandOutcome::Unknown;
    }
    const bool topLevel = !nested && g_depth == 0;
    // Handlers return nothing: what happened at their prompts is read from the tallies.
    const api::PromptTally before = api::promptTally();
    const bool endedBefore = api::inputEnded();
    UndoJournal* journal = topLevel ? DrawingSession::current().journal() : nullptr;
    // A command's value is what it sets itself, never what the previous one left.
    api::clearLastReturnValue();
    if (journal) journal->commandStarted();

    const std::string globalName = cmd->globalName.str();
    ++g_depth;
    bool threw = false;
    const std::string failure = invoke(*cmd, threw);
    --g_depth;

    CommandOutcome outcome = CommandOutcome::Done;
    if (threw) {
        api::console().write("\n" + upper(globalName) + " failed: " + failure + "\n");
        outcome = CommandOutcome::Failed;
    } else if (api::promptTally().ended != before.ended || (!endedBefore && api::inputEnded())) {
        outcome = CommandOutcome::InputEnded;
    } else if (api::promptTally().cancelled != before.cancelled) {
        outcome = CommandOutcome::Cancelled;
    }
    if (topLevel && outcome == CommandOutcome::Cancelled) api::console().write("*Cancel*\n");
    if (journal) {
        if (outcome == CommandOutcome::Failed || outcome == CommandOutcome::InputEnded)
            journal->rollbackCommand();
        const std::string name = upper(globalName);
        journal->commandEnded(name == "UNDO" || name == "U" || name == "REDO");
    }
    return outcome;
}

int commandLoop() {
    int status = 0;
    DrawingSession& session = DrawingSession::current();
    while (!session.quitRequested()) {
        std::string line;
        auto& queued = api::queuedKeystrokes();
        const bool fromQueue = !queued.empty();
        if (fromQueue) {
            api::Answer next = std::move(queued.front());
            queued.pop_front();
            // A cancel between commands has nothing to cancel; other values are no command names.
            if (next.kind != api::Answer::Kind::Text) continue;
            line = next.text;
            api::console().write("\nCommand: " + line + "\n");
        } else {
            const api::ReadStatus read = api::console().readLine("\nCommand: ", line);
            if (read == api::ReadStatus::Ended) break;
            if (read == api::ReadStatus::Cancelled) {
                api::console().write("*Cancel*\n");
                continue;
            }
        }

        // Words after the name answer the command's first prompts, as typed ahead; so do the
        // keystrokes queued after a queued name.
        std::istringstream words{std::string(trimmed(line))};
        std::string name;
        words >> name;
        std::deque<api::Answer> typedAhead;
        for (std::string word; words >> word;) {
            api::Answer answer;
            answer.text = word;
            typedAhead.push_back(std::move(answer));
        }
        if (fromQueue) {
            for (api::Answer& answer : queued) typedAhead.push_back(std::move(answer));
            queued.clear();
        }
        if (name.empty()) {
            if (g_lastCommand.empty()) continue;
            name = g_lastCommand;
        }

        CommandOutcome outcome;
        {
            api::AnswerFeed ahead(std::move(typedAhead), true);
            outcome = runCommand(name);
            // What the command did not take waits for the next Command: prompt.
            for (auto it = ahead.answers().rbegin(); it != ahead.answers().rend(); ++it)
                queued.push_front(std::move(*it));
        }
        if (outcome != CommandOutcome::Unknown) g_lastCommand = name;
        // The caller reports it: it knows where the input came from.
        if (outcome == CommandOutcome::InputEnded) return 1;
        if ((outcome == CommandOutcome::Failed || outcome == CommandOutcome::Unknown) &&
            !api::console().interactive())
            status = 1;
    }
    return status;
}

} // namespace qvad::shell
