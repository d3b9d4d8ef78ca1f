#include "qvad/dxf/code_page.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <cstdio>
#include <iconv.h>
#include <map>
#include <memory>

namespace qvad::dxf {
namespace {

struct IconvCloser {
    void operator()(void* cd) const { iconv_close(static_cast<iconv_t>(cd)); }
};
using IconvHandle = std::unique_ptr<void, IconvCloser>;

iconv_t converter(const std::string& to, const std::string& from) {
    static std::map<std::string, IconvHandle> cache;
    std::string key = to + "<" + from;
    auto it = cache.find(key);
    if (it == cache.end()) {
        iconv_t cd = iconv_open(to.c_str(), from.c_str());
        if (cd == reinterpret_cast<iconv_t>(-1)) cd = iconv_open(to.c_str(), "CP1252");
        it = cache.emplace(key, IconvHandle(cd)).first;
    }
    iconv(static_cast<iconv_t>(it->second.get()), nullptr, nullptr, nullptr, nullptr);
    return static_cast<iconv_t>(it->second.get());
}

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Length of the UTF-8 sequence starting at s[0], and its code point; invalid bytes count as one.
std::size_t utf8Char(std::string_view s, char32_t& cp) {
    auto b = static_cast<unsigned char>(s[0]);
    std::size_t n = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 1;
    if (n > s.size()) n = 1;
    cp = n == 1 ? b : n == 2 ? (b & 0x1F) : n == 3 ? (b & 0x0F) : (b & 0x07);
    for (std::size_t i = 1; i < n; ++i) cp = (cp << 6) | (static_cast<unsigned char>(s[i]) & 0x3F);
    return n;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

} // namespace

std::string iconvName(std::string_view cp) {
    std::string upper;
    for (char c : cp) upper += static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    if (upper.starts_with("ANSI_")) {
        std::string number = upper.substr(5);
        if (number == "936") return "GBK";
        if (number == "950") return "BIG5";
        if (number == "932") return "CP932";
        if (number == "949") return "CP949";
        if (number == "1361") return "JOHAB";
        return "CP" + number;
    }
    if (upper.starts_with("DOS")) return "CP" + upper.substr(3);
    if (upper.starts_with("ISO8859-")) return "ISO-8859-" + upper.substr(8);
    if (upper == "BIG5") return "BIG5";
    if (upper == "GB2312") return "GBK";
    if (upper == "KSC5601") return "CP949";
    if (upper == "JOHAB") return "JOHAB";
    if (upper == "UTF8" || upper == "UTF-8") return "UTF-8";
    return "CP1252";
}

bool isAscii(std::string_view text) {
    // Whole files pass through here, so eight bytes at a time.
    const char* p = text.data();
    std::size_t n = text.size();
    std::uint64_t high = 0;
    for (; n >= 64; p += 64, n -= 64) {
        std::uint64_t words[8];
        std::memcpy(words, p, 64);
        for (std::uint64_t w : words) high |= w;
        if (high & 0x8080808080808080ULL) return false;
    }
    for (; n > 0; ++p, --n) high |= static_cast<unsigned char>(*p);
    return (high & 0x8080808080808080ULL) == 0 && (high & 0x80) == 0;
}

std::string decodeCodePage(std::string_view bytes, std::string_view dwgCodePage) {
    std::string from = iconvName(dwgCodePage);
    std::string out;
    if (from == "UTF-8") {
        out.assign(bytes);
        return out;
    }
    iconv_t cd = converter("UTF-8", from);
    out.resize(bytes.size() * 4 + 8);
    char* in = const_cast<char*>(bytes.data());
    std::size_t inLeft = bytes.size();
    char* dst = out.data();
    std::size_t outLeft = out.size();
    while (inLeft > 0) {
        if (iconv(cd, &in, &inLeft, &dst, &outLeft) != static_cast<std::size_t>(-1)) break;
        if (errno != EILSEQ && errno != EINVAL) break;
        // A byte the code page does not define: keep it as the character of the same number, so
        // the text survives and the byte can be seen.
        std::string fallback;
        appendUtf8(fallback, static_cast<unsigned char>(*in));
        if (fallback.size() > outLeft) break;
        for (char c : fallback) *dst++ = c, --outLeft;
        ++in, --inLeft;
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
    }
    out.resize(out.size() - outLeft);
    return out;
}

std::string encodeCodePage(std::string_view utf8, std::string_view dwgCodePage) {
    std::string to = iconvName(dwgCodePage);
    if (to == "UTF-8") return std::string(utf8);
    iconv_t cd = converter(to, "UTF-8");
    std::string out;
    std::size_t pos = 0;
    char buffer[16];
    while (pos < utf8.size()) {
        char32_t cp;
        std::size_t n = utf8Char(utf8.substr(pos), cp);
        if (n == 1 && cp < 0x80) {
            out += static_cast<char>(cp);
            ++pos;
            continue;
        }
        char* in = const_cast<char*>(utf8.data() + pos);
        std::size_t inLeft = n;
        char* dst = buffer;
        std::size_t outLeft = sizeof buffer;
        if (iconv(cd, &in, &inLeft, &dst, &outLeft) != static_cast<std::size_t>(-1) &&
            iconv(cd, nullptr, nullptr, &dst, &outLeft) != static_cast<std::size_t>(-1)) {
            out.append(buffer, sizeof buffer - outLeft);
        } else {
            iconv(cd, nullptr, nullptr, nullptr, nullptr);
            std::snprintf(buffer, sizeof buffer, "\\U+%04X", static_cast<unsigned>(cp));
            out += buffer;
        }
        pos += n;
    }
    return out;
}

bool hasUnicodeEscape(std::string_view text) {
    return text.find("\\U+") != std::string_view::npos;
}

std::string decodeUnicodeEscapes(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] == '\\' && i + 6 < text.size() + 0 && text.compare(i, 3, "\\U+") == 0) {
            char32_t cp = 0;
            bool ok = true;
            for (std::size_t k = 3; k < 7; ++k) {
                int h = hexValue(text[i + k]);
                if (h < 0) ok = false;
                cp = (cp << 4) | static_cast<char32_t>(h < 0 ? 0 : h);
            }
            if (ok) {
                appendUtf8(out, cp);
                i += 7;
                continue;
            }
        }
        out += text[i++];
    }
    return out;
}

} // namespace qvad::dxf
