#pragma once
// A reference to an object of a drawing that stays valid across undo and redo: the drawing and the
// object's handle. Opening it finds the object again each time.

#include "qvad/db/handle.h"

#include <compare>

class OdDbDatabase;
class OdDbObject;

namespace OdDb {
// Objects live in memory for the drawing's whole session, so opening only looks them up; the mode
// says what the caller means to do and is checked by nothing.
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
} // namespace OdDb

class OdDbObjectId {
public:
    OdDbObjectId() = default;
    OdDbObjectId(OdDbDatabase* database, qvad::Handle handle) : m_db(database), m_handle(handle) {}

    bool isNull() const { return m_db == nullptr || m_handle == 0; }
    qvad::Handle getHandle() const { return m_handle; }
    OdDbDatabase* database() const { return m_db; }
    // The object, erased or not; null when the drawing holds no object with the handle.
    OdDbObject* object() const;
    bool isErased() const;

    friend bool operator==(const OdDbObjectId&, const OdDbObjectId&) = default;
    friend auto operator<=>(const OdDbObjectId& a, const OdDbObjectId& b) {
        return a.m_handle <=> b.m_handle;
    }

private:
    OdDbDatabase* m_db = nullptr;
    qvad::Handle m_handle = 0;
};
