// Angles as text in the five angular unit formats. The angle is taken as given, counter-clockwise from
// the world x axis, and brought into one turn: ANGBASE and ANGDIR govern how a user enters and reads
// angles at prompts, not these conversions, and surveyor's bearings are absolute by nature.

#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_access.h"
#include "qvad/api/sysvars_number_format.h"

#include <cmath>
#include <numbers>
#include <string>

namespace qvad::api {

namespace {

constexpr int kMaxPrecision = 8;
constexpr double kFullTurnDegrees = 360.0;

double degreesInOneTurn(double radians) {
    double degrees = std::fmod(radians * 180.0 / std::numbers::pi, kFullTurnDegrees);
    return degrees < 0.0 ? degrees + kFullTurnDegrees : degrees;
}

// A decimal that rounds up to a whole turn is the start of the turn again.
std::string decimalInTurn(double value, double fullTurn, int precision, int dimzin) {
    std::string text = formatFixed(value, precision, dimzin);
    if (std::fabs(parseReal(text).value_or(0.0) - fullTurn) < 0.5 * std::pow(10.0, -precision)) {
        text = formatFixed(0.0, precision, dimzin);
    }
    return text;
}

// Degrees, minutes and seconds at the precision's resolution: 0 whole degrees, 1-2 minutes, 3-4
// seconds, 5 on decimals of seconds. Rounds and carries; the caller decides what a full turn means.
struct Dms {
    long long degrees = 0;
    long long minutes = 0;
    double seconds = 0.0;
    int secondDecimals = 0;
    int parts = 1; // 1 degrees, 2 with minutes, 3 with seconds
};

Dms toDms(double degrees, int precision) {
    Dms dms;
    dms.parts = precision == 0 ? 1 : precision <= 2 ? 2 : 3;
    dms.secondDecimals = precision > 4 ? precision - 4 : 0;
    double stepsPerDegree = dms.parts == 1   ? 1.0
                            : dms.parts == 2 ? 60.0
                                             : 3600.0 * std::pow(10.0, dms.secondDecimals);
    double steps = std::round(degrees * stepsPerDegree);
    dms.degrees = static_cast<long long>(std::floor(steps / stepsPerDegree));
    double rest = steps - static_cast<double>(dms.degrees) * stepsPerDegree;
    if (dms.parts >= 2) {
        double stepsPerMinute = stepsPerDegree / 60.0;
        dms.minutes = static_cast<long long>(std::floor(rest / stepsPerMinute));
        dms.seconds =
            (rest - static_cast<double>(dms.minutes) * stepsPerMinute) / std::pow(10.0, dms.secondDecimals);
    }
    return dms;
}

std::string dmsText(const Dms& dms) {
    std::string text = std::to_string(dms.degrees) + "d";
    if (dms.parts >= 2) text += std::to_string(dms.minutes) + "'";
    if (dms.parts == 3) text += formatFixed(dms.seconds, dms.secondDecimals, 0) + "\"";
    return text;
}

// "N 45d0' E": the turn from north or south towards east or west; the four axes alone are "N" etc.
std::string surveyorText(double degrees, int precision) {
    bool north = degrees <= 180.0;
    double fromAxis = north ? std::fabs(90.0 - degrees) : std::fabs(270.0 - degrees);
    bool east = north ? degrees < 90.0 : degrees > 270.0;
    Dms dms = toDms(fromAxis, precision);
    bool onNorthSouth = dms.degrees == 0 && dms.minutes == 0 && dms.seconds == 0.0;
    bool onEastWest = dms.degrees == 90;
    if (onNorthSouth) return north ? "N" : "S";
    if (onEastWest) return east ? "E" : "W";
    return std::string(north ? "N " : "S ") + dmsText(dms) + (east ? " E" : " W");
}

std::string angleText(double radians, int unit, int precision, int dimzin) {
    double degrees = degreesInOneTurn(radians);
    switch (unit) {
    case 0:
        return decimalInTurn(degrees, kFullTurnDegrees, precision, dimzin);
    case 1: {
        Dms dms = toDms(degrees, precision);
        if (dms.degrees >= 360) dms = toDms(0.0, precision);
        return dmsText(dms);
    }
    case 2:
        return decimalInTurn(degrees * 400.0 / kFullTurnDegrees, 400.0, precision, dimzin) + "g";
    case 3:
        return decimalInTurn(degrees * std::numbers::pi / 180.0, 2.0 * std::numbers::pi, precision, dimzin) +
               "r";
    default:
        return surveyorText(degrees, precision);
    }
}

} // namespace

} // namespace qvad::api

extern "C" QV_API int qvdbAngToS(qv_real angle, int unit, int precision, char* result, size_t resultSize) {
    using namespace qvad::api;
    return guarded([&] {
        if (unit == -1) unit = shortSysVar("AUNITS", 0);
        if (precision == -1) precision = shortSysVar("AUPREC", 0);
        if (!result || unit < 0 || unit > 4 || precision < 0 || precision > kMaxPrecision ||
            !std::isfinite(angle))
            return refuse(HostError::BadArgument);
        std::string text = angleText(angle, unit, precision, shortSysVar("DIMZIN", 0));
        if (copyTextOut(text, result, resultSize) != QV_NORM) return refuse(HostError::BadArgument);
        return QV_NORM;
    });
}
