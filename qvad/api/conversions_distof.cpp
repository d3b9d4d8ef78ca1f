// Distances from text: plain and scientific numbers, fractions ("17 1/2", "17-1/2", "1/2") and feet
// and inches ("1'-5 1/2\"", "1'5.50\"", "2'", "5\"") whatever the unit mode asked for, since users and
// files mix them. Feet-and-inch text gives inches.

#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_access.h"

#include <cctype>
#include <cmath>
#include <optional>
#include <string_view>

namespace qvad::api {

namespace {

bool startsWith(std::string_view text, char c) {
    return !text.empty() && text.front() == c;
}

std::optional<long long> scanWhole(std::string_view& text) {
    if (text.empty() || !std::isdigit(static_cast<unsigned char>(text.front()))) return std::nullopt;
    long long value = 0;
    while (!text.empty() && std::isdigit(static_cast<unsigned char>(text.front()))) {
        if (value > 1'000'000'000'000'000LL) return std::nullopt;
        value = value * 10 + (text.front() - '0');
        text.remove_prefix(1);
    }
    return value;
}

// "N/D" after its numerator was read as a whole number.
std::optional<double> scanFractionTail(std::string_view& text, double numerator) {
    std::string_view rest = text.substr(1);
    auto denominator = scanWhole(rest);
    if (!denominator || *denominator == 0) return std::nullopt;
    text = rest;
    return numerator / static_cast<double>(*denominator);
}

// A number, a fraction or a whole number with a fraction.
std::optional<double> scanMixed(std::string_view& text) {
    std::string_view start = text;
    auto number = scanUnsignedReal(text);
    if (!number) return std::nullopt;
    bool whole =
        start.substr(0, start.size() - text.size()).find_first_not_of("0123456789") == std::string_view::npos;
    if (!whole) return number;
    if (startsWith(text, '/')) return scanFractionTail(text, *number);
    if (startsWith(text, ' ') || startsWith(text, '-')) {
        std::string_view rest = text.substr(1);
        while (startsWith(rest, ' ')) rest.remove_prefix(1);
        std::string_view probe = rest;
        auto numerator = scanWhole(probe);
        if (numerator && startsWith(probe, '/')) {
            auto part = scanFractionTail(probe, static_cast<double>(*numerator));
            if (!part) return std::nullopt;
            text = probe;
            return *number + *part;
        }
    }
    return number;
}

std::string_view trimmed(std::string_view text) {
    while (startsWith(text, ' ') || startsWith(text, '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

std::optional<double> parseDistance(std::string_view text) {
    text = trimmed(text);
    double sign = 1.0;
    if (startsWith(text, '-') || startsWith(text, '+')) {
        sign = text.front() == '-' ? -1.0 : 1.0;
        text.remove_prefix(1);
    }
    auto first = scanMixed(text);
    if (!first) return std::nullopt;
    if (text.empty()) return sign * *first;
    if (startsWith(text, '"')) {
        text.remove_prefix(1);
        return text.empty() ? std::optional<double>(sign * *first) : std::nullopt;
    }
    if (!startsWith(text, '\'')) return std::nullopt;
    text.remove_prefix(1);
    double inches = 0.0;
    if (startsWith(text, '-')) text.remove_prefix(1);
    while (startsWith(text, ' ')) text.remove_prefix(1);
    if (!text.empty()) {
        auto part = scanMixed(text);
        if (!part) return std::nullopt;
        if (startsWith(text, '"')) text.remove_prefix(1);
        if (!text.empty()) return std::nullopt;
        inches = *part;
    }
    return sign * (*first * 12.0 + inches);
}

} // namespace

} // namespace qvad::api

extern "C" QV_API int qvdbDisToF(const char* text, int unit, qv_real* result) {
    using namespace qvad::api;
    return guarded([&] {
        if (unit == -1) unit = shortSysVar("LUNITS", 2);
        if (!text || !result || unit < 1 || unit > 5) return refuse(HostError::BadArgument);
        std::optional<double> value = parseDistance(text);
        if (!value || !std::isfinite(*value)) return refuse(HostError::BadArgument);
        *result = *value;
        return QV_NORM;
    });
}
