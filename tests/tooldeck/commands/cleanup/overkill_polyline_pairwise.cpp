#include "overkill_polyline_pairwise.h"

#include "tooldeck/commands/cleanup/overkill_polylines.h"

namespace qvtd::overkill::testing {
namespace {

void eraseKey(ObjectKey key, OverkillEdits& edits) {
    edits.erased.push_back(key);
    edits.erasedTally += 1;
}

template <typename Record, typename LiesOn>
void eraseLying(const std::vector<PassPolyline>& polylines, std::vector<Record>& records,
                OverkillEdits& edits, LiesOn liesOn) {
    for (const PassPolyline& polyline : polylines) {
        if (polyline.erased) continue;
        std::vector<Record> kept;
        for (const Record& record : records) {
            bool lies = false;
            for (const PolylineSegment& segment : polyline.segments)
                lies = lies || liesOn(polyline, record, segment);
            if (lies)
                eraseKey(record.key, edits);
            else
                kept.push_back(record);
        }
        records = std::move(kept);
    }
}

void runPass(OverkillRun& run, std::vector<PolylineRecord>& list, bool meetsLines, bool meetsArcs) {
    const double e = comparisonTolerance(run.settings);
    std::vector<PassPolyline> polylines = preparePolylines(std::move(list), run.edits, e);
    for (std::size_t i = 0; i < polylines.size(); ++i) {
        if (polylines[i].erased) continue;
        for (std::size_t j = i + 1; j < polylines.size(); ++j) {
            if (polylines[j].erased) continue;
            applyVerdict(comparePolylines(run.settings, polylines[i], polylines[j]), polylines[j], run.edits,
                         e);
        }
    }
    const OverkillSettings& settings = run.settings;
    if (meetsLines)
        eraseLying(polylines, run.lines, run.edits,
                   [&](const auto& polyline, const auto& line, const auto& segment) {
                       return lineOnPolyline(settings, polyline, line, segment);
                   });
    if (meetsArcs)
        eraseLying(polylines, run.arcs, run.edits,
                   [&](const auto& polyline, const auto& arc, const auto& segment) {
                       return arcOnPolyline(settings, polyline, arc, segment);
                   });
    list = survivingPolylines(std::move(polylines));
}

} // namespace

void runPolylinePassesPairwise(OverkillRun& run) {
    runPass(run, run.lightweightPolylines, true, true);
    run.lines.clear();
    runPass(run, run.twoDPolylines, false, true);
    run.arcs.clear();
    runPass(run, run.threeDPolylines, false, false);
    run.lightweightPolylines.clear();
    run.twoDPolylines.clear();
    run.threeDPolylines.clear();
}

} // namespace qvtd::overkill::testing
