// Rules of the polyline passes (e is the comparison tolerance):
//
// 1. Each polyline is split into segments: straight ones, and arcs from bulges in the plane of its
//    normal (3D polylines are straight only). A vertex equal to the one before it (within e), or a last
//    vertex equal to the first of a closed polyline, makes a zero-length segment: the vertex is dropped
//    (the kept one takes over its outgoing bulge and widths) and the polyline rebuilt without it. A
//    polyline left without any segment is erased. This happens for the whole list before any pair.
// 2. Polyline against polyline, in list order, the earlier one as reference: the pair is compared only
//    when the property test passes, the normals are parallel and thickness and constant width agree
//    within e. A later polyline that is the same polyline is erased: same closed flag, the same vertices
//    in the same order or reversed (bulges then reversed and negated, start and end widths swapped), a
//    closed one from any start vertex, bulges and widths within e. A later polyline without widths of
//    its own whose every segment lies on a segment of the reference is erased as well (a straight one
//    on a straight one, within e of its carrier and extent; an arc on an arc of equal centre and radius
//    whose span holds it). With combine overlapping on, an open polyline of which only leading and
//    trailing segments lie on the reference is rebuilt without them; covered segments in its middle
//    stay, as taking them out would split the polyline in two, and closed polylines are never trimmed.
//    The new last vertex gets bulge 0. A trimmed polyline meets later references in its new shape.
//    Polylines with widths of their own are only erased as the same polyline, since a thin reference
//    does not draw what their widths draw.
// 3. After all pairs, for each surviving polyline in list order: lightweight polylines erase every remaining
// line
//    of the line list that lies wholly on one straight segment (property test, parallel normals, equal
//    thickness); lightweight and 2D polylines erase every arc of the arc list that lies wholly on one arc
//    segment (equal centre and radius, parallel normals, equal thickness, span inside). What only
//    partly overlaps stays.
// 4. Every erase adds 1 to the erased tally. After the lightweight pass the line list is emptied, after
//    the 2D pass the arc list, after the 3D pass the polyline lists.
//
// Nothing is compared with everything: segment start points, arc centres and vertices are filed in
// grids, and a polyline only meets what lies within 2e of one of its own segments, centres or
// vertices. Each rule above needs such a point (a covered segment starts near the covering one, an
// equal arc has a near centre, the same polyline has its first vertex on a vertex of the other), and
// trimming only removes segments and vertices, so what was filed stays a superset of what is there.

#include "tooldeck/commands/cleanup/overkill_polylines.h"

#include "tooldeck/commands/cleanup/overkill_point_grid.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>

