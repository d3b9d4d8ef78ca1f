#pragma once
// The module's banner and the project's address.

#include <string>

namespace qvtd {

inline constexpr const char* kProjectAddress = "https://qvtooldeck.example.org";

// Module name, version and a one-line description.
std::string bannerText();

} // namespace qvtd
