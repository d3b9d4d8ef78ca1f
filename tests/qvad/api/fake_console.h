#pragma once
// A scripted console for tests: it answers prompts from a list of lines and records everything shown,
// prompts and answers included, as a transcript a person would see at a terminal.
//
//   FakeConsole console({"1,2", "", "^C"});   // "^C" answers a prompt by cancelling
//   // ... run code that prompts ...
//   EXPECT_EQ(console.transcript(), "Specify point: 1,2\n...");
//
// While alive it is the console in use (setConsole), and restores the default when destroyed. When
// its lines run out, a prompt gets ReadStatus::Ended (and the transcript a line break, as a script's).
// pressBreak() makes takeBreak() true once. prompts() lists the prompts exactly as readLine received them.

#include "qvad/api/console.h"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace qvad::test {

class FakeConsole final : public qvad::api::Console {
public:
    explicit FakeConsole(std::vector<std::string> answers = {}) : m_answers(answers.begin(), answers.end()) {
        qvad::api::setConsole(this);
    }
    ~FakeConsole() override { qvad::api::setConsole(nullptr); }
    FakeConsole(const FakeConsole&) = delete;
    FakeConsole& operator=(const FakeConsole&) = delete;

    qvad::api::ReadStatus readLine(std::string_view prompt, std::string& line) override {
        m_prompts.emplace_back(prompt);
        m_transcript += prompt;
        line.clear();
        if (m_answers.empty()) {
            m_transcript += "\n";
            return qvad::api::ReadStatus::Ended;
        }
        std::string answer = std::move(m_answers.front());
        m_answers.pop_front();
        if (answer == "^C") {
            m_transcript += "*Cancel*\n";
            return qvad::api::ReadStatus::Cancelled;
        }
        m_transcript += answer + "\n";
        line = std::move(answer);
        return qvad::api::ReadStatus::Answer;
    }
    void write(std::string_view text) override { m_transcript += text; }
    bool takeBreak() override { return std::exchange(m_break, false); }

    void pressBreak() { m_break = true; }
    void addAnswer(std::string answer) { m_answers.push_back(std::move(answer)); }
    const std::string& transcript() const { return m_transcript; }
    const std::vector<std::string>& prompts() const { return m_prompts; }
    std::size_t answersLeft() const { return m_answers.size(); }
    void clearTranscript() { m_transcript.clear(); }

private:
    std::deque<std::string> m_answers;
    std::string m_transcript;
    std::vector<std::string> m_prompts;
    bool m_break = false;
};

} // namespace qvad::test
