#pragma once
// Told of every change made to a drawing, before it happens, so that an undo journal can record the
// old state. Loading sets no observer, so a file loads without any of this.

#include <string_view>

class OdDbObject;

class ChangeObserver {
public:
    virtual ~ChangeObserver() = default;
    // Tags, handle, owner, or (for a block, table or complex entity) the list of what it holds.
    virtual void beforeModify(OdDbObject& object) = 0;
    // The object has just joined the database.
    virtual void created(OdDbObject& object) = 0;
    virtual void beforeEraseChange(OdDbObject& object, bool erasing) = 0;
    // A header variable is about to be set, replaced or removed (the name as the caller gave it).
    virtual void beforeHeaderChange(std::string_view) {}
    virtual void beforeHandseedChange() {}
};
