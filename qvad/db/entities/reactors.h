#pragma once
// The reactor list of an object: the objects (groups, dictionaries, associative dimensions) that
// must hear when it changes, kept in its {ACAD_REACTORS group at the head of its tags.

#include "qvad/db/OdDbObject.h"

#include <vector>

namespace qvad::db {

std::vector<Handle> reactors(const OdDbObject& object);
// Adds the reactor once, making the group when the object has none.
void addReactor(OdDbObject& object, Handle reactor);
// Removes the reactor, and the group when it becomes empty.
void removeReactor(OdDbObject& object, Handle reactor);

} // namespace qvad::db
