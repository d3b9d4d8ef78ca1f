#include "qvad/api/input_points.h"

#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_access.h"

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace qvad::api {
namespace {

std::vector<std::string_view> splitAtCommas(std::string_view text) {
    std::vector<std::string_view> parts;
    for (;;) {
        std::size_t comma = text.find(',');
        parts.push_back(text.substr(0, comma));
        if (comma == std::string_view::npos) return parts;
        text.remove_prefix(comma + 1);
    }
}

} // namespace

std::optional<double> parseTypedDistance(std::string_view text) {
    std::string copy(text);
    qv_real value = 0.0;
    if (copy.empty() || qvdbDisToF(copy.c_str(), -1, &value) != QV_NORM) return std::nullopt;
    return value;
}

std::optional<double> parseTypedAngle(std::string_view text) {
    std::string copy(text);
    qv_real value = 0.0;
    if (copy.empty() || qvdbAngToF(copy.c_str(), -1, &value) != QV_NORM) return std::nullopt;
    return value;
}

double withinTurn(double radians) {
    double turn = 2.0 * std::numbers::pi;
    double value = std::fmod(radians, turn);
    if (value < 0.0) value += turn;
    return value >= turn ? 0.0 : value;
}

double worldAngleOfTyped(double typed) {
    double base = realSysVar("ANGBASE", 0.0);
    bool clockwise = shortSysVar("ANGDIR", 0) == 1;
    return withinTurn(base + (clockwise ? -typed : typed));
}

std::optional<OdGePoint3d> parseTypedPoint(std::string_view text) {
    bool relative = !text.empty() && text.front() == '@';
    if (relative) text.remove_prefix(1);
    OdGePoint3d origin = relative ? lastPoint() : OdGePoint3d(0.0, 0.0, realSysVar("ELEVATION", 0.0));
    if (relative && text.find_first_not_of(" \t") == std::string_view::npos) return origin;
    if (std::size_t less = text.find('<'); less != std::string_view::npos) {
        auto distance = parseTypedDistance(text.substr(0, less));
        auto angle = parseTypedAngle(text.substr(less + 1));
        if (!distance || !angle) return std::nullopt;
        double world = worldAngleOfTyped(*angle);
        return OdGePoint3d(origin.x + *distance * std::cos(world), origin.y + *distance * std::sin(world),
                           origin.z);
    }
    std::vector<std::string_view> parts = splitAtCommas(text);
    if (parts.size() < 2 || parts.size() > 3) return std::nullopt;
    double coordinate[3] = {0.0, 0.0, 0.0};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        auto value = parseTypedDistance(parts[i]);
        if (!value) return std::nullopt;
        coordinate[i] = *value;
    }
    if (relative)
        return OdGePoint3d(origin.x + coordinate[0], origin.y + coordinate[1], origin.z + coordinate[2]);
    return OdGePoint3d(coordinate[0], coordinate[1], parts.size() == 3 ? coordinate[2] : origin.z);
}

OdGePoint3d lastPoint() {
    return pointSysVar("LASTPOINT");
}

void setLastPoint(const OdGePoint3d& point) {
    SysVarValue value;
    value.type = SysVarType::Point3d;
    value.point = point;
    writeSysVar("LASTPOINT", value);
}

} // namespace qvad::api
