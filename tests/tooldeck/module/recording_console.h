#pragma once
// A console that answers prompts from a list ("^C" cancels), records everything shown, and can report
// one press of the break key; installed for the life of the object.

#include "qvad/api/console.h"

#include <deque>
#include <string>
#include <utility>

class RecordingConsole : public qvad::api::Console {
public:
    explicit RecordingConsole(std::deque<std::string> answers = {}) : m_answers(std::move(answers)) {
        qvad::api::setConsole(this);
    }
    ~RecordingConsole() override { qvad::api::setConsole(nullptr); }

    qvad::api::ReadStatus readLine(std::string_view prompt, std::string& line) override {
        transcript += prompt;
        if (m_answers.empty()) return qvad::api::ReadStatus::Ended;
        line = m_answers.front();
        m_answers.pop_front();
        if (line == "^C") return qvad::api::ReadStatus::Cancelled;
        transcript += line + "\n";
        return qvad::api::ReadStatus::Answer;
    }
    void write(std::string_view text) override { transcript += text; }
    bool takeBreak() override { return std::exchange(breakPressed, false); }

    std::string transcript;
    bool breakPressed = false;

private:
    std::deque<std::string> m_answers;
};
