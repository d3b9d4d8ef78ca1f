#include "qvad/dxf/tag_reader.h"

#include "qvad/dxf/dxf_error.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <exception>
#include <thread>

namespace qvad::dxf {
namespace {

// The 22 bytes every binary DXF file starts with; the first word is spelled in hex on purpose.
constexpr std::string_view kBinarySentinel("\x41\x75\x74\x6F\x43\x41\x44 Binary DXF\r\n\x1a\0", 22);

std::string_view trimSpaces(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
    return s;
}

bool parseCode(std::string_view s, int& code) {
    std::size_t i = 0, n = s.size();
    while (i < n && s[i] == ' ') ++i;
    bool negative = i < n && s[i] == '-';
    if (negative) ++i;
    std::size_t first = i;
    int value = 0;
    while (i < n && s[i] >= '0' && s[i] <= '9' && i - first < 6) value = value * 10 + (s[i++] - '0');
    if (i == first) return false;
    while (i < n && (s[i] == ' ' || s[i] == '\t' || s[i] == '\r')) ++i;
    if (i != n) return false;
    code = negative ? -value : value;
    return true;
}

bool looksLikeInteger(std::string_view s) {
    if (!s.empty() && (s[0] == '-' || s[0] == '+')) s.remove_prefix(1);
    if (s.empty()) return false;
    for (char c : s)
        if (c < '0' || c > '9') return false;
    return true;
}

bool looksLikeReal(std::string_view s) {
    std::size_t i = 0, n = s.size();
    if (i < n && (s[i] == '-' || s[i] == '+')) ++i;
    std::size_t digits = 0;
    while (i < n && s[i] >= '0' && s[i] <= '9') ++i, ++digits;
    if (i < n && s[i] == '.') {
        ++i;
        while (i < n && s[i] >= '0' && s[i] <= '9') ++i, ++digits;
    }
    if (digits == 0) return false;
    if (i < n && (s[i] == 'e' || s[i] == 'E')) {
        ++i;
        if (i < n && (s[i] == '-' || s[i] == '+')) ++i;
        std::size_t expDigits = 0;
        while (i < n && s[i] >= '0' && s[i] <= '9') ++i, ++expDigits;
        if (expDigits == 0) return false;
    }
    return i == n;
}

bool isBlank(std::string_view s) {
    return std::all_of(s.begin(), s.end(), [](char c) {
        return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0' || c == 0x1a;
    });
}

std::string printable(std::string_view s) {
    std::string out;
    for (char c : s.substr(0, 40)) out += (static_cast<unsigned char>(c) < 32) ? '?' : c;
    if (s.size() > 40) out += "...";
    return out;
}

// Splits lines [p, end) into tags, appending to `file`, until `stop` (a line start), the EOF tag or
// the end. Returns where it stopped and whether that was the EOF tag.
struct RangeEnd {
    const char* at;
    bool sawEof;
};

RangeEnd tokenizeRange(const char* p, const char* end, const char* stop, TagFile& file) {
    auto nextLine = [&](std::string_view& line) {
        if (p >= end) return false;
        // Most DXF lines are a few characters long, where a plain loop beats a memchr call.
        const char* q = p;
        while (q < end && *q != '\n') ++q;
        line = std::string_view(p, static_cast<std::size_t>(q - p));
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        p = q < end ? q + 1 : end;
        return true;
    };
    std::string_view codeLine, valueLine;
    while (p != stop && nextLine(codeLine)) {
        std::size_t line = 2 * (file.tags.size() + file.commentsBefore.size()) + 1;
        int code = 0;
        if (!parseCode(codeLine, code)) {
            if (isBlank(std::string_view(codeLine.data(), static_cast<std::size_t>(end - codeLine.data()))))
                return {end, false};
            throw DxfError(line, "group code expected, found \"" + printable(codeLine) + "\"");
        }
        if (!nextLine(valueLine))
            throw DxfError(line + 1, "unexpected end of file: value of group code " + std::to_string(code) +
                                         " missing");
        ValueKind kind = valueKind(code);
        if (kind == ValueKind::Double || kind == ValueKind::Int16 || kind == ValueKind::Int32 ||
            kind == ValueKind::Int64 || kind == ValueKind::Bool) {
            valueLine = trimSpaces(valueLine);
            bool ok = kind == ValueKind::Double ? looksLikeReal(valueLine) : looksLikeInteger(valueLine);
            if (!ok)
                throw DxfError(line + 1, "group code " + std::to_string(code) + " needs a number, found \"" +
                                             printable(valueLine) + "\"");
        } else if (kind == ValueKind::Handle) {
            valueLine = trimSpaces(valueLine);
        }
        // Comments carry no drawing data; dropping them keeps every later stage free of them.
        if (code == 999) {
            file.commentsBefore.push_back(file.tags.size());
            continue;
        }
        file.tags.emplace_back(code, valueLine);
        if (code != 0) continue;
        ++file.records;
        if (valueLine == "EOF") {
            std::string_view rest(p, static_cast<std::size_t>(end - p));
            if (!isBlank(rest)) file.bytesAfterEof = rest.size();
            return {p, true};
        }
    }
    return {p, false};
}

std::size_t countLines(std::string_view s) {
    return static_cast<std::size_t>(std::count(s.begin(), s.end(), '\n'));
}

// The start of a "  0" line near the middle: a likely tag boundary for a second thread to start at.
// It may be a value line instead; the first thread tells, because it must arrive exactly there.
const char* candidateBoundary(std::string_view buf) {
    std::size_t from = buf.size() / 2;
    std::size_t limit = std::min(buf.size(), from + (1u << 20));
    for (std::size_t at = buf.find("\n  0", from); at != std::string_view::npos && at < limit;
         at = buf.find("\n  0", at + 1)) {
        std::size_t after = at + 4;
        if (after < buf.size() && (buf[after] == '\n' || buf[after] == '\r')) return buf.data() + at + 1;
    }
    return nullptr;
}

constexpr std::size_t kParallelThreshold = 8u << 20;

TagFile readAscii(std::string_view buf) {
    TagFile file;
    if (buf.starts_with("\xEF\xBB\xBF")) buf.remove_prefix(3);
    const char* begin = buf.data();
    const char* end = begin + buf.size();
    const char* boundary = buf.size() >= kParallelThreshold ? candidateBoundary(buf) : nullptr;
    if (!boundary) {
        file.tags.reserve(countLines(buf) / 2 + 2);
        tokenizeRange(begin, end, nullptr, file);
        return file;
    }

    // Large files are split in two at a likely tag boundary and read by two threads.
    TagFile second;
    std::exception_ptr secondError;
    std::thread worker([&] {
        try {
            second.tags.reserve(
                countLines(std::string_view(boundary, static_cast<std::size_t>(end - boundary))) / 2 + 2);
            tokenizeRange(boundary, end, nullptr, second);
        } catch (...) {
            secondError = std::current_exception();
        }
    });
    RangeEnd first;
    try {
        file.tags.reserve(countLines(buf) / 2 + 2);
        first = tokenizeRange(begin, end, boundary, file);
    } catch (...) {
        worker.join();
        throw;
    }
    worker.join();
    if (first.sawEof) return file;
    if (first.at != boundary) {
        // The boundary was a value line: the second half is read again, in order.
        tokenizeRange(first.at, end, nullptr, file);
        return file;
    }
    std::size_t linesBefore = 2 * (file.tags.size() + file.commentsBefore.size());
    if (secondError) {
        try {
            std::rethrow_exception(secondError);
        } catch (const DxfError& e) {
            throw DxfError(e.line() + linesBefore, e.what());
        }
    }
    std::size_t offset = file.tags.size();
    file.tags.insert(file.tags.end(), second.tags.begin(), second.tags.end());
    for (std::size_t at : second.commentsBefore) file.commentsBefore.push_back(at + offset);
    file.records += second.records;
    file.bytesAfterEof = second.bytesAfterEof;
    return file;
}

class BinaryCursor {
public:
    BinaryCursor(std::string_view buf, std::size_t pos) : m_buf(buf), m_pos(pos) {}
    bool atEnd() const { return m_pos >= m_buf.size(); }
    std::size_t pos() const { return m_pos; }

