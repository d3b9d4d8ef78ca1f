#pragma once
// A DXF group: a code and its value as text. Values stay text from load to save so that numbers
// round-trip to the last digit and tags nobody here understands come out exactly as they went in.

#include "qvad/dxf/large_block_allocator.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace qvad::dxf {

struct Tag {
    const char* data = nullptr;
    std::uint32_t size = 0;
    std::int32_t code = 0;

    constexpr Tag() = default;
    constexpr Tag(int c, std::string_view v)
        : data(v.data()), size(static_cast<std::uint32_t>(v.size())), code(c) {}

    std::string_view value() const { return {data, size}; }
    bool is(int c, std::string_view v) const { return code == c && value() == v; }
};

// All tags of a loaded file, in order.
using TagArray = std::vector<Tag, LargeBlockAllocator<Tag>>;

// How a group code's value is stored; decides parsing, validation, code-page conversion and the
// binary DXF encoding.
enum class ValueKind : std::uint8_t { String, Double, Int16, Int32, Int64, Bool, Handle, Binary, Comment };

ValueKind valueKind(int code);

inline bool isStringKind(int code) {
    return valueKind(code) == ValueKind::String;
}
inline bool isNumericKind(int code) {
    ValueKind k = valueKind(code);
    return k == ValueKind::Double || k == ValueKind::Int16 || k == ValueKind::Int32 ||
           k == ValueKind::Int64 || k == ValueKind::Bool;
}

// Pointer-like group codes whose value is another object's handle (soft/hard pointers and owners).
bool isHandleReference(int code);

} // namespace qvad::dxf
