// MessageBoxA and Beep: a host without windows reports on its console and never waits for an answer.

#include "qvad/text/host_print.h"
#include "qvad/win32/windows_calls.h"

#include <string>
#include <unistd.h>

extern "C" QV_WIN32_API int MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT) {
    std::string line = caption && *caption ? std::string(caption) + ": " : std::string();
    line += text ? text : "";
    qvad::hostPrint(line);
    return IDOK;
}

extern "C" QV_WIN32_API BOOL Beep(DWORD, DWORD) {
    // A bell in a redirected output would be junk in someone's log.
    if (isatty(STDOUT_FILENO)) {
        ssize_t written = write(STDOUT_FILENO, "\a", 1);
        (void)written;
    }
    return TRUE;
}
