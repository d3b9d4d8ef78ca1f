#include "tooldeck/commands/cleanup/overkill_records.h"

#include <cmath>

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

} // namespace qvtd::overkill
