#pragma once
// Drawings for the entity and data-list tests: R2000 files written tag by tag, objects looked up by
// handle, tag snapshots and their differences, and the round-trip checks every entity must pass.

#include "qvad/db/OdDbDatabase.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace entities_test {

using TagText = std::initializer_list<std::pair<int, std::string_view>>;
using Lines = std::vector<std::string>;

// Tags as DXF text, one "code\nvalue\n" pair each.
std::string dxf(TagText tags);

// An R2000 drawing with the given entities in model space. `blocks` are BLOCK ... ENDBLK runs after
// the two spaces; `objects` replaces the default OBJECTS section (one empty root dictionary, "C").
std::unique_ptr<OdDbDatabase> drawing(const std::string& entities, const std::string& blocks = {},
                                      const std::string& objects = {});

template <class T> T* object(const OdDbDatabase& db, std::string_view hexHandle) {
    return dynamic_cast<T*>(db.getObject(qvad::parseHandle(hexHandle)));
}

// "code value" per tag.
Lines snapshot(std::span<const Tag> tags);
inline Lines snapshot(const OdDbObject& o) {
    return snapshot(o.tags());
}
// What turned `before` into `after`: "-code value" for removed tags and "+code value" for added
// ones, in tag order.
Lines changes(const Lines& before, const Lines& after);

// The object's tags come back unchanged through its data list, and through a save and reload (with
// its class and, for complex entities, its sub-entities).
void expectRoundTrips(const OdDbDatabase& db, const OdDbObject& object);

} // namespace entities_test
