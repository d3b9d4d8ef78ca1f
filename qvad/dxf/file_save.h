#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace qvad::dxf {

// Writes a temporary file in the target's folder, flushes it to disk and renames it over the
// target. On any failure the temporary file is removed, the target is untouched, and
// std::system_error names the path and the reason.
void writeFileAtomically(const std::string& path, std::string_view contents);
// The same, with the contents produced piece by piece through `write`.
void writeFileAtomically(
    const std::string& path,
    const std::function<void(const std::function<void(std::string_view)>& write)>& produce);

} // namespace qvad::dxf
