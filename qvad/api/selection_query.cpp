#include "qvad/api/selection_query.h"

#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_access.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/OdDbAttribute.h"
#include "qvad/db/entities/OdDbBlockReference.h"
#include "qvad/db/entity_geometry.h"
#include "qvad/ge/segment_tests.h"

#include <cmath>
#include <limits>

namespace qvad::api {

namespace {

using qvad::db::PlanChain;
using qvad::db::PlanGeometry;
using qvad::ge::Window2d;

bool layerVisible(const OdDbDatabase& db, std::string_view layerName) {
    const OdDbSymbolTable* layers = db.table("LAYER");
    const OdDbSymbolTableRecord* layer = layers ? layers->find(layerName) : nullptr;
    if (!layer) return true;
    return layer->getInt(62, 7) >= 0 && (layer->getInt(70, 0) & 1) == 0;
}

const OdDbBlockTableRecord* currentSpace(const OdDbDatabase& db) {
    return HostSession::current().paperSpaceCurrent() ? db.paperSpace() : db.modelSpace();
}

// Entities a pick or an area may find.
std::vector<const OdDbEntity*> visibleEntities() {
    std::vector<const OdDbEntity*> out;
    const OdDbDatabase* db = HostSession::current().drawing();
    if (!db) return out;
    const OdDbBlockTableRecord* space = currentSpace(*db);
    if (!space) return out;
    // Neighbours mostly share a layer, and finding a layer by name walks the whole table.
    std::string_view lastLayer;
    bool lastVisible = false, seenAny = false;
    for (const OdDbEntity* e : space->entities()) {
        if (e->isErased()) continue;
        const std::string_view layer = e->layer();
        if (!seenAny || layer != lastLayer) {
            lastVisible = layerVisible(*db, layer);
            lastLayer = layer;
            seenAny = true;
        }
        if (lastVisible) out.push_back(e);
    }
    return out;
}

// Each segment of the chains in turn (a lone point as a segment of no length).
template <class Visit> bool anySegment(const PlanGeometry& geometry, Visit&& visit) {
    for (const PlanChain& chain : geometry.chains) {
        const auto& p = chain.points;
        if (p.size() == 1 && visit(p[0], p[0])) return true;
        for (std::size_t i = 0; i + 1 < p.size(); ++i)
            if (visit(p[i], p[i + 1])) return true;
        if (chain.closed && visit(p.back(), p.front())) return true;
    }
    return false;
}

template <class Test> bool allPoints(const PlanGeometry& geometry, Test&& test) {
    for (const PlanChain& chain : geometry.chains)
        for (const OdGePoint2d& p : chain.points)
            if (!test(p)) return false;
    return true;
}

bool inArea(const PlanGeometry& g, AreaMode mode, std::span<const OdGePoint2d> points) {
    if (g.empty()) return false;
    switch (mode) {
    case AreaMode::Window: {
        const Window2d w = Window2d::fromCorners(points[0], points[1]);
        return allPoints(g, [&](const OdGePoint2d& p) { return w.contains(p); });
    }
    case AreaMode::Crossing: {
        const Window2d w = Window2d::fromCorners(points[0], points[1]);
        return anySegment(g, [&](const OdGePoint2d& a, const OdGePoint2d& b) {
            return qvad::ge::segmentTouchesWindow(a, b, w);
        });
    }
    case AreaMode::WindowPolygon:
        return allPoints(g, [&](const OdGePoint2d& p) { return qvad::ge::pointInPolygon(p, points); }) &&
               !anySegment(g, [&](const OdGePoint2d& a, const OdGePoint2d& b) {
                   return qvad::ge::segmentCrossesPolyline(a, b, points, true);
               });
    case AreaMode::CrossingPolygon:
        return anySegment(g, [&](const OdGePoint2d& a, const OdGePoint2d& b) {
            return qvad::ge::pointInPolygon(a, points) ||
                   qvad::ge::segmentCrossesPolyline(a, b, points, true);
        });
    case AreaMode::Fence:
        return anySegment(g, [&](const OdGePoint2d& a, const OdGePoint2d& b) {
            return qvad::ge::segmentCrossesPolyline(a, b, points, false);
        });
    }
    return false;
}

// How far the point is from the geometry; 0 inside a text box.
double distanceTo(const PlanGeometry& g, const OdGePoint2d& point) {
    double best = std::numeric_limits<double>::infinity();
    for (const PlanChain& chain : g.chains)
        if (chain.solid && qvad::ge::pointInPolygon(point, chain.points)) return 0.0;
    anySegment(g, [&](const OdGePoint2d& a, const OdGePoint2d& b) {
        best = std::min(best, qvad::ge::distanceToSegment(point, a, b));
        return false;
    });
    return best;
}

// Nearest of the entities within the aperture; on a tie the one drawn later (on top) wins.
template <class Entities, class Geometry>
const OdDbEntity* nearest(const Entities& entities, const OdGePoint2d& point, Geometry&& geometryOf) {
    const double aperture = pickAperture();
    const OdDbEntity* found = nullptr;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (const OdDbEntity* e : entities) {
        if (e->isErased()) continue;
        const double d = distanceTo(geometryOf(*e), point);
        if (d <= aperture && d <= bestDistance) {
            found = e;
            bestDistance = d;
        }
    }
    return found;
}

} // namespace

std::vector<qvad::Handle> entitiesInArea(AreaMode mode, std::span<const OdGePoint2d> points) {
    std::vector<qvad::Handle> out;
    for (const OdDbEntity* e : visibleEntities())
        if (inArea(qvad::db::planGeometry(*e), mode, points)) out.push_back(e->handle());
    return out;
}

std::vector<qvad::Handle> entitiesInCurrentSpace() {
    std::vector<qvad::Handle> out;
    for (const OdDbEntity* e : visibleEntities()) out.push_back(e->handle());
    return out;
}

std::vector<qvad::Handle> allEntities() {
    std::vector<qvad::Handle> out;
    const OdDbDatabase* db = HostSession::current().drawing();
    if (!db) return out;
    for (const OdDbBlockTableRecord* block : db->blocks())
        if (block->isLayout())
            for (const OdDbEntity* e : block->entities())
                if (!e->isErased()) out.push_back(e->handle());
    return out;
}

std::optional<qvad::Handle> lastEntityInCurrentSpace() {
    const OdDbDatabase* db = HostSession::current().drawing();
    const OdDbBlockTableRecord* space = db ? currentSpace(*db) : nullptr;
    if (!space) return std::nullopt;
    const auto& entities = space->entities();
    for (auto it = entities.rbegin(); it != entities.rend(); ++it)
        if (!(*it)->isErased()) return (*it)->handle();
    return std::nullopt;
}

double pickAperture() {
    double viewHeight = 1000.0;
    const OdDbDatabase* db = HostSession::current().drawing();
    const OdDbSymbolTable* viewports = db ? db->table("VPORT") : nullptr;
    if (const OdDbSymbolTableRecord* active = viewports ? viewports->find("*Active") : nullptr) {
        const double height = active->getDouble(40, 1000.0);
        if (std::isfinite(height) && height > 0.0) viewHeight = height;
    }
    return shortSysVar("PICKBOX", 3) * viewHeight / 1000.0;
}

std::optional<qvad::Handle> entityAtPoint(const OdGePoint2d& point) {
    const OdDbEntity* found =
        nearest(visibleEntities(), point, [](const OdDbEntity& e) { return qvad::db::planGeometry(e); });
    if (!found) return std::nullopt;
    return found->handle();
}

bool pickableByHandle(qvad::Handle handle) {
    for (const OdDbEntity* e : visibleEntities())
        if (e->handle() == handle) return true;
    return false;
}

std::vector<qvad::Handle> filtered(const std::vector<qvad::Handle>& handles, const SelectionFilter& filter) {
    if (filter.passesEverything()) return handles;
    std::vector<qvad::Handle> out;
    qv_resbuf* everyApplication = qvutBuildList(QV_RTSTR, "*", 0);
    for (qvad::Handle h : handles) {
        qv_name name;
        nameOfHandle(h, name);
        qv_resbuf* list = nullptr;
        const int status =
            filter.needsExtendedData() ? qvdbEntGetX(name, everyApplication, &list) : qvdbEntGet(name, &list);
        if (status == QV_NORM && filter.matches(list)) out.push_back(h);
        qvutRelRb(list);
    }
    qvutRelRb(everyApplication);
    return out;
}

std::optional<NestedPick> nestedEntityAtPoint(const OdGePoint2d& point) {
    const std::optional<qvad::Handle> top = entityAtPoint(point);
    if (!top) return std::nullopt;
    const OdDbDatabase* db = HostSession::current().drawing();
    NestedPick pick;
    const OdDbEntity* current = static_cast<const OdDbEntity*>(db->getObject(*top));
    std::vector<qvad::Handle> outerFirst;
    for (int depth = 0; depth < 16; ++depth) {
        const auto* insert = dynamic_cast<const OdDbBlockReference*>(current);
        if (!insert) break;
        const OdGeMatrix3d placement = pick.blockToWorld * insert->blockTransform();
        // An attribute under the point is the answer by itself, without the reference that holds it.
        std::vector<const OdDbEntity*> attributes;
        for (const OdDbEntity* sub : insert->subEntities())
            if (dynamic_cast<const OdDbAttribute*>(sub)) attributes.push_back(sub);
        const OdGeMatrix3d outer = pick.blockToWorld;
        if (const OdDbEntity* attribute = nearest(
                attributes, point, [&](const OdDbEntity& e) { return qvad::db::planGeometry(e, outer); })) {
            current = attribute;
            break;
        }
        const OdDbBlockTableRecord* block = insert->blockTableRecord();
        if (!block) break;
        const OdDbEntity* inner = nearest(block->entities(), point, [&](const OdDbEntity& e) {
            return qvad::db::planGeometry(e, placement);
        });
        if (!inner) break; // the reference was hit through its array copies or attributes only
        outerFirst.push_back(insert->handle());
        pick.blockToWorld = placement;
        current = inner;
    }
    pick.entity = current->handle();
    pick.containers.assign(outerFirst.rbegin(), outerFirst.rend());
    return pick;
}

} // namespace qvad::api
