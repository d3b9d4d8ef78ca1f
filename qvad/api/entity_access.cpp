// Reading, changing, erasing and walking entities through their data lists.

#include "qvad/api/data_list_buffers.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/entity_rules.h"
#include "qvad/api/entity_walk.h"
#include "qvad/api/host_session.h"
#include "qvad/db/OdDbDatabase.h"

#include <algorithm>
#include <map>

using namespace qvad::api;
using qvad::db::DataItem;
using qvad::db::DataList;
using qvad::db::DataListError;

namespace {

// The live object a name stands for, or the reason there is none.
HostError liveObject(const qv_name name, OdDbObject*& object) {
    if (!HostSession::current().drawing()) return HostError::NoDrawing;
    object = objectOf(name);
    if (!object) return HostError::BadEntityName;
    return object->isErased() ? HostError::ErasedEntity : HostError::None;
}

int handOut(DataList list, qv_resbuf** out) {
    *out = toResultBuffers(list);
    return QV_NORM;
}

std::size_t markerIndex(const DataList& list) {
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i].code == -3) return i;
    return list.size();
}

// Extended data by application, in the order the object holds it.
std::vector<std::pair<std::string, DataList>> applications(const DataList& list) {
    std::vector<std::pair<std::string, DataList>> apps;
    for (std::size_t i = markerIndex(list) + 1; i < list.size(); ++i) {
        if (list[i].code == 1001 || apps.empty())
            apps.emplace_back(list[i].text() ? *list[i].text() : "", DataList{});
        apps.back().second.push_back(list[i]);
    }
    return apps;
}

// The object's data replaced by the list's; extended data replaced only for the applications the
// list names, as callers that never asked for extended data must not lose it.
DataList mergedList(const DataList& old, const DataList& incoming) {
    DataList merged(incoming.begin(), incoming.begin() + static_cast<std::ptrdiff_t>(markerIndex(incoming)));
    auto kept = applications(old), replaced = applications(incoming);
    for (auto& app : replaced) {
        const auto& name = app.first;
        const auto& items = app.second;
        auto same = std::find_if(kept.begin(), kept.end(),
                                 [&](const auto& a) { return equalsNoCase(a.first, name); });
        if (same != kept.end())
            same->second = items;
        else
            kept.emplace_back(name, items);
    }
    bool any = false;
    for (auto& [name, items] : kept) {
        if (items.size() <= 1) continue; // an application named alone loses its data
        if (!any) merged.emplace_back().code = -3;
        any = true;
        merged.insert(merged.end(), items.begin(), items.end());
    }
    return merged;
}

// Unchanged numbers keep the text they were read from, and points keep the form the file gives them.
void keepSourceText(DataList& list, const DataList& old) {
    std::map<std::pair<int, int>, std::vector<const DataItem*>> byCode;
    int section = 0;
    for (const DataItem& item : old) {
        if (item.code == -3) section = 1;
        byCode[{section, item.code}].push_back(&item);
    }
    std::map<std::pair<int, int>, std::size_t> seen;
    section = 0;
    for (DataItem& item : list) {
        if (item.code == -3) section = 1;
        const auto key = std::make_pair(section, item.code);
        std::size_t n = seen[key]++;
        auto it = byCode.find(key);
        if (it == byCode.end() || n >= it->second.size()) continue;
        const DataItem& was = *it->second[n];
        if (was.value.index() != item.value.index()) continue;
        item.source = was.source;
        item.is2d = was.is2d;
    }
}

int modify(const qv_resbuf* buffers) {
    HostSession& session = HostSession::current();
    OdDbDatabase* db = session.drawing();
    if (!db) return refuse(HostError::NoDrawing);
    DataList incoming;
    try {
        incoming = fromResultBuffers(buffers);
    } catch (const DataListError&) {
        return refuse(HostError::BadDataList);
    }
    if (incoming.empty() || incoming[0].code != -1 || !incoming[0].reference())
        return refuse(HostError::BadEntityName);
    OdDbObject* object = db->getObject(incoming[0].reference()->handle);
    if (!object || object->handle() == 0) return refuse(HostError::BadEntityName);
    if (object->isErased()) return refuse(HostError::ErasedEntity);
    const std::string type = listType(incoming);
    if (!type.empty() && !equalsNoCase(type, object->typeName())) return refuse(HostError::WrongEntityType);
    if (HostError e = checkRequiredGroups(incoming, object->typeName()); e != HostError::None)
        return refuse(e);
    if (object->isEntity())
        if (HostError e = checkEntityValues(incoming); e != HostError::None) return refuse(e);

    const DataList old = qvad::db::entityToDataList(*object);
    DataList merged = mergedList(old, incoming);
    markPlanarPoints(merged, object->typeName());
    keepSourceText(merged, old);
    chooseAngleText(merged);
    if (HostError e = checkExtendedData(*db, merged); e != HostError::None) return refuse(e);
    std::vector<Tag> tags;
    try {
        tags = qvad::db::dataListToTags(merged, object->typeName(), db->strings());
    } catch (const DataListError&) {
        return refuse(HostError::BadDataList);
    }
    if (object->isEntity())
        if (HostError e = ensureLayer(*db, merged); e != HostError::None) return refuse(e);

    const qvad::Handle handle = object->handle(), owner = object->ownerHandle();
    db->notifyBeforeModify(*object);
    object->assignTags(std::move(tags));
    // The name and the owner are the object's, whatever the list said.
    object->setHandle(handle);
    if (owner != 0) object->setOwnerHandle(owner);
    object->syncHeadFromTags();
    return QV_NORM;
}

} // namespace

