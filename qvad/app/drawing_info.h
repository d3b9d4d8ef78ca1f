#pragma once

#include <ostream>

class OdDbDatabase;

namespace qvad::app {

// Version, code page, repairs made on load, and entity counts per type for each layout.
void printDrawingInfo(const OdDbDatabase& db, std::ostream& out);

} // namespace qvad::app
