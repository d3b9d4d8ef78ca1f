#pragma once
// The plainer frame of the commands that do not take a CSysVarSet: only CMDECHO is saved and silenced,
// and the command's changes form one undo step.

#include "qvad/api/qvad_api.h"

namespace qvtd {

class CommandFrame {
public:
    enum class Implied { Ignore, Take };

    // With Implied::Take the pick-first selection, if any, is taken before the undo step opens.
    explicit CommandFrame(Implied implied = Implied::Ignore);
    ~CommandFrame();
    CommandFrame(const CommandFrame&) = delete;
    CommandFrame& operator=(const CommandFrame&) = delete;

    bool hasImpliedSelection() const { return m_hasImplied; }
    const qv_name& impliedSelection() const { return m_implied; }
    // The command takes the set over (and frees it); the frame forgets it.
    void releaseImpliedSelection() { m_hasImplied = false; }

private:
    short m_savedEcho;
    qv_name m_implied = {0, 0};
    bool m_hasImplied = false;
};

} // namespace qvtd
