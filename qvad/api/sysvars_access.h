#pragma once
// Reading and writing system variables by name, for the exported qvedGetVar/qvedSetVar and for the
// host's own operations that depend on them (unit formats, the user coordinate system, search paths).

#include "qvad/api/sysvars_value.h"

#include <optional>
#include <string>
#include <string_view>

namespace qvad::api {

// nullopt for a name the host does not know.
std::optional<SysVarValue> readSysVar(std::string_view name);

// Writes a value already of the variable's type. QV_ERROR, with ERRNO set and nothing changed, for an
// unknown or read-only variable or a value the variable does not accept.
int writeSysVar(std::string_view name, const SysVarValue& value);

// Typed reads for the host's own use; the fallback covers a name of another type.
short shortSysVar(std::string_view name, short fallback = 0);
double realSysVar(std::string_view name, double fallback = 0.0);
std::string stringSysVar(std::string_view name);
OdGePoint3d pointSysVar(std::string_view name, const OdGePoint3d& fallback = {});

} // namespace qvad::api
