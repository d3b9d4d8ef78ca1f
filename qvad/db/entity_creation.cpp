#include "qvad/db/entity_creation.h"

#include "qvad/db/object_factory.h"

#include <vector>

namespace qvad::db {

namespace {

std::vector<std::string_view> ownSubclasses(std::string_view type) {
    if (type == "LINE") return {"AcDbLine"};
    if (type == "CIRCLE") return {"AcDbCircle"};
    if (type == "ARC") return {"AcDbCircle", "AcDbArc"};
    if (type == "POINT") return {"AcDbPoint"};
    if (type == "LWPOLYLINE") return {"AcDbPolyline"};
    if (type == "ELLIPSE") return {"AcDbEllipse"};
    if (type == "MTEXT") return {"AcDbMText"};
    return {};
}

} // namespace

std::unique_ptr<OdDbEntity> newEntity(OdDbDatabase& db, std::string_view type) {
    std::string_view kept = db.keep(type);
    std::vector<Tag> tags{Tag(100, "AcDbEntity"), Tag(8, "0")};
    for (std::string_view subclass : ownSubclasses(kept)) tags.emplace_back(100, subclass);
    auto object = createObject(kept, ObjectContext::Entity, tags);
    if (!object || !object->isEntity()) return nullptr;
    object->setDatabase(&db);
    object->assignTags(std::move(tags));
    return std::unique_ptr<OdDbEntity>(static_cast<OdDbEntity*>(object.release()));
}

} // namespace qvad::db
