#pragma once
// Brings into a drawing what it lacks of the structure every drawing has: the symbol tables, their
// standard entries and, from R2000 on, the OBJECTS section's standard dictionaries. The parts come
// from the built-in template, with fresh handles; whatever the drawing already has is kept and the
// copies point to it.

#include "qvad/db/OdDbDatabase.h"

#include <string>
#include <vector>

namespace qvad::db {

struct TemplateMergeReport {
    std::vector<std::string> tables;       // "UCS"
    std::vector<std::string> records;      // "LAYER \"0\""
    std::vector<std::string> dictionaries; // "ACAD_MLINESTYLE"
    bool objectsSection = false;           // the whole OBJECTS section was missing
    bool empty() const {
        return tables.empty() && records.empty() && dictionaries.empty() && !objectsSection;
    }
};

enum class MergeScope {
    // What no drawing can do without: every table, layer 0, the ByBlock, ByLayer and Continuous
    // linetypes, and an OBJECTS section when there is none. Other parts are optional in a file (readers
    // make them when they need them) and a drawing that left them out keeps its structure.
    Required,
    // All the template holds, for a drawing upgraded from R12: the Standard text and dimension
    // styles, the ACAD application, the active viewport, and the root dictionary's standard entries.
    Everything,
};

TemplateMergeReport mergeTemplate(OdDbDatabase& db, MergeScope scope = MergeScope::Required);

// Report lines for the drawing's repairs(), one per kind of addition.
std::vector<std::string> describe(const TemplateMergeReport& report);

} // namespace qvad::db
