#include "tooldeck/host/data_list.h"

#include "qvad/api/data_list_buffers.h"

#include <utility>

namespace qvtd {

DataList& DataList::operator=(DataList&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
}

DataList DataList::ofEntity(const qv_name entity) {
    DataList list;
    if (qvdbEntGet(entity, list.out()) != QV_NORM) list.reset();
    return list;
}

qv_resbuf** DataList::out() {
    reset();
    return &m_list;
}

qv_resbuf* DataList::release() {
    return std::exchange(m_list, nullptr);
}

void DataList::reset(qv_resbuf* list) {
    if (m_list && m_list != list) qvutRelRb(m_list);
    m_list = list;
}

qv_resbuf* DataList::find(int code) const {
    for (qv_resbuf* item = m_list; item; item = item->rbnext)
        if (item->restype == code) return item;
    return nullptr;
}

std::string DataList::text(int code, const char* fallback) const {
    const qv_resbuf* item = find(code);
    return item && item->resval.rstring ? item->resval.rstring : fallback;
}

double DataList::real(int code, double fallback) const {
    const qv_resbuf* item = find(code);
    return item ? item->resval.rreal : fallback;
}

long DataList::integer(int code, long fallback) const {
    const qv_resbuf* item = find(code);
    if (!item) return fallback;
    return qvad::api::bufferValueOf(code) == qvad::api::BufferValue::Long ? item->resval.rlong
                                                                          : item->resval.rint;
}

Point3 DataList::point(int code, Point3 fallback) const {
    const qv_resbuf* item = find(code);
    return item ? Point3{item->resval.rpoint[0], item->resval.rpoint[1], item->resval.rpoint[2]} : fallback;
}

} // namespace qvtd
