// Registry reads: Linux has no registry, so every key is missing, as on a machine without the program.

#include "qvad/win32/windows_calls.h"

extern "C" {

QV_WIN32_API LONG RegOpenKeyExA(HKEY, LPCSTR, DWORD, REGSAM, PHKEY result) {
    if (result) *result = nullptr;
    return ERROR_FILE_NOT_FOUND;
}

QV_WIN32_API LONG RegQueryValueExA(HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD) {
    return ERROR_FILE_NOT_FOUND;
}

QV_WIN32_API LONG RegCloseKey(HKEY key) {
    return key ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

} // extern "C"
