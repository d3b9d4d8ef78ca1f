#pragma once

#include "qvad/ge/point3d.h"
#include "qvad/ge/tol.h"

class OdGeMatrix3d;

// An axis-aligned box. It starts empty (invalid) and grows around what is added to it, so a loop over
// entities needs no special first case.
class OdGeExtents3d {
public:
    constexpr OdGeExtents3d() = default;
    // The box spanned by two opposite corners, in either order.
    OdGeExtents3d(const OdGePoint3d& corner1, const OdGePoint3d& corner2);

    const OdGePoint3d& minPoint() const { return m_min; }
    const OdGePoint3d& maxPoint() const { return m_max; }
    OdGePoint3d center() const;

    bool isValid() const;
    void reset() { *this = OdGeExtents3d(); }

    OdGeExtents3d& addPoint(const OdGePoint3d& point);
    // Adding an empty box changes nothing.
    OdGeExtents3d& addExt(const OdGeExtents3d& other);
    // The box around this box's transformed corners: a rotated box is no longer tight around its contents.
    OdGeExtents3d& transformBy(const OdGeMatrix3d& matrix);

    // Whether the point lies inside or on the boundary, allowing tol.equalPoint() outside it.
    bool contains(const OdGePoint3d& point, const OdGeTol& tol = kGeDefaultTol) const;
    bool contains(const OdGeExtents3d& other, const OdGeTol& tol = kGeDefaultTol) const;
    // Boxes that only touch do intersect. An empty box intersects nothing.
    bool intersects(const OdGeExtents3d& other, const OdGeTol& tol = kGeDefaultTol) const;

private:
    static constexpr double kHuge = 1e300;
    OdGePoint3d m_min{kHuge, kHuge, kHuge};
    OdGePoint3d m_max{-kHuge, -kHuge, -kHuge};
};
