#pragma once
// What an entity looks like in a plan view of the world XY plane: chains of straight segments (arcs,
// ellipses and circles are divided finely enough that the chord strays less than 1/2000 of the radius
// from the curve). Picking, window and crossing selection all work on these chains.
//
// Approximations: a SPLINE is its fit points, or its control polygon when it has none; text is its
// box; REGION, 3DSOLID and BODY have no geometry here, so windows, crossings and picks never find
// them (only whole-drawing selection does). RAY and XLINE reach a long way (1e9 units) each way they run.

#include "qvad/ge/point2d.h"

#include <vector>

class OdDbEntity;
class OdGeMatrix3d;

namespace qvad::db {

struct PlanChain {
    std::vector<OdGePoint2d> points; // a single point for POINT entities
    bool closed = false;             // the last point joins back to the first
    bool solid = false;              // a text box: a pick anywhere inside it hits
};

struct PlanGeometry {
    std::vector<PlanChain> chains;
    bool empty() const { return chains.empty(); }
    // Lower-left and upper-right of every point; false when there is nothing.
    bool extents(OdGePoint2d& min, OdGePoint2d& max) const;
};

// Block references bring in their block's contents (and their attributes), transformed; a block that
// refers to itself stops after a few levels.
PlanGeometry planGeometry(const OdDbEntity& entity);
// As drawn through a block reference: placement maps the entity's block into the world.
PlanGeometry planGeometry(const OdDbEntity& entity, const OdGeMatrix3d& placement);

} // namespace qvad::db
