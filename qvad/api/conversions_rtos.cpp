// Distances as text in the five linear unit formats. Feet-and-inch formats take the value in inches,
// as drawings in those units are drawn.

#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_access.h"
#include "qvad/api/sysvars_number_format.h"

#include <cmath>
#include <numeric>
#include <optional>
#include <string>

namespace qvad::api {

namespace {

constexpr int kMaxPrecision = 8;
// Beyond this many fraction steps the whole part no longer fits exactly in a double.
constexpr double kLargestCount = 4.0e15;

// DIMZIN's two lowest bits: which of zero feet and zero inches are shown.
struct FeetInchZeros {
    bool showZeroFeet;
    bool showZeroInches;
};

FeetInchZeros feetInchZeros(int dimzin) {
    switch (dimzin & 3) {
    case 1:
        return {true, true};
    case 2:
        return {true, false};
    case 3:
        return {false, true};
    default:
        return {false, false};
    }
}

std::string joinFeetInches(long long feet, bool inchesAreZero, const std::string& inches, int dimzin) {
    FeetInchZeros zeros = feetInchZeros(dimzin);
    bool showFeet = feet != 0 || zeros.showZeroFeet;
    bool showInches = !inchesAreZero || zeros.showZeroInches || !showFeet;
    std::string text;
    if (showFeet) text = std::to_string(feet) + "'";
    if (showFeet && showInches) text += "-";
    if (showInches) text += inches + "\"";
    return text;
}

std::string fraction(long long numerator, long long denominator) {
    long long common = std::gcd(numerator, denominator);
    return std::to_string(numerator / common) + "/" + std::to_string(denominator / common);
}

// Whole and fraction: "5 1/2", "5", "1/2" (or "0 1/2" where a whole part is expected).
std::string mixedNumber(long long whole, long long numerator, long long denominator, bool keepZeroWhole) {
    if (numerator == 0) return std::to_string(whole);
    if (whole == 0 && !keepZeroWhole) return fraction(numerator, denominator);
    return std::to_string(whole) + " " + fraction(numerator, denominator);
}

std::optional<std::string> engineering(double inchesTotal, int precision, int dimzin) {
    double scale = std::pow(10.0, precision);
    double steps = std::round(inchesTotal * scale);
    if (steps > kLargestCount) return std::nullopt;
    double perFoot = 12.0 * scale;
    auto feet = static_cast<long long>(std::floor(steps / perFoot));
    double inches = (steps - static_cast<double>(feet) * perFoot) / scale;
    return joinFeetInches(feet, inches == 0.0, formatFixed(inches, precision, dimzin), dimzin);
}

std::optional<std::string> architectural(double inchesTotal, int precision, int dimzin) {
    long long denominator = 1LL << precision;
    double count = std::round(inchesTotal * static_cast<double>(denominator));
    if (count > kLargestCount) return std::nullopt;
    auto steps = static_cast<long long>(count);
    long long perFoot = 12 * denominator;
    long long feet = steps / perFoot, rest = steps % perFoot;
    FeetInchZeros zeros = feetInchZeros(dimzin);
    bool feetShown = feet != 0 || zeros.showZeroFeet;
    std::string inches = mixedNumber(rest / denominator, rest % denominator, denominator, feetShown);
    return joinFeetInches(feet, rest == 0, inches, dimzin);
}

std::optional<std::string> fractional(double value, int precision) {
    long long denominator = 1LL << precision;
    double count = std::round(value * static_cast<double>(denominator));
    if (count > kLargestCount) return std::nullopt;
    auto steps = static_cast<long long>(count);
    return mixedNumber(steps / denominator, steps % denominator, denominator, false);
}

std::optional<std::string> distanceText(double value, int unit, int precision, int dimzin) {
    if (unit == 1) return formatScientific(value, precision, dimzin);
    if (unit == 2) return formatFixed(value, precision, dimzin);
    double magnitude = std::fabs(value);
    std::optional<std::string> text = unit == 3   ? engineering(magnitude, precision, dimzin)
                                      : unit == 4 ? architectural(magnitude, precision, dimzin)
                                                  : fractional(magnitude, precision);
    bool roundsToZero = text && text->find_first_of("123456789") == std::string::npos;
    if (text && value < 0.0 && !roundsToZero) text->insert(0, "-");
    return text;
}

} // namespace

} // namespace qvad::api

extern "C" QV_API int qvdbRToS(qv_real value, int unit, int precision, char* result, size_t resultSize) {
    using namespace qvad::api;
    return guarded([&] {
        if (unit == -1) unit = shortSysVar("LUNITS", 2);
        if (precision == -1) precision = shortSysVar("LUPREC", 4);
        if (!result || unit < 1 || unit > 5 || precision < 0 || precision > kMaxPrecision ||
            !std::isfinite(value))
            return refuse(HostError::BadArgument);
        std::optional<std::string> text = distanceText(value, unit, precision, shortSysVar("DIMZIN", 0));
        if (!text || copyTextOut(*text, result, resultSize) != QV_NORM) return refuse(HostError::BadArgument);
        return QV_NORM;
    });
}
