#include "qvad/app/input_chain.h"

#include "qvad/shell/console_terminal.h"

#include <iostream>
#include <unistd.h>

namespace qvad::app {
namespace {

// Standard input handed to the script console without being closed with it.
class BorrowedStream final : public std::istream {
public:
    explicit BorrowedStream(std::istream& source) : std::istream(source.rdbuf()) {}
};

} // namespace

bool InputChain::build(const std::vector<std::string>& commandLines, const std::string& scriptPath) {
    api::Console* last = nullptr;
    if (!scriptPath.empty()) {
        m_script = shell::ScriptConsole::fromFile(scriptPath, std::cout);
        if (!m_script) return false;
        last = m_script.get();
    } else if (!isatty(STDIN_FILENO)) {
        m_script = std::make_unique<shell::ScriptConsole>(std::make_unique<BorrowedStream>(std::cin),
                                                          "standard input", std::cout);
        last = m_script.get();
    } else {
        m_terminal = std::make_unique<shell::TerminalConsole>();
        last = m_terminal.get();
    }
    m_front = last;
    if (!commandLines.empty()) {
        m_commandLines = std::make_unique<shell::ScriptConsole>(commandLines, "--command", std::cout);
        m_commandLines->continueWith(last);
        m_front = m_commandLines.get();
    }
    return true;
}

std::string InputChain::location() const {
    if (m_commandLines && !m_commandLines->exhausted()) return m_commandLines->location();
    if (m_script) return m_script->location();
    return {};
}

bool InputChain::endedInsideCommand() const {
    // At a terminal only an end of input (Ctrl-D) inside a command makes a run fail.
    if (m_terminal) return true;
    const shell::ScriptConsole* last = m_script ? m_script.get() : m_commandLines.get();
    if (!last || !last->exhausted()) return false;
    std::string_view prompt = last->endedAtPrompt();
    while (!prompt.empty() && (prompt.back() == ' ' || prompt.back() == '\n')) prompt.remove_suffix(1);
    return prompt.substr(prompt.find_last_of('\n') + 1) != "Command:";
}

} // namespace qvad::app
