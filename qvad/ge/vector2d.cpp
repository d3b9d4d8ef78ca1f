#include "qvad/ge/vector2d.h"

#include "qvad/ge/angle.h"

#include <cmath>

const OdGeVector2d OdGeVector2d::kIdentity{0.0, 0.0};
const OdGeVector2d OdGeVector2d::kXAxis{1.0, 0.0};
const OdGeVector2d OdGeVector2d::kYAxis{0.0, 1.0};

double OdGeVector2d::length() const {
    return std::hypot(x, y);
}

OdGeVector2d OdGeVector2d::normal(const OdGeTol& tol) const {
    const double len = length();
    if (len <= tol.equalVector()) return *this;
    return *this / len;
}

OdGeVector2d& OdGeVector2d::normalize(const OdGeTol& tol) {
    return *this = normal(tol);
}

bool OdGeVector2d::isZeroLength(const OdGeTol& tol) const {
    return length() <= tol.equalVector();
}

bool OdGeVector2d::isEqualTo(const OdGeVector2d& v, const OdGeTol& tol) const {
    return (*this - v).length() <= tol.equalVector();
}

bool OdGeVector2d::isParallelTo(const OdGeVector2d& v, const OdGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return std::abs(normal(tol).crossProduct(v.normal(tol))) <= tol.equalVector();
}

double OdGeVector2d::angle() const {
    return angleOf(*this);
}

double OdGeVector2d::angleTo(const OdGeVector2d& v) const {
    return std::atan2(std::abs(crossProduct(v)), dotProduct(v));
}

OdGeVector2d& OdGeVector2d::rotateBy(double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return set(x * c - y * s, x * s + y * c);
}
