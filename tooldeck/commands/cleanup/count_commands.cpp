// xsecount, xecount: count the selected objects and put the count on the clipboard; xecount rings each
// counted object with a marker while the command runs.

#include "qvad/api/qvad_api.h"
#include "qvad/win32/windows_calls.h"
#include "tooldeck/commands/cleanup/quantity_clipboard.h"
#include "tooldeck/commands/cleanup/quantity_markers.h"
#include "tooldeck/commands/cleanup/quantity_settings.h"
#include "tooldeck/host/CSysVarSet.h"
#include "tooldeck/module/command_handlers.h"

#include <cmath>
#include <string>

namespace qvtd::cmd {

namespace {

void countSelection(bool markEach) {
    CSysVarSet guard;
    const char* prompts[2] = {"\nselected:", "\nRemove objects:"};
    qv_name selection = {0, 0};
    if (qvedSSGet(":$", prompts, nullptr, nullptr, selection) != QV_NORM) {
        qvedRetVoid();
        return;
    }
    long count = 0;
    qvedSSLength(selection, &count);
    quantity::TemporaryMarkers markers;
    if (markEach) {
        quantity::QuantitySettings settings = quantity::loadQuantitySettings();
        double radius = std::fabs(settings.markerRadius);
        if (radius == 0.0) radius = 5.0;
        for (long i = 0; i < count; ++i) {
            qv_name entity = {0, 0};
            if (qvedSSName(selection, i, entity) == QV_NORM) markers.circleOn(entity, radius);
        }
    }
    qvedSSFree(selection);
    Beep(200, 200);
    quantity::writeClipboardText(std::to_string(count));
    qvutPrintf("\nCount = %ld", count);
    qvedRetVoid();
}

} // namespace

void cmd_xsecount() {
    countSelection(false);
}

void cmd_xecount() {
    countSelection(true);
}

} // namespace qvtd::cmd
