#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qvad::text {

// A stretch of multiline text drawn at one size.
struct MTextRun {
    std::u32string text;
    double heightFactor = 1.0; // of the entity's text height
    double widthFactor = 1.0;
};

// One paragraph line (ended by \P or the end of the contents).
struct MTextLine {
    std::vector<MTextRun> runs;
};

// Splits MTEXT contents into lines of plainly drawn runs. Format codes are applied or dropped:
// \P ends a line; \~ is a non-breaking space; \\ \{ \} are literal; braces group changes; \H (absolute
// or relative "x") and \W change size; \L \l \O \o \K \k \N vanish; \f \F \C \c \T \Q \A \p take an argument
// up to ";" and vanish; \S stacks show as "a/b"; \U+XXXX and %%c %%d %%p %%% become their characters.
// baseHeight converts absolute \H values to factors.
std::vector<MTextLine> parseMText(std::string_view contents, double baseHeight);

// The text a reader sees: runs joined, lines joined by "\n".
std::string plainMText(std::string_view contents);

} // namespace qvad::text
