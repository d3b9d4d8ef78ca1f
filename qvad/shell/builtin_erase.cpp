// ERASE: erases the pick-first set when there is one, else what the user selects. Each entity goes
// through qvdbEntDel, so UNDO brings the command's whole work back at once.

#include "qvad/api/qvad_api.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/builtin_prompts.h"

namespace qvad::shell {

void cmdErase() {
    qv_name selection = {0, 0};
    if (!pickFirstOrSelect(selection)) return;
    long length = 0;
    qvedSSLength(selection, &length);
    long erased = 0;
    for (long i = 0; i < length; ++i) {
        qv_name entity;
        if (qvedSSName(selection, i, entity) == QV_NORM && qvdbEntDel(entity) == QV_NORM) ++erased;
    }
    qvedSSFree(selection);
    qvedSSSetFirst(nullptr, nullptr); // what was picked first is gone
    qvutPrintf("\n%ld erased.", erased);
}

} // namespace qvad::shell
