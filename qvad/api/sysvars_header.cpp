#include "qvad/api/sysvars_header.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/OdDbObject.h"

#include <array>
#include <string>

namespace qvad::api {

namespace {

std::string headerName(const SysVarDef& def) {
    return "$" + std::string(def.name);
}

std::string colorText(long long number) {
    if (number == 256) return "BYLAYER";
    if (number == 0) return "BYBLOCK";
    return std::to_string(number < 0 ? -number : number); // a layer's off state is not the colour's
}

std::optional<SysVarValue> fromTags(const SysVarDef& def, const std::vector<qvad::dxf::Tag>& tags) {
    auto tagValue = [&](int code) -> std::optional<std::string_view> {
        for (const qvad::dxf::Tag& tag : tags)
            if (tag.code == code) return tag.value();
        return std::nullopt;
    };
    auto first = tagValue(def.groupCode);
    if (!first) return std::nullopt;
    SysVarValue value;
    value.type = def.type;
    switch (def.type) {
    case SysVarType::Short: {
        auto number = parseInteger(*first);
        if (!number || *number < -32768 || *number > 32767) return std::nullopt;
        value.shortValue = static_cast<short>(*number);
        return value;
    }
    case SysVarType::Real: {
        auto number = parseReal(*first);
        if (!number) return std::nullopt;
        value.real = *number;
        return value;
    }
    case SysVarType::String:
        if (def.form == HeaderForm::Plain) {
            value.text = *first;
            return value;
        }
        if (auto number = parseInteger(*first)) {
            if (def.form == HeaderForm::ColorName)
                value.text = colorText(*number);
            else if (*number > 0 && *number < 128)
                value.text = std::string(1, static_cast<char>(*number));
            else
                return std::nullopt;
            return value;
        }
        return std::nullopt;
    case SysVarType::Point2d:
    case SysVarType::Point3d: {
        auto x = parseReal(first.value());
        auto y = parseReal(tagValue(def.groupCode + 10).value_or(""));
        auto z = def.type == SysVarType::Point3d ? parseReal(tagValue(def.groupCode + 20).value_or("0"))
                                                 : std::optional<double>(0.0);
        if (!x || !y || !z) return std::nullopt;
        value.point.set(*x, *y, *z);
        return value;
    }
    }
    return std::nullopt;
}

} // namespace

std::optional<int> colorNumberOf(std::string_view text) {
    static constexpr std::array<std::string_view, 8> kNames = {"BYBLOCK", "RED",  "YELLOW",  "GREEN",
                                                               "CYAN",    "BLUE", "MAGENTA", "WHITE"};
    for (std::size_t i = 0; i < kNames.size(); ++i)
        if (equalsNoCase(text, kNames[i])) return static_cast<int>(i);
    if (equalsNoCase(text, "BYLAYER")) return 256;
    auto number = parseInteger(text);
    if (number && *number >= 1 && *number <= 255) return static_cast<int>(*number);
    return std::nullopt;
}

SysVarValue readHeaderVariable(const OdDbDatabase& db, const SysVarDef& def) {
    if (const HeaderVariable* stored = db.header().find(headerName(def)))
        if (auto value = fromTags(def, stored->tags)) return *value;
    return parseInitialValue(def);
}

void writeHeaderVariable(OdDbDatabase& db, const SysVarDef& def, const SysVarValue& value) {
    std::vector<qvad::dxf::Tag> tags;
    auto add = [&](int code, std::string_view text) { tags.emplace_back(code, db.keep(text)); };
    switch (def.type) {
    case SysVarType::Short:
        add(def.groupCode, std::to_string(value.shortValue));
        break;
    case SysVarType::Real:
        add(def.groupCode, formatReal(value.real));
        break;
    case SysVarType::String:
        if (def.form == HeaderForm::ColorName)
            add(def.groupCode, std::to_string(colorNumberOf(value.text).value_or(256)));
        else if (def.form == HeaderForm::Character)
            add(def.groupCode,
                std::to_string(value.text.empty() ? 46 : static_cast<unsigned char>(value.text[0])));
        else
            add(def.groupCode, value.text);
        break;
    case SysVarType::Point2d:
    case SysVarType::Point3d:
        add(def.groupCode, formatReal(value.point.x));
        add(def.groupCode + 10, formatReal(value.point.y));
        if (def.type == SysVarType::Point3d) add(def.groupCode + 20, formatReal(value.point.z));
        break;
    }
    std::string name = headerName(def);
    std::string_view kept = db.header().find(name) ? db.header().find(name)->name : db.keep(name);
    db.header().set(kept, std::move(tags));
}

} // namespace qvad::api
