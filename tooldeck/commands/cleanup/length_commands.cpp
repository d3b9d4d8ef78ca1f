// xlen: the length between two points with its increments and angles. xaclen and CalcDist: the length
// of a path of picked points; "First" starts the path again.

#include "qvad/api/qvad_api.h"
#include "tooldeck/commands/cleanup/quantity_clipboard.h"
#include "tooldeck/commands/cleanup/quantity_markers.h"
#include "tooldeck/commands/cleanup/quantity_settings.h"
#include "tooldeck/module/command_handlers.h"

#include <cmath>
#include <cstring>
#include <string>
#include <strings.h>

namespace qvtd::cmd {

namespace {

constexpr double kSamePoint = 1e-05;
constexpr double kPi = 3.141592653589793;

void copyPoint(const qv_point from, qv_point to) {
    for (int i = 0; i < 3; ++i) to[i] = from[i];
}

// Asks for points until Enter or cancel and sums the distances between them. onPoint sees each point
// picked, the total so far and whether the point starts the path.
template <typename OnPoint> double walkPath(OnPoint onPoint) {
    qv_point last = {0, 0, 0};
    double total = 0.0;
    for (bool needFirst = true;;) {
        if (needFirst) {
            if (qvedGetPoint(nullptr, "\nSpecify first point:", last) != QV_NORM) return total;
            onPoint(last, total, true);
            needFirst = false;
            continue;
        }
        qvedInitGet(0, "First");
        qv_point next = {0, 0, 0};
        int status = qvedGetPoint(last, "\nSpecify next point or [First]: ", next);
        if (status == QV_KWORD) {
            char word[64] = {};
            qvedGetInput(word, sizeof word);
            if (strcasecmp(word, "First") == 0) needFirst = true;
            continue;
        }
        if (status != QV_NORM) return total;
        total += qvutDistance(last, next);
        copyPoint(next, last);
        onPoint(last, total, false);
    }
}

} // namespace

void cmd_xlen() {
    qv_point start = {0, 0, 0};
    qv_point end = {0, 0, 0};
    if (qvedGetPoint(nullptr, "\nLength from the starting point:", start) != QV_NORM ||
        qvedGetPoint(start, "\nEnd point:", end) != QV_NORM) {
        qvedRetVoid();
        return;
    }
    double dx = end[0] - start[0];
    double dy = end[1] - start[1];
    double dz = end[2] - start[2];
    if (std::fabs(dx) < kSamePoint && std::fabs(dy) < kSamePoint && std::fabs(dz) < kSamePoint) {
        qvutPrintf("\nLength = 0    Select the same point.");
        qvedRetVoid();
        return;
    }
    double length = qvutDistance(start, end);
    double inclination = 0.0;
    double elevation = 90.0;
    if (std::fabs(dx) >= kSamePoint || std::fabs(dy) >= kSamePoint) {
        qv_point flatStart = {start[0], start[1], 0.0};
        qv_point flatEnd = {end[0], end[1], 0.0};
        inclination = qvutAngle(flatStart, flatEnd) * 180.0 / kPi;
        elevation = std::asin(std::fabs(dz) / length) * 180.0 / kPi;
    }
    quantity::QuantitySettings settings = quantity::loadQuantitySettings();
    double scale = settings.scale();
    std::string scaledLength = settings.format(length * scale);
    std::string report = "\nLength = " + scaledLength;
    char angles[128];
    std::snprintf(angles, sizeof angles, ",  XY plane inclination = %.f,  Angle with the XY plane = %.f",
                  inclination, elevation);
    report += angles;
    report += ",\n X increment =  " + settings.format(dx * scale);
    report += ",   Y increment = " + settings.format(dy * scale);
    report += ",  Z increment =  " + settings.format(dz * scale);
    qvutPrintf("%s", report.c_str());
    if (settings.toClipboard) quantity::writeClipboardText(scaledLength);
    qvedRetVoid();
}

void cmd_xaclen() {
    quantity::QuantitySettings settings = quantity::loadQuantitySettings();
    double radius = std::fabs(settings.markerRadius);
    if (radius == 0.0) radius = 5.0;
    quantity::TemporaryMarkers markers;
    double total = walkPath([&](const qv_point at, double, bool) { markers.circleAt(at, radius); });
    markers.eraseAll();
    std::string length = settings.format(total * settings.scale());
    qvutPrintf("\nLength = %s %s", length.c_str(), settings.units.c_str());
    if (settings.toClipboard) quantity::writeClipboardText(length);
    qvedRetVoid();
}

void cmd_CalcDist() {
    walkPath([](const qv_point, double total, bool first) {
        if (!first) qvutPrintf("\nCalculated distance = %f", total);
    });
    qvedRetVoid();
}

} // namespace qvtd::cmd
