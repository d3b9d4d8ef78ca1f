#include "tooldeck/commands/cleanup/overkill_records.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace qvtd::overkill {

bool propertiesMatch(const OverkillSettings& settings, const Properties& a, const Properties& b) {
    const double e = comparisonTolerance(settings);
    if (settings.compareColor &&
        (a.colorIndex != b.colorIndex || a.trueColor != b.trueColor || a.colorName != b.colorName))
        return false;
    if (settings.compareLayer && a.layer != b.layer) return false;
    if (settings.compareLinetype &&
        (a.linetype != b.linetype || !(std::abs(a.linetypeScale - b.linetypeScale) < e)))
        return false;
    if (settings.compareLineweight && a.lineWeight != b.lineWeight) return false;
    if (settings.comparePlotStyle && a.plotStyle != b.plotStyle) return false;
    return true;
}

long long radiusKey(double radius, double tolerance) {
    // A tolerance of 0 would divide by zero; the comparisons fall back to their smallest tolerance.
    const double step = tolerance > 0.0 ? tolerance : 1e-10;
    const double cells = (radius + step) / step;
    if (!(cells < 9.2e18)) return INT64_MAX;
    return static_cast<long long>(cells);
}

void addCircle(OverkillRun& run, const CircleRecord& circle) {
    run.circles.push_back(circle);
    auto& byLayer = run.circleIndex[radiusKey(circle.radius, run.settings.tolerance)];
    byLayer[circle.layerName].push_back({circle.center, circle.key, run.circles.size() - 1});
}

void appendEdits(OverkillEdits& into, OverkillEdits&& later) {
    into.erased.insert(into.erased.end(), later.erased.begin(), later.erased.end());
    into.changedLines.merge(later.changedLines);
    into.changedArcs.merge(later.changedArcs);
    into.changedPolylines.merge(later.changedPolylines);
    into.newCircles.insert(into.newCircles.end(), std::make_move_iterator(later.newCircles.begin()),
                           std::make_move_iterator(later.newCircles.end()));
    into.erasedTally += later.erasedTally;
    into.coveredArcsTally += later.coveredArcsTally;
}

void buildCircleIndex(OverkillRun& run) {
    run.circleIndex.clear();
    // Sorted first, so that every key and every layer list is entered once, at the end of its map:
    // a drawing full of circles of all sizes has nearly as many keys as circles.
    struct Filed {
        long long radiusKey;
        std::size_t record;
    };
    std::vector<Filed> order;
    order.reserve(run.circles.size());
    for (std::size_t k = 0; k < run.circles.size(); ++k)
        order.push_back({radiusKey(run.circles[k].radius, run.settings.tolerance), k});
    std::sort(order.begin(), order.end(), [&](const Filed& a, const Filed& b) {
        if (a.radiusKey != b.radiusKey) return a.radiusKey < b.radiusKey;
        if (int c = run.circles[a.record].layerName.compare(run.circles[b.record].layerName); c != 0)
            return c < 0;
        return a.record < b.record;
    });
    for (const Filed& filed : order) {
        auto byKey = run.circleIndex.end();
        if (byKey == run.circleIndex.begin() || std::prev(byKey)->first != filed.radiusKey)
            byKey = run.circleIndex.emplace_hint(byKey, filed.radiusKey,
                                                 std::map<std::string, std::vector<CircleEntry>>{});
        else
            --byKey;
        auto& byLayer = byKey->second;
        const CircleRecord& circle = run.circles[filed.record];
        auto list = byLayer.end();
        if (list == byLayer.begin() || std::prev(list)->first != circle.layerName)
            list = byLayer.emplace_hint(list, circle.layerName, std::vector<CircleEntry>{});
        else
            --list;
        list->second.push_back({circle.center, circle.key, filed.record});
    }
}

} // namespace qvtd::overkill
