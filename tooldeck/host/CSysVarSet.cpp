#include "tooldeck/host/CSysVarSet.h"

namespace qvtd {

CSysVarSet::CSysVarSet() {
    for (std::size_t i = 0; i < kSavedVariables.size(); ++i) {
        m_saved[i] = qvutNewRb(QV_RTSHORT);
        if (m_saved[i]) qvedGetVar(kSavedVariables[i], m_saved[i]);
    }
    if (qv_resbuf* echo = qvutNewRb(QV_RTSHORT)) {
        qvedGetVar("CMDECHO", echo);
        echo->resval.rint = 0;
        qvedSetVar("CMDECHO", echo);
        qvutRelRb(echo);
    }
    // The group is opened twice on purpose, with automatic undo off in between; the closing sequence
    // matches it.
    qvedCommand(QV_RTSTR, ".undo", QV_RTSTR, "g", 0);
    qvedCommand(QV_RTSTR, ".undo", QV_RTSTR, "a", QV_RTSTR, "off", QV_RTSTR, ".undo", QV_RTSTR, "g", 0);
}

CSysVarSet::~CSysVarSet() {
    qvedCommand(QV_RTSTR, ".undo", QV_RTSTR, "e", 0);
    qvedCommand(QV_RTSTR, ".undo", QV_RTSTR, "e", QV_RTSTR, ".undo", QV_RTSTR, "a", QV_RTSTR, "on", 0);
    // CMDECHO comes back first but only now, after the undo commands, so they never echo.
    for (std::size_t i = 0; i < kSavedVariables.size(); ++i) {
        if (!m_saved[i]) continue;
        qvedSetVar(kSavedVariables[i], m_saved[i]);
        qvutRelRb(m_saved[i]);
        m_saved[i] = nullptr;
    }
}

} // namespace qvtd
