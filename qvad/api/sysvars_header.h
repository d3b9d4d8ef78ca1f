#pragma once
// Drawing variables as the HEADER section stores them: "$NAME" followed by its group(s).

#include "qvad/api/sysvars_value.h"

class OdDbDatabase;

namespace qvad::api {

// The drawing's value, or the table's default when the drawing lacks the variable or holds something
// unreadable there.
SysVarValue readHeaderVariable(const OdDbDatabase& db, const SysVarDef& def);

// Replaces the variable's groups (appending the variable when the header lacks it). The value must
// already be of the variable's type and valid for it.
void writeHeaderVariable(OdDbDatabase& db, const SysVarDef& def, const SysVarValue& value);

// CECOLOR's user form ("BYLAYER", "BYBLOCK", "1".."255", or a standard colour name) as a colour
// number, or nullopt for anything else.
std::optional<int> colorNumberOf(std::string_view text);

} // namespace qvad::api
