#include "qvad/win32/profile_syntax.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string>

namespace qvad::win32 {
namespace {

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front()))) s.remove_prefix(1);
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back()))) s.remove_suffix(1);
    return s;
}

std::string lower(std::string_view s) {
    std::string out(s);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return out;
}

} // namespace

bool isPlainProfileText(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) return false;
    std::set<std::string> sections;
    std::set<std::string> keys;
    while (!text.empty()) {
        auto end = text.find('\n');
        std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty() || line.front() == ';' || line.front() == '#') continue;
        if (line.front() == '[') {
            if (line.back() != ']' ||
                !sections.insert(lower(trimmed(line.substr(1, line.size() - 2)))).second)
                return false;
            keys.clear();
            continue;
        }
        auto equals = line.find('=');
        if (equals == std::string_view::npos || equals == 0) return false;
        if (!keys.insert(lower(trimmed(line.substr(0, equals)))).second) return false;
    }
    return true;
}

std::string trailingComments(std::string_view text) {
    std::string comments;
    while (!text.empty()) {
        auto end = text.find('\n');
        std::string_view raw = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        std::string_view line = trimmed(raw);
        if (line.empty()) continue;
        if (line.front() == ';' || line.front() == '#')
            comments.append(line).append("\n");
        else
            comments.clear(); // a comment before an entry travels with that entry
    }
    return comments;
}

} // namespace qvad::win32
