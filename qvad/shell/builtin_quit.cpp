// QUIT: ends the session, asking first when the drawing has changes that were not saved. QUIT never
// saves: in a script run with -o it means the changes are discarded, so nothing is written.

#include "qvad/api/qvad_api.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/drawing_session.h"

#include <strings.h>

namespace qvad::shell {

void cmdQuit() {
    DrawingSession& session = DrawingSession::current();
    if (session.modified()) {
        char answer[16] = "";
        qvedInitGet(0, "Yes No");
        int status = qvedGetKword("\nDiscard changes to the drawing? [Yes/No] <No>: ", answer, sizeof answer);
        if (status != QV_NORM || strcasecmp(answer, "Yes") != 0) return;
    }
    session.requestQuit();
}

} // namespace qvad::shell
