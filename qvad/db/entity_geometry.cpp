#include "qvad/db/entity_geometry.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/entities/OdDbArc.h"
#include "qvad/db/entities/OdDbAttribute.h"
#include "qvad/db/entities/OdDbBlockReference.h"
#include "qvad/db/entities/OdDbCircle.h"
#include "qvad/db/entities/OdDbDimension.h"
#include "qvad/db/entities/OdDbEllipse.h"
#include "qvad/db/entities/OdDbHatch.h"
#include "qvad/db/entities/OdDbHeavyPolyline.h"
#include "qvad/db/entities/OdDbLeader.h"
#include "qvad/db/entities/OdDbLine.h"
#include "qvad/db/entities/OdDbMText.h"
#include "qvad/db/entities/OdDbPoint.h"
#include "qvad/db/entities/OdDbPolyFaceMesh.h"
#include "qvad/db/entities/OdDbPolyline.h"
#include "qvad/db/entities/OdDbRasterImage.h"
#include "qvad/db/entities/OdDbSolid.h"
#include "qvad/db/entities/OdDbSpline.h"
#include "qvad/db/entities/OdDbText.h"
#include "qvad/db/entities/OdDbVertex.h"
#include "qvad/ge/bulge.h"
#include "qvad/ge/matrix3d.h"
#include "qvad/ge/ocs.h"
#include "qvad/text/mtext_extents.h"
#include "qvad/text/text_box.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qvad::db {

namespace {

constexpr int kMaxBlockDepth = 16;
constexpr double kFarAway = 1e9;

// Steps for a sweep so that the chord's sagitta stays below 1/2000 of the radius.
int stepsFor(double sweep) {
    const double stepAngle = 2.0 * std::acos(1.0 - 1.0 / 2000.0);
    return std::clamp(static_cast<int>(std::ceil(std::abs(sweep) / stepAngle)), 1, 4096);
}

class Collector {
public:
    explicit Collector(PlanGeometry& out) : m_out(out) {}

    void add(const std::vector<OdGePoint3d>& points, bool closed, bool solid = false) {
        if (points.empty()) return;
        PlanChain chain;
        chain.closed = closed && points.size() > 2;
        chain.solid = solid && chain.closed;
        chain.points.reserve(points.size());
        for (OdGePoint3d p : points) {
            if (!m_identity) p = m_matrix * p;
            if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
            chain.points.push_back({p.x, p.y});
        }
        m_out.chains.push_back(std::move(chain));
    }

    // Arc in an object coordinate system: centre (x, y) at elevation z, angles counter-clockwise.
    void addOcsArc(const OdGePoint3d& center, double radius, double start, double sweep,
                   const OdGeVector3d& normal, bool closed = false) {
        const int steps = stepsFor(sweep);
        std::vector<OdGePoint3d> points;
        points.reserve(steps + 1);
        for (int i = 0; i <= steps; ++i) {
            if (closed && i == steps) break;
            const double a = start + sweep * i / steps;
            points.push_back(ocsToWcs(
                OdGePoint3d(center.x + radius * std::cos(a), center.y + radius * std::sin(a), center.z),
                normal));
        }
        add(points, closed);
    }

    // Appends the points of a 2D run with bulges (an LWPOLYLINE, a 2D POLYLINE, a hatch loop) in OCS.
    void addBulgedRun(const std::vector<OdGePoint2d>& vertices, const std::vector<double>& bulges,
                      bool closed, double elevation, const OdGeVector3d& normal) {
        const std::size_t n = vertices.size();
        if (n == 0) return;
        std::vector<OdGePoint3d> points;
        const std::size_t segments = closed ? n : n - 1;
        points.push_back(ocsToWcs(OdGePoint3d(vertices[0], elevation), normal));
        for (std::size_t i = 0; i < segments; ++i) {
            const OdGePoint2d& from = vertices[i];
            const OdGePoint2d& to = vertices[(i + 1) % n];
            const double bulge = i < bulges.size() ? bulges[i] : 0.0;
            if (auto arc = bulge != 0.0 ? arcFromBulge(from, to, bulge) : std::nullopt) {
                const double sweep = arc->counterClockwise ? arc->sweep() : -arc->sweep();
                const int steps = stepsFor(sweep);
                for (int s = 1; s < steps; ++s) {
                    const OdGePoint2d p = arc->pointAtAngle(arc->startAngle + sweep * s / steps);
                    points.push_back(ocsToWcs(OdGePoint3d(p, elevation), normal));
                }
            }
            if (!(closed && i + 1 == segments))
                points.push_back(ocsToWcs(OdGePoint3d(to, elevation), normal));
        }
        add(points, closed);
    }

