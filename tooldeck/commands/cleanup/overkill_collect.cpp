#include "tooldeck/commands/cleanup/overkill_collect.h"

#include "qvad/api/drawing_objects.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/entities/OdDbArc.h"
#include "qvad/db/entities/OdDbCircle.h"
#include "qvad/db/entities/OdDbHeavyPolyline.h"
#include "qvad/db/entities/OdDbLine.h"
#include "qvad/db/entities/OdDbPolyline.h"
#include "qvad/ge/ocs.h"

#include <atomic>
#include <cmath>
#include <future>
#include <typeinfo>
#include <unordered_map>

namespace qvtd::overkill {

namespace {

// Symbol look-ups by name are linear in the table; a million objects share a handful of names.
class RecordCache {
public:
    struct LayerState {
        qvad::Handle handle = 0;
        bool usable = true; // not frozen, locked or off
    };

    const LayerState& layer(const OdDbEntity& entity) {
        auto [it, fresh] = m_layers.try_emplace(entity.layer());
        if (fresh) {
            OdDbObjectId id = entity.layerId();
            it->second.handle = id.getHandle();
            OdDbObject* record = nullptr;
            if (oddbOpenOdDbObject(record, id) == eOk) {
                const auto& layer = static_cast<const OdDbSymbolTableRecord&>(*record);
                it->second.usable = !isLayerFrozen(layer) && !isLayerLocked(layer) && !isLayerOff(layer);
            }
        }
        return it->second;
    }

    qvad::Handle linetype(const OdDbEntity& entity) {
        auto [it, fresh] = m_linetypes.try_emplace(entity.linetype());
        if (fresh) it->second = entity.linetypeId().getHandle();
        return it->second;
    }

private:
    // Keyed by the names' text in the drawing, which stays put while the command reads.
    std::unordered_map<std::string_view, LayerState> m_layers;
    std::unordered_map<std::string_view, qvad::Handle> m_linetypes;
};

Properties propertiesOf(const OdDbEntity& entity, qvad::Handle layer, RecordCache& cache) {
    Properties props;
    const OdCmColor color = entity.color();
    props.colorIndex = color.colorIndex();
    props.trueColor = color.trueColor();
    props.colorName = color.colorName();
    props.layer = layer;
    props.linetype = cache.linetype(entity);
    props.linetypeScale = entity.linetypeScale();
    props.lineWeight = entity.lineWeight();
    props.plotStyle = entity.getPlotStyleNameId().getHandle();
    return props;
}

// Arc angles as a turn in [0, 2pi): drawings store an end at 360 degrees as often as at 0, and the arc
// pass takes whole turns off with a constant a hair above 2pi, which would leave 360 degrees standing.
double angleInOneTurn(double angle) {
    constexpr double turn = 6.283185307179586;
    double a = std::fmod(angle, turn);
    if (a < 0) a += turn;
    if (turn - a < 1e-12) a = 0.0;
    return a;
}

PolylineRecord lightweightRecord(const OdDbPolyline& polyline) {
    PolylineRecord record;
    record.kind = PolylineKind::Lightweight;
    record.closed = polyline.isClosed();
    record.normal = polyline.normal();
    record.thickness = polyline.thickness();
    record.constantWidth = polyline.getConstantWidth();
    const OdGeVector3d normal = polyline.normal();
    const double elevation = polyline.elevation();
    const bool flat = normal.isEqualTo(OdGeVector3d(0, 0, 1));
    const auto vertices = polyline.getVertices();
    record.vertices.reserve(vertices.size());
    for (const OdDbPolyline::Vertex& from : vertices) {
        PolylineVertex v;
        const OdGePoint3d ocs(from.point.x, from.point.y, elevation);
        v.point = flat ? ocs : ocsToWcs(ocs, normal);
        v.bulge = from.bulge;
        v.startWidth = from.startWidth;
        v.endWidth = from.endWidth;
        record.vertices.push_back(v);
    }
    return record;
}

// Vertices made by curve or spline fitting follow from the others and are left out.
bool isFitVertex(const OdDbVertex& vertex) {
    return (vertex.vertexFlags() & 8) != 0;
}

PolylineRecord twoDRecord(const OdDb2dPolyline& polyline) {
    PolylineRecord record;
    record.kind = PolylineKind::TwoD;
    record.closed = polyline.isClosed();
    record.normal = polyline.normal();
    record.thickness = polyline.thickness();
    for (const OdDbVertex* vertex : polyline.vertices()) {
        if (vertex->isErased() || isFitVertex(*vertex)) continue;
        const auto& v2 = static_cast<const OdDb2dVertex&>(*vertex);
        PolylineVertex v;
        v.point = polyline.vertexPositionWcs(*vertex);
        v.bulge = v2.bulge();
        v.startWidth = v2.startWidth();
        v.endWidth = v2.endWidth();
        record.vertices.push_back(v);
    }
    return record;
}

PolylineRecord threeDRecord(const OdDb3dPolyline& polyline) {
    PolylineRecord record;
    record.kind = PolylineKind::ThreeD;
    record.closed = polyline.isClosed();
    for (const OdDbVertex* vertex : polyline.vertices()) {
        if (vertex->isErased() || isFitVertex(*vertex)) continue;
        PolylineVertex v;
        v.point = vertex->position();
        record.vertices.push_back(v);
    }
    return record;
}

} // namespace

namespace {

// The picked objects with their guards: the command thread fills it in order and publishes how far it
// got; the reading thread follows behind.
class GuardedSelection {
public:
    explicit GuardedSelection(std::size_t length) : m_names(length), m_passed(length, 0) {}

