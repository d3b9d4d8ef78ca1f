#include "qvad/win32/clipboard_store.h"

#include "qvad/dxf/file_save.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace qvad::win32 {
namespace {

std::string stateFolder() {
    if (const char* state = std::getenv("XDG_STATE_HOME"); state && *state == '/')
        return std::string(state) + "/qvad";
    const char* home = std::getenv("HOME");
    return std::string(home && *home ? home : "/tmp") + "/.local/state/qvad";
}

} // namespace

std::string clipboardFilePath() {
    return stateFolder() + "/clipboard.txt";
}

ClipboardLock::ClipboardLock() {
    std::error_code ignored;
    std::filesystem::create_directories(stateFolder(), ignored);
    std::string lockPath = stateFolder() + "/clipboard.lock";
    m_fd = open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (m_fd < 0) return;
    // Another process holds the clipboard only for the moment it takes to copy or paste.
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (flock(m_fd, LOCK_EX | LOCK_NB) == 0) return;
        if (errno != EWOULDBLOCK && errno != EINTR) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    close(m_fd);
    m_fd = -1;
}

ClipboardLock::~ClipboardLock() {
    if (m_fd >= 0) close(m_fd); // closing releases the lock
}

std::optional<std::string> readClipboardText() {
    std::ifstream in(clipboardFilePath(), std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool writeClipboardText(const std::optional<std::string>& text) {
    try {
        if (!text) {
            std::error_code error;
            std::filesystem::remove(clipboardFilePath(), error);
            return !error;
        }
        qvad::dxf::writeFileAtomically(clipboardFilePath(), *text);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace qvad::win32
