// The clipboard calls over the shared clipboard file. Text is kept as UTF-8 (CF_TEXT in the host code
// page) and offered as CF_UNICODETEXT (UTF-16) too, as Windows converts between the two.

#include "qvad/text/text_codes.h"
#include "qvad/win32/clipboard_store.h"
#include "qvad/win32/global_memory.h"
#include "qvad/win32/windows_calls.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr UINT kOemText = 7;

bool isTextFormat(UINT format) {
    return format == CF_TEXT || format == CF_UNICODETEXT || format == kOemText;
}

// What this process has while it holds the clipboard open.
struct OpenClipboardState {
    std::unique_ptr<qvad::win32::ClipboardLock> lock;
    std::optional<std::string> text;
    bool changed = false;
    std::vector<HGLOBAL> blocks; // handed out or taken over; freed when the clipboard closes or empties
};

std::mutex& stateMutex() {
    static std::mutex m;
    return m;
}

OpenClipboardState& state() {
    static OpenClipboardState s;
    return s;
}

void freeBlocks(OpenClipboardState& s) {
    for (HGLOBAL block : s.blocks) GlobalFree(block);
    s.blocks.clear();
}

std::string toUtf16(const std::string& utf8) {
    std::string bytes;
    for (char32_t cp : qvad::text::decodeUtf8(utf8)) {
        auto put = [&bytes](char32_t unit) {
            bytes += static_cast<char>(unit & 0xFF);
            bytes += static_cast<char>((unit >> 8) & 0xFF);
        };
        if (cp >= 0x10000) {
            put(0xD800 + ((cp - 0x10000) >> 10));
            put(0xDC00 + ((cp - 0x10000) & 0x3FF));
        } else {
            put(cp);
        }
    }
    return bytes;
}

std::string fromUtf16(std::string_view bytes) {
    std::u32string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t unit =
            static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8);
        if (unit == 0) break;
        if (unit >= 0xD800 && unit < 0xDC00 && i + 3 < bytes.size()) {
            char32_t low =
                static_cast<unsigned char>(bytes[i + 2]) | (static_cast<unsigned char>(bytes[i + 3]) << 8);
            if (low >= 0xDC00 && low < 0xE000) {
                unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        text += unit;
    }
    return qvad::text::encodeUtf8(text);
}

std::string untilZero(std::string_view bytes) {
    auto zero = bytes.find('\0');
    return std::string(zero == std::string_view::npos ? bytes : bytes.substr(0, zero));
}

} // namespace

extern "C" {

QV_WIN32_API BOOL OpenClipboard(HWND) {
    std::lock_guard guard(stateMutex());
    OpenClipboardState& s = state();
    if (s.lock) return FALSE; // already open: Windows refuses a second open too
    auto lock = std::make_unique<qvad::win32::ClipboardLock>();
    if (!lock->held()) return FALSE;
    s.lock = std::move(lock);
    s.text = qvad::win32::readClipboardText();
    s.changed = false;
    return TRUE;
}

QV_WIN32_API BOOL CloseClipboard(void) {
    std::lock_guard guard(stateMutex());
    OpenClipboardState& s = state();
    if (!s.lock) return FALSE;
    bool written = !s.changed || qvad::win32::writeClipboardText(s.text);
    freeBlocks(s);
    s.lock.reset();
    s.text.reset();
    s.changed = false;
    return written ? TRUE : FALSE;
}

QV_WIN32_API BOOL EmptyClipboard(void) {
    std::lock_guard guard(stateMutex());
    OpenClipboardState& s = state();
    if (!s.lock) return FALSE;
    freeBlocks(s);
    s.text.reset();
    s.changed = true;
    return TRUE;
}

QV_WIN32_API HANDLE GetClipboardData(UINT format) {
    std::lock_guard guard(stateMutex());
    OpenClipboardState& s = state();
    if (!s.lock || !s.text || !isTextFormat(format)) return nullptr;
    HGLOBAL block = format == CF_UNICODETEXT ? qvad::win32::globalBlockWith(toUtf16(*s.text), 2)
                                             : qvad::win32::globalBlockWith(*s.text, 1);
    if (block) s.blocks.push_back(block);
    return block;
}

QV_WIN32_API HANDLE SetClipboardData(UINT format, HANDLE memory) {
    std::lock_guard guard(stateMutex());
    OpenClipboardState& s = state();
    // Only text travels between processes; a delayed render (null block) has nobody to render it.
    if (!s.lock || !isTextFormat(format) || !qvad::win32::isGlobalBlock(memory)) return nullptr;
    std::string_view bytes = qvad::win32::globalBlockBytes(memory);
    s.text = format == CF_UNICODETEXT ? fromUtf16(bytes) : untilZero(bytes);
    s.changed = true;
    s.blocks.push_back(memory);
    return memory;
}

QV_WIN32_API BOOL IsClipboardFormatAvailable(UINT format) {
    if (!isTextFormat(format)) return FALSE;
    std::lock_guard guard(stateMutex());
    OpenClipboardState& s = state();
    if (s.lock) return s.text ? TRUE : FALSE;
    return qvad::win32::readClipboardText() ? TRUE : FALSE;
}

} // extern "C"
