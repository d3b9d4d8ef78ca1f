#pragma once

#include <string>

class OdDbDatabase;

namespace qvad::dxf {

// The drawing as ASCII DXF in its own version; text is encoded for that version (the code page
// before R2007, UTF-8 from R2007 on).
std::string writeDxf(const OdDbDatabase& db);

// Writes beside the target, flushes, then renames over it, so a failed save never leaves a half
// drawing and the old file survives. Throws std::system_error naming the path.
void saveDxfFile(const OdDbDatabase& db, const std::string& path);

} // namespace qvad::dxf
