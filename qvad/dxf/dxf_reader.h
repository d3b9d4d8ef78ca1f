#pragma once

#include <memory>
#include <string>

class OdDbDatabase;

namespace qvad::dxf {

// Loads a DXF drawing. Throws DxfError (with the line) for a file that cannot be read, and
// std::system_error when the file cannot be opened. Oddities that can be mended are mended and
// listed in the database's repairs().
std::unique_ptr<OdDbDatabase> readDxfFile(const std::string& path);
std::unique_ptr<OdDbDatabase> readDxfBuffer(std::string buffer);

} // namespace qvad::dxf
