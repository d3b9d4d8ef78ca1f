#include "qvad/ge/ocs.h"

#include <cmath>

OcsAxes ocsAxes(const OdGeVector3d& normal) {
    OcsAxes axes;
    axes.zAxis = normal.isZeroLength() ? OdGeVector3d::kZAxis : normal.normal();
    const OdGeVector3d& n = axes.zAxis;
    // 1/64 is exact in both binary and decimal, so every program draws the same boundary of the polar cap.
    constexpr double polarCap = 1.0 / 64.0;
    const bool nearWorldZ = std::abs(n.x) < polarCap && std::abs(n.y) < polarCap;
    const OdGeVector3d& helper = nearWorldZ ? OdGeVector3d::kYAxis : OdGeVector3d::kZAxis;
    axes.xAxis = helper.crossProduct(n).normal();
    axes.yAxis = n.crossProduct(axes.xAxis).normal();
    return axes;
}

OdGePoint3d ocsToWcs(const OdGePoint3d& point, const OdGeVector3d& normal) {
    return OdGePoint3d::kOrigin + ocsToWcs(point.asVector(), normal);
}

OdGePoint3d wcsToOcs(const OdGePoint3d& point, const OdGeVector3d& normal) {
    return OdGePoint3d::kOrigin + wcsToOcs(point.asVector(), normal);
}

OdGeVector3d ocsToWcs(const OdGeVector3d& vector, const OdGeVector3d& normal) {
    const OcsAxes axes = ocsAxes(normal);
    return axes.xAxis * vector.x + axes.yAxis * vector.y + axes.zAxis * vector.z;
}

OdGeVector3d wcsToOcs(const OdGeVector3d& vector, const OdGeVector3d& normal) {
    // The axes are orthonormal, so the inverse is the transpose: project onto each axis.
    const OcsAxes axes = ocsAxes(normal);
    return {vector.dotProduct(axes.xAxis), vector.dotProduct(axes.yAxis), vector.dotProduct(axes.zAxis)};
}

OdGeMatrix3d ocsToWcsMatrix(const OdGeVector3d& normal) {
    const OcsAxes axes = ocsAxes(normal);
    return OdGeMatrix3d().setCoordSystem(OdGePoint3d::kOrigin, axes.xAxis, axes.yAxis, axes.zAxis);
}

OdGeMatrix3d wcsToOcsMatrix(const OdGeVector3d& normal) {
    return ocsToWcsMatrix(normal).transpose();
}
