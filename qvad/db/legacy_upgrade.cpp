#include "qvad/db/drawing_repair.h"

namespace qvad::db {

void upgradeLegacyDrawing(OdDbDatabase& db) {
    // Until R12 drawings are restructured they are saved under their own version number.
    (void)db;
}

} // namespace qvad::db
