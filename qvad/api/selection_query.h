#pragma once
// Which entities of the open drawing a pick, a window, a crossing, a fence or a polygon finds, in the
// plan view of the world XY plane. Only top-level, unerased entities of the current space (model space
// unless paper space is current) on layers that are on and thawed are found; whole-drawing selection
// (allEntities) ignores layer state and space.
//
// The pick aperture: without a screen there are no pixels, so the view is taken to be 1000 pixels
// high. A pick finds what lies within PICKBOX * (view height) / 1000 drawing units of the point, the view
// height being that of the "*Active" viewport (1000 units when the drawing has none), so PICKBOX 3
// over a view 100 units high picks within 0.3 units.

#include "qvad/api/selection_filter.h"
#include "qvad/db/handle.h"
#include "qvad/ge/matrix3d.h"
#include "qvad/ge/point2d.h"

#include <optional>
#include <span>
#include <vector>

class OdDbEntity;

namespace qvad::api {

enum class AreaMode { Window, Crossing, WindowPolygon, CrossingPolygon, Fence };

// Entities in or crossing the area. Window and Crossing take two corners; the polygon modes take the
// corners (at least three, edges not crossing one another); Fence at least two points.
std::vector<qvad::Handle> entitiesInArea(AreaMode mode, std::span<const OdGePoint2d> points);
// Every top-level, unerased entity of the current space on a visible layer, with geometry or not.
std::vector<qvad::Handle> entitiesInCurrentSpace();
// Every top-level, unerased entity of model and paper space.
std::vector<qvad::Handle> allEntities();
// The last entity made in the current space (erased ones left out).
std::optional<qvad::Handle> lastEntityInCurrentSpace();
double pickAperture();
// The entity whose geometry comes nearest the point within the aperture; nullopt when none does.
std::optional<qvad::Handle> entityAtPoint(const OdGePoint2d& point);
// A top-level entity reachable by handle, in the current space, on a visible layer; for #HANDLE picks.
bool pickableByHandle(qvad::Handle handle);

// Entities the filter accepts, in the same order.
std::vector<qvad::Handle> filtered(const std::vector<qvad::Handle>& handles, const SelectionFilter& filter);

// A nested pick: the innermost entity under the point inside block references, the matrix from its
// block to the world, and the references that hold it, innermost first.
struct NestedPick {
    qvad::Handle entity = 0;
    OdGeMatrix3d blockToWorld;
    std::vector<qvad::Handle> containers;
};
std::optional<NestedPick> nestedEntityAtPoint(const OdGePoint2d& point);

} // namespace qvad::api
