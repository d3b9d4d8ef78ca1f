#pragma once

#include "qvad/ge/matrix3d.h"
#include "qvad/ge/point3d.h"
#include "qvad/ge/vector3d.h"

// The object coordinate system of planar entities: drawing files store only the plane's normal (the
// extrusion direction), and every reader must derive the same x and y axes from it, so the derivation
// is the fixed arbitrary-axis rule of the DXF format.

struct OcsAxes {
    OdGeVector3d xAxis;
    OdGeVector3d yAxis;
    OdGeVector3d zAxis; // the normal, scaled to unit length
};

// A zero normal is read as the world z axis, which is what drawing files mean when they omit it.
OcsAxes ocsAxes(const OdGeVector3d& normal);

OdGePoint3d ocsToWcs(const OdGePoint3d& point, const OdGeVector3d& normal);
OdGePoint3d wcsToOcs(const OdGePoint3d& point, const OdGeVector3d& normal);
// Directions and displacements: the same turn without any shift.
OdGeVector3d ocsToWcs(const OdGeVector3d& vector, const OdGeVector3d& normal);
OdGeVector3d wcsToOcs(const OdGeVector3d& vector, const OdGeVector3d& normal);

OdGeMatrix3d ocsToWcsMatrix(const OdGeVector3d& normal);
OdGeMatrix3d wcsToOcsMatrix(const OdGeVector3d& normal);
