#pragma once
// The guard most commands run under: saves the system variables a command may disturb, silences the
// command line and brackets the command's changes in one undo group. Everything is given back when the
// guard goes, however the command ends (normally, cancelled, or by an exception).

#include "qvad/api/qvad_api.h"

#include <array>

namespace qvtd {

class CSysVarSet {
public:
    // Saved and restored in this order.
    static constexpr std::array<const char*, 14> kSavedVariables = {
        "CMDECHO", "HIGHLIGHT", "PLINETYPE",  "OSMODE", "MIRRTEXT", "DIMZIN",   "ATTMODE",
        "ATTDIA",  "REGENMODE", "OFFSETDIST", "ATTREQ", "GRIDMODE", "PLINEWID", "CELTYPE"};

    CSysVarSet();
    virtual ~CSysVarSet();
    CSysVarSet(const CSysVarSet&) = delete;
    CSysVarSet& operator=(const CSysVarSet&) = delete;

private:
    std::array<qv_resbuf*, kSavedVariables.size()> m_saved{};
};

} // namespace qvtd
