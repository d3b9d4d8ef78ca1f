#include "qvad/text/text_codes.h"

#include <cctype>

namespace qvad::text {
namespace {

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

} // namespace

std::u32string decodeUtf8(std::string_view text) {
    std::u32string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        auto byte = static_cast<unsigned char>(text[i]);
        int extra = byte >= 0xF0 && byte < 0xF8 ? 3 : byte >= 0xE0 ? 2 : byte >= 0xC2 && byte < 0xE0 ? 1 : 0;
        if (byte >= 0xF8) extra = 0;
        char32_t cp = extra == 0 ? byte : byte & (0x3F >> extra);
        bool valid = true;
        for (int k = 1; valid && k <= extra; ++k) {
            if (i + k >= text.size()) {
                valid = false;
                break;
            }
            auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80) valid = false;
            cp = (cp << 6) | (next & 0x3F);
        }
        if (!valid) {
            out.push_back(byte);
            ++i;
            continue;
        }
        out.push_back(cp);
        i += 1 + extra;
    }
    return out;
}

std::string encodeUtf8(std::u32string_view text) {
    std::string out;
    for (char32_t cp : text) {
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

std::u32string displayedText(std::string_view textString) {
    std::u32string in = decodeUtf8(textString);
    std::u32string out;
    for (std::size_t i = 0; i < in.size(); ++i) {
        if (in[i] == U'%' && i + 2 < in.size() && in[i + 1] == U'%') {
            char32_t code = in[i + 2];
            switch (code < 0x80 ? std::tolower(static_cast<int>(code)) : 0) {
            case 'd':
                out += U'\u00B0';
                i += 2;
                continue;
            case 'p':
                out += U'\u00B1';
                i += 2;
                continue;
            case 'c':
                out += U'\u2300';
                i += 2;
                continue;
            case '%':
                out += U'%';
                i += 2;
                continue;
            case 'u':
            case 'o':
            case 'k':
                i += 2;
                continue;
            default:
                break;
            }
            if (code >= U'0' && code <= U'9') {
                std::size_t j = i + 2;
                char32_t value = 0;
                for (int digits = 0; j < in.size() && digits < 3 && in[j] >= U'0' && in[j] <= U'9';
                     ++j, ++digits)
                    value = value * 10 + (in[j] - U'0');
                out += value;
                i = j - 1;
                continue;
            }
        }
        if (in[i] == U'\\' && i + 6 < in.size() && (in[i + 1] == U'U' || in[i + 1] == U'u') &&
            in[i + 2] == U'+') {
            char32_t value = 0;
            bool ok = true;
            for (std::size_t k = i + 3; k < i + 7; ++k) {
                int h = in[k] < 0x80 ? hexValue(static_cast<char>(in[k])) : -1;
                if (h < 0) ok = false;
                value = value * 16 + (h < 0 ? 0 : h);
            }
            if (ok) {
                out += value;
                i += 6;
                continue;
            }
        }
        out += in[i];
    }
    return out;
}

} // namespace qvad::text
