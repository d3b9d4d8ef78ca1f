// Angles from text in every form the angle formats print: decimal degrees, "45d30'15.5\"", grads
// ("50g"), radians ("0.7854r"), surveyor's bearings ("N 45d30' E", "N", "W"), and plain numbers,
// which count in the unit mode's unit. The result is radians within one turn.

#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_access.h"

#include <cctype>
#include <cmath>
#include <numbers>
#include <optional>
#include <string_view>

namespace qvad::api {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

bool startsWith(std::string_view text, char c) {
    return !text.empty() && std::toupper(static_cast<unsigned char>(text.front())) == c;
}

void skipSpaces(std::string_view& text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
}

// Degrees written with the d/'/" marks, at least the degrees; or nullopt when the text has none.
std::optional<double> scanDms(std::string_view& text) {
    std::string_view probe = text;
    auto degrees = scanUnsignedReal(probe);
    if (!degrees || !startsWith(probe, 'D')) return std::nullopt;
    probe.remove_prefix(1);
    double value = *degrees;
    std::string_view afterMinutes = probe;
    if (auto minutes = scanUnsignedReal(afterMinutes); minutes && startsWith(afterMinutes, '\'')) {
        afterMinutes.remove_prefix(1);
        value += *minutes / 60.0;
        probe = afterMinutes;
    }
    std::string_view afterSeconds = probe;
    if (auto seconds = scanUnsignedReal(afterSeconds); seconds && startsWith(afterSeconds, '"')) {
        afterSeconds.remove_prefix(1);
        value += *seconds / 3600.0;
        probe = afterSeconds;
    }
    text = probe;
    return value;
}

// A magnitude in radians: marked degrees, grads or radians, or a plain number in the mode's unit.
std::optional<double> scanAngle(std::string_view& text, int unit) {
    if (auto degrees = scanDms(text)) return *degrees * kDegree;
    auto number = scanUnsignedReal(text);
    if (!number) return std::nullopt;
    if (startsWith(text, 'G')) {
        text.remove_prefix(1);
        return *number * std::numbers::pi / 200.0;
    }
    if (startsWith(text, 'R')) {
        text.remove_prefix(1);
        return *number;
    }
    if (unit == 2) return *number * std::numbers::pi / 200.0;
    if (unit == 3) return *number;
    return *number * kDegree;
}

// "N 45d E" turns from north towards east: the world angle is 90 degrees less the turn.
std::optional<double> parseBearing(std::string_view text, int unit) {
    bool north = startsWith(text, 'N');
    text.remove_prefix(1);
    skipSpaces(text);
    if (text.empty()) return north ? 90.0 * kDegree : 270.0 * kDegree;
    auto turn = scanAngle(text, unit);
    skipSpaces(text);
    if (!turn || text.size() != 1 || !(startsWith(text, 'E') || startsWith(text, 'W'))) return std::nullopt;
    bool east = startsWith(text, 'E');
    double axis = (north ? 90.0 : 270.0) * kDegree;
    return axis + (north == east ? -*turn : *turn);
}

std::optional<double> parseAngle(std::string_view text, int unit) {
    skipSpaces(text);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    if (text.size() == 1 && (startsWith(text, 'E') || startsWith(text, 'W')))
        return startsWith(text, 'E') ? 0.0 : std::numbers::pi;
    if (startsWith(text, 'N') || startsWith(text, 'S')) return parseBearing(text, unit);
    double sign = 1.0;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        sign = text.front() == '-' ? -1.0 : 1.0;
        text.remove_prefix(1);
    }
    auto angle = scanAngle(text, unit);
    if (!angle || !text.empty()) return std::nullopt;
    return sign * *angle;
}

double withinOneTurn(double radians) {
    double turn = 2.0 * std::numbers::pi;
    double value = std::fmod(radians, turn);
    if (value < 0.0) value += turn;
    return value >= turn ? 0.0 : value;
}

} // namespace

} // namespace qvad::api

extern "C" QV_API int qvdbAngToF(const char* text, int unit, qv_real* result) {
    using namespace qvad::api;
    return guarded([&] {
        if (unit == -1) unit = shortSysVar("AUNITS", 0);
        if (!text || !result || unit < 0 || unit > 4) return refuse(HostError::BadArgument);
        std::optional<double> angle = parseAngle(text, unit);
        if (!angle || !std::isfinite(*angle)) return refuse(HostError::BadArgument);
        *result = withinOneTurn(*angle);
        return QV_NORM;
    });
}
