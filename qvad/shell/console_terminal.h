#pragma once
// The command line at a terminal: GNU readline for line editing, history kept between sessions, Ctrl-C
// cancelling the prompt (and pressing the break key while a command runs), Ctrl-D on an empty line
// ending the input.

#include "qvad/api/console.h"

#include <csignal>
#include <string>

namespace qvad::shell {

class TerminalConsole final : public api::Console {
public:
    // historyFile empty: historyPath(). Installs the Ctrl-C handler for the console's lifetime.
    explicit TerminalConsole(std::string historyFile = {});
    ~TerminalConsole() override;
    TerminalConsole(const TerminalConsole&) = delete;
    TerminalConsole& operator=(const TerminalConsole&) = delete;

    api::ReadStatus readLine(std::string_view prompt, std::string& line) override;
    void write(std::string_view text) override;
    bool takeBreak() override;
    bool interactive() const override { return true; }

    // $XDG_STATE_HOME/qvad/history, else ~/.local/state/qvad/history.
    static std::string historyPath();

private:
    std::string m_historyFile;
    struct sigaction m_previousHandler {};
};

} // namespace qvad::shell
