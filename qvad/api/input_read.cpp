#include "qvad/api/input_read.h"

#include "qvad/api/console.h"

namespace qvad::api {

std::string_view trimmedAnswer(std::string_view text) {
    std::size_t start = text.find_first_not_of(" \t\r");
    if (start == std::string_view::npos) return {};
    std::size_t end = text.find_last_not_of(" \t\r");
    return text.substr(start, end - start + 1);
}

void showRefusal(std::string_view message, bool echoed) {
    if (!echoed) return;
    std::string line = "\n";
    line += message;
    console().write(line);
}

int askOnce(std::string_view prompt, Answer& answer) {
    switch (ask(prompt, answer)) {
    case ReadStatus::Answer:
        return QV_NORM;
    case ReadStatus::Cancelled:
        return QV_CANCEL;
    case ReadStatus::Ended:
        markInputEnded();
        return QV_CANCEL;
    }
    return QV_CANCEL;
}

int readAnswer(std::string_view prompt, const InputControls& controls, const AnswerJudge& judge) {
    setLastInputText({});
    for (;;) {
        bool echoed = echoing();
        Answer answer;
        if (askOnce(prompt, answer) != QV_NORM) return QV_CANCEL;
        if (answer.kind == Answer::Kind::Text) {
            std::string_view text = trimmedAnswer(answer.text);
            if (text.empty()) {
                if (controls.bits & QV_INP_NONULL) continue;
                return QV_RTNONE;
            }
            if (auto word = controls.keywords.match(text)) {
                setLastInputText(*word);
                return QV_KWORD;
            }
        }
        Verdict verdict = judge(answer);
        if (verdict.status != QV_ERROR) return verdict.status;
        if ((controls.bits & QV_INP_ARBITRARY) && answer.kind == Answer::Kind::Text) {
            setLastInputText(std::string(trimmedAnswer(answer.text)));
            return QV_KWORD;
        }
        showRefusal(verdict.message, echoed);
    }
}

} // namespace qvad::api
