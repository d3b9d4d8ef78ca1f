#include "qvad/api/sysvars_value.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstring>

namespace qvad::api {

namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
        text.remove_suffix(1);
    return text;
}

OdGePoint3d parsePoint(std::string_view text) {
    double xyz[3] = {0.0, 0.0, 0.0};
    for (double& coordinate : xyz) {
        std::size_t comma = text.find(',');
        coordinate = parseReal(text.substr(0, comma)).value_or(0.0);
        if (comma == std::string_view::npos) break;
        text.remove_prefix(comma + 1);
    }
    return {xyz[0], xyz[1], xyz[2]};
}

} // namespace

std::optional<double> parseReal(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double value = 0.0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<long long> parseInteger(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    long long value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<double> scanUnsignedReal(std::string_view& text) {
    if (text.empty() || !(std::isdigit(static_cast<unsigned char>(text.front())) || text.front() == '.'))
        return std::nullopt;
    double value = 0.0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || !std::isfinite(value)) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

int copyTextOut(std::string_view text, char* buffer, std::size_t size) {
    if (!buffer || text.size() >= size) return QV_ERROR;
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    return QV_NORM;
}

SysVarValue parseInitialValue(const SysVarDef& def) {
    SysVarValue value;
    value.type = def.type;
    switch (def.type) {
    case SysVarType::Short:
        value.shortValue = static_cast<short>(parseInteger(def.initial).value_or(0));
        break;
    case SysVarType::Real:
        value.real = parseReal(def.initial).value_or(0.0);
        break;
    case SysVarType::String:
        value.text = def.initial;
        break;
    case SysVarType::Point2d:
    case SysVarType::Point3d:
        value.point = parsePoint(def.initial);
        if (def.type == SysVarType::Point2d) value.point.z = 0.0;
        break;
    }
    return value;
}

std::optional<SysVarValue> valueFromBuffer(const SysVarDef& def, const qv_resbuf& buffer) {
    SysVarValue value;
    value.type = def.type;
    const int type = buffer.restype;
    switch (def.type) {
    case SysVarType::Short:
        if (type == QV_RTSHORT) {
            value.shortValue = buffer.resval.rint;
        } else if (type == QV_RTLONG && buffer.resval.rlong >= -32768 && buffer.resval.rlong <= 32767) {
            value.shortValue = static_cast<short>(buffer.resval.rlong);
        } else {
            return std::nullopt;
        }
        return value;
    case SysVarType::Real:
        if (type == QV_RTREAL || type == QV_RTANG || type == QV_RTORINT) {
            value.real = buffer.resval.rreal;
        } else if (type == QV_RTSHORT) {
            value.real = buffer.resval.rint;
        } else {
            return std::nullopt;
        }
        if (!std::isfinite(value.real)) return std::nullopt;
        return value;
    case SysVarType::String:
        if (type != QV_RTSTR || buffer.resval.rstring == nullptr) return std::nullopt;
        value.text = buffer.resval.rstring;
        return value;
    case SysVarType::Point2d:
    case SysVarType::Point3d:
        if (type != QV_RTPOINT && type != QV_RT3DPOINT) return std::nullopt;
        value.point.set(buffer.resval.rpoint[0], buffer.resval.rpoint[1],
                        type == QV_RT3DPOINT && def.type == SysVarType::Point3d ? buffer.resval.rpoint[2]
                                                                                : 0.0);
        if (!std::isfinite(value.point.x) || !std::isfinite(value.point.y) || !std::isfinite(value.point.z))
            return std::nullopt;
        return value;
    }
    return std::nullopt;
}

bool valueToBuffer(const SysVarValue& value, qv_resbuf& buffer) {
    switch (value.type) {
    case SysVarType::Short:
        buffer.restype = QV_RTSHORT;
        buffer.resval.rint = value.shortValue;
        return true;
    case SysVarType::Real:
        buffer.restype = QV_RTREAL;
        buffer.resval.rreal = value.real;
        return true;
    case SysVarType::String: {
        char* copy = static_cast<char*>(qvad_malloc(value.text.size() + 1));
        if (!copy) return false;
        std::memcpy(copy, value.text.c_str(), value.text.size() + 1);
        buffer.restype = QV_RTSTR;
        buffer.resval.rstring = copy;
        return true;
    }
    case SysVarType::Point2d:
    case SysVarType::Point3d:
        buffer.restype = value.type == SysVarType::Point2d ? QV_RTPOINT : QV_RT3DPOINT;
        buffer.resval.rpoint[0] = value.point.x;
        buffer.resval.rpoint[1] = value.point.y;
        buffer.resval.rpoint[2] = value.type == SysVarType::Point2d ? 0.0 : value.point.z;
        return true;
    }
    return false;
}

} // namespace qvad::api
