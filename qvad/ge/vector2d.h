#pragma once

#include "qvad/ge/tol.h"

class OdGeVector2d {
public:
    static const OdGeVector2d kIdentity; // the zero vector: the identity of addition
    static const OdGeVector2d kXAxis;
    static const OdGeVector2d kYAxis;

    double x = 0.0;
    double y = 0.0;

    constexpr OdGeVector2d() = default;
    constexpr OdGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    constexpr OdGeVector2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }

    constexpr OdGeVector2d operator-() const { return {-x, -y}; }
    constexpr OdGeVector2d operator+(const OdGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr OdGeVector2d operator-(const OdGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr OdGeVector2d operator*(double s) const { return {x * s, y * s}; }
    constexpr OdGeVector2d operator/(double s) const { return {x / s, y / s}; }
    constexpr OdGeVector2d& operator+=(const OdGeVector2d& v) { return *this = *this + v; }
    constexpr OdGeVector2d& operator-=(const OdGeVector2d& v) { return *this = *this - v; }
    constexpr OdGeVector2d& operator*=(double s) { return *this = *this * s; }
    constexpr OdGeVector2d& operator/=(double s) { return *this = *this / s; }

    // Equality within the default tolerance, as drafters expect of geometry.
    bool operator==(const OdGeVector2d& v) const { return isEqualTo(v); }

    constexpr double dotProduct(const OdGeVector2d& v) const { return x * v.x + y * v.y; }
    // The z component of the 3D cross product: positive when v lies counter-clockwise of this vector.
    constexpr double crossProduct(const OdGeVector2d& v) const { return x * v.y - y * v.x; }
    // This vector turned a quarter turn counter-clockwise.
    constexpr OdGeVector2d perpVector() const { return {-y, x}; }

    double length() const;
    constexpr double lengthSqrd() const { return dotProduct(*this); }

    // Unit vector of the same direction; a vector too short to have a direction comes back unchanged.
    OdGeVector2d normal(const OdGeTol& tol = kGeDefaultTol) const;
    OdGeVector2d& normalize(const OdGeTol& tol = kGeDefaultTol);

    bool isZeroLength(const OdGeTol& tol = kGeDefaultTol) const;
    bool isEqualTo(const OdGeVector2d& v, const OdGeTol& tol = kGeDefaultTol) const;
    // A zero vector has no direction and is parallel to nothing.
    bool isParallelTo(const OdGeVector2d& v, const OdGeTol& tol = kGeDefaultTol) const;

    // Direction measured counter-clockwise from the x axis, in [0, 2pi).
    double angle() const;
    // Unsigned angle between the two directions, in [0, pi].
    double angleTo(const OdGeVector2d& v) const;

    OdGeVector2d& rotateBy(double angle);
};

constexpr OdGeVector2d operator*(double s, const OdGeVector2d& v) {
    return v * s;
}
