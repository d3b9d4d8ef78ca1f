// Wildcard matching of UTF-8 text, character by character (not byte by byte), case-sensitive:
//   #  a digit            @  a letter            .  neither letter nor digit
//   *  any run, even none ?  any one character   ~  (first) anything but the rest of the pattern
//   [...] one of the listed characters or ranges; [~...] one not listed
//   `  takes the next character literally       ,  separates alternative patterns

#include "qvad/api/host_session.h"

#include <cwctype>
#include <initializer_list>
#include <locale.h>
#include <string_view>
#include <vector>

namespace {

using Text = std::u32string;

locale_t unicodeCharacters() {
    static const locale_t characters = [] {
        for (const char* name : {"C.UTF-8", "C.utf8", "en_US.UTF-8"})
            if (locale_t loaded = newlocale(LC_CTYPE_MASK, name, locale_t(0))) return loaded;
        return locale_t(0);
    }();
    return characters;
}

// Malformed bytes become code points of their own (U+DC80..U+DCFF), so they still match only
// themselves and "?".
Text decodeUtf8(std::string_view bytes) {
    Text text;
    for (std::size_t i = 0; i < bytes.size();) {
        auto byte = static_cast<unsigned char>(bytes[i]);
        int length = byte < 0x80           ? 1
                     : (byte >> 5) == 0x6  ? 2
                     : (byte >> 4) == 0xE  ? 3
                     : (byte >> 3) == 0x1E ? 4
                                           : 0;
        char32_t code = length == 1   ? byte
                        : length == 2 ? byte & 0x1F
                        : length == 3 ? byte & 0x0F
                                      : byte & 0x07;
        bool valid = length > 0 && i + length <= bytes.size();
        for (int k = 1; valid && k < length; ++k) {
            auto next = static_cast<unsigned char>(bytes[i + k]);
            valid = (next & 0xC0) == 0x80;
            code = (code << 6) | (next & 0x3F);
        }
        if (!valid) {
            text.push_back(0xDC00 + byte);
            ++i;
            continue;
        }
        text.push_back(code);
        i += length;
    }
    return text;
}

bool isDigit(char32_t c) {
    return c >= U'0' && c <= U'9';
}

bool isLetter(char32_t c) {
    if (c < 0x80) return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
    locale_t characters = unicodeCharacters();
    return characters != locale_t(0) && c <= 0x10FFFF && iswalpha_l(static_cast<wint_t>(c), characters);
}

enum class Op { Literal, Digit, Letter, Other, AnyRun, AnyOne, Set };

struct Range {
    char32_t low, high;
};

struct Token {
    Op op = Op::Literal;
    char32_t literal = 0;
    bool negated = false;
    std::vector<Range> ranges;

    static Token of(Op op, char32_t literal = 0) {
        Token token;
        token.op = op;
        token.literal = literal;
        return token;
    }
};

// "[...]" starting at pattern[i] == '['; returns false (leaving the '[' to be literal) when unclosed.
bool readSet(const Text& pattern, std::size_t& i, Token& result) {
    std::size_t k = i + 1;
    Token token = Token::of(Op::Set);
    if (k < pattern.size() && pattern[k] == U'~') {
        token.negated = true;
        ++k;
    }
    bool first = true;
    while (k < pattern.size() && (pattern[k] != U']' || first)) {
        char32_t low = pattern[k];
        if (low == U'`' && k + 1 < pattern.size()) low = pattern[++k];
        ++k;
        char32_t high = low;
        if (k + 1 < pattern.size() && pattern[k] == U'-' && pattern[k + 1] != U']') {
            high = pattern[k + 1];
            if (high == U'`' && k + 2 < pattern.size()) high = pattern[++k + 1];
            k += 2;
        }
        token.ranges.push_back({low, high});
        first = false;
    }
    if (k >= pattern.size()) return false;
    i = k + 1;
    result = std::move(token);
    return true;
}

std::vector<Token> compile(const Text& pattern) {
    std::vector<Token> tokens;
    for (std::size_t i = 0; i < pattern.size();) {
        char32_t c = pattern[i];
        Token token = Token::of(Op::Literal, c);
        if (c == U'[' && readSet(pattern, i, token)) {
            tokens.push_back(std::move(token));
            continue;
        }
        if (c == U'`' && i + 1 < pattern.size())
            token.literal = pattern[++i];
        else if (c == U'#')
            token.op = Op::Digit;
        else if (c == U'@')
            token.op = Op::Letter;
        else if (c == U'.')
            token.op = Op::Other;
        else if (c == U'*')
            token.op = Op::AnyRun;
        else if (c == U'?')
            token.op = Op::AnyOne;
        tokens.push_back(std::move(token));
        ++i;
    }
    return tokens;
}

bool matchesOne(const Token& token, char32_t c) {
    switch (token.op) {
    case Op::Literal:
        return c == token.literal;
    case Op::Digit:
        return isDigit(c);
    case Op::Letter:
        return isLetter(c);
    case Op::Other:
        return !isDigit(c) && !isLetter(c);
    case Op::AnyOne:
        return true;
    case Op::Set: {
        bool listed = false;
        for (const Range& range : token.ranges) listed = listed || (c >= range.low && c <= range.high);
        return listed != token.negated;
    }
    case Op::AnyRun:
        break;
    }
    return false;
}

// Dynamic programming over (token, character): linear in each, so no pattern can take exponential time.
bool matches(const std::vector<Token>& tokens, const Text& text) {
    std::vector<char> reachable(text.size() + 1, 0), next(text.size() + 1, 0);
    reachable[0] = 1;
    for (const Token& token : tokens) {
        std::fill(next.begin(), next.end(), 0);
        for (std::size_t j = 0; j <= text.size(); ++j) {
            if (token.op == Op::AnyRun)
                next[j] = reachable[j] || (j > 0 && next[j - 1]);
            else if (j > 0)
                next[j] = reachable[j - 1] && matchesOne(token, text[j - 1]);
        }
        reachable.swap(next);
    }
    return reachable[text.size()] != 0;
}

// Splits at commas that are neither escaped nor inside a set.
std::vector<Text> alternatives(const Text& pattern) {
    std::vector<Text> parts(1);
    bool inSet = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char32_t c = pattern[i];
        if (c == U'`' && i + 1 < pattern.size()) {
            parts.back() += c;
            parts.back() += pattern[++i];
            continue;
        }
        if (c == U'[')
            inSet = true;
        else if (c == U']')
            inSet = false;
        if (c == U',' && !inSet)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

bool wildcardMatch(std::string_view textBytes, std::string_view patternBytes) {
    Text text = decodeUtf8(textBytes);
    for (Text part : alternatives(decodeUtf8(patternBytes))) {
        bool negated = !part.empty() && part.front() == U'~';
        if (negated) part.erase(0, 1);
        if (matches(compile(part), text) != negated) return true;
    }
    return false;
}

} // namespace

extern "C" QV_API int qvutWcMatch(const char* text, const char* pattern) {
    using namespace qvad::api;
    return guarded([&] {
        if (!text || !pattern) return refuse(HostError::BadArgument);
        return wildcardMatch(text, pattern) ? QV_NORM : QV_ERROR;
    });
}