    void withMatrix(const OdGeMatrix3d& matrix, auto&& body) {
        const OdGeMatrix3d saved = m_matrix;
        const bool savedIdentity = m_identity;
        m_matrix = m_matrix * matrix;
        m_identity = false;
        body();
        m_matrix = saved;
        m_identity = savedIdentity;
    }

    int depth = 0;

private:
    PlanGeometry& m_out;
    OdGeMatrix3d m_matrix;
    bool m_identity = true;
};

void collect(const OdDbEntity& entity, Collector& out);

void collectBlock(const OdDbBlockTableRecord* block, Collector& out) {
    if (!block || out.depth >= kMaxBlockDepth) return;
    ++out.depth;
    for (const OdDbEntity* inner : block->entities())
        if (!inner->isErased()) collect(*inner, out);
    --out.depth;
}

void collectText(const OdDbText& text, Collector& out) {
    qvad::text::StyleFonts fonts = qvad::text::styleFonts(text.database(), text.textStyle());
    qvad::text::SingleLineText line;
    line.textString = std::string(text.textString());
    line.height = text.height();
    line.widthFactor = text.widthFactor();
    line.oblique = text.oblique();
    line.horizontalMode = text.horizontalMode();
    line.verticalMode = text.verticalMode();
    line.fontFile = fonts.fontFile;
    line.bigFontFile = fonts.bigFontFile;
    const bool byInsertion = text.isDefaultAlignment() || line.horizontalMode == OdDbText::kTextAlign ||
                             line.horizontalMode == OdDbText::kTextFit;
    if (line.horizontalMode == OdDbText::kTextAlign || line.horizontalMode == OdDbText::kTextFit)
        line.alignedLength = text.position().distanceTo(text.alignmentPoint());
    if (!std::isfinite(line.height) || line.height < 0.0 || !(line.widthFactor > 0.0)) return;
    const qvad::text::TextBox box = qvad::text::textBox(line);
    const OdGePoint3d base = byInsertion ? text.position() : text.alignmentPoint();
    const double c = std::cos(text.rotation()), s = std::sin(text.rotation());
    const OdGePoint2d corners[4] = {box.lowerLeft,
                                    {box.upperRight.x, box.lowerLeft.y},
                                    box.upperRight,
                                    {box.lowerLeft.x, box.upperRight.y}};
    std::vector<OdGePoint3d> points;
    for (const OdGePoint2d& k : corners)
        points.push_back(ocsToWcs(OdGePoint3d(base.x + k.x * c - k.y * s, base.y + k.x * s + k.y * c, base.z),
                                  text.normal()));
    out.add(points, true, true);
}

void collectInsert(const OdDbBlockReference& insert, Collector& out) {
    const OdDbBlockTableRecord* block = insert.blockTableRecord();
    int columns = 1, rows = 1;
    double columnSpacing = 0.0, rowSpacing = 0.0;
    if (const auto* array = dynamic_cast<const OdDbMInsertBlock*>(&insert)) {
        columns = std::clamp(array->columns(), 1, 1000);
        rows = std::clamp(array->rows(), 1, 1000);
        columnSpacing = array->columnSpacing();
        rowSpacing = array->rowSpacing();
    }
    const OdGeMatrix3d placement = insert.blockTransform();
    const OdGeMatrix3d toWorld = OdGeMatrix3d::planeToWorld(insert.normal());
    const OdGeMatrix3d rotation = OdGeMatrix3d::rotation(insert.rotation(), OdGeVector3d::kZAxis);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            // Array spacing runs along the reference's rotated axes and is not scaled.
            const OdGeVector3d offset =
                rotation * OdGeVector3d(column * columnSpacing, row * rowSpacing, 0.0);
            const OdGeMatrix3d shift = toWorld * OdGeMatrix3d::translation(offset) * toWorld.inverse();
            out.withMatrix(shift * placement, [&] { collectBlock(block, out); });
        }
    for (const OdDbEntity* sub : insert.subEntities())
        if (const auto* attribute = dynamic_cast<const OdDbAttribute*>(sub);
            attribute && !attribute->isErased())
            collectText(*attribute, out);
}

