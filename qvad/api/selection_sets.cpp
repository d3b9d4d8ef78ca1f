#include "qvad/api/selection_sets.h"

#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/OdDbEntity.h"

#include <algorithm>
#include <map>

namespace qvad::api {

namespace {

struct StoredSet {
    std::uint64_t serial = 0;
    SelectionSet set;
};

struct DrawingSet {
    std::uint64_t serial = 0;
    std::vector<qvad::Handle> handles;
};

std::map<long long, StoredSet>& storedSets() {
    static std::map<long long, StoredSet> sets;
    return sets;
}

long long nextSetNumber() {
    static long long number = 0;
    return ++number;
}

DrawingSet& pickFirst() {
    static DrawingSet set;
    return set;
}

DrawingSet& previous() {
    static DrawingSet set;
    return set;
}

std::vector<qvad::Handle> current(const DrawingSet& set) {
    const std::uint64_t serial = HostSession::current().drawingSerial();
    return serial != 0 && set.serial == serial ? set.handles : std::vector<qvad::Handle>{};
}

// A live, unerased top-level entity of the open drawing.
bool selectable(const qv_name entity, qvad::Handle& handle) {
    OdDbObject* object = objectOf(entity);
    if (!object || !object->isEntity() || object->isErased()) return false;
    OdDbDatabase* db = HostSession::current().drawing();
    if (OdDbObject* owner = db->getObject(object->ownerHandle()); owner && owner->isEntity()) return false;
    handle = object->handle();
    return true;
}

} // namespace

bool SelectionSet::add(qvad::Handle handle) {
    if (!m_index.insert(handle)) return false;
    m_members.push_back(handle);
    return true;
}

bool SelectionSet::remove(qvad::Handle handle) {
    if (!m_index.erase(handle)) return false;
    m_members.erase(std::find(m_members.begin(), m_members.end(), handle));
    return true;
}

void SelectionSet::reserve(std::size_t count) {
    m_members.reserve(count);
    m_index.reserve(count);
}

void SelectionSet::clear() {
    m_members.clear();
    m_index.clear();
}

void makeSelection(const std::vector<qvad::Handle>& members, qv_name name) {
    StoredSet stored;
    stored.serial = HostSession::current().drawingSerial();
    stored.set.reserve(members.size());
    for (qvad::Handle h : members) stored.set.add(h);
    const long long number = nextSetNumber();
    storedSets()[number] = std::move(stored);
    name[0] = kSelectionTag;
    name[1] = number;
}

SelectionSet* selectionOf(const qv_name name) {
    if (!name || name[0] != kSelectionTag) return nullptr;
    auto it = storedSets().find(name[1]);
    if (it == storedSets().end()) return nullptr;
    const std::uint64_t serial = HostSession::current().drawingSerial();
    if (serial == 0 || it->second.serial != serial) {
        storedSets().erase(it); // its drawing is gone; nothing can use it again
        return nullptr;
    }
    return &it->second.set;
}

std::vector<qvad::Handle> pickFirstSet() {
    return current(pickFirst());
}

void setPickFirstSet(std::vector<qvad::Handle> handles) {
    pickFirst() = {HostSession::current().drawingSerial(), std::move(handles)};
}

std::vector<qvad::Handle> previousSet() {
    return current(previous());
}

void setPreviousSet(std::vector<qvad::Handle> handles) {
    previous() = {HostSession::current().drawingSerial(), std::move(handles)};
}

} // namespace qvad::api

using namespace qvad::api;

extern "C" {

QV_API int qvedSSLength(const qv_name selection, long* length) {
    return guarded([&] {
        if (!length) return refuse(HostError::BadArgument);
        const SelectionSet* set = selectionOf(selection);
        if (!set) return refuse(HostError::BadArgument);
        *length = static_cast<long>(set->members().size());
        return QV_NORM;
    });
}

QV_API int qvedSSName(const qv_name selection, long index, qv_name entity) {
    return guarded([&] {
        if (!entity) return refuse(HostError::BadArgument);
        clearName(entity);
        const SelectionSet* set = selectionOf(selection);
        if (!set || index < 0 || static_cast<std::size_t>(index) >= set->members().size())
            return refuse(HostError::BadArgument);
        nameOfHandle(set->members()[static_cast<std::size_t>(index)], entity);
        return QV_NORM;
    });
}

QV_API int qvedSSAdd(const qv_name entity, const qv_name selection, qv_name result) {
    return guarded([&] {
        if (!HostSession::current().drawing()) return refuse(HostError::NoDrawing);
        qvad::Handle handle = 0;
        const bool withEntity = !isNullName(entity);
        if (withEntity && !selectable(entity, handle)) return refuse(HostError::BadEntityName);
        if (isNullName(selection)) {
            if (!result) return refuse(HostError::BadArgument);
            makeSelection(withEntity ? std::vector<qvad::Handle>{handle} : std::vector<qvad::Handle>{},
                          result);
            return QV_NORM;
        }
        SelectionSet* set = selectionOf(selection);
        if (!set || !withEntity) return refuse(HostError::BadArgument);
        set->add(handle);
        if (result) {
            result[0] = selection[0];
            result[1] = selection[1];
        }
        return QV_NORM;
    });
}

QV_API int qvedSSDel(const qv_name entity, const qv_name selection) {
    return guarded([&] {
        SelectionSet* set = selectionOf(selection);
        qvad::Handle handle = 0;
        if (!set || !handleOf(entity, handle)) return refuse(HostError::BadArgument);
        return set->remove(handle) ? QV_NORM : refuse(HostError::BadEntityName);
    });
}

QV_API int qvedSSMemb(const qv_name entity, const qv_name selection) {
    return guarded([&] {
        const SelectionSet* set = selectionOf(selection);
        qvad::Handle handle = 0;
        if (!set || !handleOf(entity, handle)) return refuse(HostError::BadArgument);
        return set->contains(handle) ? QV_NORM : QV_ERROR;
    });
}

QV_API int qvedSSFree(const qv_name selection) {
    return guarded([&] {
        if (!selectionOf(selection)) return refuse(HostError::BadArgument);
        storedSets().erase(selection[1]);
        return QV_NORM;
    });
}

QV_API int qvedSSSetFirst(const qv_name gripSet, const qv_name pickSet) {
    return guarded([&] {
        if (!HostSession::current().drawing()) return refuse(HostError::NoDrawing);
        // Grips have nothing to show without a screen; the grip set only has to be a valid name.
        if (!isNullName(gripSet) && !selectionOf(gripSet)) return refuse(HostError::BadArgument);
        if (isNullName(pickSet)) {
            setPickFirstSet({});
            return QV_NORM;
        }
        const SelectionSet* set = selectionOf(pickSet);
        if (!set) return refuse(HostError::BadArgument);
        // Without a screen the pick-first set is the only visible selection; P at the next prompt
        // must find it as well.
        setPickFirstSet(set->members());
        setPreviousSet(set->members());
        return QV_NORM;
    });
}

} // extern "C"
