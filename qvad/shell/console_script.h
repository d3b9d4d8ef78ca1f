#pragma once
// Answers read from lines of text: a script file (-s), the -c command lines, or standard input when it
// is not a terminal. One line is one answer, as typed after a prompt: an empty line is Enter, a line
// starting with ';' is a comment and skipped. The prompt and the answer are written to standard output
// so that a script run reads like a session. It never waits: at the end of its lines it hands over to
// the next console when one is given, and otherwise the input has ended.

#include "qvad/api/console.h"

#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace qvad::shell {

class ScriptConsole final : public api::Console {
public:
    // Lines from a stream; source names it in messages ("FILE", "standard input").
    ScriptConsole(std::unique_ptr<std::istream> input, std::string source, std::ostream& transcript);
    // Lines given in full (each -c value is one line of input).
    ScriptConsole(const std::vector<std::string>& lines, std::string source, std::ostream& transcript);

    // Nullptr when the file cannot be read (message printed to standard error).
    static std::unique_ptr<ScriptConsole> fromFile(const std::string& path, std::ostream& transcript);

    // Where to go on when these lines run out (not owned); the break key and interactivity are its then.
    void continueWith(api::Console* next) { m_next = next; }

    api::ReadStatus readLine(std::string_view prompt, std::string& line) override;
    void write(std::string_view text) override;
    bool takeBreak() override;
    bool interactive() const override;

    // "SOURCE:LINE" of the last line read (line 0 before any).
    std::string location() const;
    const std::string& source() const { return m_source; }
    int lineNumber() const { return m_lineNumber; }
    // True once the lines ran out (whether or not a next console took over).
    bool exhausted() const { return m_exhausted; }
    // The prompt that found no line left (empty while lines remain or another console took over):
    // tells a script that ended at the Command: prompt from one that ended inside a command.
    const std::string& endedAtPrompt() const { return m_endedAtPrompt; }

private:
    bool nextLine(std::string& line);

    std::unique_ptr<std::istream> m_input;
    std::string m_source;
    std::ostream& m_transcript;
    api::Console* m_next = nullptr;
    int m_lineNumber = 0;
    bool m_exhausted = false;
    std::string m_endedAtPrompt;
};

} // namespace qvad::shell
