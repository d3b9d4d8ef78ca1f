// xcarf: the quantity settings dialog.

#include "qvad/api/qvad_api.h"
#include "tooldeck/commands/cleanup/CDlgAreaConfig.h"
#include "tooldeck/commands/cleanup/quantity_settings.h"
#include "tooldeck/module/command_handlers.h"

namespace qvtd::cmd {

void cmd_xcarf() {
    CDlgAreaConfig dialog(quantity::quantitySettingsPath());
    dialog.DoModal();
    qvedRetVoid();
}

} // namespace qvtd::cmd
