#include "tooldeck/module/settings.h"

#include "qvad/api/qvad_api.h"
#include "qvad/win32/windows_calls.h"
#include "tooldeck/host/host_variables.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace qvtd {

namespace {

// TCASE_STA holds the last case option chosen by tcase, as its keyword.
constexpr SettingKey kKeys[] = {
    {"TXT2MTXT_SELECTTYPE", "FALSE", 30, nullptr},
    {"TXT2MTXT_WORDWARD", "TRUE", 30, nullptr},
    {"TCASE_STA", "Sentence", 30, nullptr},
    {"TEXTMASK_MASKTYPE", "Wipeout", 30, nullptr},
    {"TEXTMASK_OFFSET", "0.35", 50, "%f"},
    {"TEXTMASK_COLOR", "2", 30, "%d"},
    {"TEXTCIRCLE", "0.35", 30, "%.4f"},
    {"EXCMDLAYEROFF", "B", 30, nullptr},
    {"EXOFFSET-LAYERMODE", "Source", 30, nullptr},
    {"EXOFFSET-DIST", "0", 30, "%.2f"},
    {"Breakline-Block", "BRKLINE.DWG", 256, nullptr},
    {"Breakline-Size", "1", 80, "%.2f"},
    {"Breakline-Exe", "2.5", 80, "%.2f"},
    {"Draw-arcDist", "0", 80, "%g"},
    {"Dimcoor", "3635", 30, "%ld"},
    {"DimcoorZg", "3.0", 30, "%.1f"},
    {"DimcoorBl", "1.0", 30, "%.1f"},
};

struct SettingRange {
    const char* key;
    double low, high;
    const char* refusal;
};

constexpr SettingRange kRanges[] = {
    {"DimcoorZg", 0.1, 100.0, "\n参数错误，请输入0.1到100之间的值:"},
    {"DimcoorBl", 0.1, 1000.0, "\n参数错误，请输入0.1到1000之间的值:"},
};

bool sameKey(const char* a, const char* b) {
    return strcasecmp(a, b) == 0;
}

std::optional<double> parseReal(const std::string& text) {
    if (text.empty()) return std::nullopt;
    errno = 0;
    char* end = nullptr;
    double value = std::strtod(text.c_str(), &end);
    while (end && (*end == ' ' || *end == '\t')) ++end;
    if (errno != 0 || !end || *end != '\0' || end == text.c_str()) return std::nullopt;
    return value;
}

} // namespace

std::span<const SettingKey> settingKeys() {
    return kKeys;
}

const SettingKey* findSettingKey(const char* key) {
    if (!key) return nullptr;
    for (const SettingKey& entry : kKeys)
        if (sameKey(entry.key, key)) return &entry;
    return nullptr;
}

std::string settingsFilePath() {
    return getStringVar("APPDATADIR") + "qvad.ini";
}

std::string readSettingText(const char* key, const char* defaultText) {
    const SettingKey* entry = findSettingKey(key);
    std::vector<char> buffer(entry ? entry->readBuffer : 256, '\0');
    GetPrivateProfileStringA(kSettingsSection, key, defaultText ? defaultText : "", buffer.data(),
                             static_cast<DWORD>(buffer.size()), settingsFilePath().c_str());
    return buffer.data();
}

std::string readSettingText(const char* key) {
    const SettingKey* entry = findSettingKey(key);
    return readSettingText(key, entry ? entry->defaultText : "");
}

bool readSettingBool(const char* key, bool defaultValue) {
    return readSettingText(key, defaultValue ? "TRUE" : "FALSE") == "TRUE";
}

bool readSettingBool(const char* key) {
    return readSettingText(key) == "TRUE";
}

int readSettingInt(const char* key) {
    const SettingKey* entry = findSettingKey(key);
    int fallback = entry ? std::atoi(entry->defaultText) : 0;
    return static_cast<int>(
        GetPrivateProfileIntA(kSettingsSection, key, fallback, settingsFilePath().c_str()));
}

double readSettingReal(const char* key) {
    const SettingKey* entry = findSettingKey(key);
    double fallback = entry ? std::strtod(entry->defaultText, nullptr) : 0.0;
    return parseReal(readSettingText(key)).value_or(fallback);
}

bool writeSettingText(const char* key, const char* text) {
    return WritePrivateProfileStringA(kSettingsSection, key, text, settingsFilePath().c_str()) != FALSE;
}

bool writeSettingBool(const char* key, bool value) {
    return writeSettingText(key, value ? "TRUE" : "FALSE");
}

bool writeSettingInt(const char* key, long value) {
    const SettingKey* entry = findSettingKey(key);
    char text[32];
    if (entry && entry->writeFormat && std::strcmp(entry->writeFormat, "%d") == 0)
        std::snprintf(text, sizeof text, "%d", static_cast<int>(value));
    else
        std::snprintf(text, sizeof text, "%ld", value);
    return writeSettingText(key, text);
}

bool writeSettingReal(const char* key, double value) {
    if (std::optional<std::string> refusal = settingRangeRefusal(key, value)) {
        qvutPrintf("%s", refusal->c_str());
        return false;
    }
    const SettingKey* entry = findSettingKey(key);
    const char* format = entry && entry->writeFormat ? entry->writeFormat : "%f";
    char text[64];
    if (std::strcmp(format, "%d") == 0 || std::strcmp(format, "%ld") == 0)
        std::snprintf(text, sizeof text, "%ld", static_cast<long>(value));
    else
        std::snprintf(text, sizeof text, format, value);
    return writeSettingText(key, text);
}

std::optional<std::string> settingRangeRefusal(const char* key, double value) {
    for (const SettingRange& range : kRanges)
        if (key && sameKey(range.key, key) && !(value >= range.low && value <= range.high))
            return range.refusal;
    return std::nullopt;
}

} // namespace qvtd
