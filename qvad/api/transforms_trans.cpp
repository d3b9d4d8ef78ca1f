// Points and displacements between the host's coordinate systems: world, user (the drawing's
// UCSORG/UCSXDIR/UCSYDIR), display (looking along the active viewport's view direction from its target,
// without twist; the user system when the drawing has no active viewport), paper space display (the
// same while model space is current), and the object system of an entity or of an extrusion direction.

#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_access.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/OdDbObject.h"
#include "qvad/ge/matrix3d.h"
#include "qvad/ge/ocs.h"

#include <cmath>
#include <optional>

namespace qvad::api {

namespace {

bool isFinite(const qv_point p) {
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

OdGeMatrix3d planeToWorld(const OdGePoint3d& origin, const OdGeVector3d& normal) {
    OcsAxes axes = ocsAxes(normal);
    return OdGeMatrix3d().setCoordSystem(origin, axes.xAxis, axes.yAxis, axes.zAxis);
}

// A user system with axes that do not span a plane is no system; the world stands in for it.
OdGeMatrix3d userToWorld() {
    OdGePoint3d origin = pointSysVar("UCSORG");
    OdGeVector3d xAxis = pointSysVar("UCSXDIR", {1, 0, 0}).asVector().normal();
    OdGeVector3d yAxis = pointSysVar("UCSYDIR", {0, 1, 0}).asVector().normal();
    OdGeVector3d zAxis = xAxis.crossProduct(yAxis);
    if (!xAxis.isUnitLength() || zAxis.isZeroLength()) return OdGeMatrix3d::translation(origin.asVector());
    zAxis.normalize();
    yAxis = zAxis.crossProduct(xAxis); // square the axes up should the file's be a little off
    return OdGeMatrix3d().setCoordSystem(origin, xAxis, yAxis, zAxis);
}

OdGeMatrix3d displayToWorld() {
    const OdDbDatabase* db = HostSession::current().drawing();
    const OdDbSymbolTable* viewports = db ? db->table("VPORT") : nullptr;
    const OdDbSymbolTableRecord* active = viewports ? viewports->find("*Active") : nullptr;
    if (!active) return userToWorld();
    OdGeVector3d direction = active->getPoint(16, {0, 0, 1}).asVector();
    if (direction.isZeroLength() || !std::isfinite(direction.length())) return userToWorld();
    return planeToWorld(active->getPoint(17), direction);
}

// The system a result buffer names, as the matrix taking its coordinates to world coordinates.
std::optional<OdGeMatrix3d> systemToWorld(const qv_resbuf* system) {
    if (!system) return std::nullopt;
    switch (system->restype) {
    case QV_RTSHORT:
    case QV_RTLONG: {
        int code = system->restype == QV_RTSHORT ? system->resval.rint : system->resval.rlong;
        if (code == 0) return OdGeMatrix3d();
        if (code == 1) return userToWorld();
        if (code == 2 || code == 3) return displayToWorld();
        return std::nullopt;
    }
    case QV_RTENAME: {
        const OdDbObject* entity = objectOf(system->resval.rlname);
        if (!entity || !entity->isEntity()) return std::nullopt;
        return OdGeMatrix3d::planeToWorld(entity->getPoint(210, {0, 0, 1}).asVector());
    }
    case QV_RTPOINT:
    case QV_RT3DPOINT: {
        const qv_real* v = system->resval.rpoint;
        OdGeVector3d normal(v[0], v[1], system->restype == QV_RT3DPOINT ? v[2] : 0.0);
        if (!isFinite(v) || normal.isZeroLength()) return std::nullopt;
        return OdGeMatrix3d::planeToWorld(normal);
    }
    default:
        return std::nullopt;
    }
}

void store(const OdGePoint3d& p, qv_point result) {
    result[0] = p.x;
    result[1] = p.y;
    result[2] = p.z;
}

// Applies the matrix to a point, or only its turn to a displacement.
void apply(const OdGeMatrix3d& matrix, const qv_point point, int displacement, qv_point result) {
    OdGePoint3d p(point[0], point[1], point[2]);
    if (displacement)
        store(OdGePoint3d::kOrigin + matrix * p.asVector(), result);
    else
        store(matrix * p, result);
}

std::optional<OdGeVector3d> usableNormal(const qv_point normal) {
    if (!normal || !isFinite(normal)) return std::nullopt;
    OdGeVector3d n(normal[0], normal[1], normal[2]);
    if (n.isZeroLength()) return std::nullopt;
    return n;
}

} // namespace

} // namespace qvad::api

extern "C" {

QV_API int qvedTrans(const qv_point point, const struct qv_resbuf* from, const struct qv_resbuf* to,
                     int displacement, qv_point result) {
    using namespace qvad::api;
    return guarded([&] {
        if (!point || !result || !isFinite(point)) return refuse(HostError::BadArgument);
        std::optional<OdGeMatrix3d> fromWorld = systemToWorld(from), toWorld = systemToWorld(to);
        if (!fromWorld || !toWorld || toWorld->isSingular()) return refuse(HostError::BadArgument);
        apply(toWorld->inverse() * *fromWorld, point, displacement, result);
        return QV_NORM;
    });
}

QV_API int qvdbWcs2Ecs(const qv_point point, const qv_point normal, int displacement, qv_point result) {
    using namespace qvad::api;
    return guarded([&] {
        std::optional<OdGeVector3d> n = usableNormal(normal);
        if (!point || !result || !n || !isFinite(point)) return refuse(HostError::BadArgument);
        apply(OdGeMatrix3d::worldToPlane(*n), point, displacement, result);
        return QV_NORM;
    });
}

QV_API int qvdbEcs2Wcs(const qv_point point, const qv_point normal, int displacement, qv_point result) {
    using namespace qvad::api;
    return guarded([&] {
        std::optional<OdGeVector3d> n = usableNormal(normal);
        if (!point || !result || !n || !isFinite(point)) return refuse(HostError::BadArgument);
        apply(OdGeMatrix3d::planeToWorld(*n), point, displacement, result);
        return QV_NORM;
    });
}

QV_API int qvdbUcs2Wcs(const qv_point point, int displacement, qv_point result) {
    using namespace qvad::api;
    return guarded([&] {
        if (!point || !result || !isFinite(point)) return refuse(HostError::BadArgument);
        apply(userToWorld(), point, displacement, result);
        return QV_NORM;
    });
}

} // extern "C"
