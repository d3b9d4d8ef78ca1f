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
    std::string_view store(std::string_view text);

private:
    static constexpr std::size_t kChunk = 64 * 1024;
    std::vector<std::unique_ptr<std::string>> m_buffers;
    std::vector<std::unique_ptr<char[]>> m_chunks;
    char* m_cursor = nullptr;
    std::size_t m_left = 0;
};

} // namespace qvad::dxf
