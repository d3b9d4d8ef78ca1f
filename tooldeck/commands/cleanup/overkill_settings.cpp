#include "tooldeck/commands/cleanup/overkill_settings.h"

namespace qvtd::overkill {

OverkillSettings& moduleSettings() {
    static OverkillSettings settings;
    return settings;
}

void resetModuleSettings() {
    moduleSettings() = OverkillSettings{};
}

} // namespace qvtd::overkill
