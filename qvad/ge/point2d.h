#pragma once

#include "qvad/ge/tol.h"
#include "qvad/ge/vector2d.h"

class OdGePoint2d {
public:
    static const OdGePoint2d kOrigin;

    double x = 0.0;
    double y = 0.0;

    constexpr OdGePoint2d() = default;
    constexpr OdGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    constexpr OdGePoint2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }

    constexpr OdGePoint2d operator+(const OdGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr OdGePoint2d operator-(const OdGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr OdGeVector2d operator-(const OdGePoint2d& p) const { return {x - p.x, y - p.y}; }
    constexpr OdGePoint2d& operator+=(const OdGeVector2d& v) { return *this = *this + v; }
    constexpr OdGePoint2d& operator-=(const OdGeVector2d& v) { return *this = *this - v; }

    // Equality within the default tolerance, as drafters expect of geometry.
    bool operator==(const OdGePoint2d& p) const { return isEqualTo(p); }

    constexpr OdGeVector2d asVector() const { return {x, y}; }

    double distanceTo(const OdGePoint2d& p) const { return (*this - p).length(); }
    bool isEqualTo(const OdGePoint2d& p, const OdGeTol& tol = kGeDefaultTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }

    // Turns the point counter-clockwise about center.
    OdGePoint2d& rotateBy(double angle, const OdGePoint2d& center = kOrigin) {
        return *this = center + (*this - center).rotateBy(angle);
    }
};
