#pragma once
// Drawings for the structure tests, written as one "CODE VALUE" line per tag, and the questions the
// tests ask of loaded drawings: tags, subclass markers, owners, repairs.

#include "qvad/db/OdDbDatabase.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace structure_test {

// "CODE VALUE" lines (the value may be empty) as DXF text.
std::string dxfText(std::string_view lines);
std::unique_ptr<OdDbDatabase> load(std::string_view lines);
// The built-in template as "CODE VALUE" lines in the given version, with `entities` in its ENTITIES
// section, `blocks` after its two space blocks and `objects` at the end of its OBJECTS section: a
// complete drawing, so that whatever loading mends comes from what a test adds.
std::string completeDrawing(std::string_view version, std::string_view entities, std::string_view blocks = {},
                            std::string_view objects = {});
// Written as DXF and read back: what another program would see.
std::unique_ptr<OdDbDatabase> saveAndLoad(const OdDbDatabase& db);

using TagList = std::vector<std::pair<int, std::string>>;
TagList tagList(std::span<const Tag> tags);
inline TagList tagList(const OdDbObject& o) {
    return tagList(o.tags());
}

// The 100 markers in order.
std::vector<std::string> markers(const OdDbObject& o);
// Index of the first tag with the code (and value, when given), or -1.
int indexOf(const OdDbObject& o, int code, std::string_view value = {});

// Every entity of the drawing, sub-entities and block brackets included, in file order.
std::vector<const OdDbEntity*> allEntities(const OdDbDatabase& db);
const OdDbEntity* firstEntity(const OdDbDatabase& db, std::string_view type);
const OdDbObject* firstObject(const OdDbDatabase& db, std::string_view type);

bool hasRepair(const OdDbDatabase& db, std::string_view fragment);
std::string repairs(const OdDbDatabase& db);

} // namespace structure_test
