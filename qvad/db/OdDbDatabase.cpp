#include "qvad/db/OdDbDatabase.h"

#include <charconv>

OdDbDatabase::OdDbDatabase() = default;
OdDbDatabase::~OdDbDatabase() = default;

int OdDbDatabase::versionNumber() const {
    std::string_view v = version();
    int n = 0;
    if (v.size() > 2) std::from_chars(v.data() + 2, v.data() + v.size(), n);
    return n;
}

void OdDbDatabase::reserveObjects(std::size_t count) {
    m_all.reserve(count);
    m_byHandle.reserve(count);
}

OdDbObject* OdDbDatabase::add(std::unique_ptr<OdDbObject> object) {
    OdDbObject* raw = reattach(std::move(object));
    notifyCreated(*raw);
    return raw;
}

OdDbObject* OdDbDatabase::reattach(std::unique_ptr<OdDbObject> object) {
    object->setDatabase(this);
    object->m_inDatabase = true;
    OdDbObject* raw = object.get();
    m_all.push_back(std::move(object));
    if (raw->handle() != 0) registerHandle(raw);
    return raw;
}

std::unique_ptr<OdDbObject> OdDbDatabase::detach(OdDbObject* object) {
    // Undo takes the newest objects first, so they sit at the end.
    for (auto it = m_all.rbegin(); it != m_all.rend(); ++it) {
        if (it->get() != object) continue;
        std::unique_ptr<OdDbObject> out = std::move(*it);
        m_all.erase(std::next(it).base());
        if (getObject(object->handle()) == object) unregisterHandle(object->handle());
        object->m_inDatabase = false;
        return out;
    }
    return nullptr;
}

void OdDbDatabase::registerHandle(OdDbObject* object) {
    m_byHandle.set(object->handle(), object);
    if (object->handle() >= m_handseed) setHandseed(object->handle() + 1);
}

void OdDbDatabase::setHandseed(qvad::Handle h) {
    if (h == m_handseed) return;
    notifyBeforeHandseedChange();
    m_handseed = h;
}

void OdDbDatabase::unregisterHandle(qvad::Handle h) {
    m_byHandle.erase(h);
}

qvad::Handle OdDbDatabase::allocateHandle() {
    notifyBeforeHandseedChange();
    while (m_byHandle.find(m_handseed)) ++m_handseed;
    return m_handseed++;
}

OdDbSymbolTable* OdDbDatabase::table(std::string_view name) const {
    for (OdDbSymbolTable* t : m_tables)
        if (equalsNoCase(t->name(), name)) return t;
    return nullptr;
}

OdDbBlockTableRecord* OdDbDatabase::findBlock(std::string_view name) const {
    for (OdDbBlockTableRecord* b : m_blocks)
        if (!b->isErased() && equalsNoCase(b->name(), name)) return b;
    return nullptr;
}

OdDbBlockTableRecord* OdDbDatabase::modelSpace() const {
    return findBlock("*Model_Space");
}
OdDbBlockTableRecord* OdDbDatabase::paperSpace() const {
    return findBlock("*Paper_Space");
}

OdDbObject* OdDbDatabase::namedObjectsDictionary() const {
    for (OdDbObject* o : m_objects)
        if (o->typeName() == "DICTIONARY") return o;
    return nullptr;
}
