#pragma once

#include <string>
#include <string_view>

namespace qvad::win32 {

// True when every line of the settings text is blank, a comment, a section header or a key=value line,
// no key repeats within its section and no section repeats. Only such a file survives a rewrite
// through the INI library unchanged in content, so anything else is read but never rewritten.
bool isPlainProfileText(std::string_view text);

// The comment lines after the file's last key or section, which the INI library does not keep; empty
// when there are none.
std::string trailingComments(std::string_view text);

} // namespace qvad::win32