extern "C" {

QV_API int qvdbEntGet(const qv_name entity, struct qv_resbuf** list) {
    return qvdbEntGetX(entity, nullptr, list);
}

QV_API int qvdbEntGetX(const qv_name entity, const struct qv_resbuf* apps, struct qv_resbuf** list) {
    return guarded([&] {
        if (!list) return refuse(HostError::BadArgument);
        *list = nullptr;
        OdDbObject* object = nullptr;
        if (HostError e = liveObject(entity, object); e != HostError::None) return refuse(e);
        std::vector<std::string> patterns;
        for (const qv_resbuf* rb = apps; rb; rb = rb->rbnext) {
            if (rb->restype != QV_RTSTR || !rb->resval.rstring) return refuse(HostError::BadArgument);
            patterns.emplace_back(rb->resval.rstring);
        }
        if (patterns.empty()) {
            // No extended data asked for: the common case, written straight from the tags.
            *list = dataPartBuffers(*object);
            return QV_NORM;
        }
        DataList items = qvad::db::entityToDataList(*object, false);
        qvad::db::filterExtendedData(items, patterns);
        return handOut(std::move(items), list);
    });
}

QV_API int qvdbEntMod(const struct qv_resbuf* list) {
    return guarded([&] { return modify(list); });
}

QV_API int qvdbEntDel(const qv_name entity) {
    return guarded([&] {
        if (!HostSession::current().drawing()) return refuse(HostError::NoDrawing);
        OdDbObject* object = objectOf(entity);
        if (!object) return refuse(HostError::BadEntityName);
        if (!object->isEntity()) return refuse(HostError::NotAnEntity);
        OdDbDatabase& db = *HostSession::current().drawing();
        // Attributes and vertices go only with their complex entity.
        if (OdDbObject* owner = db.getObject(object->ownerHandle()); owner && owner->isEntity())
            return refuse(HostError::NotAnEntity);
        object->erase(!object->isErased());
        return QV_NORM;
    });
}

QV_API int qvdbEntUpd(const qv_name entity) {
    return guarded([&] {
        OdDbObject* object = nullptr;
        HostError e = liveObject(entity, object);
        return e == HostError::None ? QV_NORM : refuse(e);
    });
}

QV_API int qvdbEntLast(qv_name entity) {
    return guarded([&] {
        if (!entity) return refuse(HostError::BadArgument);
        clearName(entity);
        const OdDbDatabase* db = HostSession::current().drawing();
        if (!db) return refuse(HostError::NoDrawing);
        auto walked = drawingEntities(*db);
        for (auto it = walked.rbegin(); it != walked.rend(); ++it)
            if (!it->isSubEntity) {
                nameOf(*it->entity, entity);
                return QV_NORM;
            }
        return refuse(HostError::BadEntityName);
    });
}

QV_API int qvdbEntNext(const qv_name entity, qv_name next) {
    return guarded([&] {
        if (!next) return refuse(HostError::BadArgument);
        // Callers step with one name for both arguments, so the name must be read before it is cleared.
        qv_name start = {0, 0};
        if (entity) {
            start[0] = entity[0];
            start[1] = entity[1];
        }
        clearName(next);
        const OdDbDatabase* db = HostSession::current().drawing();
        if (!db) return refuse(HostError::NoDrawing);
        auto walked = drawingEntities(*db);
        std::size_t from = 0;
        if (!isNullName(start)) {
            OdDbObject* current = objectOf(start);
            if (!current) return refuse(HostError::BadEntityName);
            auto at = std::find_if(walked.begin(), walked.end(),
                                   [&](const WalkedEntity& w) { return w.entity == current; });
            if (at == walked.end())
                return refuse(current->isErased() ? HostError::ErasedEntity : HostError::NotAnEntity);
            from = static_cast<std::size_t>(at - walked.begin()) + 1;
        }
        if (from >= walked.size()) return refuse(HostError::BadEntityName);
        nameOf(*walked[from].entity, next);
        return QV_NORM;
    });
}

QV_API int qvdbHandEnt(const char* handle, qv_name entity) {
    return guarded([&] {
        if (!entity || !handle) return refuse(HostError::BadArgument);
        clearName(entity);
        const OdDbDatabase* db = HostSession::current().drawing();
        if (!db) return refuse(HostError::NoDrawing);
        const qvad::Handle h = qvad::parseHandle(handle);
        const OdDbObject* object = h ? db->getObject(h) : nullptr;
        if (!object) return refuse(HostError::BadEntityName);
        nameOf(*object, entity);
        return QV_NORM;
    });
}

} // extern "C"
