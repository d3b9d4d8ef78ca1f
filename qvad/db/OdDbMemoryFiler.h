#pragma once
// Where OdDbObject::dwgOutFields writes an object's defining fields: a byte stream in memory, so that
// two objects compare by comparing their streams.

#include <string>
#include <string_view>

class OdDbMemoryFiler {
public:
    void writeField(int code, std::string_view value) {
        m_bytes += std::to_string(code);
        m_bytes += '\x1f';
        m_bytes += value;
        m_bytes += '\x1e';
    }
    const std::string& bytes() const { return m_bytes; }
    void clear() { m_bytes.clear(); }

private:
    std::string m_bytes;
};
