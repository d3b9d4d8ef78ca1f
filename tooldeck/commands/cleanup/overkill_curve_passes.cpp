#include "tooldeck/commands/cleanup/overkill_curve_passes.h"

#include "tooldeck/commands/cleanup/overkill_arcs.h"
#include "tooldeck/commands/cleanup/overkill_circles.h"
#include "tooldeck/commands/cleanup/overkill_lines.h"

namespace qvtd::overkill {

void runCurvePasses(OverkillRun& run) {
    runLinePass(run);
    runArcPass(run);
    runCirclePass(run);
}

} // namespace qvtd::overkill
