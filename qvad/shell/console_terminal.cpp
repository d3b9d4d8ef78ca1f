#include "qvad/shell/console_terminal.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <poll.h>
#include <unistd.h>

// readline's header needs stdio declared first.
#include <readline/history.h>
#include <readline/readline.h>

namespace qvad::shell {
namespace {

constexpr int kHistoryLines = 1000;

volatile std::sig_atomic_t g_interrupted = 0;
volatile std::sig_atomic_t g_breakPressed = 0;

void onInterrupt(int) {
    g_interrupted = 1;
    g_breakPressed = 1;
}

// What the line handler hands back from inside readline's callback interface.
struct PendingLine {
    bool done = false;
    bool ended = false;
    std::string text;
};
PendingLine* g_pending = nullptr;

void lineHandler(char* line) {
    if (!g_pending) return;
    g_pending->done = true;
    if (!line) {
        g_pending->ended = true;
    } else {
        g_pending->text = line;
        std::free(line);
    }
    // Stop readline from printing the next prompt before the caller asks for it.
    rl_callback_handler_remove();
}

} // namespace

std::string TerminalConsole::historyPath() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state && *state) return std::string(state) + "/qvad/history";
    const char* home = std::getenv("HOME");
    return std::string(home && *home ? home : ".") + "/.local/state/qvad/history";
}

TerminalConsole::TerminalConsole(std::string historyFile)
    : m_historyFile(historyFile.empty() ? historyPath() : std::move(historyFile)) {
    // The console handles Ctrl-C itself: readline's own handlers would only redraw the line.
    rl_catch_signals = 0;
    rl_catch_sigwinch = 1;
    using_history();
    stifle_history(kHistoryLines);
    read_history(m_historyFile.c_str());

    struct sigaction action {};
    action.sa_handler = onInterrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0; // no SA_RESTART: the wait for a key must come back at once
    sigaction(SIGINT, &action, &m_previousHandler);
}

TerminalConsole::~TerminalConsole() {
    sigaction(SIGINT, &m_previousHandler, nullptr);
    rl_callback_handler_remove();
}

api::ReadStatus TerminalConsole::readLine(std::string_view prompt, std::string& line) {
    // readline redraws only the prompt's last line; what comes before it is plain output.
    std::string promptText(prompt);
    auto newline = promptText.find_last_of('\n');
    if (newline != std::string::npos) {
        write(std::string_view(promptText).substr(0, newline + 1));
        promptText.erase(0, newline + 1);
    }
    PendingLine pending;
    g_pending = &pending;
    g_interrupted = 0;
    rl_callback_handler_install(promptText.c_str(), lineHandler);
    api::ReadStatus status = api::ReadStatus::Answer;
    while (!pending.done) {
        pollfd input{fileno(rl_instream ? rl_instream : stdin), POLLIN, 0};
        int ready = poll(&input, 1, -1);
        if (g_interrupted) {
            g_interrupted = 0;
            // The break flag belongs to commands that are running, not to a cancelled prompt.
            g_breakPressed = 0;
            // Shown where the cursor stands, before readline's clean-up moves it.
            std::fputs("^C\n", stdout);
            std::fflush(stdout);
            rl_free_line_state();
            rl_callback_sigcleanup();
            rl_callback_handler_remove();
            status = api::ReadStatus::Cancelled;
            break;
        }
        if (ready < 0 && errno == EINTR) continue;
        if (ready < 0) {
            pending.done = pending.ended = true;
            rl_callback_handler_remove();
            break;
        }
        rl_callback_read_char();
    }
    g_pending = nullptr;
    line.clear();
    if (status == api::ReadStatus::Cancelled) return status;
    if (pending.ended) {
        std::fputs("\n", stdout);
        std::fflush(stdout);
        return api::ReadStatus::Ended;
    }
    line = std::move(pending.text);
    if (!line.empty()) {
        add_history(line.c_str());
        std::error_code ignored;
        std::filesystem::create_directories(std::filesystem::path(m_historyFile).parent_path(), ignored);
        // Appending at once keeps the history even when the session ends badly.
        if (append_history(1, m_historyFile.c_str()) != 0) write_history(m_historyFile.c_str());
        history_truncate_file(m_historyFile.c_str(), kHistoryLines);
    }
    return api::ReadStatus::Answer;
}

void TerminalConsole::write(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

bool TerminalConsole::takeBreak() {
    if (!g_breakPressed) return false;
    g_breakPressed = 0;
    return true;
}

} // namespace qvad::shell
