#pragma once

#include <optional>
#include <string>

namespace qvad::win32 {

// The clipboard's text as every host process of the user sees it: a file in the user's state folder
// ($XDG_STATE_HOME/qvad/clipboard.txt, else ~/.local/state/qvad/clipboard.txt). No file: empty clipboard.
std::string clipboardFilePath();

// Holds the clipboard for one process at a time (an exclusive lock on a file beside it), from
// OpenClipboard to CloseClipboard.
class ClipboardLock {
public:
    // Waits a moment for another process to let go; check held() afterwards.
    ClipboardLock();
    ~ClipboardLock();
    ClipboardLock(const ClipboardLock&) = delete;
    ClipboardLock& operator=(const ClipboardLock&) = delete;
    bool held() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

// Reading and writing assume the lock is held (or accept a torn view, as availability checks do).
std::optional<std::string> readClipboardText();
// nullopt empties the clipboard. False when the file cannot be written; the old content then stays.
bool writeClipboardText(const std::optional<std::string>& text);

} // namespace qvad::win32
