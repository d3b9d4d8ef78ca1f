#include "tooldeck/commands/cleanup/quantity_clipboard.h"

#include "qvad/win32/windows_calls.h"

#include <cstdlib>
#include <cstring>

namespace qvtd::quantity {

bool readClipboardNumber(double& value) {
    value = 0.0;
    if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return false;
    if (!OpenClipboard(nullptr)) return false;
    HANDLE data = GetClipboardData(CF_TEXT);
    if (!data) return false;
    std::string text;
    if (const char* locked = static_cast<const char*>(GlobalLock(data))) {
        text = locked;
        GlobalUnlock(data);
    }
    CloseClipboard();
    if (!text.empty()) value = std::strtod(text.c_str(), nullptr);
    return true;
}

bool writeClipboardText(const std::string& text) {
    if (text.empty()) return false;
    if (!OpenClipboard(nullptr)) return false;
    EmptyClipboard();
    HGLOBAL block = GlobalAlloc(GMEM_DDESHARE, text.size() + 1);
    bool written = false;
    if (block) {
        if (char* target = static_cast<char*>(GlobalLock(block))) {
            std::memcpy(target, text.c_str(), text.size() + 1);
            GlobalUnlock(block);
            written = SetClipboardData(CF_TEXT, block) != nullptr;
        }
        if (!written) GlobalFree(block);
    }
    CloseClipboard();
    return written;
}

} // namespace qvtd::quantity