    template <class T> T read() {
        need(sizeof(T));
        T v;
        std::memcpy(&v, m_buf.data() + m_pos, sizeof(T));
        m_pos += sizeof(T);
        static_assert(std::endian::native == std::endian::little, "binary DXF is little-endian");
        return v;
    }
    std::string_view cstring() {
        const void* z = std::memchr(m_buf.data() + m_pos, '\0', m_buf.size() - m_pos);
        if (!z)
            throw DxfError(0,
                           "binary file truncated at byte " + std::to_string(m_pos) + ": unterminated text");
        std::size_t len = static_cast<std::size_t>(static_cast<const char*>(z) - (m_buf.data() + m_pos));
        std::string_view s(m_buf.data() + m_pos, len);
        m_pos += len + 1;
        return s;
    }
    std::string_view bytes(std::size_t n) {
        need(n);
        std::string_view s(m_buf.data() + m_pos, n);
        m_pos += n;
        return s;
    }

private:
    void need(std::size_t n) const {
        if (m_pos + n > m_buf.size())
            throw DxfError(0, "binary file truncated at byte " + std::to_string(m_pos));
    }
    std::string_view m_buf;
    std::size_t m_pos;
};

template <class T> std::string_view formatNumber(T v, StringPool& pool) {
    char text[64];
    auto r = std::to_chars(text, text + sizeof text, v);
    return pool.store(std::string_view(text, static_cast<std::size_t>(r.ptr - text)));
}

TagFile readBinary(std::string_view buf, StringPool& pool) {
    TagFile file;
    file.binary = true;
    // R12 binary files store codes in one byte (255 escapes to a 16-bit code); later ones use two.
    // The first tag is always "0 SECTION", so the byte after the sentinel tells the two apart.
    bool wideCodes = buf.size() > kBinarySentinel.size() + 1 && buf[kBinarySentinel.size() + 1] == '\0';
    BinaryCursor in(buf, kBinarySentinel.size());
    while (!in.atEnd()) {
        std::size_t at = in.pos();
        int code;
        if (wideCodes) {
            code = in.read<std::int16_t>();
        } else {
            code = in.read<std::uint8_t>();
            if (code == 255) code = in.read<std::int16_t>();
        }
        std::string_view value;
        switch (valueKind(code)) {
        case ValueKind::Double:
            value = formatNumber(in.read<double>(), pool);
            break;
        case ValueKind::Int16:
            value = formatNumber(in.read<std::int16_t>(), pool);
            break;
        case ValueKind::Int32:
            value = formatNumber(in.read<std::int32_t>(), pool);
            break;
        case ValueKind::Int64:
            value = formatNumber(in.read<std::int64_t>(), pool);
            break;
        case ValueKind::Bool:
            value = formatNumber(static_cast<int>(in.read<std::uint8_t>()), pool);
            break;
        case ValueKind::Binary: {
            std::string_view raw = in.bytes(in.read<std::uint8_t>());
            std::string hex;
            hex.reserve(raw.size() * 2);
            static const char digits[] = "0123456789ABCDEF";
            for (unsigned char c : raw) hex += digits[c >> 4], hex += digits[c & 15];
            value = pool.store(hex);
            break;
        }
        default:
            value = in.cstring();
            break;
        }
        if (code < -5 || code > 1071)
            throw DxfError(0,
                           "invalid group code " + std::to_string(code) + " at byte " + std::to_string(at));
        if (code == 999) continue;
        file.tags.emplace_back(code, value);
        if (code == 0 && value == "EOF") {
            if (!isBlank(buf.substr(in.pos()))) file.bytesAfterEof = buf.size() - in.pos();
            break;
        }
    }
    return file;
}

} // namespace

std::size_t TagFile::lineOf(std::size_t index) const {
    auto shift =
        std::upper_bound(commentsBefore.begin(), commentsBefore.end(), index) - commentsBefore.begin();
    return 2 * (index + static_cast<std::size_t>(shift)) + 1;
}

std::string_view binaryDxfSentinel() {
    return kBinarySentinel;
}

bool isBinaryDxf(std::string_view buffer) {
    return buffer.starts_with(kBinarySentinel);
}

TagFile readTags(std::string_view buffer, StringPool& pool) {
    return isBinaryDxf(buffer) ? readBinary(buffer, pool) : readAscii(buffer);
}

} // namespace qvad::dxf
