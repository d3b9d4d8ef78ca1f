#pragma once
// The system variables the host knows: their type, where each one lives, its default and the values
// it accepts. Variables that drawing files carry in their HEADER section live in the current drawing,
// so they travel with it; the rest belong to the running session.

#include <span>
#include <string_view>

namespace qvad::api {

enum class SysVarType { Short, Real, String, Point2d, Point3d };

// How a drawing variable's value is written in the header when that differs from its type.
enum class HeaderForm {
    Plain,
    ColorName, // CECOLOR: "BYLAYER"/"BYBLOCK"/"1".."255" to the user, a colour number in the file
    Character, // DIMDSEP: a one-character string to the user, its character code in the file
};

enum class SysVarHome {
    Session,
    Drawing, // the current drawing's header, under "$NAME"
    Derived, // computed from the session each time it is read (paths, ERRNO)
};

struct SysVarDef {
    std::string_view name; // upper case, without the header's '$'
    SysVarType type;
    SysVarHome home;
    int groupCode;            // header group code of the value (the x code for points)
    std::string_view initial; // as text; points as "x,y[,z]"
    bool readOnly = false;
    int minShort = -32768;
    int maxShort = 32767;
    bool nonNegative = false; // reals that cannot go below zero
    HeaderForm form = HeaderForm::Plain;
    // Strings that must name a record of this table ("LAYER", "STYLE", ...), or be empty.
    std::string_view mustNameRecordOf = {};
};

// Case-insensitive; null for a name the host does not know.
const SysVarDef* findSysVar(std::string_view name);
// Everything but the dimension variables, and those (all the DIM* variables of drawing headers).
std::span<const SysVarDef> generalSysVars();
std::span<const SysVarDef> dimensionSysVars();

} // namespace qvad::api
