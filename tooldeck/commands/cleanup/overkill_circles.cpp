#include "tooldeck/commands/cleanup/overkill_circles.h"

#include "tooldeck/commands/cleanup/overkill_candidates.h"
#include "tooldeck/commands/cleanup/overkill_erase_log.h"

#include <algorithm>
#include <cmath>

namespace qvtd::overkill {

bool isSoundCircle(const OdGePoint3d& center, double radius) {
    return std::isfinite(center.x) && std::isfinite(center.y) && std::isfinite(center.z) &&
           std::isfinite(radius);
}

bool circlesDuplicate(const OverkillSettings& settings, const CircleRecord& a, const CircleRecord& b) {
    if (a.key == b.key || !isSoundCircle(a.center, a.radius) || !isSoundCircle(b.center, b.radius))
        return false;
    if (!propertiesMatch(settings, a.props, b.props)) return false;
    const double e = comparisonTolerance(settings);
    return a.center.isEqualTo(b.center, OdGeTol(e)) && std::abs(a.radius - b.radius) < e;
}

void removeCircles(OverkillRun& run, const std::vector<char>& erased) {
    if (std::find(erased.begin(), erased.end(), 1) == erased.end()) return;
    std::vector<std::size_t> renumbered(run.circles.size(), 0);
    std::size_t kept = 0;
    for (std::size_t k = 0; k < run.circles.size(); ++k)
        if (!erased[k]) renumbered[k] = kept++;
    for (auto& [key, byLayer] : run.circleIndex)
        for (auto& [layer, entries] : byLayer) {
            std::erase_if(entries, [&](const CircleEntry& entry) { return erased[entry.record] != 0; });
            for (CircleEntry& entry : entries) entry.record = renumbered[entry.record];
        }
    removeFlagged(run.circles, erased);
}

void runCirclePass(OverkillRun& run) {
    std::vector<char> erased(run.circles.size(), 0);
    for (auto& [key, byLayer] : run.circleIndex)
        for (auto& [layer, entries] : byLayer) {
            if (entries.size() < 2) continue;
            EraseLog log;
            for (const CandidateGroup& group : circleCandidateGroups(run.settings, run.circles, entries))
                for (std::size_t position = 0; position < group.size(); ++position) {
                    const std::size_t reference = entries[group[position]].record;
                    if (erased[reference]) continue;
                    for (std::size_t later = position + 1; later < group.size(); ++later) {
                        const std::size_t other = entries[group[later]].record;
                        // A circle made by the arc pass has no object yet, and never has an equal
                        // circle before it in its list.
                        if (erased[other] || run.circles[other].key == 0) continue;
                        if (!circlesDuplicate(run.settings, run.circles[reference], run.circles[other]))
                            continue;
                        erased[other] = 1;
                        log.add(group[position], run.circles[other].key);
                    }
                }
            log.commit(run.edits);
        }
    removeCircles(run, erased);
}

} // namespace qvtd::overkill
