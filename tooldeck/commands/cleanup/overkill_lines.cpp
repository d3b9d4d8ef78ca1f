#include "tooldeck/commands/cleanup/overkill_lines.h"

#include "tooldeck/commands/cleanup/overkill_candidates.h"
#include "tooldeck/commands/cleanup/overkill_erase_log.h"

#include <algorithm>
#include <cmath>

namespace qvtd::overkill {
namespace {

bool sameEnds(const LineRecord& a, const LineRecord& b, const OdGeTol& tol) {
    return (a.start.isEqualTo(b.start, tol) && a.end.isEqualTo(b.end, tol)) ||
           (a.start.isEqualTo(b.end, tol) && a.end.isEqualTo(b.start, tol));
}

// The reference of one group against its later members, again while it keeps growing.
void scanGroup(const OverkillSettings& settings, std::vector<LineRecord>& lines, const CandidateGroup& group,
               std::vector<char>& erased, std::vector<char>& grown, EraseLog& log) {
    for (std::size_t position = 0; position < group.size(); ++position) {
        const std::size_t reference = group[position];
        if (erased[reference]) continue;
        LineRecord& a = lines[reference];
        bool grewInScan = true;
        while (grewInScan) {
            grewInScan = false;
            for (std::size_t later = position + 1; later < group.size(); ++later) {
                const std::size_t other = group[later];
                if (erased[other]) continue;
                const LineComparison comparison = compareLines(settings, a, lines[other]);
                if (comparison.relation == LineRelation::None) continue;
                erased[other] = 1;
                log.add(reference, lines[other].key);
                if (comparison.grew) {
                    a.start = comparison.start;
                    a.end = comparison.end;
                    grown[reference] = 1;
                    grewInScan = true;
                }
            }
        }
    }
}

} // namespace

bool isSoundLine(const LineRecord& line) {
    const double values[] = {line.start.x, line.start.y,  line.start.z,  line.end.x,    line.end.y,
                             line.end.z,   line.normal.x, line.normal.y, line.normal.z, line.thickness};
    return std::all_of(std::begin(values), std::end(values), [](double v) { return std::isfinite(v); });
}

LineComparison compareLines(const OverkillSettings& settings, const LineRecord& a, const LineRecord& b) {
    LineComparison none;
    if (a.key == b.key || !isSoundLine(a) || !isSoundLine(b)) return none;
    if (!propertiesMatch(settings, a.props, b.props)) return none;
    const double e = comparisonTolerance(settings);
    const OdGeTol tol(e);
    if (!a.normal.isParallelTo(b.normal, tol) || !(std::abs(a.thickness - b.thickness) < e)) return none;
    if (sameEnds(a, b, tol)) return {LineRelation::Duplicate, false, a.start, a.end};
    if (!settings.combineOverlapping && !settings.combineEndToEnd) return none;

    const OdGeVector3d alongA = a.end - a.start;
    const OdGeVector3d alongB = b.end - b.start;
    if (!alongA.isParallelTo(alongB, tol)) return none;
    const double lengthA = alongA.length();
    const OdGeVector3d u = alongA / lengthA;
    const OdGeVector3d fromStart1 = b.start - a.start;
    const OdGeVector3d fromStart2 = b.end - a.start;
    const double t1 = fromStart1.dotProduct(u);
    const double t2 = fromStart2.dotProduct(u);
    if ((fromStart1 - u * t1).length() > e || (fromStart2 - u * t2).length() > e) return none;

    const double lo = std::min(t1, t2);
    const double hi = std::max(t1, t2);
    const double shared = std::min(lengthA, hi) - std::max(0.0, lo); // negative: the gap
    const bool oneWithinOther = (lo >= -e && hi <= lengthA + e) || (lo <= e && hi >= lengthA - e);
    const bool overlapping = shared > e || oneWithinOther;
    const bool touching = std::abs(shared) <= e;
    if (!(settings.combineOverlapping && overlapping) && !(settings.combineEndToEnd && touching)) return none;

    LineComparison merged{LineRelation::Merged, false, a.start, a.end};
    if (lo < 0.0) {
        merged.start = a.start + u * lo;
        merged.grew = true;
    }
    if (hi > lengthA) {
        merged.end = a.start + u * hi;
        merged.grew = true;
    }
    return merged;
}

void runLinePass(OverkillRun& run) {
    std::vector<LineRecord>& lines = run.lines;
    std::vector<char> erased(lines.size(), 0);
    std::vector<char> grown(lines.size(), 0);
    EraseLog log;
    for (const CandidateGroup& group : lineCandidateGroups(run.settings, lines))
        scanGroup(run.settings, lines, group, erased, grown, log);
    log.commit(run.edits);
    for (std::size_t k = 0; k < lines.size(); ++k)
        if (grown[k] && !erased[k]) run.edits.changedLines[lines[k].key] = lines[k];
    removeFlagged(lines, erased);
}

} // namespace qvtd::overkill