    std::size_t size() const { return m_names.size(); }

    // Runs on the command thread: the host's calls stay there.
    void guardAll(const qv_name selection) {
        constexpr std::size_t kPublishEvery = 4096;
        for (std::size_t i = 0; i < m_names.size(); ++i) {
            qv_name& name = m_names[i].value;
            qv_resbuf* list = nullptr;
            if (qvedSSName(selection, static_cast<long>(i), name) == QV_NORM &&
                qvdbEntGet(name, &list) == QV_NORM && list)
                m_passed[i] = 1;
            qvutRelRb(list);
            if ((i + 1) % kPublishEvery == 0) publish(i + 1);
        }
        publish(m_names.size());
    }

    // Waits until the first count objects have been guarded.
    void waitUntil(std::size_t count) {
        std::size_t ready = m_ready.load(std::memory_order_acquire);
        while (ready < count) {
            m_ready.wait(ready, std::memory_order_acquire);
            ready = m_ready.load(std::memory_order_acquire);
        }
    }

    // Object i once waitUntil has seen it guarded: whether it passed, and its name.
    bool passed(std::size_t i) const { return m_passed[i] != 0; }
    const qv_name& name(std::size_t i) const { return m_names[i].value; }

private:
    void publish(std::size_t count) {
        m_ready.store(count, std::memory_order_release);
        m_ready.notify_all();
    }

    struct Name {
        qv_name value = {0, 0};
    };
    std::vector<Name> m_names;
    std::vector<char> m_passed;
    std::atomic<std::size_t> m_ready{0};
};

// Sorts one object into the run's lists or a class bucket. Only reads the drawing.
class RecordReader {
public:
    explicit RecordReader(OverkillWork& work) : m_work(work), m_run(work.run) {}

