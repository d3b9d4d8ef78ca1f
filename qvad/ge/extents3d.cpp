#include "qvad/ge/extents3d.h"

#include "qvad/ge/matrix3d.h"

#include <algorithm>

OdGeExtents3d::OdGeExtents3d(const OdGePoint3d& corner1, const OdGePoint3d& corner2) {
    addPoint(corner1);
    addPoint(corner2);
}

OdGePoint3d OdGeExtents3d::center() const {
    return m_min + (m_max - m_min) / 2.0;
}

bool OdGeExtents3d::isValid() const {
    return m_min.x <= m_max.x && m_min.y <= m_max.y && m_min.z <= m_max.z;
}

OdGeExtents3d& OdGeExtents3d::addPoint(const OdGePoint3d& point) {
    m_min.set(std::min(m_min.x, point.x), std::min(m_min.y, point.y), std::min(m_min.z, point.z));
    m_max.set(std::max(m_max.x, point.x), std::max(m_max.y, point.y), std::max(m_max.z, point.z));
    return *this;
}

OdGeExtents3d& OdGeExtents3d::addExt(const OdGeExtents3d& other) {
    if (!other.isValid()) return *this;
    addPoint(other.m_min);
    return addPoint(other.m_max);
}

OdGeExtents3d& OdGeExtents3d::transformBy(const OdGeMatrix3d& matrix) {
    if (!isValid()) return *this;
    OdGeExtents3d moved;
    for (int corner = 0; corner < 8; ++corner) {
        const OdGePoint3d p((corner & 1) ? m_max.x : m_min.x, (corner & 2) ? m_max.y : m_min.y,
                            (corner & 4) ? m_max.z : m_min.z);
        moved.addPoint(matrix * p);
    }
    return *this = moved;
}

bool OdGeExtents3d::contains(const OdGePoint3d& point, const OdGeTol& tol) const {
    if (!isValid()) return false;
    const double t = tol.equalPoint();
    return point.x >= m_min.x - t && point.x <= m_max.x + t && point.y >= m_min.y - t &&
           point.y <= m_max.y + t && point.z >= m_min.z - t && point.z <= m_max.z + t;
}

bool OdGeExtents3d::contains(const OdGeExtents3d& other, const OdGeTol& tol) const {
    return other.isValid() && contains(other.m_min, tol) && contains(other.m_max, tol);
}

bool OdGeExtents3d::intersects(const OdGeExtents3d& other, const OdGeTol& tol) const {
    if (!isValid() || !other.isValid()) return false;
    const double t = tol.equalPoint();
    return m_min.x <= other.m_max.x + t && other.m_min.x <= m_max.x + t && m_min.y <= other.m_max.y + t &&
           other.m_min.y <= m_max.y + t && m_min.z <= other.m_max.z + t && other.m_min.z <= m_max.z + t;
}
