#include "tooldeck/commands/cleanup/overkill_curve_passes.h"

#include "tooldeck/commands/cleanup/overkill_arcs.h"
#include "tooldeck/commands/cleanup/overkill_circles.h"
#include "tooldeck/commands/cleanup/overkill_lines.h"
#include "tooldeck/commands/cleanup/overkill_polylines.h"

#include <future>

namespace qvtd::overkill {

void runCurvePasses(OverkillRun& run) {
    runLinePass(run);
    runArcPass(run);
    runCirclePass(run);
}

void runCurveAndPolylinePasses(OverkillRun& run) {
    // Splitting the polylines and comparing them with each other reads nothing the curve passes
    // write, and takes about as long as they do, so it runs on a second thread beside them (touching
    // only the settings and the polyline lists); only the meeting with the lines and arcs left waits.
    auto starts = std::async(std::launch::async, [&run] { return startPolylinePasses(run); });
    runCurvePasses(run);
    finishPolylinePasses(run, starts.get());
}

} // namespace qvtd::overkill
