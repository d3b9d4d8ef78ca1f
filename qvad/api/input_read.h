#pragma once
// The loop every input function runs: ask, and on a bad answer print the host's one-line message and
// ask again, exactly alike for a person, a script and a feed. Empty answers, keywords, cancelling and
// the end of input are handled here; what a good answer is, each function decides.

#include "qvad/api/answers.h"
#include "qvad/api/input_state.h"

#include <functional>
#include <string>
#include <string_view>

namespace qvad::api {

// What a function made of one answer: taken (QV_NORM), refused with a message (asked again), or a
// status that ends the call (QV_CANCEL from a follow-up prompt).
struct Verdict {
    int status = QV_NORM;
    std::string message;

    static Verdict taken() { return {}; }
    static Verdict refused(std::string message) { return {QV_ERROR, std::move(message)}; }
};

using AnswerJudge = std::function<Verdict(const Answer&)>;

// Asks until an answer is taken. Returns QV_NORM, QV_RTNONE (empty answer, unless the NONULL bit
// asks again), QV_KWORD (a keyword, or any text with the ARBITRARY bit; lastInputText() holds it)
// or QV_CANCEL (cancelled, or input ended: inputEnded() then says so).
int readAnswer(std::string_view prompt, const InputControls& controls, const AnswerJudge& judge);

// One answer with no judging, for follow-up prompts: QV_NORM or QV_CANCEL as above.
int askOnce(std::string_view prompt, Answer& answer);

// The message after a bad answer, shown unless the answer came from a silent feed.
void showRefusal(std::string_view message, bool echoed);

// Typed text with the blanks around it removed.
std::string_view trimmedAnswer(std::string_view text);

} // namespace qvad::api
