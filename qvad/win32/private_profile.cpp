// GetPrivateProfileStringA, GetPrivateProfileIntA and WritePrivateProfileStringA with their Windows
// return-value rules, over ProfileFile.

#include "qvad/win32/profile_file.h"
#include "qvad/win32/windows_calls.h"

#include <cctype>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

namespace {

using qvad::win32::ProfileFile;

// Windows strips one pair of matching quotes around a value, and trailing blanks from the default.
std::string unquoted(std::string text) {
    if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front())
        return text.substr(1, text.size() - 2);
    return text;
}

std::string trimmedDefault(LPCSTR defaultValue) {
    std::string text = defaultValue ? defaultValue : "";
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.pop_back();
    return text;
}

DWORD copyText(const std::string& text, LPSTR buffer, DWORD size) {
    if (size == 0) return 0;
    std::size_t copied = text.size() < size ? text.size() : size - 1;
    std::memcpy(buffer, text.data(), copied);
    buffer[copied] = '\0';
    return static_cast<DWORD>(copied);
}

// Names, each ended by a zero, the list ended by one more; a list that does not fit is cut and still
// ends with two zeros, and then the answer is size - 2.
DWORD copyNameList(const std::vector<std::string>& names, LPSTR buffer, DWORD size) {
    if (size == 0) return 0;
    if (size == 1) {
        buffer[0] = '\0';
        return 0;
    }
    std::string list;
    for (const std::string& name : names) list += name + '\0';
    if (list.size() + 1 <= size) {
        std::memcpy(buffer, list.data(), list.size());
        buffer[list.size()] = '\0';
        if (list.empty() && size > 1) buffer[1] = '\0';
        return static_cast<DWORD>(list.size());
    }
    std::memcpy(buffer, list.data(), size - 2);
    buffer[size - 2] = '\0';
    buffer[size - 1] = '\0';
    return size - 2;
}

// The digits Windows reads from an integer setting: blanks, a sign, a 0x/0o/0b base prefix, then as many
// digits as there are. Text without digits is 0.
UINT parseProfileInt(const std::string& text) {
    std::size_t i = 0;
    while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    unsigned base = 10;
    if (i + 1 < text.size() && text[i] == '0') {
        char prefix = static_cast<char>(std::tolower(static_cast<unsigned char>(text[i + 1])));
        base = prefix == 'x' ? 16 : prefix == 'o' ? 8 : prefix == 'b' ? 2 : 10;
        if (base != 10) i += 2;
    }
    unsigned value = 0;
    for (; i < text.size(); ++i) {
        int c = std::tolower(static_cast<unsigned char>(text[i]));
        unsigned digit = std::isdigit(c)        ? static_cast<unsigned>(c - '0')
                         : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                                : 99;
        if (digit >= base) break;
        value = value * base + digit;
    }
    return negative ? 0u - value : value;
}

bool loadProfile(LPCSTR fileName, ProfileFile& profile) {
    return fileName && *fileName && profile.load(fileName);
}

} // namespace

extern "C" {

QV_WIN32_API DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR returned,
                                            DWORD size, LPCSTR fileName) {
    if (!returned) return 0;
    try {
        ProfileFile profile;
        bool loaded = loadProfile(fileName, profile);
        if (!section)
            return copyNameList(loaded ? profile.sectionNames() : std::vector<std::string>{}, returned, size);
        if (!key)
            return copyNameList(loaded ? profile.keyNames(section) : std::vector<std::string>{}, returned,
                                size);
        std::optional<std::string> value = loaded ? profile.value(section, key) : std::nullopt;
        return copyText(value ? unquoted(*value) : trimmedDefault(defaultValue), returned, size);
    } catch (const std::exception&) {
        return copyText(trimmedDefault(defaultValue), returned, size);
    }
}

QV_WIN32_API UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT defaultValue, LPCSTR fileName) {
    if (!section || !key) return static_cast<UINT>(defaultValue);
    try {
        ProfileFile profile;
        if (!loadProfile(fileName, profile)) return static_cast<UINT>(defaultValue);
        std::optional<std::string> value = profile.value(section, key);
        if (!value || unquoted(*value).empty()) return static_cast<UINT>(defaultValue);
        return parseProfileInt(unquoted(*value));
    } catch (const std::exception&) {
        return static_cast<UINT>(defaultValue);
    }
}

QV_WIN32_API BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR fileName) {
    // All three null only asks Windows to flush its cache; nothing is cached here.
    if (!section) return !key && !value ? TRUE : FALSE;
    if (!fileName || !*fileName) return FALSE;
    try {
        qvad::win32::ProfileWriteLock lock(fileName);
        ProfileFile profile;
        if (!profile.load(fileName)) return FALSE;
        if (!key)
            profile.removeSection(section);
        else if (!value)
            profile.removeKey(section, key);
        else
            profile.setValue(section, key, value);
        return profile.save(fileName) ? TRUE : FALSE;
    } catch (const std::exception&) {
        return FALSE;
    }
}

} // extern "C"
