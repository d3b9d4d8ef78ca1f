// A resource library for the dialog tests: a string table and a few dialog templates.

#include "qvad/win32/resource_library.h"

#include <array>

extern "C" __attribute__((visibility("default"))) const QvResourceString* qvResourceStrings(unsigned* count) {
    static const std::array<QvResourceString, 1> strings{{{6293, "The tolerance cannot be negative."}}};
    *count = static_cast<unsigned>(strings.size());
    return strings.data();
}

extern "C" __attribute__((visibility("default"))) const QvResourceDialog* qvResourceDialogs(unsigned* count) {
    static const std::array<QvResourceDialog, 5> dialogs{{
        {2001, R"(# duplicate removal options
DIALOG 2001 "Overkill"
STATIC IDC_STATIC "Objects to compare"
EDIT 1001 "Tolerance" "0.000001"
CHECK 1002 "Ignore layer" 0
CHECK 1003 "Ignore linetype" 1
LIST 1010 "Layer" 1 items="0|Walls|Doors"
BUTTON IDOK "OK"
BUTTON IDCANCEL "Cancel"
)"},
        {2002, R"(DIALOG 2002 "Boolean"
RADIO 1101 "Union" 1 group="Operation"
RADIO 1102 "Intersection" group="Operation"
RADIO 1103 "Subtract" group="Operation" key=Minus
CHECK 1104 "Erase second profiles"
COMBO 1105 "Style" items="Standard|ISO-25"
EDIT 1106 "Note" disabled
EDIT 1107 "Secret" hidden
)"},
        {2003, "DIALOG 2003 \"Broken\"\nCHEK 1 \"Typo\"\n"},
        {2004, "DIALOG 2099 \"Wrong id\"\n"},
        {2005, nullptr},
    }};
    *count = static_cast<unsigned>(dialogs.size());
    return dialogs.data();
}
