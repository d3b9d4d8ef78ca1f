// Handlers of the commands whose behaviour is not written yet: each says so and changes nothing.

#include "qvad/api/qvad_api.h"
#include "tooldeck/module/command_handlers.h"

namespace qvtd::cmd {

namespace {

void notAvailableYet(const char* name) {
    qvutPrintf("%s: not available yet.\n", name);
    qvedRetVoid();
}

} // namespace

#define QV_PENDING(handler, name)                                                                            \
    void handler() {                                                                                         \
        notAvailableYet(name);                                                                               \
    }
#include "tooldeck/module/pending_commands.inc"
#undef QV_PENDING

} // namespace qvtd::cmd
