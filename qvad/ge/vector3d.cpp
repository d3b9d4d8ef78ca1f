#include "qvad/ge/vector3d.h"

#include "qvad/ge/angle.h"
#include "qvad/ge/matrix3d.h"

#include <cmath>

const OdGeVector3d OdGeVector3d::kIdentity{0.0, 0.0, 0.0};
const OdGeVector3d OdGeVector3d::kXAxis{1.0, 0.0, 0.0};
const OdGeVector3d OdGeVector3d::kYAxis{0.0, 1.0, 0.0};
const OdGeVector3d OdGeVector3d::kZAxis{0.0, 0.0, 1.0};

double OdGeVector3d::length() const {
    return std::hypot(x, y, z);
}

OdGeVector3d OdGeVector3d::normal(const OdGeTol& tol) const {
    const double len = length();
    if (len <= tol.equalVector()) return *this;
    return *this / len;
}

OdGeVector3d& OdGeVector3d::normalize(const OdGeTol& tol) {
    return *this = normal(tol);
}

bool OdGeVector3d::isZeroLength(const OdGeTol& tol) const {
    return length() <= tol.equalVector();
}

bool OdGeVector3d::isUnitLength(const OdGeTol& tol) const {
    return std::abs(length() - 1.0) <= tol.equalVector();
}

bool OdGeVector3d::isEqualTo(const OdGeVector3d& v, const OdGeTol& tol) const {
    return (*this - v).length() <= tol.equalVector();
}

bool OdGeVector3d::isParallelTo(const OdGeVector3d& v, const OdGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return normal(tol).crossProduct(v.normal(tol)).length() <= tol.equalVector();
}

bool OdGeVector3d::isCodirectionalTo(const OdGeVector3d& v, const OdGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return normal(tol).isEqualTo(v.normal(tol), tol);
}

bool OdGeVector3d::isPerpendicularTo(const OdGeVector3d& v, const OdGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return std::abs(normal(tol).dotProduct(v.normal(tol))) <= tol.equalVector();
}

double OdGeVector3d::angleTo(const OdGeVector3d& v) const {
    // atan2 keeps full precision near 0 and pi, where acos of the dot product loses half the digits.
    return std::atan2(crossProduct(v).length(), dotProduct(v));
}

double OdGeVector3d::angleTo(const OdGeVector3d& v, const OdGeVector3d& reference) const {
    const double unsignedAngle = angleTo(v);
    if (crossProduct(v).dotProduct(reference) < 0.0) return normalizeAngle(-unsignedAngle);
    return unsignedAngle;
}

OdGeVector3d& OdGeVector3d::rotateBy(double angle, const OdGeVector3d& axis) {
    const OdGeVector3d k = axis.normal();
    if (k.isZeroLength()) return *this;
    // Rodrigues' rotation formula.
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    *this = *this * c + k.crossProduct(*this) * s + k * (k.dotProduct(*this) * (1.0 - c));
    return *this;
}

OdGeVector3d& OdGeVector3d::transformBy(const OdGeMatrix3d& matrix) {
    return *this = matrix * *this;
}
