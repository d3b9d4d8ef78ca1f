// How much extended data a list takes and how much more an entity may hold.

#include "qvad/api/data_list_buffers.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/entity_rules.h"
#include "qvad/api/host_session.h"
#include "qvad/db/OdDbObject.h"

#include <algorithm>

using namespace qvad::api;

extern "C" {

QV_API int qvdbXdSize(const struct qv_resbuf* list, long* size) {
    return guarded([&] {
        if (!size || !list) return refuse(HostError::BadArgument);
        *size = 0;
        qvad::db::DataList items;
        try {
            items = fromResultBuffers(list);
        } catch (const qvad::db::DataListError&) {
            return refuse(HostError::BadDataList);
        }
        const long bytes = extendedDataBytes(items);
        if (bytes < 0) return refuse(HostError::BadDataList);
        *size = bytes;
        return QV_NORM;
    });
}

QV_API int qvdbXdRoom(const qv_name entity, long* room) {
    return guarded([&] {
        if (!room) return refuse(HostError::BadArgument);
        *room = 0;
        if (!HostSession::current().drawing()) return refuse(HostError::NoDrawing);
        const OdDbObject* object = objectOf(entity);
        if (!object) return refuse(HostError::BadEntityName);
        if (object->isErased()) return refuse(HostError::ErasedEntity);
        qvad::db::DataList items = qvad::db::entityToDataList(*object);
        auto marker = std::find_if(items.begin(), items.end(), [](const auto& i) { return i.code == -3; });
        long used = 0;
        if (marker != items.end()) {
            qvad::db::DataList xdata(marker, items.end());
            used = extendedDataBytes(xdata);
        }
        *room = used < 0 ? 0 : std::max(0L, QV_XDATA_LIMIT - used);
        return QV_NORM;
    });
}

} // extern "C"
