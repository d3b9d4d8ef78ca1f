#include "qvad/dxf/string_pool.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace qvad::dxf {

std::string_view StringPool::adopt(std::string&& buffer) {
    m_buffers.push_back(std::make_unique<std::string>(std::move(buffer)));
    return *m_buffers.back();
}

StringPool::Mapping::~Mapping() {
    if (address) munmap(address, size);
}

std::string_view StringPool::mapFile(const std::string& path) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) throw std::system_error(errno, std::generic_category(), "cannot open " + path);
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        int err = errno ? errno : EINVAL;
        ::close(fd);
        throw std::system_error(err, std::generic_category(), "cannot read " + path);
    }
    auto size = static_cast<std::size_t>(info.st_size);
    if (size == 0) {
        ::close(fd);
        return {};
    }
    void* address = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, fd, 0);
    int err = errno;
    ::close(fd);
    if (address == MAP_FAILED) throw std::system_error(err, std::generic_category(), "cannot read " + path);
    ::madvise(address, size, MADV_SEQUENTIAL);
    // Built in place: a temporary Mapping would unmap on destruction.
    auto mapping = std::make_unique<Mapping>();
    mapping->address = address;
    mapping->size = size;
    m_mappings.push_back(std::move(mapping));
    return {static_cast<const char*>(address), size};
}

std::string_view StringPool::store(std::string_view text) {
    if (text.empty()) return {};
    if (text.size() > kChunk / 4) {
        m_buffers.push_back(std::make_unique<std::string>(text));
        return *m_buffers.back();
    }
    if (text.size() > m_left) {
        m_chunks.push_back(std::make_unique<char[]>(kChunk));
        m_cursor = m_chunks.back().get();
        m_left = kChunk;
    }
    std::memcpy(m_cursor, text.data(), text.size());
    std::string_view stored(m_cursor, text.size());
    m_cursor += text.size();
    m_left -= text.size();
    return stored;
}

} // namespace qvad::dxf