void collectHeavyPolyline(const OdDbHeavyPolyline& polyline, Collector& out) {
    const std::vector<OdDbVertex*> vertices = polyline.vertices();
    if (const auto* mesh = dynamic_cast<const OdDbPolygonMesh*>(&polyline)) {
        const int m = mesh->mSize(), n = mesh->nSize();
        if (m < 1 || n < 1 || static_cast<std::size_t>(m) * n > vertices.size()) return;
        for (int i = 0; i < m; ++i) {
            std::vector<OdGePoint3d> row;
            for (int j = 0; j < n; ++j) row.push_back(vertices[i * n + j]->position());
            out.add(row, mesh->isNClosed());
        }
        for (int j = 0; j < n; ++j) {
            std::vector<OdGePoint3d> column;
            for (int i = 0; i < m; ++i) column.push_back(vertices[i * n + j]->position());
            out.add(column, mesh->isMClosed());
        }
        return;
    }
    if (const auto* faces = dynamic_cast<const OdDbPolyFaceMesh*>(&polyline)) {
        const auto corners = faces->meshVertices();
        for (const OdDbFaceRecord* face : faces->faces()) {
            std::vector<OdGePoint3d> outline;
            for (int k = 0; k < 4; ++k) {
                const int index = std::abs(face->getVertexAt(k));
                if (index >= 1 && static_cast<std::size_t>(index) <= corners.size())
                    outline.push_back(corners[index - 1]->position());
            }
            out.add(outline, true);
        }
        return;
    }
    if (const auto* flat = dynamic_cast<const OdDb2dPolyline*>(&polyline)) {
        bool fitted = false;
        for (const OdDbVertex* v : vertices)
            if (const auto* v2 = dynamic_cast<const OdDb2dVertex*>(v);
                v2 && v2->vertexType() == OdDb2dVertex::kSplineFitVertex)
                fitted = true;
        std::vector<OdGePoint2d> points;
        std::vector<double> bulges;
        for (const OdDbVertex* v : vertices) {
            const auto* v2 = dynamic_cast<const OdDb2dVertex*>(v);
            if (!v2 || (fitted && v2->vertexType() == OdDb2dVertex::kSplineControlVertex)) continue;
            points.push_back(v2->position().convert2d());
            bulges.push_back(v2->bulge());
        }
        out.addBulgedRun(points, bulges, flat->isClosed(), flat->elevation(), flat->normal());
        return;
    }
    if (const auto* spatial = dynamic_cast<const OdDb3dPolyline*>(&polyline)) {
        std::vector<OdGePoint3d> points;
        for (const OdDbVertex* v : vertices)
            if (const auto* v3 = dynamic_cast<const OdDb3dPolylineVertex*>(v);
                v3 && !v3->isSplineControlVertex())
                points.push_back(v3->position());
        out.add(points, spatial->isClosed());
    }
}

