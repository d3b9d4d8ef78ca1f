#pragma once
// One system variable's value, and its passage to and from result buffers and text.

#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_table.h"
#include "qvad/ge/point3d.h"

#include <optional>
#include <string>
#include <string_view>

namespace qvad::api {

struct SysVarValue {
    SysVarType type = SysVarType::Short;
    short shortValue = 0;
    double real = 0.0;
    OdGePoint3d point; // z stays 0 for 2D points
    std::string text;

    static SysVarValue ofShort(short v) {
        SysVarValue value;
        value.shortValue = v;
        return value;
    }
    static SysVarValue ofReal(double v) {
        SysVarValue value;
        value.type = SysVarType::Real;
        value.real = v;
        return value;
    }
    static SysVarValue ofText(std::string v) {
        SysVarValue value;
        value.type = SysVarType::String;
        value.text = std::move(v);
        return value;
    }
};

// The table's initial text ("x,y[,z]" for points) as a value of the variable's type.
SysVarValue parseInitialValue(const SysVarDef& def);

// What a caller hands to qvedSetVar, taken as the variable's type. A short is taken where a real is
// expected, a long within the range of a short where a short is, and 2D and 3D points for each other;
// anything else is refused (nullopt).
std::optional<SysVarValue> valueFromBuffer(const SysVarDef& def, const qv_resbuf& buffer);

// Fills the buffer with the value and the matching type code; a string is copied to the host heap.
// False without memory, leaving the buffer as it was.
bool valueToBuffer(const SysVarValue& value, qv_resbuf& buffer);

// Text for a caller's buffer of the given size: QV_NORM, or QV_ERROR (buffer untouched) when it does
// not fit with its terminating zero.
int copyTextOut(std::string_view text, char* buffer, std::size_t size);

// Numbers as drawing files and users write them, independent of the C locale.
std::optional<double> parseReal(std::string_view text);
std::optional<long long> parseInteger(std::string_view text);
// Reads an unsigned number (digits, point, exponent) from the front of text and moves past it.
std::optional<double> scanUnsignedReal(std::string_view& text);

} // namespace qvad::api
