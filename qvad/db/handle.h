#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qvad {

// A drawing object's handle: the hexadecimal number DXF writes in group 5. 0 means none.
using Handle = std::uint64_t;

// Returns 0 for empty or malformed text, so a broken pointer reads as "no object".
Handle parseHandle(std::string_view hex);
std::string formatHandle(Handle h);

} // namespace qvad
