#include "tooldeck/commands/cleanup/overkill_curve_passes.h"

#include "tooldeck/commands/cleanup/overkill_arcs.h"
#include "tooldeck/commands/cleanup/overkill_circles.h"
#include "tooldeck/commands/cleanup/overkill_lines.h"
#include "tooldeck/commands/cleanup/overkill_polylines.h"

#include <array>
#include <future>
#include <utility>

namespace qvtd::overkill {

void runCurvePasses(OverkillRun& run) {
    runLinePass(run);
    runArcPass(run);
    runCirclePass(run);
}

void runCurveAndPolylinePasses(OverkillRun& run) {
    // Splitting the polylines and comparing them with each other reads nothing the curve passes
    // write, and takes about as long as they do: so that part runs on a second thread, and only the
    // meeting with the lines and arcs left waits for the curve passes. The edits of each part are
    // joined in the fixed pass order, which makes the result that of running one pass after another.
    auto polylineStarts = std::async(std::launch::async, [&run] {
        std::array<PolylinePassStart, 3> starts;
        if (!run.settings.processPolylines) return starts;
        starts[0] = startPolylinePass(run.settings, std::move(run.lightweightPolylines));
        starts[1] = startPolylinePass(run.settings, std::move(run.twoDPolylines));
        starts[2] = startPolylinePass(run.settings, std::move(run.threeDPolylines));
        return starts;
    });
    OverkillRun curves;
    curves.settings = run.settings;
    curves.lines = std::move(run.lines);
    curves.arcs = std::move(run.arcs);
    curves.circles = std::move(run.circles);
    curves.circleIndex = std::move(run.circleIndex);
    curves.edits = std::move(run.edits);
    runCurvePasses(curves);
    std::array<PolylinePassStart, 3> starts = polylineStarts.get();

    run.lines = std::move(curves.lines);
    run.arcs = std::move(curves.arcs);
    run.circles = std::move(curves.circles);
    run.circleIndex = std::move(curves.circleIndex);
    run.edits = std::move(curves.edits);
    run.lightweightPolylines.clear();
    run.twoDPolylines.clear();
    run.threeDPolylines.clear();
    finishPolylinePass(run, std::move(starts[0]), run.lightweightPolylines, true, true);
    run.lines.clear();
    finishPolylinePass(run, std::move(starts[1]), run.twoDPolylines, false, true);
    run.arcs.clear();
    finishPolylinePass(run, std::move(starts[2]), run.threeDPolylines, false, false);
    run.lightweightPolylines.clear();
    run.twoDPolylines.clear();
    run.threeDPolylines.clear();
}

} // namespace qvtd::overkill
