#include "qvad/dxf/string_pool.h"

#include <cstring>

namespace qvad::dxf {

std::string_view StringPool::adopt(std::string&& buffer) {
    m_buffers.push_back(std::make_unique<std::string>(std::move(buffer)));
    return *m_buffers.back();
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