    void read(const qv_name name) {
        OdDbObjectId id;
        OdDbEntity* entity = nullptr;
        if (oddbGetObjectId(id, name) != eOk || oddbOpenOdDbEntity(entity, id, OdDb::kForRead) != eOk) return;
        if (!m_work.database) {
            m_work.database = id.database();
            OdDbObject* space = nullptr;
            if (oddbOpenOdDbObject(space, entity->blockId()) == eOk)
                m_work.spaceName = static_cast<const OdDbSymbolTableRecord&>(*space).getName();
        }
        const RecordCache::LayerState& layer = m_cache.layer(*entity);
        if (layer.usable) sort(*entity, layer.handle);
    }

private:
    void sort(const OdDbEntity& entity, qvad::Handle layer) {
        OverkillRun& run = m_run;
        const std::type_info& kind = typeid(entity);
        const ObjectKey key = entity.handle();
        if (kind == typeid(OdDbLine)) {
            const auto& line = static_cast<const OdDbLine&>(entity);
            run.lines.push_back({key, propertiesOf(entity, layer, m_cache), line.startPoint(),
                                 line.endPoint(), line.normal(), line.thickness()});
        } else if (kind == typeid(OdDbArc)) {
            const auto& arc = static_cast<const OdDbArc&>(entity);
            run.arcs.push_back({key, propertiesOf(entity, layer, m_cache), std::string(arc.layer()),
                                arc.centerWcs(), arc.radius(), angleInOneTurn(arc.startAngle()),
                                angleInOneTurn(arc.endAngle()), arc.normal(), arc.thickness()});
        } else if (kind == typeid(OdDbCircle)) {
            // The circle index is built once all are read.
            const auto& circle = static_cast<const OdDbCircle&>(entity);
            run.circles.push_back({key, propertiesOf(entity, layer, m_cache), std::string(circle.layer()),
                                   circle.centerWcs(), circle.radius(), circle.normal(), circle.thickness()});
        } else if (kind == typeid(OdDbPolyline) || kind == typeid(OdDb2dPolyline) ||
                   kind == typeid(OdDb3dPolyline)) {
            if (!run.settings.processPolylines) return;
            PolylineRecord record =
                kind == typeid(OdDbPolyline)     ? lightweightRecord(static_cast<const OdDbPolyline&>(entity))
                : kind == typeid(OdDb2dPolyline) ? twoDRecord(static_cast<const OdDb2dPolyline&>(entity))
                                                 : threeDRecord(static_cast<const OdDb3dPolyline&>(entity));
            record.key = key;
            record.props = propertiesOf(entity, layer, m_cache);
            auto& list = record.kind == PolylineKind::Lightweight ? run.lightweightPolylines
                         : record.kind == PolylineKind::TwoD      ? run.twoDPolylines
                                                                  : run.threeDPolylines;
            list.push_back(std::move(record));
        } else {
            const OdRxClass* type = entity.isA();
            auto [at, fresh] = m_bucketOf.try_emplace(type, m_work.buckets.size());
            if (fresh) m_work.buckets.emplace_back(type, std::vector<BucketMember>{});
            m_work.buckets[at->second].second.push_back({key, propertiesOf(entity, layer, m_cache), &entity});
        }
    }

    OverkillWork& m_work;
    OverkillRun& m_run;
    RecordCache m_cache;
    std::unordered_map<const OdRxClass*, std::size_t> m_bucketOf;
};

} // namespace

void collectSelection(const qv_name selection, OverkillWork& work) {
    long length = 0;
    if (qvedSSLength(selection, &length) != QV_NORM || length < 2) return;
    // Each object is guarded through the host, then read through the drawing library, which takes
    // longer. The guards stay on this thread with the host's other calls; a second thread follows
    // behind them, reading each object in selection order once its guard is known. It only ever reads
    // the drawing.
    GuardedSelection guarded(static_cast<std::size_t>(length));
    auto reading = std::async(std::launch::async, [&guarded, &work] {
        RecordReader reader(work);
        for (std::size_t i = 0; i < guarded.size(); ++i) {
            guarded.waitUntil(i + 1);
            if (guarded.passed(i)) reader.read(guarded.name(i));
        }
    });
    guarded.guardAll(selection);
    reading.get();
    buildCircleIndex(work.run);
}

} // namespace qvtd::overkill
