#include "qvad/text/mtext_format.h"

#include "qvad/text/text_codes.h"

#include <cstdlib>
#include <vector>

namespace qvad::text {
namespace {

struct RunState {
    double heightFactor = 1.0;
    double widthFactor = 1.0;
};

class MTextParser {
public:
    MTextParser(std::string_view contents, double baseHeight)
        : m_in(displayedText(contents)), m_baseHeight(baseHeight > 0.0 ? baseHeight : 1.0) {
        m_lines.emplace_back();
    }

    std::vector<MTextLine> run() {
        while (m_pos < m_in.size()) {
            char32_t c = m_in[m_pos++];
            if (c == U'{') {
                m_stack.push_back(m_state);
            } else if (c == U'}') {
                if (!m_stack.empty()) {
                    m_state = m_stack.back();
                    m_stack.pop_back();
                }
            } else if (c == U'\\' && m_pos < m_in.size()) {
                escape(m_in[m_pos++]);
            } else if (c == U'\n') {
                newLine();
            } else {
                emit(c);
            }
        }
        return std::move(m_lines);
    }

private:
    void escape(char32_t code) {
        switch (code) {
        case U'P':
            newLine();
            return;
        case U'~':
            emit(U'\u00A0');
            return;
        case U'\\':
        case U'{':
        case U'}':
            emit(code);
            return;
        case U'L':
        case U'l':
        case U'O':
        case U'o':
        case U'K':
        case U'k':
        case U'N':
        case U'X':
            return;
        case U'H':
            m_state.heightFactor = sizeArgument(m_state.heightFactor, true);
            return;
        case U'W':
            m_state.widthFactor = sizeArgument(m_state.widthFactor, false);
            return;
        case U'S':
            stack();
            return;
        case U'f':
        case U'F':
        case U'C':
        case U'c':
        case U'T':
        case U'Q':
        case U'A':
        case U'p':
            argument();
            return;
        default:
            emit(code);
            return; // an unknown escape shows the character, as readers do
        }
    }

    // Reads up to the closing ";" (or the end).
    std::u32string argument() {
        std::u32string arg;
        while (m_pos < m_in.size() && m_in[m_pos] != U';') arg += m_in[m_pos++];
        if (m_pos < m_in.size()) ++m_pos;
        return arg;
    }

    double sizeArgument(double current, bool absoluteIsHeight) {
        std::string arg = encodeUtf8(argument());
        bool relative = !arg.empty() && (arg.back() == 'x' || arg.back() == 'X');
        if (relative) arg.pop_back();
        char* end = nullptr;
        double value = std::strtod(arg.c_str(), &end);
        if (end == arg.c_str() || value <= 0.0) return current;
        if (relative) return current * value;
        return absoluteIsHeight ? value / m_baseHeight : value;
    }

    // Stacked fractions "a^b", "a/b", "a#b": both parts show, one after the other.
    void stack() {
        for (char32_t c : argument()) emit(c == U'^' || c == U'#' ? U'/' : c);
    }

    void emit(char32_t c) {
        std::vector<MTextRun>& runs = m_lines.back().runs;
        if (runs.empty() || runs.back().heightFactor != m_state.heightFactor ||
            runs.back().widthFactor != m_state.widthFactor)
            runs.push_back({{}, m_state.heightFactor, m_state.widthFactor});
        runs.back().text += c;
    }

    void newLine() { m_lines.emplace_back(); }

    std::u32string m_in;
    double m_baseHeight;
    std::size_t m_pos = 0;
    RunState m_state;
    std::vector<RunState> m_stack;
    std::vector<MTextLine> m_lines;
};

} // namespace

std::vector<MTextLine> parseMText(std::string_view contents, double baseHeight) {
    return MTextParser(contents, baseHeight).run();
}

std::string plainMText(std::string_view contents) {
    std::u32string out;
    bool first = true;
    for (const MTextLine& line : parseMText(contents, 1.0)) {
        if (!first) out += U'\n';
        first = false;
        for (const MTextRun& run : line.runs) out += run.text;
    }
    return encodeUtf8(out);
}

} // namespace qvad::text
