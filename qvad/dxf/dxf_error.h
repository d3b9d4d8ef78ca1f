#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace qvad::dxf {

// A drawing that cannot be read. `line` is the 1-based text line (ASCII files) or 0 when the
// position is a byte offset given in the message (binary files).
class DxfError : public std::runtime_error {
public:
    DxfError(std::size_t line, const std::string& reason) : std::runtime_error(reason), m_line(line) {}
    std::size_t line() const { return m_line; }

private:
    std::size_t m_line;
};

} // namespace qvad::dxf
