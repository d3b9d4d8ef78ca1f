#pragma once
// Answers to prompts. They come from the console, or, ahead of it, from feeds: the argument list of a
// host command run by qvedCommand, keystrokes queued by sds_sendmessage. A feed holds typed values
// (a point, an entity name, a selection set) as well as text, because a module may hand those to a
// prompt directly.

#include "qvad/api/console.h"
#include "qvad/api/qvad_api.h"
#include "qvad/ge/point3d.h"

#include <deque>
#include <string>
#include <string_view>

namespace qvad::api {

struct Answer {
    enum class Kind { Text, Real, Int, Point, Entity, Selection, Cancel, Pause };
    Kind kind = Kind::Text;
    std::string text; // Text; for other kinds, how the value reads when echoed
    double real = 0.0;
    long long integer = 0;
    OdGePoint3d point;
    long long name[2] = {0, 0}; // Entity and Selection
};

// Turns a qvedCommand/qvedCmd argument list into answers. A string "\\" becomes Pause (ask the
// console). Returns false for a list that holds something no prompt can take.
bool answersFromList(const qv_resbuf* list, std::deque<Answer>& answers);

// While alive, answers are taken from this feed before anything older; when it runs dry the prompt
// goes to the next feed down, and finally to the console.
class AnswerFeed;
bool echoing();
ReadStatus ask(std::string_view prompt, Answer& answer);

class AnswerFeed {
public:
    explicit AnswerFeed(std::deque<Answer> answers, bool echoed);
    ~AnswerFeed();
    AnswerFeed(const AnswerFeed&) = delete;
    AnswerFeed& operator=(const AnswerFeed&) = delete;
    bool empty() const { return m_answers.empty(); }
    std::deque<Answer>& answers() { return m_answers; }
    bool echoed() const { return m_echoed; }

private:
    std::deque<Answer> m_answers;
    bool m_echoed;
    AnswerFeed* m_below;
    friend ReadStatus ask(std::string_view prompt, Answer& answer);
    friend bool echoing();
};

// How many prompts were cancelled, and how many met the end of input, since the program started: the
// command processor compares them before and after a command, whose handler returns nothing.
struct PromptTally {
    unsigned long cancelled = 0;
    unsigned long ended = 0;
};
const PromptTally& promptTally();

// Keystrokes queued with sds_sendmessage wait here until the command line next reads a command.
std::deque<Answer>& queuedKeystrokes();

// Writes text to the command line unless the prompts are being answered silently by a feed
// (CMDECHO 0 while a host command runs from qvedCommand).
void show(std::string_view text);
// Whether prompts and answers are shown now.
bool echoing();

// The one place prompts are answered. A feed's answer is echoed after the prompt when CMDECHO is on;
// a Pause answer or an empty feed asks the next source down.
ReadStatus ask(std::string_view prompt, Answer& answer);

} // namespace qvad::api
