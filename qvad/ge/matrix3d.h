#pragma once

#include "qvad/ge/point3d.h"
#include "qvad/ge/tol.h"
#include "qvad/ge/vector3d.h"

// An affine transformation of 3D space as a 4x4 matrix acting on column vectors: p' = M * p. The
// translation sits in the last column; the bottom row stays (0, 0, 0, 1) for every transformation built
// here.
class OdGeMatrix3d {
public:
    static const OdGeMatrix3d kIdentity;

    double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    constexpr OdGeMatrix3d() = default;

    constexpr double operator()(int row, int column) const { return entry[row][column]; }
    constexpr double& operator()(int row, int column) { return entry[row][column]; }

    OdGeMatrix3d operator*(const OdGeMatrix3d& m) const;
    OdGeMatrix3d& operator*=(const OdGeMatrix3d& m) { return *this = *this * m; }
    // this = m * this: applies m after the present transformation.
    OdGeMatrix3d& preMultBy(const OdGeMatrix3d& m) { return *this = m * *this; }
    // this = this * m: applies m before the present transformation.
    OdGeMatrix3d& postMultBy(const OdGeMatrix3d& m) { return *this = *this * m; }

    OdGePoint3d operator*(const OdGePoint3d& p) const;
    // Vectors are displacements: the translation does not move them.
    OdGeVector3d operator*(const OdGeVector3d& v) const;

    OdGeMatrix3d& setToIdentity() { return *this = OdGeMatrix3d(); }
    OdGeMatrix3d& setToTranslation(const OdGeVector3d& offset);
    OdGeMatrix3d& setToRotation(double angle, const OdGeVector3d& axis,
                                const OdGePoint3d& center = OdGePoint3d::kOrigin);
    OdGeMatrix3d& setToScaling(double factor, const OdGePoint3d& center = OdGePoint3d::kOrigin);
    // Reflection in the plane through pointOnPlane with the given normal.
    OdGeMatrix3d& setToMirroring(const OdGePoint3d& pointOnPlane, const OdGeVector3d& planeNormal);
    // Maps the world axes onto the given axes placed at origin, so coordinates in that system become
    // world coordinates.
    OdGeMatrix3d& setCoordSystem(const OdGePoint3d& origin, const OdGeVector3d& xAxis,
                                 const OdGeVector3d& yAxis, const OdGeVector3d& zAxis);
    void getCoordSystem(OdGePoint3d& origin, OdGeVector3d& xAxis, OdGeVector3d& yAxis,
                        OdGeVector3d& zAxis) const;

    static OdGeMatrix3d translation(const OdGeVector3d& offset);
    static OdGeMatrix3d rotation(double angle, const OdGeVector3d& axis,
                                 const OdGePoint3d& center = OdGePoint3d::kOrigin);
    static OdGeMatrix3d scaling(double factor, const OdGePoint3d& center = OdGePoint3d::kOrigin);
    static OdGeMatrix3d mirroring(const OdGePoint3d& pointOnPlane, const OdGeVector3d& planeNormal);
    // From the object coordinate system of a plane with this normal (the arbitrary-axis system of
    // drawing files) to world coordinates, and back.
    static OdGeMatrix3d planeToWorld(const OdGeVector3d& planeNormal);
    static OdGeMatrix3d worldToPlane(const OdGeVector3d& planeNormal);

    double det() const;
    bool isSingular(const OdGeTol& tol = kGeDefaultTol) const;
    // Writes the inverse to result and returns true, or returns false and leaves result alone when the
    // matrix cannot be inverted.
    bool inverse(OdGeMatrix3d& result, const OdGeTol& tol = kGeDefaultTol) const;
    // The inverse; a singular matrix has none and comes back unchanged, so check isSingular() first
    // where that can happen.
    OdGeMatrix3d inverse() const;
    OdGeMatrix3d transpose() const;

    bool isEqualTo(const OdGeMatrix3d& m, const OdGeTol& tol = kGeDefaultTol) const;
    bool operator==(const OdGeMatrix3d& m) const { return isEqualTo(m); }
};