namespace qvtd::overkill {
namespace {

bool equalWithin(double a, double b, double e) {
    return std::abs(a - b) < e;
}

bool hasOwnWidths(const PolylineRecord& polyline, double e) {
    return std::any_of(polyline.vertices.begin(), polyline.vertices.end(), [e](const PolylineVertex& v) {
        return !equalWithin(v.startWidth, 0.0, e) || !equalWithin(v.endWidth, 0.0, e);
    });
}

// other's vertex i against reference vertex vertexAt(i), other's segment i against reference segment
// segmentAt(i), which runs the other way when reversed.
bool matchesVertexForVertex(const PolylineRecord& reference, const PolylineRecord& other, double e,
                            bool reversed, const std::function<std::size_t(std::size_t)>& vertexAt,
                            const std::function<std::size_t(std::size_t)>& segmentAt) {
    const OdGeTol tol(e);
    const std::size_t count = other.vertices.size();
    const std::size_t segmentCount = other.closed ? count : count - 1;
    for (std::size_t i = 0; i < count; ++i)
        if (!other.vertices[i].point.isEqualTo(reference.vertices[vertexAt(i)].point, tol)) return false;
    for (std::size_t i = 0; i < segmentCount; ++i) {
        const PolylineVertex& mine = other.vertices[i];
        const PolylineVertex& theirs = reference.vertices[segmentAt(i)];
        const double bulge = reversed ? -theirs.bulge : theirs.bulge;
        const double startWidth = reversed ? theirs.endWidth : theirs.startWidth;
        const double endWidth = reversed ? theirs.startWidth : theirs.endWidth;
        if (!equalWithin(mine.bulge, bulge, e) || !equalWithin(mine.startWidth, startWidth, e) ||
            !equalWithin(mine.endWidth, endWidth, e))
            return false;
    }
    return true;
}

bool isSamePolyline(const PolylineRecord& reference, const PolylineRecord& other, double e) {
    const std::size_t n = other.vertices.size();
    if (reference.closed != other.closed || reference.vertices.size() != n || n < 2) return false;
    if (!other.closed) {
        const auto same = [](std::size_t i) { return i; };
        if (matchesVertexForVertex(reference, other, e, false, same, same)) return true;
        return matchesVertexForVertex(
            reference, other, e, true, [n](std::size_t i) { return n - 1 - i; },
            [n](std::size_t i) { return n - 2 - i; });
    }
    const OdGeTol tol(e);
    for (std::size_t k = 0; k < n; ++k) {
        if (!reference.vertices[k].point.isEqualTo(other.vertices[0].point, tol)) continue;
        const auto forward = [k, n](std::size_t i) { return (k + i) % n; };
        if (matchesVertexForVertex(reference, other, e, false, forward, forward)) return true;
        if (matchesVertexForVertex(
                reference, other, e, true, [k, n](std::size_t i) { return (k + n - i % n) % n; },
                [k, n](std::size_t i) { return (k + 2 * n - 1 - i % n) % n; }))
            return true;
    }
    return false;
}

bool coveredByAny(const std::vector<PolylineSegment>& reference, const PolylineSegment& segment, double e) {
    return std::any_of(reference.begin(), reference.end(),
                       [&](const PolylineSegment& mine) { return segmentCovers(mine, segment, e); });
}

void erase(ObjectKey key, OverkillEdits& edits) {
    edits.erased.push_back(key);
    edits.erasedTally += 1;
    edits.changedPolylines.erase(key);
}

double medianSegmentLength(const std::vector<PassPolyline>& polylines, const std::vector<LineRecord>& lines) {
    // Squared lengths have the same median and spare a root per segment; ones that are not numbers
    // would leave the order undefined.
    std::vector<double> squares;
    const auto note = [&squares](const OdGePoint3d& a, const OdGePoint3d& b) {
        const double square = (b - a).lengthSqrd();
        if (std::isfinite(square)) squares.push_back(square);
    };
    for (const PassPolyline& polyline : polylines)
        for (const PolylineSegment& segment : polyline.segments) note(segment.start, segment.end);
    for (const LineRecord& line : lines) note(line.start, line.end);
    if (squares.empty()) return 0.0;
    const auto middle = squares.begin() + static_cast<std::ptrdiff_t>(squares.size() / 2);
    std::nth_element(squares.begin(), middle, squares.end());
    return std::sqrt(*middle);
}

// Grids searched along segments want cubes a few typical segments long, so that a search visits few
// cubes; grids searched only near points (within 2e) want cubes that hold few points each.
struct CellSizes {
    double segmentSearch;
    double pointSearch;
};

void sortUnique(std::vector<std::uint32_t>& values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

void comparePolylinesOfPass(const OverkillSettings& settings, std::vector<PassPolyline>& polylines,
                            OverkillEdits& edits, const CellSizes& cells, double e) {
    PointGrid straightStarts(cells.segmentSearch);
    PointGrid arcCentres(cells.pointSearch);
    PointGrid vertices(cells.pointSearch);
    for (std::uint32_t index = 0; index < polylines.size(); ++index) {
        const PassPolyline& polyline = polylines[index];
        if (polyline.erased) continue;
        for (const PolylineSegment& segment : polyline.segments) {
            if (segment.isArc)
                arcCentres.add(segment.center, index);
            else
                straightStarts.add(segment.start, index);
        }
        for (const PolylineVertex& vertex : polyline.record.vertices) vertices.add(vertex.point, index);
    }

    const double reach = 2.0 * e;
    std::vector<std::uint32_t> found;
    for (std::uint32_t index = 0; index < polylines.size(); ++index) {
        if (polylines[index].erased) continue;
        found.clear();
        for (const PolylineSegment& segment : polylines[index].segments) {
            if (segment.isArc)
                arcCentres.findNearPoint(segment.center, reach, found);
            else
                straightStarts.findNearSegment(segment.start, segment.end, reach, found);
        }
        for (const PolylineVertex& vertex : polylines[index].record.vertices)
            vertices.findNearPoint(vertex.point, reach, found);
        // Earlier polylines were the reference already; dropping them first keeps the sort short.
        std::erase_if(found, [index](std::uint32_t other) { return other <= index; });
        sortUnique(found);
        for (const std::uint32_t later : found) {
            if (polylines[later].erased) continue;
            const PolylineVerdict verdict = comparePolylines(settings, polylines[index], polylines[later]);
            applyVerdict(verdict, polylines[later], edits, e);
        }
    }
}

// Records (lines or arcs) lying on segments of the surviving polylines; erased ones leave their list.
// near(segment, found) gathers the candidates a segment can hold; lies(polyline, record, segment)
// decides.
template <class Record, class Near, class Lies>
void eraseRecordsOnPolylines(const std::vector<PassPolyline>& polylines, std::vector<Record>& records,
                             OverkillEdits& edits, bool arcSegments, Near&& near, Lies&& lies) {
    std::vector<bool> erased(records.size(), false);
    std::vector<std::uint32_t> found;
    std::vector<std::uint32_t> lying;
    for (const PassPolyline& polyline : polylines) {
        if (polyline.erased) continue;
        lying.clear();
        for (const PolylineSegment& segment : polyline.segments) {
            if (segment.isArc != arcSegments) continue;
            found.clear();
            near(segment, found);
            for (const std::uint32_t index : found)
                if (!erased[index] && lies(polyline, records[index], segment)) lying.push_back(index);
        }
        sortUnique(lying);
        for (const std::uint32_t index : lying) {
            erased[index] = true;
            erase(records[index].key, edits);
        }
    }
    std::size_t kept = 0;
    for (std::size_t index = 0; index < records.size(); ++index)
        if (!erased[index]) records[kept++] = std::move(records[index]);
    records.resize(kept);
}

void eraseLinesOnPolylines(const OverkillSettings& settings, const std::vector<PassPolyline>& polylines,
                           std::vector<LineRecord>& lines, OverkillEdits& edits, const CellSizes& cells,
                           double e) {
    PointGrid starts(cells.segmentSearch);
    starts.reserve(lines.size());
    for (std::uint32_t index = 0; index < lines.size(); ++index) starts.add(lines[index].start, index);
    eraseRecordsOnPolylines(
        polylines, lines, edits, false,
        [&](const PolylineSegment& segment, std::vector<std::uint32_t>& found) {
            starts.findNearSegment(segment.start, segment.end, 2.0 * e, found);
        },
        [&](const PassPolyline& polyline, const LineRecord& line, const PolylineSegment& segment) {
            return lineOnPolyline(settings, polyline, line, segment);
        });
}

void eraseArcsOnPolylines(const OverkillSettings& settings, const std::vector<PassPolyline>& polylines,
                          std::vector<ArcRecord>& arcs, OverkillEdits& edits, const CellSizes& cells,
                          double e) {
    PointGrid centres(cells.pointSearch);
    centres.reserve(arcs.size());
    for (std::uint32_t index = 0; index < arcs.size(); ++index) centres.add(arcs[index].center, index);
    eraseRecordsOnPolylines(
        polylines, arcs, edits, true,
        [&](const PolylineSegment& segment, std::vector<std::uint32_t>& found) {
            centres.findNearPoint(segment.center, 2.0 * e, found);
        },
        [&](const PassPolyline& polyline, const ArcRecord& arc, const PolylineSegment& segment) {
            return arcOnPolyline(settings, polyline, arc, segment);
        });
}

// Four typical segments for the segment searches and one for the point searches measured best on
// large drawings; cubes must not be smaller than the search reach. Only the speed depends on them.
CellSizes cellSizesFor(const std::vector<PassPolyline>& polylines, const std::vector<LineRecord>& lines,
                       double e) {
    const double typical = medianSegmentLength(polylines, lines);
    return {std::max(4.0 * e, 4.0 * typical), std::max(4.0 * e, typical)};
}

PolylinePassStart startPass(const OverkillSettings& settings, std::vector<PolylineRecord> list) {
    PolylinePassStart start;
    if (list.empty()) return start;
    const double e = comparisonTolerance(settings);
    start.polylines = preparePolylines(std::move(list), start.edits, e);
    comparePolylinesOfPass(settings, start.polylines, start.edits, cellSizesFor(start.polylines, {}, e), e);
    return start;
}

// Leaves the survivors of the pass in list.
void finishPass(OverkillRun& run, PolylinePassStart&& start, std::vector<PolylineRecord>& list,
                bool meetsLines, bool meetsArcs) {
    appendEdits(run.edits, std::move(start.edits));
    std::vector<PassPolyline>& polylines = start.polylines;
    if (polylines.empty()) {
        list.clear();
        return;
    }
    const double e = comparisonTolerance(run.settings);
    static const std::vector<LineRecord> noLines;
    const CellSizes cells = cellSizesFor(polylines, meetsLines ? run.lines : noLines, e);
    if (meetsLines) eraseLinesOnPolylines(run.settings, polylines, run.lines, run.edits, cells, e);
    if (meetsArcs) eraseArcsOnPolylines(run.settings, polylines, run.arcs, run.edits, cells, e);
    list = survivingPolylines(std::move(polylines));
}

} // namespace

PolylinePassStarts startPolylinePasses(OverkillRun& run) {
    return {startPass(run.settings, std::move(run.lightweightPolylines)),
            startPass(run.settings, std::move(run.twoDPolylines)),
            startPass(run.settings, std::move(run.threeDPolylines))};
}

void finishPolylinePasses(OverkillRun& run, PolylinePassStarts&& starts) {
    finishPass(run, std::move(starts[0]), run.lightweightPolylines, true, true);
    run.lines.clear();
    finishPass(run, std::move(starts[1]), run.twoDPolylines, false, true);
    run.arcs.clear();
    finishPass(run, std::move(starts[2]), run.threeDPolylines, false, false);
    run.lightweightPolylines.clear();
    run.twoDPolylines.clear();
    run.threeDPolylines.clear();
}

void runPolylinePasses(OverkillRun& run) {
    // The first steps read nothing the second steps of earlier passes write.
    finishPolylinePasses(run, startPolylinePasses(run));
}

std::vector<PassPolyline> preparePolylines(std::vector<PolylineRecord> list, OverkillEdits& edits, double e) {
    std::vector<PassPolyline> polylines;
    polylines.reserve(list.size());
    for (PolylineRecord& record : list) {
        SplitPolyline split = splitPolyline(record, e);
        PassPolyline polyline{std::move(record), std::move(split.segments), false};
        if (polyline.segments.empty()) {
            polyline.erased = true;
            erase(polyline.record.key, edits);
        } else if (split.verticesRemoved) {
            polyline.record.vertices = std::move(split.vertices);
            edits.changedPolylines[polyline.record.key] = polyline.record;
        }
        polylines.push_back(std::move(polyline));
    }
    return polylines;
}

PolylineVerdict comparePolylines(const OverkillSettings& settings, const PassPolyline& reference,
                                 const PassPolyline& other) {
    const double e = comparisonTolerance(settings);
    const PolylineRecord& mine = reference.record;
    const PolylineRecord& theirs = other.record;
    // An object picked twice is still one object.
    if (mine.key == theirs.key) return {};
    if (!propertiesMatch(settings, mine.props, theirs.props)) return {};
    if (!mine.normal.isParallelTo(theirs.normal, OdGeTol(e))) return {};
    if (!equalWithin(mine.thickness, theirs.thickness, e) ||
        !equalWithin(mine.constantWidth, theirs.constantWidth, e))
        return {};
    if (isSamePolyline(mine, theirs, e)) return {PolylineVerdict::Erase};
    if (hasOwnWidths(theirs, e)) return {};

    const std::size_t count = other.segments.size();
    std::size_t leading = 0;
    while (leading < count && coveredByAny(reference.segments, other.segments[leading], e)) ++leading;
    if (leading == count) return {PolylineVerdict::Erase};
    if (!settings.combineOverlapping || theirs.closed) return {};
    std::size_t trailing = 0;
    while (trailing < count - leading &&
           coveredByAny(reference.segments, other.segments[count - 1 - trailing], e))
        ++trailing;
    if (leading + trailing == 0) return {};
    return {PolylineVerdict::Trim, leading, trailing};
}

void applyVerdict(const PolylineVerdict& verdict, PassPolyline& other, OverkillEdits& edits, double e) {
    if (verdict.action == PolylineVerdict::Keep) return;
    if (verdict.action == PolylineVerdict::Erase) {
        other.erased = true;
        erase(other.record.key, edits);
        return;
    }
    // Segment i runs from vertex i to vertex i + 1 of an open polyline.
    std::vector<PolylineVertex>& vertices = other.record.vertices;
    const std::size_t keptEnd = vertices.size() - verdict.trailingCovered;
    vertices =
        std::vector<PolylineVertex>(vertices.begin() + static_cast<std::ptrdiff_t>(verdict.leadingCovered),
                                    vertices.begin() + static_cast<std::ptrdiff_t>(keptEnd));
    vertices.back().bulge = 0.0;
    other.segments = polylineSegments(other.record, e);
    edits.changedPolylines[other.record.key] = other.record;
}

bool lineOnPolyline(const OverkillSettings& settings, const PassPolyline& polyline, const LineRecord& line,
                    const PolylineSegment& segment) {
    const double e = comparisonTolerance(settings);
    if (segment.isArc || !propertiesMatch(settings, polyline.record.props, line.props)) return false;
    if (!polyline.record.normal.isParallelTo(line.normal, OdGeTol(e))) return false;
    if (!equalWithin(polyline.record.thickness, line.thickness, e)) return false;
    return pointsOnStraightSegment(segment, line.start, line.end, e);
}

bool arcOnPolyline(const OverkillSettings& settings, const PassPolyline& polyline, const ArcRecord& arc,
                   const PolylineSegment& segment) {
    const double e = comparisonTolerance(settings);
    if (!segment.isArc || !propertiesMatch(settings, polyline.record.props, arc.props)) return false;
    if (!polyline.record.normal.isParallelTo(arc.normal, OdGeTol(e))) return false;
    if (!equalWithin(polyline.record.thickness, arc.thickness, e)) return false;
    ArcPoints points;
    if (!arcPoints(arc, points)) return false;
    return arcOnArcSegment(segment, arc.center, arc.radius, points.start, points.middle, points.end, e);
}

std::vector<PolylineRecord> survivingPolylines(std::vector<PassPolyline>&& polylines) {
    std::vector<PolylineRecord> survivors;
    for (PassPolyline& polyline : polylines)
        if (!polyline.erased) survivors.push_back(std::move(polyline.record));
    return survivors;
}

} // namespace qvtd::overkill
