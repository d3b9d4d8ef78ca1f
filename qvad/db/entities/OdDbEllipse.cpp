#include "qvad/db/entities/OdDbEllipse.h"

#include <cmath>
#include <numbers>

double OdDbEllipse::endParam() const {
    return getDouble(42, 2.0 * std::numbers::pi, part());
}

OdGeVector3d OdDbEllipse::minorAxis() const {
    const OdGeVector3d major = majorAxis();
    return normal().normal().crossProduct(major) * radiusRatio();
}

OdGePoint3d OdDbEllipse::pointAtParam(double t) const {
    return center() + majorAxis() * std::cos(t) + minorAxis() * std::sin(t);
}

bool OdDbEllipse::isClosed() const {
    double sweep = endParam() - startParam();
    return std::abs(std::abs(sweep) - 2.0 * std::numbers::pi) < 1e-10;
}