void collectHatch(const OdDbHatch& hatch, Collector& out) {
    const OdGeVector3d normal = hatch.normal();
    const double z = hatch.elevation();
    for (const HatchLoop& loop : hatch.loops()) {
        if (loop.isPolyline()) {
            out.addBulgedRun(loop.vertices, loop.bulges, loop.closed, z, normal);
            continue;
        }
        for (const HatchEdge& edge : loop.edges) {
            switch (edge.type) {
            case HatchEdge::kLine:
                out.add({ocsToWcs(OdGePoint3d(edge.start, z), normal),
                         ocsToWcs(OdGePoint3d(edge.end, z), normal)},
                        false);
                break;
            case HatchEdge::kCircArc: {
                double sweep = edge.endAngle - edge.startAngle;
                if (sweep <= 0) sweep += 2 * std::numbers::pi;
                const double start = edge.counterClockwise ? edge.startAngle : -edge.startAngle;
                const double signedSweep = edge.counterClockwise ? sweep : -sweep;
                out.addOcsArc(OdGePoint3d(edge.center, z), edge.radius, start, signedSweep, normal);
                break;
            }
            case HatchEdge::kEllipArc: {
                double sweep = edge.endAngle - edge.startAngle;
                if (sweep <= 0) sweep += 2 * std::numbers::pi;
                const int steps = stepsFor(sweep);
                const OdGeVector2d major = edge.majorAxis;
                const OdGeVector2d minor(-major.y * edge.minorRatio, major.x * edge.minorRatio);
                std::vector<OdGePoint3d> points;
                for (int i = 0; i <= steps; ++i) {
                    double t = edge.startAngle + sweep * i / steps;
                    if (!edge.counterClockwise) t = -t;
                    const OdGePoint2d p(edge.center.x + major.x * std::cos(t) + minor.x * std::sin(t),
                                        edge.center.y + major.y * std::cos(t) + minor.y * std::sin(t));
                    points.push_back(ocsToWcs(OdGePoint3d(p, z), normal));
                }
                out.add(points, false);
                break;
            }
            case HatchEdge::kSpline: {
                const auto& source = edge.fitPoints.empty() ? edge.controlPoints : edge.fitPoints;
                std::vector<OdGePoint3d> points;
                for (const OdGePoint2d& p : source) points.push_back(ocsToWcs(OdGePoint3d(p, z), normal));
                out.add(points, false);
                break;
            }
            }
        }
    }
}

