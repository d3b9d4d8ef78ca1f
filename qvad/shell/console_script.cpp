#include "qvad/shell/console_script.h"

#include <fstream>
#include <iostream>
#include <sstream>

namespace qvad::shell {

ScriptConsole::ScriptConsole(std::unique_ptr<std::istream> input, std::string source,
                             std::ostream& transcript)
    : m_input(std::move(input)), m_source(std::move(source)), m_transcript(transcript) {}

ScriptConsole::ScriptConsole(const std::vector<std::string>& lines, std::string source,
                             std::ostream& transcript)
    : m_source(std::move(source)), m_transcript(transcript) {
    std::string joined;
    for (const std::string& line : lines) joined += line + "\n";
    m_input = std::make_unique<std::istringstream>(std::move(joined));
}

std::unique_ptr<ScriptConsole> ScriptConsole::fromFile(const std::string& path, std::ostream& transcript) {
    auto file = std::make_unique<std::ifstream>(path, std::ios::binary);
    if (!*file) {
        std::cerr << "qvad: cannot read script " << path << "\n";
        return nullptr;
    }
    return std::make_unique<ScriptConsole>(std::move(file), path, transcript);
}

bool ScriptConsole::nextLine(std::string& line) {
    while (!m_exhausted) {
        if (!m_input || !std::getline(*m_input, line)) {
            m_exhausted = true;
            break;
        }
        ++m_lineNumber;
        // Scripts written on Windows end their lines with CR LF.
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line.front() == ';') continue;
        return true;
    }
    return false;
}

api::ReadStatus ScriptConsole::readLine(std::string_view prompt, std::string& line) {
    if (nextLine(line)) {
        m_transcript << prompt << line << "\n";
        m_transcript.flush();
        return api::ReadStatus::Answer;
    }
    if (m_next) return m_next->readLine(prompt, line);
    m_endedAtPrompt = prompt;
    m_transcript << prompt << "\n";
    m_transcript.flush();
    line.clear();
    return api::ReadStatus::Ended;
}

void ScriptConsole::write(std::string_view text) {
    if (!m_exhausted || !m_next) {
        m_transcript << text;
        m_transcript.flush();
        return;
    }
    m_next->write(text);
}

bool ScriptConsole::takeBreak() {
    return m_next && m_next->takeBreak();
}

bool ScriptConsole::interactive() const {
    return m_exhausted && m_next && m_next->interactive();
}

std::string ScriptConsole::location() const {
    return m_source + ":" + std::to_string(m_lineNumber);
}

} // namespace qvad::shell
