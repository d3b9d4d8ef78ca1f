#pragma once
// Where the answers of a run come from: the -c lines first, then the script (-s), or standard input when
// it is not a terminal, or else the terminal itself.

#include "qvad/api/console.h"
#include "qvad/shell/console_script.h"

#include <memory>
#include <string>
#include <vector>

namespace qvad::app {

class InputChain {
public:
    // False when the script cannot be read (message printed).
    bool build(const std::vector<std::string>& commandLines, const std::string& scriptPath);

    api::Console& console() const { return *m_front; }
    // True when a person types the answers once the lines given run out.
    bool interactive() const { return m_terminal != nullptr; }
    // The line source being read when the input stopped ("FILE:LINE"); empty for the terminal.
    std::string location() const;
    // The lines given ran out at a prompt of a command (not at the Command: prompt).
    bool endedInsideCommand() const;

private:
    std::unique_ptr<shell::ScriptConsole> m_commandLines;
    std::unique_ptr<shell::ScriptConsole> m_script;
    std::unique_ptr<api::Console> m_terminal;
    api::Console* m_front = nullptr;
};

} // namespace qvad::app