void collect(const OdDbEntity& entity, Collector& out) {
    const std::string_view type = entity.typeName();
    if (const auto* line = dynamic_cast<const OdDbLine*>(&entity)) {
        out.add({line->startPoint(), line->endPoint()}, false);
    } else if (const auto* arc = dynamic_cast<const OdDbArc*>(&entity)) {
        out.addOcsArc(arc->center(), arc->radius(), arc->startAngle(), arc->includedAngle(), arc->normal());
    } else if (const auto* circle = dynamic_cast<const OdDbCircle*>(&entity)) {
        out.addOcsArc(circle->center(), circle->radius(), 0.0, 2 * std::numbers::pi, circle->normal(), true);
    } else if (const auto* ellipse = dynamic_cast<const OdDbEllipse*>(&entity)) {
        double sweep = ellipse->endParam() - ellipse->startParam();
        if (sweep <= 0) sweep += 2 * std::numbers::pi;
        const int steps = stepsFor(sweep);
        std::vector<OdGePoint3d> points;
        for (int i = 0; i <= steps; ++i)
            points.push_back(ellipse->pointAtParam(ellipse->startParam() + sweep * i / steps));
        out.add(points, false);
    } else if (const auto* lw = dynamic_cast<const OdDbPolyline*>(&entity)) {
        std::vector<OdGePoint2d> points;
        std::vector<double> bulges;
        for (unsigned i = 0; i < lw->numVerts(); ++i) {
            points.push_back(lw->getPointAt(i));
            bulges.push_back(lw->getBulgeAt(i));
        }
        out.addBulgedRun(points, bulges, lw->isClosed(), lw->elevation(), lw->normal());
    } else if (const auto* heavy = dynamic_cast<const OdDbHeavyPolyline*>(&entity)) {
        collectHeavyPolyline(*heavy, out);
    } else if (const auto* spline = dynamic_cast<const OdDbSpline*>(&entity)) {
        std::vector<OdGePoint3d> points = spline->fitPoints();
        if (points.empty()) points = spline->controlPoints();
        out.add(points, spline->isClosed());
    } else if (const auto* point = dynamic_cast<const OdDbPoint*>(&entity)) {
        out.add({point->position()}, false);
    } else if (const auto* text = dynamic_cast<const OdDbText*>(&entity)) {
        collectText(*text, out);
    } else if (const auto* mtext = dynamic_cast<const OdDbMText*>(&entity)) {
        const auto box = qvad::text::mtextBoundingPoints(*mtext);
        out.add({box[0], box[1], box[3], box[2]}, true, true);
    } else if (const auto* insert = dynamic_cast<const OdDbBlockReference*>(&entity)) {
        collectInsert(*insert, out);
    } else if (const auto* dimension = dynamic_cast<const OdDbDimension*>(&entity)) {
        if (entity.database()) {
            // The dimension's picture is drawn in world coordinates, moved by its block's insertion point.
            const OdGePoint3d at = dimension->getPoint(12);
            out.withMatrix(OdGeMatrix3d::translation(at.asVector()),
                           [&] { collectBlock(entity.database()->findBlock(dimension->blockName()), out); });
        }
    } else if (const auto* leader = dynamic_cast<const OdDbLeader*>(&entity)) {
        std::vector<OdGePoint3d> points;
        for (int i = 0; i < leader->numVertices(); ++i) points.push_back(leader->vertexAt(i));
        out.add(points, false);
    } else if (const auto* hatch = dynamic_cast<const OdDbHatch*>(&entity)) {
        collectHatch(*hatch, out);
    } else if (const auto* quad = dynamic_cast<const OdDbQuadrilateral*>(&entity)) {
        out.add(
            {quad->getPointAtWcs(0), quad->getPointAtWcs(1), quad->getPointAtWcs(3), quad->getPointAtWcs(2)},
            true);
    } else if (const auto* face = dynamic_cast<const OdDbFace*>(&entity)) {
        out.add({face->getVertexAt(0), face->getVertexAt(1), face->getVertexAt(2), face->getVertexAt(3)},
                true);
    } else if (const auto* image = dynamic_cast<const OdDbRasterImage*>(&entity)) {
        out.add(image->boundaryWcs(), true);
    } else if (type == "VIEWPORT") {
        const OdGePoint3d c = entity.getPoint(10);
        const double w = entity.getDouble(40) / 2, h = entity.getDouble(41) / 2;
        out.add({{c.x - w, c.y - h, c.z},
                 {c.x + w, c.y - h, c.z},
                 {c.x + w, c.y + h, c.z},
                 {c.x - w, c.y + h, c.z}},
                true);
    } else if (type == "RAY" || type == "XLINE") {
        const OdGePoint3d base = entity.getPoint(10);
        const OdGeVector3d direction = entity.getPoint(11, OdGePoint3d(1, 0, 0)).asVector();
        const double length = direction.length();
        if (length == 0.0 || !std::isfinite(length)) return;
        const OdGeVector3d reach = direction * (kFarAway / length);
        out.add({type == "RAY" ? base : base - reach, base + reach}, false);
    }
}

} // namespace

bool PlanGeometry::extents(OdGePoint2d& min, OdGePoint2d& max) const {
    bool any = false;
    for (const PlanChain& chain : chains)
        for (const OdGePoint2d& p : chain.points) {
            if (!any) {
                min = max = p;
                any = true;
            }
            min.x = std::min(min.x, p.x);
            min.y = std::min(min.y, p.y);
            max.x = std::max(max.x, p.x);
            max.y = std::max(max.y, p.y);
        }
    return any;
}

PlanGeometry planGeometry(const OdDbEntity& entity) {
    PlanGeometry geometry;
    Collector collector(geometry);
    collect(entity, collector);
    return geometry;
}

PlanGeometry planGeometry(const OdDbEntity& entity, const OdGeMatrix3d& placement) {
    PlanGeometry geometry;
    Collector collector(geometry);
    collector.withMatrix(placement, [&] { collect(entity, collector); });
    return geometry;
}

} // namespace qvad::db
