#include "qvad/ge/angle.h"

#include <cmath>
#include <numbers>

double normalizeAngle(double angle) {
    constexpr double twoPi = 2.0 * std::numbers::pi;
    double reduced = std::fmod(angle, twoPi);
    if (reduced < 0.0) reduced += twoPi;
    // A tiny negative remainder plus 2pi rounds to exactly 2pi, which is the direction 0.
    if (reduced >= twoPi) reduced = 0.0;
    return reduced;
}

double angleOf(const OdGeVector2d& v) {
    return normalizeAngle(std::atan2(v.y, v.x));
}

double arcIncludedAngle(double startAngle, double endAngle) {
    return normalizeAngle(endAngle - startAngle);
}
