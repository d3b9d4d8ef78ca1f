#include "tooldeck/commands/cleanup/overkill_apply.h"

#include "qvad/api/drawing_objects.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/entities/OdDbArc.h"
#include "qvad/db/entities/OdDbCircle.h"
#include "qvad/db/entities/OdDbHeavyPolyline.h"
#include "qvad/db/entities/OdDbLine.h"
#include "qvad/db/entities/OdDbPolyline.h"
#include "qvad/db/entity_creation.h"
#include "qvad/ge/ocs.h"

#include <typeinfo>
#include <vector>

namespace qvtd::overkill {

namespace {

template <class T> T* openForWrite(OdDbDatabase& db, ObjectKey key) {
    OdDbEntity* entity = nullptr;
    if (oddbOpenOdDbEntity(entity, OdDbObjectId(&db, key), OdDb::kForRead) != eOk) return nullptr;
    if (typeid(*entity) != typeid(T) || entity->upgradeOpen() != eOk) return nullptr;
    return static_cast<T*>(entity);
}

// Rebuilding only ever drops vertices, so the kept ones are found again in order by position.
std::vector<std::size_t> keptVertices(const std::vector<OdGePoint3d>& original,
                                      const std::vector<PolylineVertex>& kept, double tolerance) {
    std::vector<std::size_t> found;
    const OdGeTol tol(tolerance * 4.0 + 1e-9);
    std::size_t next = 0;
    for (const PolylineVertex& v : kept) {
        while (next < original.size() && !original[next].isEqualTo(v.point, tol)) ++next;
        if (next == original.size()) return {};
        found.push_back(next++);
    }
    return found;
}

void rebuildLightweight(OdDbPolyline& polyline, const PolylineRecord& record, double tolerance) {
    std::vector<OdGePoint3d> original;
    for (unsigned i = 0; i < polyline.numVerts(); ++i) original.push_back(polyline.getPointAtWcs(i));
    const std::vector<std::size_t> kept = keptVertices(original, record.vertices, tolerance);
    if (kept.empty()) return;
    for (std::size_t i = original.size(), k = kept.size(); i-- > 0;) {
        if (k > 0 && kept[k - 1] == i) {
            --k;
            continue;
        }
        polyline.removeVertexAt(static_cast<unsigned>(i));
    }
    for (unsigned i = 0; i < record.vertices.size(); ++i) {
        polyline.setBulgeAt(i, record.vertices[i].bulge);
        double start = 0.0, end = 0.0;
        polyline.getWidthsAt(i, start, end);
        if (start != record.vertices[i].startWidth || end != record.vertices[i].endWidth)
            polyline.setWidthsAt(i, record.vertices[i].startWidth, record.vertices[i].endWidth);
    }
    if (polyline.isClosed() != record.closed) polyline.setClosed(record.closed);
}

void rebuildHeavy(OdDbHeavyPolyline& polyline, const PolylineRecord& record, double tolerance) {
    std::vector<OdDbVertex*> vertices;
    std::vector<OdGePoint3d> original;
    const auto* twoD = dynamic_cast<const OdDb2dPolyline*>(&polyline);
    for (OdDbVertex* v : polyline.vertices()) {
        if (v->isErased() || (v->vertexFlags() & 8)) continue;
        vertices.push_back(v);
        original.push_back(twoD ? twoD->vertexPositionWcs(*v) : v->position());
    }
    const std::vector<std::size_t> kept = keptVertices(original, record.vertices, tolerance);
    if (kept.empty()) return;
    std::size_t k = 0;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        if (k < kept.size() && kept[k] == i) {
            if (auto* v2 = dynamic_cast<OdDb2dVertex*>(vertices[i])) {
                const PolylineVertex& want = record.vertices[k];
                if (v2->bulge() != want.bulge) v2->setBulge(want.bulge);
                if (v2->startWidth() != want.startWidth) v2->setStartWidth(want.startWidth);
                if (v2->endWidth() != want.endWidth) v2->setEndWidth(want.endWidth);
            }
            ++k;
            continue;
        }
        vertices[i]->erase(true);
    }
}

void makeCircle(OdDbDatabase& db, const NewCircle& made, const OdDbObjectId& space) {
    OdDbEntity* source = nullptr;
    if (oddbOpenOdDbEntity(source, OdDbObjectId(&db, made.madeFrom), OdDb::kForRead, true) != eOk) return;
    auto entity = qvad::db::newEntity(db, "CIRCLE");
    if (!entity) return;
    auto& circle = static_cast<OdDbCircle&>(*entity);
    const OdGeVector3d normal = made.circle.normal;
    if (!normal.isEqualTo(OdGeVector3d(0, 0, 1)))
        circle.setPoint(210, OdGePoint3d(normal.x, normal.y, normal.z), OdDbCircle::kSubclass);
    circle.setCenterWcs(made.circle.center);
    circle.setRadius(made.circle.radius);
    circle.setLayer(source->layer());
    if (source->findTag(6)) circle.setLinetype(source->linetype());
    circle.setColor(source->color());
    if (source->findTag(370)) circle.setLineWeight(source->lineWeight());
    db.addOdDbObject(std::move(entity), space);
}

} // namespace

void applyEdits(OdDbDatabase& db, const OverkillEdits& edits, const std::string& spaceName,
                double tolerance) {
    for (const auto& [key, line] : edits.changedLines)
        if (auto* target = openForWrite<OdDbLine>(db, key)) {
            target->setStartPoint(line.start);
            target->setEndPoint(line.end);
        }
    for (const auto& [key, arc] : edits.changedArcs)
        if (auto* target = openForWrite<OdDbArc>(db, key)) {
            target->setStartAngle(arc.startAngle);
            target->setEndAngle(arc.endAngle);
        }
    for (const auto& [key, polyline] : edits.changedPolylines) {
        if (auto* light = openForWrite<OdDbPolyline>(db, key))
            rebuildLightweight(*light, polyline, tolerance);
        else if (auto* twoD = openForWrite<OdDb2dPolyline>(db, key))
            rebuildHeavy(*twoD, polyline, tolerance);
        else if (auto* threeD = openForWrite<OdDb3dPolyline>(db, key))
            rebuildHeavy(*threeD, polyline, tolerance);
    }
    if (!edits.newCircles.empty()) {
        const OdDbBlockTableRecord* space = db.findBlock(spaceName);
        if (!space) space = db.modelSpace();
        if (space)
            for (const NewCircle& made : edits.newCircles) makeCircle(db, made, space->objectId());
    }
    for (ObjectKey key : edits.erased) {
        OdDbEntity* entity = nullptr;
        if (oddbOpenOdDbEntity(entity, OdDbObjectId(&db, key), OdDb::kForRead) != eOk) continue;
        if (entity->upgradeOpen() == eOk) entity->erase(true);
    }
}

} // namespace qvtd::overkill
