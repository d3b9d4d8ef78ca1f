#pragma once
// The options commands remember between runs of the host: section "QVADEXCMD" of the per-user file
// "qvad.ini" in the host's APPDATADIR folder. Every read and write goes straight to the file.

#include <optional>
#include <span>
#include <string>

namespace qvtd {

inline constexpr const char* kSettingsSection = "QVADEXCMD";

struct SettingKey {
    const char* key;
    const char* defaultText; // as it would stand in the file
    unsigned readBuffer;     // characters, terminator included
    const char* writeFormat; // printf format for numbers; null for text written as given
};

std::span<const SettingKey> settingKeys();
// Null for a key this module does not keep.
const SettingKey* findSettingKey(const char* key);

// APPDATADIR followed by "qvad.ini".
std::string settingsFilePath();

// The stored text, cut to the key's read buffer, or its default (or the given default, for the callers
// whose default differs from the table's).
std::string readSettingText(const char* key);
std::string readSettingText(const char* key, const char* defaultText);
// Only exactly "TRUE" is true.
bool readSettingBool(const char* key);
bool readSettingBool(const char* key, bool defaultValue);
int readSettingInt(const char* key);
// A stored text that is not a number gives the default.
double readSettingReal(const char* key);

bool writeSettingText(const char* key, const char* text);
bool writeSettingBool(const char* key, bool value);
bool writeSettingInt(const char* key, long value);
// Written with the key's format. A value outside the key's range is refused with its message on the
// command line and nothing is written.
bool writeSettingReal(const char* key, double value);

// The message refusing value for key, or nothing when the key accepts it.
std::optional<std::string> settingRangeRefusal(const char* key, double value);

} // namespace qvtd
