#include "qvad/api/console.h"

#include <cstdio>

namespace qvad::api {
namespace {

// Until the app sets its own: text goes to standard output and no answer ever comes.
class PrintOnlyConsole final : public Console {
public:
    ReadStatus readLine(std::string_view prompt, std::string& line) override {
        write(prompt);
        write("\n");
        line.clear();
        return ReadStatus::Ended;
    }
    void write(std::string_view text) override {
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fflush(stdout);
    }
};

// Stands in front of the console set, dropping the leading "\n" of a text written at column 0.
class LineTidyConsole final : public Console {
public:
    void setTarget(Console* target) {
        m_target = target;
        m_atLineStart = true;
    }
    ReadStatus readLine(std::string_view prompt, std::string& line) override {
        prompt = tidied(prompt);
        std::size_t lastBreak = prompt.rfind('\n');
        if (lastBreak != std::string_view::npos) {
            target().write(prompt.substr(0, lastBreak + 1));
            prompt.remove_prefix(lastBreak + 1);
        }
        ReadStatus status = target().readLine(prompt, line);
        // Enter, a cancel and the end of input all leave the console on a fresh line.
        m_atLineStart = true;
        return status;
    }
    void write(std::string_view text) override {
        text = tidied(text);
        if (text.empty()) return;
        target().write(text);
        m_atLineStart = text.back() == '\n';
    }
    bool takeBreak() override { return target().takeBreak(); }
    bool interactive() const override { return target().interactive(); }

private:
    Console& target() const { return m_target ? *m_target : s_printOnly; }
    std::string_view tidied(std::string_view text) const {
        if (m_atLineStart && !text.empty() && text.front() == '\n') text.remove_prefix(1);
        return text;
    }

    static PrintOnlyConsole s_printOnly;
    Console* m_target = nullptr;
    bool m_atLineStart = true;
};

PrintOnlyConsole LineTidyConsole::s_printOnly;
LineTidyConsole g_tidy;

} // namespace

Console& console() {
    return g_tidy;
}

void setConsole(Console* console) {
    g_tidy.setTarget(console);
}

} // namespace qvad::api
