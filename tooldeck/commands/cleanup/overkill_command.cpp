// Overkill: erases duplicated geometry among the picked objects and combines collinear lines and
// concentric arcs that overlap, after the options dialog.

#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbDatabase.h"
#include "tooldeck/commands/cleanup/COverKillDlg.h"
#include "tooldeck/commands/cleanup/overkill_apply.h"
#include "tooldeck/commands/cleanup/overkill_collect.h"
#include "tooldeck/commands/cleanup/overkill_curve_passes.h"
#include "tooldeck/host/selection_set.h"
#include "tooldeck/module/ResourceText.h"
#include "tooldeck/module/command_handlers.h"

#include <exception>

namespace qvtd::cmd {

namespace {

constexpr unsigned kDuplicatesDeleted = 6294;
constexpr unsigned kArcsCovered = 6295;

void report(int tally, unsigned textId, const char* fallback) {
    if (tally <= 0) return;
    ResourceText text(textId, fallback);
    qvutPrintf("\n%d %s.", tally, text.fetch());
}

} // namespace

void cmd_Overkill() {
    using namespace overkill;
    SelectionSet selection;
    if (selection.select() != QV_NORM) return;
    OverkillSettings& settings = moduleSettings();
    COverKillDlg dialog(settings);
    if (dialog.DoModal() != IDOK) return;

    OverkillWork work;
    work.run.settings = settings;
    // Only running out of memory can throw here; it must not reach the host.
    try {
        collectSelection(selection.name(), work);
        runCurveAndPolylinePasses(work.run);
        for (auto& [type, members] : work.buckets) runBucketPass(members, settings, work.run.edits);
    } catch (const std::exception&) {
        qvutPrintf("\nNot enough memory to compare these objects; the drawing is unchanged.");
        return;
    }
    try {
        if (work.database)
            applyEdits(*work.database, work.run.edits, work.spaceName, comparisonTolerance(settings));
    } catch (const std::exception&) {
        qvutPrintf("\nNot enough memory to finish; UNDO takes back what was changed.");
        return;
    }
    report(work.run.edits.erasedTally, kDuplicatesDeleted, "duplicate objects deleted");
    report(work.run.edits.coveredArcsTally, kArcsCovered, "arcs removed because a circle covers them");
}

} // namespace qvtd::cmd
