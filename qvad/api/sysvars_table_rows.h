#pragma once
// Short ways to write rows of the system variable table: h* rows live in the drawing's header, s* rows
// in the session.

#include "qvad/api/sysvars_table.h"

namespace qvad::api::sysvar_rows {

constexpr int kAnyShortMin = -32768;
constexpr int kAnyShortMax = 32767;

constexpr SysVarDef hShort(std::string_view name, int code, std::string_view initial, int lo = kAnyShortMin,
                           int hi = kAnyShortMax) {
    return {name, SysVarType::Short, SysVarHome::Drawing, code, initial, false, lo, hi};
}
constexpr SysVarDef hReal(std::string_view name, int code, std::string_view initial,
                          bool nonNegative = false) {
    SysVarDef d{name, SysVarType::Real, SysVarHome::Drawing, code, initial};
    d.nonNegative = nonNegative;
    return d;
}
constexpr SysVarDef hText(std::string_view name, int code, std::string_view initial,
                          std::string_view recordOf = {}) {
    SysVarDef d{name, SysVarType::String, SysVarHome::Drawing, code, initial};
    d.mustNameRecordOf = recordOf;
    return d;
}
constexpr SysVarDef hPoint3(std::string_view name, std::string_view initial) {
    return {name, SysVarType::Point3d, SysVarHome::Drawing, 10, initial};
}
constexpr SysVarDef hPoint2(std::string_view name, std::string_view initial) {
    return {name, SysVarType::Point2d, SysVarHome::Drawing, 10, initial};
}
constexpr SysVarDef sShort(std::string_view name, std::string_view initial, int lo, int hi) {
    return {name, SysVarType::Short, SysVarHome::Session, 0, initial, false, lo, hi};
}
constexpr SysVarDef sFlag(std::string_view name, std::string_view initial) {
    return sShort(name, initial, 0, 1);
}
constexpr SysVarDef sReal(std::string_view name, std::string_view initial) {
    return {name, SysVarType::Real, SysVarHome::Session, 0, initial};
}
constexpr SysVarDef sText(std::string_view name, std::string_view initial) {
    return {name, SysVarType::String, SysVarHome::Session, 0, initial};
}
constexpr SysVarDef sPoint2(std::string_view name, std::string_view initial) {
    return {name, SysVarType::Point2d, SysVarHome::Session, 0, initial};
}
constexpr SysVarDef sPoint3(std::string_view name, std::string_view initial) {
    return {name, SysVarType::Point3d, SysVarHome::Session, 0, initial};
}
constexpr SysVarDef derived(SysVarType type, std::string_view name) {
    return {name, type, SysVarHome::Derived, 0, {}};
}
constexpr SysVarDef readOnly(SysVarDef d) {
    d.readOnly = true;
    return d;
}
constexpr SysVarDef colorVar(SysVarDef d) {
    d.form = HeaderForm::ColorName;
    return d;
}
constexpr SysVarDef characterVar(SysVarDef d) {
    d.form = HeaderForm::Character;
    return d;
}

} // namespace qvad::api::sysvar_rows
