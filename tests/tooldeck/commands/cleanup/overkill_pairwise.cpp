#include "overkill_pairwise.h"

#include "tooldeck/commands/cleanup/overkill_arcs.h"
#include "tooldeck/commands/cleanup/overkill_circles.h"
#include "tooldeck/commands/cleanup/overkill_lines.h"

namespace qvtd::overkill::testing {
namespace {

void erase(OverkillEdits& edits, ObjectKey key) {
    edits.erased.push_back(key);
    ++edits.erasedTally;
}

void pairwiseLines(OverkillRun& run) {
    auto& lines = run.lines;
    std::vector<bool> erased(lines.size(), false);
    std::vector<bool> grown(lines.size(), false);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (erased[i]) continue;
        bool grew = true;
        while (grew) {
            grew = false;
            for (std::size_t j = i + 1; j < lines.size(); ++j) {
                if (erased[j]) continue;
                const LineComparison c = compareLines(run.settings, lines[i], lines[j]);
                if (c.relation == LineRelation::None) continue;
                erased[j] = true;
                erase(run.edits, lines[j].key);
                if (c.grew) {
                    lines[i].start = c.start;
                    lines[i].end = c.end;
                    grown[i] = grew = true;
                }
            }
        }
    }
    std::vector<LineRecord> kept;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (erased[i]) continue;
        if (grown[i]) run.edits.changedLines[lines[i].key] = lines[i];
        kept.push_back(lines[i]);
    }
    lines = kept;
}

bool indexHasCentre(const OverkillRun& run, long long key, const std::string& layer,
                    const OdGePoint3d& centre, double tolerance) {
    const auto byKey = run.circleIndex.find(key);
    if (byKey == run.circleIndex.end()) return false;
    for (const auto& [layerName, entries] : byKey->second) {
        if (!layer.empty() && layerName != layer) continue;
        for (const CircleEntry& entry : entries)
            if (entry.center.isEqualTo(centre, OdGeTol(tolerance))) return true;
    }
    return false;
}

void pairwiseArcs(OverkillRun& run) {
    auto& arcs = run.arcs;
    const double e = comparisonTolerance(run.settings);
    std::vector<bool> erased(arcs.size(), false);
    std::vector<bool> changed(arcs.size(), false);
    for (std::size_t i = 0; i < arcs.size(); ++i) {
        bool again = true;
        while (again && !erased[i]) {
            again = false;
            for (std::size_t j = i + 1; j < arcs.size() && !erased[i]; ++j) {
                if (erased[j]) continue;
                const ArcComparison c = compareArcs(run.settings, arcs[i], arcs[j]);
                if (c.result == ArcResult::None) continue;
                erased[j] = true;
                if (c.result == ArcResult::Circle) {
                    erased[i] = true;
                    const long long key = radiusKey(arcs[i].radius, run.settings.tolerance);
                    if (!indexHasCentre(run, key, arcs[i].layerName, arcs[i].center, e)) {
                        const CircleRecord circle = circleFromArc(arcs[i]);
                        run.edits.newCircles.push_back({circle, arcs[i].key});
                        addCircle(run, circle);
                    }
                    erase(run.edits, arcs[i].key);
                    erase(run.edits, arcs[j].key);
                    continue;
                }
                erase(run.edits, arcs[j].key);
                if (c.startAngle != arcs[i].startAngle || c.endAngle != arcs[i].endAngle) {
                    arcs[i].startAngle = c.startAngle;
                    arcs[i].endAngle = c.endAngle;
                    changed[i] = again = true;
                }
            }
        }
    }
    std::vector<ArcRecord> kept;
    for (std::size_t i = 0; i < arcs.size(); ++i) {
        if (erased[i]) continue;
        const long long key = radiusKey(arcs[i].radius, run.settings.tolerance);
        const double raw = run.settings.tolerance;
        if (isSoundArc(arcs[i]) &&
            (indexHasCentre(run, key, arcs[i].layerName, arcs[i].center, raw) ||
             (!run.settings.compareLayer && indexHasCentre(run, key, "", arcs[i].center, raw)))) {
            run.edits.erased.push_back(arcs[i].key);
            ++run.edits.coveredArcsTally;
            continue;
        }
        if (changed[i]) run.edits.changedArcs[arcs[i].key] = arcs[i];
        kept.push_back(arcs[i]);
    }
    arcs = kept;
}

void pairwiseCircles(OverkillRun& run) {
    std::vector<bool> erased(run.circles.size(), false);
    for (auto& [key, byLayer] : run.circleIndex)
        for (auto& [layer, entries] : byLayer)
            for (std::size_t i = 0; i < entries.size(); ++i) {
                if (erased[entries[i].record]) continue;
                for (std::size_t j = i + 1; j < entries.size(); ++j) {
                    const CircleRecord& b = run.circles[entries[j].record];
                    if (erased[entries[j].record] || b.key == 0) continue;
                    if (!circlesDuplicate(run.settings, run.circles[entries[i].record], b)) continue;
                    erased[entries[j].record] = true;
                    erase(run.edits, b.key);
                }
            }
    // Rebuild the list of circles and the index from what is left.
    std::vector<CircleRecord> circles = run.circles;
    CircleIndex index = run.circleIndex;
    run.circles.clear();
    run.circleIndex.clear();
    std::vector<std::size_t> newNumber(circles.size());
    for (std::size_t i = 0; i < circles.size(); ++i)
        if (!erased[i]) {
            newNumber[i] = run.circles.size();
            run.circles.push_back(circles[i]);
        }
    for (auto& [key, byLayer] : index)
        for (auto& [layer, entries] : byLayer)
            for (CircleEntry entry : entries)
                if (!erased[entry.record]) {
                    entry.record = newNumber[entry.record];
                    run.circleIndex[key][layer].push_back(entry);
                }
}

} // namespace

void pairwiseCurvePasses(OverkillRun& run) {
    pairwiseLines(run);
    pairwiseArcs(run);
    pairwiseCircles(run);
}

} // namespace qvtd::overkill::testing
