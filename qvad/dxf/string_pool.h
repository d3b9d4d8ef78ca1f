#pragma once
// Owns the bytes that tag values point into: the loaded file itself and every text made later.
// Chunks never move, so string_views into them stay valid for the pool's lifetime.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qvad::dxf {

class StringPool {
public:
    StringPool() = default;
    StringPool(const StringPool&) = delete;
    StringPool& operator=(const StringPool&) = delete;
    StringPool(StringPool&&) = default;
    StringPool& operator=(StringPool&&) = default;

    // Takes ownership of a whole buffer (a loaded file) and returns a view of it.
    std::string_view adopt(std::string&& buffer);
    // Maps a file read-only and keeps the mapping; the page cache serves it without a copy.
    // Throws std::system_error naming the path.
    std::string_view mapFile(const std::string& path);
    std::string_view store(std::string_view text);

private:
    static constexpr std::size_t kChunk = 64 * 1024;
    std::vector<std::unique_ptr<std::string>> m_buffers;
    std::vector<std::unique_ptr<char[]>> m_chunks;
    struct Mapping {
        void* address = nullptr;
        std::size_t size = 0;
        ~Mapping();
    };
    std::vector<std::unique_ptr<Mapping>> m_mappings;
    char* m_cursor = nullptr;
    std::size_t m_left = 0;
};

} // namespace qvad::dxf
