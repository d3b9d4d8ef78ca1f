#pragma once

#include "qvad/ge/tol.h"

class OdGeMatrix3d;

class OdGeVector3d {
public:
    static const OdGeVector3d kIdentity; // the zero vector: the identity of addition
    static const OdGeVector3d kXAxis;
    static const OdGeVector3d kYAxis;
    static const OdGeVector3d kZAxis;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr OdGeVector3d() = default;
    constexpr OdGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    constexpr OdGeVector3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }

    constexpr OdGeVector3d operator-() const { return {-x, -y, -z}; }
    constexpr OdGeVector3d operator+(const OdGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr OdGeVector3d operator-(const OdGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr OdGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr OdGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    constexpr OdGeVector3d& operator+=(const OdGeVector3d& v) { return *this = *this + v; }
    constexpr OdGeVector3d& operator-=(const OdGeVector3d& v) { return *this = *this - v; }
    constexpr OdGeVector3d& operator*=(double s) { return *this = *this * s; }
    constexpr OdGeVector3d& operator/=(double s) { return *this = *this / s; }

    // Equality within the default tolerance, as drafters expect of geometry.
    bool operator==(const OdGeVector3d& v) const { return isEqualTo(v); }

    constexpr double dotProduct(const OdGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    constexpr OdGeVector3d crossProduct(const OdGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }

    double length() const;
    constexpr double lengthSqrd() const { return dotProduct(*this); }

    // Unit vector of the same direction; a vector too short to have a direction comes back unchanged.
    OdGeVector3d normal(const OdGeTol& tol = kGeDefaultTol) const;
    OdGeVector3d& normalize(const OdGeTol& tol = kGeDefaultTol);

    bool isZeroLength(const OdGeTol& tol = kGeDefaultTol) const;
    bool isUnitLength(const OdGeTol& tol = kGeDefaultTol) const;
    bool isEqualTo(const OdGeVector3d& v, const OdGeTol& tol = kGeDefaultTol) const;

    // Direction tests compare unit vectors, so they do not depend on the vectors' lengths. A zero vector
    // has no direction and is neither parallel nor perpendicular to anything.
    bool isParallelTo(const OdGeVector3d& v, const OdGeTol& tol = kGeDefaultTol) const;
    bool isCodirectionalTo(const OdGeVector3d& v, const OdGeTol& tol = kGeDefaultTol) const;
    bool isPerpendicularTo(const OdGeVector3d& v, const OdGeTol& tol = kGeDefaultTol) const;

    // Unsigned angle between the two directions, in [0, pi].
    double angleTo(const OdGeVector3d& v) const;
    // Angle turning this vector into v counter-clockwise when seen from the tip of reference, in [0, 2pi).
    double angleTo(const OdGeVector3d& v, const OdGeVector3d& reference) const;

    // Turns the vector counter-clockwise about axis (right-hand rule).
    OdGeVector3d& rotateBy(double angle, const OdGeVector3d& axis);
    OdGeVector3d& transformBy(const OdGeMatrix3d& matrix);
};

constexpr OdGeVector3d operator*(double s, const OdGeVector3d& v) {
    return v * s;
}
