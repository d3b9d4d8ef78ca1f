#pragma once

#include <string>
#include <string_view>

namespace qvad::dxf {

// Writes a temporary file in the target's folder, flushes it to disk and renames it over the
// target. On any failure the temporary file is removed, the target is untouched, and
// std::system_error names the path and the reason.
void writeFileAtomically(const std::string& path, std::string_view contents);

} // namespace qvad::dxf
