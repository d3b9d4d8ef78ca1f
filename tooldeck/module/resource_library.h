#pragma once
// The module's resource library (prompt and message texts, dialog layouts): one handle for the process,
// opened on first need and never freed.

#include "qvad/win32/windows_calls.h"

namespace qvtd {

inline constexpr const char* kResourceLibraryName = "QvTooldeckRes.dll";

// Null until the library has been opened.
HMODULE resourceLibrary();
// Opens the library when it is not open yet; no message on failure. Returns the handle (may be null).
HMODULE openResourceLibrary();
// Uses a library opened elsewhere (a host that opened it itself, or a test's own table).
void useResourceLibrary(HMODULE library);

} // namespace qvtd
