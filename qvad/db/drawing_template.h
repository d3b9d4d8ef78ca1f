#pragma once
// The empty R2018 drawing built into the host: what a new drawing starts from, and where the upgrade
// of old drawings and the audit take the structure a drawing lacks.

#include "qvad/db/OdDbDatabase.h"

#include <memory>
#include <string>
#include <string_view>

namespace qvad::db {

std::unique_ptr<OdDbDatabase> newDrawing();

// The template as ASCII DXF text.
std::string templateDxf();

// True while newDrawing() reads the template.
bool isLoadingTemplate();

// The template's tags, one "CODE VALUE" line each.
std::string_view templateTagLines();

} // namespace qvad::db
