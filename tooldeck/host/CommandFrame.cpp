#include "tooldeck/host/CommandFrame.h"

#include "tooldeck/host/host_variables.h"

namespace qvtd {

CommandFrame::CommandFrame(Implied implied) : m_savedEcho(getShortVar("cmdecho")) {
    if (qv_resbuf* silent = qvutBuildList(QV_RTSHORT, 0, 0)) {
        qvedSetVar("CMDECHO", silent);
        qvutRelRb(silent);
    }
    if (implied == Implied::Take)
        m_hasImplied = qvedSSGet("I", nullptr, nullptr, nullptr, m_implied) == QV_NORM;
    qvedCommand(QV_RTSTR, "Undo", QV_RTSTR, "BE", 0);
}

CommandFrame::~CommandFrame() {
    if (m_hasImplied) qvedSSFree(m_implied);
    qvedCommand(QV_RTSTR, "Undo", QV_RTSTR, "E", 0);
    setShortVar("cmdecho", m_savedEcho);
}

} // namespace qvtd
