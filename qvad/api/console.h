#pragma once
// The command line the host talks to: a terminal with line editing, a script, or a test's fake. The
// input functions, selection prompts, dialogs and built-in commands read answers and write text only
// through this, so that every input source behaves the same.

#include <string>
#include <string_view>

namespace qvad::api {

enum class ReadStatus {
    Answer,    // line holds what was typed (possibly empty: Enter)
    Cancelled, // the user cancelled the prompt (Ctrl-C, or ^C in queued keystrokes)
    Ended,     // no more input will ever come (end of script or of standard input)
};

class Console {
public:
    virtual ~Console() = default;
    // Shows prompt (as given: leading "\n" starts a fresh line) and reads one answer.
    virtual ReadStatus readLine(std::string_view prompt, std::string& line) = 0;
    virtual void write(std::string_view text) = 0;
    // True once for each press of the break key since the last call.
    virtual bool takeBreak() { return false; }
    // A person at a terminal (alerts wait for nothing either way; this only changes wording).
    virtual bool interactive() const { return false; }
};

// The console in use; before the app sets one, a console that writes to standard output and whose
// input has ended.
//
// What it returns keeps the command line tidy in front of the console set: it follows the cursor's
// column, and a text or prompt starting with "\n" (the convention for prompts and messages) only
// starts a new line when the cursor is not already at the start of one, so no blank lines pile up.
// A prompt reaches the set console's readLine without line breaks: whatever the prompt has up to its
// last "\n" is written first. After any readLine the cursor counts as at the start of a line, so a
// console shows the Enter that ends an answer (or a line break when the input ends or is cancelled).
Console& console();
// nullptr restores the default. The caller keeps ownership. The cursor counts as at a line start.
void setConsole(Console* console);

} // namespace qvad::api
