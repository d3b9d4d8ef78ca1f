#include "qvad/dxf/file_save.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace qvad::dxf {

void writeFileAtomically(const std::string& path, std::string_view contents) {
    writeFileAtomically(path, [&](const std::function<void(std::string_view)>& write) { write(contents); });
}

void writeFileAtomically(
    const std::string& path,
    const std::function<void(const std::function<void(std::string_view)>& write)>& produce) {
    std::filesystem::path target(path);
    std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    std::string temp = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
    int fd = mkstemp(temp.data());
    if (fd < 0) throw std::system_error(errno, std::generic_category(), "cannot save " + path);
    auto fail = [&](int err) {
        ::close(fd);
        ::unlink(temp.c_str());
        throw std::system_error(err, std::generic_category(), "cannot save " + path);
    };
    int writeError = 0;
    try {
        produce([&](std::string_view piece) {
            const char* p = piece.data();
            std::size_t left = piece.size();
            while (left > 0 && writeError == 0) {
                ssize_t n = ::write(fd, p, left);
                if (n < 0) {
                    if (errno != EINTR) writeError = errno;
                    continue;
                }
                p += n;
                left -= static_cast<std::size_t>(n);
            }
        });
    } catch (...) {
        ::close(fd);
        ::unlink(temp.c_str());
        throw;
    }
    if (writeError != 0) fail(writeError);
    // Keep the permissions of the file being replaced; a new file gets the usual 0666 less umask.
    struct stat old {};
    if (::stat(path.c_str(), &old) == 0) {
        ::fchmod(fd, old.st_mode & 07777);
    } else {
        mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, 0666 & ~mask);
    }
    if (::fsync(fd) != 0) fail(errno);
    if (::close(fd) != 0) {
        int err = errno;
        ::unlink(temp.c_str());
        throw std::system_error(err, std::generic_category(), "cannot save " + path);
    }
    if (::rename(temp.c_str(), path.c_str()) != 0) {
        int err = errno;
        ::unlink(temp.c_str());
        throw std::system_error(err, std::generic_category(), "cannot save " + path);
    }
}

} // namespace qvad::dxf
