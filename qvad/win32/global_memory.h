#pragma once

#include "qvad/win32/windows_calls.h"

#include <string_view>

namespace qvad::win32 {

// A new block holding the bytes followed by zero bytes up to terminatorBytes; null without memory.
HGLOBAL globalBlockWith(std::string_view bytes, std::size_t terminatorBytes);

// The bytes of a live block, empty for anything else.
std::string_view globalBlockBytes(HGLOBAL block);

bool isGlobalBlock(HGLOBAL block);

} // namespace qvad::win32
