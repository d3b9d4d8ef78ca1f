// The drawing library's object-level calls: ids, classes, erasing, the fields stream, entity
// references and adding objects.

#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/OdDbMemoryFiler.h"
#include "qvad/db/entities/tag_access.h"

#include <map>
#include <memory>
#include <typeindex>

OdDbObject* OdDbObjectId::object() const {
    return isNull() ? nullptr : m_db->getObject(m_handle);
}

bool OdDbObjectId::isErased() const {
    const OdDbObject* found = object();
    return !found || found->isErased();
}

const OdRxClass* OdDbObject::isA() const {
    // Few classes, met again and again: one descriptor per pair for the whole process.
    static std::map<std::pair<std::type_index, std::string_view>, std::unique_ptr<OdRxClass>> classes;
    const std::type_index kind(typeid(*this));
    auto found = classes.find({kind, m_type});
    if (found != classes.end()) return found->second.get();
    auto made = std::make_unique<OdRxClass>(m_type);
    // The key must outlive the object's own type name text.
    std::string_view name = made->name();
    return classes.emplace(std::make_pair(kind, name), std::move(made)).first->second.get();
}

OdResult OdDbObject::erase(bool erasing) {
    if (m_erased == erasing) return erasing ? eWasErased : eOk;
    setErased(erasing);
    if (isEntity() && static_cast<OdDbEntity*>(this)->isComplex())
        for (OdDbEntity* sub : static_cast<OdDbComplexEntity*>(this)->subEntities())
            if (sub->isErased() != erasing) sub->setErased(erasing);
    return eOk;
}

namespace {

bool isIdentityCode(int code) {
    // Handle, owner and every reference to another object: two copies differ in them by nature.
    return code == 5 || code == 105 || (code >= 320 && code <= 369) || (code >= 390 && code <= 399) ||
           (code >= 480 && code <= 481) || code == 1005;
}

bool isCommonEntityCode(int code) {
    switch (code) {
    case 6: case 8: case 48: case 60: case 62: case 67: case 92: case 160: case 284: case 310: case 370:
    case 410: case 420: case 430: case 440:
        return true;
    default:
        return false;
    }
}

} // namespace

void OdDbObject::dwgOutFields(OdDbMemoryFiler& filer) const {
    const auto all = tags();
    const std::size_t end = xdataStart();
    // Skip the head and, for an entity, its common part: everything up to the second subclass
    // marker (or, in a file without markers, the common groups wherever they stand).
    std::size_t begin = 0;
    int markers = 0;
    const int ownPartMarker = isEntity() ? 2 : 1;
    bool hasMarkers = false;
    for (std::size_t i = 0; i < end; ++i)
        if (all[i].code == 100 && ++markers == ownPartMarker) {
            begin = i;
            hasMarkers = true;
            break;
        }
    bool inGroup = false;
    for (std::size_t i = begin; i < end; ++i) {
        const Tag& tag = all[i];
        if (tag.code == 102) {
            inGroup = !tag.value().empty() && tag.value().front() == '{';
            continue;
        }
        if (inGroup || isIdentityCode(tag.code)) continue;
        if (!hasMarkers && isEntity() && isCommonEntityCode(tag.code)) continue;
        filer.writeField(tag.code, tag.value());
    }
}

OdCmColor OdDbEntity::color() const {
    const Tag* book = findTag(430);
    return OdCmColor(std::abs(colorIndex()), hasTrueColor() ? (trueColor() & 0xFFFFFF) : -1,
                     book ? std::string(book->value()) : std::string());
}

void OdDbEntity::setColor(const OdCmColor& color) {
    setColorIndex(color.colorIndex());
    if (color.hasTrueColor())
        setInt(420, color.trueColor(), kSubclass());
    else
        removeTags(420);
    if (!color.colorName().empty())
        setString(430, color.colorName(), kSubclass());
    else
        removeTags(430);
}

namespace {

OdDbObjectId recordId(const OdDbDatabase* db, std::string_view table, std::string_view name) {
    if (!db) return {};
    const OdDbSymbolTable* records = db->table(table);
    const OdDbSymbolTableRecord* found = records ? records->find(name) : nullptr;
    return found ? found->objectId() : OdDbObjectId();
}

} // namespace

OdDbObjectId OdDbEntity::layerId() const {
    return recordId(database(), "LAYER", layer());
}

OdDbObjectId OdDbEntity::linetypeId() const {
    return recordId(database(), "LTYPE", linetype());
}

OdDbObjectId OdDbEntity::getPlotStyleNameId() const {
    const qvad::Handle h = getHandle(390);
    return h ? OdDbObjectId(database(), h) : OdDbObjectId();
}

bool isLayerFrozen(const OdDbSymbolTableRecord& layer) {
    return (layer.getInt(70, 0) & 1) != 0;
}

bool isLayerLocked(const OdDbSymbolTableRecord& layer) {
    return (layer.getInt(70, 0) & 4) != 0;
}

bool isLayerOff(const OdDbSymbolTableRecord& layer) {
    return layer.getInt(62, 7) < 0;
}

OdDbObjectId OdDbDatabase::addOdDbObject(std::unique_ptr<OdDbObject> object, OdDbObjectId ownerId) {
    OdDbObject* owner = ownerId.database() == this ? getObject(ownerId.getHandle()) : nullptr;
    if (!object || !owner || owner->isErased()) return {};
    object->setDatabase(this);
    object->setHandle(allocateHandle());
    object->setOwnerHandle(owner->handle());
    OdDbObject* added = add(std::move(object));
    if (added->isEntity())
        for (OdDbBlockTableRecord* block : m_blocks)
            if (block == owner) {
                block->entities().push_back(static_cast<OdDbEntity*>(added));
                break;
            }
    return added->objectId();
}
