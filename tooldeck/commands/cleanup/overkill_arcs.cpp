#include "tooldeck/commands/cleanup/overkill_arcs.h"

#include "qvad/ge/ocs.h"
#include "tooldeck/commands/cleanup/overkill_candidates.h"
#include "tooldeck/commands/cleanup/overkill_circle_lookup.h"
#include "tooldeck/commands/cleanup/overkill_erase_log.h"

#include <algorithm>
#include <cmath>

namespace qvtd::overkill {
namespace {

// Whole turns off while the rest stays at or above a full turn (or above it, when strict).
double withoutWholeTurns(double angle, bool strict) {
    const auto more = [strict](double value) {
        return strict ? value - kFullTurn > 0 : value - kFullTurn >= 0;
    };
    if (!more(angle)) return angle;
    // A huge angle would take forever one turn at a time.
    if (angle > 1e3 * kFullTurn) angle = std::fmod(angle, kFullTurn) + kFullTurn;
    while (more(angle)) angle -= kFullTurn;
    return angle;
}

double turnInto0To2Pi(double angle) {
    const double turned = std::fmod(angle, kFullTurn);
    return turned < 0 ? turned + kFullTurn : turned;
}

// Strictly inside the span from start to end (counter-clockwise), more than e from either end.
bool strictlyInside(double angle, double start, double end, double e) {
    const double span = turnInto0To2Pi(end - start);
    const double offset = turnInto0To2Pi(angle - start);
    return offset > e && offset < span - e;
}

// The arcs share more than an end: an end of one lies inside the other.
bool arcsOverlap(double sA, double eA, double sB, double eB, double e) {
    return strictlyInside(sB, sA, eA, e) || strictlyInside(eB, sA, eA, e) || strictlyInside(sA, sB, eB, e) ||
           strictlyInside(eA, sB, eB, e);
}

struct CircleEvent {
    std::size_t reference;
    ArcRecord arc;
};

// The reference of one group against its later members, again while its span keeps changing.
void scanGroup(const OverkillSettings& settings, std::vector<ArcRecord>& arcs, const CandidateGroup& group,
               std::vector<char>& erased, std::vector<char>& changed, EraseLog& log,
               std::vector<CircleEvent>& circles) {
    for (std::size_t position = 0; position < group.size(); ++position) {
        const std::size_t reference = group[position];
        ArcRecord& a = arcs[reference];
        bool changedInScan = true;
        while (changedInScan && !erased[reference]) {
            changedInScan = false;
            for (std::size_t later = position + 1; later < group.size() && !erased[reference]; ++later) {
                const std::size_t other = group[later];
                if (erased[other]) continue;
                const ArcComparison comparison = compareArcs(settings, a, arcs[other]);
                if (comparison.result == ArcResult::None) continue;
                if (comparison.result == ArcResult::Circle) {
                    circles.push_back({reference, a});
                    erased[reference] = 1;
                    erased[other] = 1;
                    log.add(reference, a.key);
                    log.add(reference, arcs[other].key);
                    continue;
                }
                erased[other] = 1;
                log.add(reference, arcs[other].key);
                if (comparison.startAngle != a.startAngle || comparison.endAngle != a.endAngle) {
                    a.startAngle = comparison.startAngle;
                    a.endAngle = comparison.endAngle;
                    changed[reference] = 1;
                    changedInScan = true;
                }
            }
        }
    }
}

double largestCoordinate(const OverkillRun& run) {
    double largest = 0.0;
    const auto take = [&largest](const OdGePoint3d& p) {
        largest = std::max({largest, std::abs(p.x), std::abs(p.y), std::abs(p.z)});
    };
    for (const ArcRecord& arc : run.arcs) take(arc.center);
    for (const CircleRecord& circle : run.circles) take(circle.center);
    return largest;
}

} // namespace

AngleSpan anglesInPlaneOf(const ArcRecord& reference, const ArcRecord& other) {
    const OdGeVector3d& n = reference.normal;
    const OdGeVector3d& m = other.normal;
    if (n.x == m.x && n.y == m.y && n.z == m.z) return {other.startAngle, other.endAngle};
    const OcsAxes own = ocsAxes(m);
    const OcsAxes target = ocsAxes(n);
    const auto carried = [&](double angle) {
        const OdGeVector3d direction = own.xAxis * std::cos(angle) + own.yAxis * std::sin(angle);
        return std::atan2(direction.dotProduct(target.yAxis), direction.dotProduct(target.xAxis));
    };
    if (own.zAxis.dotProduct(target.zAxis) >= 0.0) {
        // The same sense of turning: keep each angle's whole turns, so nearly equal normals give
        // nearly the stored angles.
        const auto near = [&](double angle) {
            return angle + std::remainder(carried(angle) - angle, kFullTurn);
        };
        return {near(other.startAngle), near(other.endAngle)};
    }
    return {turnInto0To2Pi(carried(other.endAngle)), turnInto0To2Pi(carried(other.startAngle))};
}

bool isSoundArc(const ArcRecord& arc) {
    const double values[] = {arc.center.x, arc.center.y, arc.center.z, arc.radius,   arc.startAngle,
                             arc.endAngle, arc.normal.x, arc.normal.y, arc.normal.z, arc.thickness};
    return std::all_of(std::begin(values), std::end(values), [](double v) { return std::isfinite(v); });
}

ArcComparison compareArcs(const OverkillSettings& settings, const ArcRecord& a, const ArcRecord& b) {
    const ArcComparison none;
    if (a.key == b.key || !isSoundArc(a) || !isSoundArc(b)) return none;
    if (!propertiesMatch(settings, a.props, b.props)) return none;
    const double e = comparisonTolerance(settings);
    const OdGeTol tol(e);
    if (!a.center.isEqualTo(b.center, tol) || !(std::abs(a.radius - b.radius) < e) ||
        !a.normal.isParallelTo(b.normal, tol) || !(std::abs(a.thickness - b.thickness) < e))
        return none;

    const AngleSpan spanB = anglesInPlaneOf(a, b);
    double sA = a.startAngle, eA = a.endAngle, sB = spanB.start, eB = spanB.end;
    const double nsA = withoutWholeTurns(sA, false), neA = withoutWholeTurns(eA, false);
    const double nsB = withoutWholeTurns(sB, false), neB = withoutWholeTurns(eB, false);

    const auto absorbed = [](double start, double end) {
        return ArcComparison{ArcResult::Absorbed, withoutWholeTurns(start, true),
                             withoutWholeTurns(end, true)};
    };
    if (std::abs(sA - sB) < e && std::abs(eA - eB) < e)
        return ArcComparison{ArcResult::Absorbed, a.startAngle, a.endAngle};
    if (std::abs(nsA - neB) < e && std::abs(neA - nsB) < e)
        return settings.combineEndToEnd ? ArcComparison{ArcResult::Circle} : none;
    const bool sharedEnd =
        std::abs(sA - sB) < e || std::abs(sA - eB) < e || std::abs(eA - sB) < e || std::abs(eA - eB) < e;
    if (sharedEnd && !settings.combineEndToEnd && !arcsOverlap(sA, eA, sB, eB, e)) return none;

    if (sA - eA > e) eA += kFullTurn;
    if (sB - eB > e) eB += kFullTurn;
    if (sA - sB > e) {
        sB += kFullTurn;
        eB += kFullTurn;
    }
    if (eA - sB > e && settings.combineOverlapping) {
        const double end = eB - eA > e ? eB : eA;
        if ((end - sA) - kFullTurn < e) return absorbed(sA, end);
        return ArcComparison{ArcResult::Circle};
    }
    if (sA + kFullTurn < eB && settings.combineOverlapping) {
        const double end = std::max(eB, eA + kFullTurn);
        if (end - sB < kFullTurn) return absorbed(sB, end);
        return ArcComparison{ArcResult::Circle};
    }
    return none;
}

CircleRecord circleFromArc(const ArcRecord& a) {
    CircleRecord circle;
    circle.center = a.center;
    circle.normal = a.normal;
    circle.radius = a.radius;
    circle.layerName = a.layerName;
    circle.props.layer = a.props.layer;
    circle.props.linetype = a.props.linetype;
    circle.props.colorIndex = a.props.colorIndex;
    circle.props.trueColor = a.props.trueColor;
    circle.props.colorName = a.props.colorName;
    circle.props.lineWeight = a.props.lineWeight;
    return circle;
}

void runArcPass(OverkillRun& run) {
    std::vector<ArcRecord>& arcs = run.arcs;
    const double e = comparisonTolerance(run.settings);
    std::vector<char> erased(arcs.size(), 0);
    std::vector<char> changed(arcs.size(), 0);
    EraseLog log;
    std::vector<CircleEvent> circleEvents;
    for (const CandidateGroup& group : arcCandidateGroups(run.settings, arcs))
        scanGroup(run.settings, arcs, group, erased, changed, log, circleEvents);
    log.commit(run.edits);

    // Whether a replacement circle is made depends on the circles made before it, so they are made in
    // the order a scan over the whole list meets them.
    std::stable_sort(circleEvents.begin(), circleEvents.end(),
                     [](const CircleEvent& a, const CircleEvent& b) { return a.reference < b.reference; });
    std::vector<long long> arcKeys;
    arcKeys.reserve(arcs.size());
    for (const ArcRecord& arc : arcs) arcKeys.push_back(radiusKey(arc.radius, run.settings.tolerance));
    std::sort(arcKeys.begin(), arcKeys.end());
    arcKeys.erase(std::unique(arcKeys.begin(), arcKeys.end()), arcKeys.end());
    CircleCentreLookup lookup(run.circleIndex, arcKeys, !run.settings.compareLayer,
                              std::max(e, run.settings.tolerance), largestCoordinate(run));
    for (const CircleEvent& event : circleEvents) {
        const long long key = radiusKey(event.arc.radius, run.settings.tolerance);
        if (lookup.hasCentre(key, event.arc.layerName, event.arc.center, e)) continue;
        const CircleRecord circle = circleFromArc(event.arc);
        run.edits.newCircles.push_back({circle, event.arc.key});
        addCircle(run, circle);
        lookup.add(key, circle.layerName, circle.center);
    }
    for (std::size_t k = 0; k < arcs.size(); ++k)
        if (changed[k] && !erased[k]) run.edits.changedArcs[arcs[k].key] = arcs[k];
    removeFlagged(arcs, erased);

    // Arcs a circle of the index already covers; no property test here.
    std::vector<char> covered(arcs.size(), 0);
    for (std::size_t k = 0; k < arcs.size(); ++k) {
        const ArcRecord& arc = arcs[k];
        if (!isSoundArc(arc)) continue;
        const long long key = radiusKey(arc.radius, run.settings.tolerance);
        const double tolerance = run.settings.tolerance;
        if (!lookup.hasCentre(key, arc.layerName, arc.center, tolerance) &&
            (run.settings.compareLayer || !lookup.hasCentreOnAnyLayer(key, arc.center, tolerance)))
            continue;
        covered[k] = 1;
        run.edits.erased.push_back(arc.key);
        run.edits.changedArcs.erase(arc.key);
        ++run.edits.coveredArcsTally;
    }
    removeFlagged(arcs, covered);
}

} // namespace qvtd::overkill
