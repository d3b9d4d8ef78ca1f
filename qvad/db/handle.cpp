#include "qvad/db/handle.h"

#include <charconv>

namespace qvad {

Handle parseHandle(std::string_view hex) {
    while (!hex.empty() && hex.front() == ' ') hex.remove_prefix(1);
    while (!hex.empty() && (hex.back() == ' ' || hex.back() == '\r')) hex.remove_suffix(1);
    if (hex.empty() || hex.size() > 16) return 0;
    Handle h = 0;
    auto [p, ec] = std::from_chars(hex.data(), hex.data() + hex.size(), h, 16);
    return (ec == std::errc() && p == hex.data() + hex.size()) ? h : 0;
}

std::string formatHandle(Handle h) {
    char text[20];
    auto r = std::to_chars(text, text + sizeof text, h, 16);
    std::string s(text, r.ptr);
    for (char& c : s)
        if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 32);
    return s;
}

} // namespace qvad
