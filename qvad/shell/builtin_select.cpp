// SELECT: asks "Select objects:" and leaves the result as the pick-first set (and the previous set),
// which is how a script picks objects for the next command.

#include "qvad/api/qvad_api.h"
#include "qvad/shell/builtin_commands.h"

namespace qvad::shell {

void cmdSelect() {
    qv_name selection = {0, 0};
    if (qvedSSGet(nullptr, nullptr, nullptr, nullptr, selection) != QV_NORM) return;
    qvedSSSetFirst(nullptr, selection);
    qvedSSFree(selection);
}

} // namespace qvad::shell
