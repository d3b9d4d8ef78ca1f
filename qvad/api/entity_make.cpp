// Making entities and table records from data lists. INSERTs with attributes and POLYLINEs arrive in
// several calls: the header, its attributes or vertices, then a SEQEND that puts them all in place.

#include "qvad/api/data_list_buffers.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/entity_rules.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/object_factory.h"
#include "qvad/db/subclass_markers.h"
#include "qvad/db/symbol_references.h"
#include "qvad/db/table_records.h"

#include <algorithm>
#include <set>

using namespace qvad::api;
using qvad::db::DataItem;
using qvad::db::DataList;
using qvad::db::DataListError;

namespace {

const std::set<std::string, std::less<>> kEntityTypes = {
    "LINE",   "POINT",   "CIRCLE",    "ARC",    "ELLIPSE", "LWPOLYLINE", "POLYLINE", "VERTEX",
    "SEQEND", "TEXT",    "MTEXT",     "ATTDEF", "ATTRIB",  "INSERT",     "SOLID",    "TRACE",
    "3DFACE", "WIPEOUT", "HATCH",     "SPLINE", "LEADER",  "DIMENSION",  "IMAGE",    "RAY",
    "XLINE",  "MLINE",   "TOLERANCE", "SHAPE",  "REGION",  "3DSOLID",    "BODY",     "MULTILEADER"};
const std::set<std::string, std::less<>> kTableTypes = {"LAYER", "LTYPE", "STYLE", "DIMSTYLE",
                                                        "APPID", "UCS",   "VIEW",  "VPORT"};

std::string upperCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

// What the drawing decides for itself: the name, the handle, the owner and the reactors of whatever
// object the list may have been read from.
DataList withoutHead(const DataList& list, std::string_view type, bool record) {
    DataList kept;
    bool inGroup = false, ownerSeen = false, dataStarted = false;
    for (const DataItem& item : list) {
        if (item.code == -3) dataStarted = true;
        if (!dataStarted && item.code == 102) {
            inGroup = item.text() && item.text()->starts_with("{");
            continue;
        }
        if (inGroup) continue;
        if (item.code == -1) continue;
        if (!dataStarted && (item.code == 105 || (item.code == 5 && type != "DIMSTYLE"))) continue;
        if (!dataStarted && item.code == 330 && !ownerSeen) {
            ownerSeen = true;
            continue;
        }
        if (item.code == 100) {
            dataStarted = true;
            if (record) continue; // the table adds its own markers
        }
        kept.push_back(item);
    }
    return kept;
}

std::vector<Tag> tagsOf(OdDbDatabase& db, DataList& list, const std::string& type, HostError& error) {
    markPlanarPoints(list, type);
    chooseAngleText(list);
    error = checkExtendedData(db, list);
    if (error != HostError::None) return {};
    try {
        return qvad::db::dataListToTags(list, type, db.strings());
    } catch (const DataListError&) {
        error = HostError::BadDataList;
        return {};
    }
}

int makeRecord(OdDbDatabase& db, const std::string& type, DataList list, qv_name made) {
    OdDbSymbolTable* table = db.table(type);
    if (!table) return refuse(HostError::UnknownTable);
    auto name = std::find_if(list.begin(), list.end(), [](const DataItem& i) { return i.code == 2; });
    if (name == list.end() || !name->text()) return refuse(HostError::MissingGroup);
    if (!qvad::db::isValidSymbolName(*name->text())) return refuse(HostError::BadSymbolName);
    if (table->find(*name->text())) return refuse(HostError::DuplicateName);
    list = withoutHead(list, type, true);
    HostError error = HostError::None;
    std::vector<Tag> tags = tagsOf(db, list, type, error);
    if (error != HostError::None) return refuse(error);
    db.notifyBeforeModify(*table);
    OdDbSymbolTableRecord* record = qvad::db::addTableRecord(db, *table, std::move(tags));
    db.notifyCreated(*record);
    if (made) nameOf(*record, made);
    return QV_NORM;
}

std::unique_ptr<OdDbObject> newEntity(OdDbDatabase& db, const std::string& type, const DataList& given,
                                      bool paper, HostError& error) {
    DataList list = withoutHead(given, type, false);
    const bool saysPaper = std::any_of(list.begin(), list.end(), [](const DataItem& i) {
        return i.code == 67 && i.integer() && *i.integer() == 1;
    });
    if (paper && !saysPaper) {
        auto marker = std::find_if(list.begin(), list.end(), [](const DataItem& i) {
            return i.code == 100 && i.text() && *i.text() == "AcDbEntity";
        });
        list.insert(marker == list.end() ? list.begin() : marker + 1, DataItem(67, std::int64_t{1}));
    }
    std::vector<Tag> tags = tagsOf(db, list, type, error);
    if (error != HostError::None) return nullptr;
    error = ensureLayer(db, list);
    if (error != HostError::None) return nullptr;
    std::string_view kept = db.keep(type);
    auto entity = createObject(kept, ObjectContext::Entity, tags);
    entity->setDatabase(&db);
    entity->assignTags(std::move(tags));
    entity->setHandle(db.allocateHandle());
    return entity;
}

OdDbBlockTableRecord* spaceFor(const OdDbDatabase& db, const OdDbObject& entity) {
    return static_cast<const OdDbEntity&>(entity).isInPaperSpace() ? db.paperSpace() : db.modelSpace();
}

OdDbEntity* place(OdDbDatabase& db, std::unique_ptr<OdDbObject> entity, qvad::Handle owner) {
    entity->setOwnerHandle(owner);
    auto* placed = static_cast<OdDbEntity*>(db.add(std::move(entity)));
    db.notifyCreated(*placed);
    return placed;
}

int finishComplex(OdDbDatabase& db, PendingComplex& pending, qv_name made) {
    OdDbBlockTableRecord* space = spaceFor(db, *pending.header);
    if (!space) return refuse(HostError::UnknownBlock);
    auto* header = static_cast<OdDbComplexEntity*>(place(db, std::move(pending.header), space->handle()));
    for (auto& piece : pending.pieces)
        header->subEntities().push_back(place(db, std::move(piece), header->handle()));
    auto seqend = createObject("SEQEND", ObjectContext::Entity);
    seqend->setDatabase(&db);
    seqend->assignTags({Tag(100, "AcDbEntity"), Tag(8, db.keep(header->getString(8, "0")))});
    seqend->setHandle(db.allocateHandle());
    header->subEntities().push_back(place(db, std::move(seqend), header->handle()));
    space->entities().push_back(header);
    if (made) nameOf(*header, made);
    return QV_NORM;
}

int make(const qv_resbuf* buffers, qv_name made) {
    HostSession& session = HostSession::current();
    if (made) clearName(made);
    OdDbDatabase* db = session.drawing();
    if (!db) return refuse(HostError::NoDrawing);
    DataList list;
    try {
        list = fromResultBuffers(buffers);
    } catch (const DataListError&) {
        return refuse(HostError::BadDataList);
    }
    const std::string type = upperCase(listType(list));
    if (type.empty()) return refuse(HostError::MissingGroup);
    if (kTableTypes.count(type)) return makeRecord(*db, type, std::move(list), made);
    if (!kEntityTypes.count(type)) return refuse(HostError::WrongEntityType);
    if (HostError e = checkRequiredGroups(list, type); e != HostError::None) return refuse(e);
    if (HostError e = checkEntityValues(list); e != HostError::None) return refuse(e);

    auto& pending = session.pendingComplex();
    if (pending) {
        const bool insert = pending->header->typeName() == "INSERT";
        if (type == "SEQEND") {
            std::unique_ptr<PendingComplex> done = std::move(pending);
            return finishComplex(*db, *done, made);
        }
        if (type != (insert ? "ATTRIB" : "VERTEX")) {
            pending.reset();
            return refuse(HostError::BadSequence);
        }
    } else if (type == "SEQEND" || type == "ATTRIB" || type == "VERTEX") {
        return refuse(HostError::BadSequence);
    }

    if (type == "INSERT") {
        auto block = std::find_if(list.begin(), list.end(), [](const DataItem& i) { return i.code == 2; });
        if (!block->text() || !db->findBlock(*block->text())) return refuse(HostError::UnknownBlock);
    }
    HostError error = HostError::None;
    const bool paper = pending ? pending->paperSpace : session.paperSpaceCurrent();
    auto entity = newEntity(*db, type, list, paper, error);
    if (!entity) {
        if (pending) pending.reset();
        return refuse(error);
    }
    // Modules write lists in the flat order every version understands; since R2000 the file wants them
    // split into subclasses, or other readers refuse the entity.
    if (db->versionNumber() >= 1015 && !entity->hasSubclass("AcDbEntity"))
        qvad::db::layoutLegacyEntity(static_cast<OdDbEntity&>(*entity),
                                     pending ? static_cast<const OdDbEntity*>(pending->header.get()) : nullptr);
    if (pending) {
        pending->pieces.push_back(std::move(entity));
        return QV_NORM;
    }
    const bool startsSequence = type == "POLYLINE" || (type == "INSERT" && entity->getInt(66, 0) == 1);
    if (startsSequence && static_cast<OdDbEntity&>(*entity).isComplex()) {
        pending = std::make_unique<PendingComplex>();
        pending->paperSpace = static_cast<OdDbEntity&>(*entity).isInPaperSpace();
        pending->header = std::move(entity);
        return QV_NORM;
    }
    OdDbBlockTableRecord* space = spaceFor(*db, *entity);
    if (!space) return refuse(HostError::UnknownBlock);
    OdDbEntity* placed = place(*db, std::move(entity), space->handle());
    space->entities().push_back(placed);
    if (made) nameOf(*placed, made);
    return QV_NORM;
}

} // namespace

extern "C" {

QV_API int qvdbEntMake(const struct qv_resbuf* list) {
    return guarded([&] { return make(list, nullptr); });
}

QV_API int qvdbEntMakeX(const struct qv_resbuf* list, qv_name entity) {
    return guarded([&] { return make(list, entity); });
}

} // extern "C"
