#pragma once
// A console that answers prompts from a list ("^C" cancels) and records everything shown, installed
// for the life of the object.

#include "qvad/api/console.h"

#include <deque>
#include <string>
#include <vector>

class DialogTestConsole : public qvad::api::Console {
public:
    explicit DialogTestConsole(std::deque<std::string> answers) : m_answers(std::move(answers)) {
        qvad::api::setConsole(this);
    }
    ~DialogTestConsole() override { qvad::api::setConsole(nullptr); }

    qvad::api::ReadStatus readLine(std::string_view prompt, std::string& line) override {
        // Whether the fresh line arrives in the prompt or was written before it is not the test's business.
        prompts.emplace_back(prompt.substr(prompt.starts_with('\n') ? 1 : 0));
        transcript += prompt;
        if (m_answers.empty()) return qvad::api::ReadStatus::Ended;
        line = m_answers.front();
        m_answers.pop_front();
        if (line == "^C") return qvad::api::ReadStatus::Cancelled;
        transcript += line + "\n";
        return qvad::api::ReadStatus::Answer;
    }
    void write(std::string_view text) override { transcript += text; }
    std::size_t unanswered() const { return m_answers.size(); }

    std::vector<std::string> prompts;
    std::string transcript;

private:
    std::deque<std::string> m_answers;
};
