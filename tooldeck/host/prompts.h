#pragma once
// The prompts commands ask, answered with the default on Enter. A cancelled prompt gives nothing, and
// the command then ends quietly. Prompts are given whole, default included ("\nHeight <2.5>: ").

#include "tooldeck/host/data_list.h"

#include <optional>
#include <string>

namespace qvtd {

// keywords as qvedInitGet takes them ("Wipeout 3dface Solid"); the chosen keyword's global name, or
// defaultWord on Enter (null: Enter is refused and the prompt asked again).
std::optional<std::string> askKeyword(const char* prompt, const char* keywords, const char* defaultWord);
std::optional<double> askReal(const char* prompt, double defaultValue, int bits = 0);
std::optional<double> askDistance(const char* prompt, double defaultValue, int bits = 0,
                                  const Point3* base = nullptr);
std::optional<int> askInteger(const char* prompt, int defaultValue, int bits = 0);
std::optional<std::string> askText(const char* prompt, const std::string& defaultText,
                                   bool allowSpaces = true);

// A point, or a keyword, or Enter.
struct PointAnswer {
    enum class Kind { Point, Keyword, Empty, Cancel } kind = Kind::Cancel;
    Point3 point{0.0, 0.0, 0.0};
    std::string keyword;
};
PointAnswer askPoint(const char* prompt, const char* keywords = nullptr, const Point3* base = nullptr,
                     int bits = 0);

// "Yes" or "No" with the default on Enter.
std::optional<bool> askYesNo(const char* prompt, bool defaultYes);

} // namespace qvtd
