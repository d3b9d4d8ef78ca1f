#include "qvad/api/sysvars_access.h"

#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_header.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/db/OdDbDatabase.h"

#include <algorithm>
#include <cctype>

namespace qvad::api {

namespace {

SysVarValue derivedValue(const SysVarDef& def) {
    SysVarSession& session = SysVarSession::current();
    if (def.name == "ERRNO")
        return SysVarValue::ofShort(static_cast<short>(HostSession::current().errorNumber()));
    if (def.name == "DWGTITLED") return SysVarValue::ofShort(session.drawingPath().empty() ? 0 : 1);
    if (def.name == "DWGNAME") return SysVarValue::ofText(session.drawingName());
    if (def.name == "DWGPREFIX") return SysVarValue::ofText(session.drawingFolder());
    if (def.name == "APPDATADIR") return SysVarValue::ofText(session.appDataDir());
    return SysVarValue::ofText(session.exeDir()); // EXEDIR
}

bool hasControlCharacters(std::string_view text) {
    return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

// The record's own spelling of a name that must exist in a table; "BYLAYER"/"BYBLOCK" stand for
// themselves where a linetype is named.
std::optional<std::string> recordName(const OdDbDatabase* db, std::string_view table, std::string_view name) {
    if (table == "LTYPE" && (equalsNoCase(name, "BYLAYER") || equalsNoCase(name, "BYBLOCK")))
        return equalsNoCase(name, "BYLAYER") ? "ByLayer" : "ByBlock";
    const OdDbSymbolTable* records = db ? db->table(table) : nullptr;
    const OdDbSymbolTableRecord* record = records ? records->find(name) : nullptr;
    if (!record) return std::nullopt;
    return std::string(record->name());
}

// The value as the variable keeps it, or nullopt when the variable does not take it.
std::optional<SysVarValue> accepted(const SysVarDef& def, SysVarValue value, const OdDbDatabase* db) {
    switch (def.type) {
    case SysVarType::Short:
        if (value.shortValue < def.minShort || value.shortValue > def.maxShort) return std::nullopt;
        return value;
    case SysVarType::Real:
        if (def.nonNegative && value.real < 0.0) return std::nullopt;
        return value;
    case SysVarType::String:
        if (def.home == SysVarHome::Drawing && hasControlCharacters(value.text)) return std::nullopt;
        if (def.form == HeaderForm::ColorName) {
            auto number = colorNumberOf(value.text);
            if (!number) return std::nullopt;
            value.text = *number == 256 ? "BYLAYER" : *number == 0 ? "BYBLOCK" : std::to_string(*number);
        } else if (def.form == HeaderForm::Character) {
            if (value.text.size() != 1 || static_cast<unsigned char>(value.text[0]) >= 0x80)
                return std::nullopt;
        } else if (!def.mustNameRecordOf.empty()) {
            auto name = recordName(db, def.mustNameRecordOf, value.text);
            if (!name) return std::nullopt;
            value.text = *name;
        }
        return value;
    case SysVarType::Point2d:
    case SysVarType::Point3d:
        return value;
    }
    return std::nullopt;
}

} // namespace

std::optional<SysVarValue> readSysVar(std::string_view name) {
    const SysVarDef* def = findSysVar(name);
    if (!def) return std::nullopt;
    switch (def->home) {
    case SysVarHome::Session:
        return SysVarSession::current().value(*def);
    case SysVarHome::Derived:
        return derivedValue(*def);
    case SysVarHome::Drawing:
        if (const OdDbDatabase* db = HostSession::current().drawing()) return readHeaderVariable(*db, *def);
        return parseInitialValue(*def);
    }
    return std::nullopt;
}

int writeSysVar(std::string_view name, const SysVarValue& value) {
    const SysVarDef* def = findSysVar(name);
    if (!def || def->readOnly || value.type != def->type) return refuse(HostError::BadArgument);
    OdDbDatabase* db = HostSession::current().drawing();
    std::optional<SysVarValue> kept = accepted(*def, value, db);
    if (!kept) return refuse(HostError::BadArgument);
    switch (def->home) {
    case SysVarHome::Session:
        SysVarSession::current().setValue(*def, std::move(*kept));
        return QV_NORM;
    case SysVarHome::Derived: // only ERRNO is derived and writable
        HostSession::current().setErrorNumber(kept->shortValue);
        return QV_NORM;
    case SysVarHome::Drawing:
        if (!db) return refuse(HostError::NoDrawing);
        writeHeaderVariable(*db, *def, *kept);
        return QV_NORM;
    }
    return refuse(HostError::BadArgument);
}

short shortSysVar(std::string_view name, short fallback) {
    auto value = readSysVar(name);
    return value && value->type == SysVarType::Short ? value->shortValue : fallback;
}

double realSysVar(std::string_view name, double fallback) {
    auto value = readSysVar(name);
    return value && value->type == SysVarType::Real ? value->real : fallback;
}

std::string stringSysVar(std::string_view name) {
    auto value = readSysVar(name);
    return value && value->type == SysVarType::String ? value->text : std::string();
}

OdGePoint3d pointSysVar(std::string_view name, const OdGePoint3d& fallback) {
    auto value = readSysVar(name);
    bool isPoint = value && (value->type == SysVarType::Point2d || value->type == SysVarType::Point3d);
    return isPoint ? value->point : fallback;
}

} // namespace qvad::api

extern "C" {

QV_API int qvedGetVar(const char* name, struct qv_resbuf* result) {
    using namespace qvad::api;
    return guarded([&] {
        if (!name || !result) return refuse(HostError::BadArgument);
        std::optional<SysVarValue> value = readSysVar(name);
        if (!value) return refuse(HostError::BadArgument);
        if (!valueToBuffer(*value, *result)) return refuse(HostError::OutOfMemory);
        return QV_NORM;
    });
}

QV_API int qvedSetVar(const char* name, const struct qv_resbuf* value) {
    using namespace qvad::api;
    return guarded([&] {
        if (!name || !value) return refuse(HostError::BadArgument);
        const SysVarDef* def = findSysVar(name);
        if (!def) return refuse(HostError::BadArgument);
        std::optional<SysVarValue> typed = valueFromBuffer(*def, *value);
        if (!typed) return refuse(HostError::BadArgument);
        return writeSysVar(name, *typed);
    });
}

} // extern "C"
