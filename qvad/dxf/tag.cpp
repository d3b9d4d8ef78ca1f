#include "qvad/dxf/tag.h"

namespace qvad::dxf {

constexpr ValueKind computeValueKind(int code) {
    if (code < 0) return ValueKind::String;
    if (code <= 4) return ValueKind::String;
    if (code == 5) return ValueKind::Handle;
    if (code <= 9) return ValueKind::String;
    if (code <= 59) return ValueKind::Double;
    if (code <= 79) return ValueKind::Int16;
    if (code <= 99) return ValueKind::Int32;
    if (code == 100 || code == 101 || code == 102) return ValueKind::String;
    if (code == 105) return ValueKind::Handle;
    if (code >= 110 && code <= 149) return ValueKind::Double;
    if (code >= 160 && code <= 169) return ValueKind::Int64;
    if (code >= 170 && code <= 179) return ValueKind::Int16;
    if (code >= 210 && code <= 239) return ValueKind::Double;
    if (code >= 270 && code <= 289) return ValueKind::Int16;
    if (code >= 290 && code <= 299) return ValueKind::Bool;
    if (code >= 300 && code <= 309) return ValueKind::String;
    if (code >= 310 && code <= 319) return ValueKind::Binary;
    if (code >= 320 && code <= 369) return ValueKind::Handle;
    if (code >= 370 && code <= 389) return ValueKind::Int16;
    if (code >= 390 && code <= 399) return ValueKind::Handle;
    if (code >= 400 && code <= 409) return ValueKind::Int16;
    if (code >= 410 && code <= 419) return ValueKind::String;
    if (code >= 420 && code <= 429) return ValueKind::Int32;
    if (code >= 430 && code <= 439) return ValueKind::String;
    if (code >= 440 && code <= 449) return ValueKind::Int32;
    if (code >= 450 && code <= 459) return ValueKind::Int32;
    if (code >= 460 && code <= 469) return ValueKind::Double;
    if (code >= 470 && code <= 479) return ValueKind::String;
    if (code >= 480 && code <= 481) return ValueKind::Handle;
    if (code == 999) return ValueKind::Comment;
    if (code >= 1000 && code <= 1003) return ValueKind::String;
    if (code == 1004) return ValueKind::Binary;
    if (code == 1005) return ValueKind::Handle;
    if (code >= 1006 && code <= 1009) return ValueKind::String;
    if (code >= 1010 && code <= 1059) return ValueKind::Double;
    if (code >= 1060 && code <= 1070) return ValueKind::Int16;
    if (code == 1071) return ValueKind::Int32;
    return ValueKind::String;
}

namespace {
struct KindTable {
    ValueKind kinds[1072];
    constexpr KindTable() : kinds() {
        for (int c = 0; c < 1072; ++c) kinds[c] = computeValueKind(c);
    }
};
// Asked for every tag read and written, so answered from a table built by the compiler.
constexpr KindTable kKindTable;
} // namespace

ValueKind valueKind(int code) {
    return code >= 0 && code < 1072 ? kKindTable.kinds[code] : computeValueKind(code);
}

bool isHandleReference(int code) {
    return code == 330 || (code >= 320 && code <= 369) || (code >= 390 && code <= 399) || code == 480 ||
           code == 481;
}

} // namespace qvad::dxf
