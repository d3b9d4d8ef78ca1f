#include "qvad/api/data_list_buffers.h"

#include "qvad/api/entity_names.h"

#include <array>
#include <cstring>
#include <new>

namespace qvad::api {

using qvad::db::DataItem;
using qvad::db::DataList;
using qvad::db::DataListError;
using qvad::db::ObjectRef;
using qvad::dxf::ValueKind;

BufferValue bufferValueByRules(int code) {
    switch (code) {
    case QV_RTNONE:
    case QV_RTVOID:
    case QV_RTLB:
    case QV_RTLE:
    case QV_RTNIL:
    case QV_RTT:
    case -3:
        return BufferValue::None;
    case QV_RTREAL:
    case QV_RTANG:
    case QV_RTORINT:
        return BufferValue::Real;
    case QV_RTPOINT:
    case QV_RT3DPOINT:
        return BufferValue::Point;
    case QV_RTSHORT:
        return BufferValue::Short;
    case QV_RTLONG:
        return BufferValue::Long;
    case QV_RTSTR:
    case -4: // filter operators such as "<AND"
        return BufferValue::String;
    case QV_RTENAME:
    case QV_RTPICKS:
    case -1:
    case -2:
    case -5:
        return BufferValue::Name;
    default:
        break;
    }
    if (code < 0 || code > 1071) return BufferValue::Unknown;
    if (qvad::db::isPointCode(code)) return BufferValue::Point;
    if (qvad::db::isObjectReferenceCode(code)) return BufferValue::Name;
    switch (qvad::dxf::valueKind(code)) {
    case ValueKind::Double:
        return BufferValue::Real;
    case ValueKind::Int16:
    case ValueKind::Bool:
        return BufferValue::Short;
    case ValueKind::Int32:
        return BufferValue::Long;
    case ValueKind::Int64:
        return BufferValue::Int64;
    case ValueKind::Binary:
        return BufferValue::Binary;
    default:
        return BufferValue::String;
    }
}

namespace {

// Group codes -5..1071, then the type codes; everything else is Unknown.
constexpr int kLowestGroup = -5, kHighestGroup = 1071, kLowestType = QV_RTNONE, kHighestType = QV_RTT;

struct BufferValueTable {
    std::array<BufferValue, kHighestGroup - kLowestGroup + 1> groups{};
    std::array<BufferValue, kHighestType - kLowestType + 1> types{};
    BufferValueTable() {
        for (int code = kLowestGroup; code <= kHighestGroup; ++code)
            groups[static_cast<std::size_t>(code - kLowestGroup)] = bufferValueByRules(code);
        for (int code = kLowestType; code <= kHighestType; ++code)
            types[static_cast<std::size_t>(code - kLowestType)] = bufferValueByRules(code);
    }
};

// Built when the library loads: the rules use nothing that needs initialising first.
const BufferValueTable kBufferValues;

} // namespace

BufferValue bufferValueOf(int code) {
    if (code >= kLowestGroup && code <= kHighestGroup)
        return kBufferValues.groups[static_cast<std::size_t>(code - kLowestGroup)];
    if (code >= kLowestType && code <= kHighestType)
        return kBufferValues.types[static_cast<std::size_t>(code - kLowestType)];
    return BufferValue::Unknown;
}

char* hostString(std::string_view text) {
    auto* copy = static_cast<char*>(qvad_malloc(text.size() + 1));
    if (!copy) throw std::bad_alloc();
    if (!text.empty()) std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

BufferChain::~BufferChain() {
    qvutRelRb(m_head);
}

qv_resbuf& BufferChain::append(int code) {
    qv_resbuf* rb = qvutNewRb(code);
    if (!rb) throw std::bad_alloc();
    (m_tail ? m_tail->rbnext : m_head) = rb;
    m_tail = rb;
    return *rb;
}

qv_resbuf* BufferChain::release() {
    qv_resbuf* head = m_head;
    m_head = m_tail = nullptr;
    return head;
}

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

} // namespace

void putHexBytes(qv_resbuf& rb, std::string_view hex) {
    const std::size_t bytes = hex.size() / 2;
    if (bytes > 32767) throw DataListError("group " + std::to_string(rb.restype) + " holds too many bytes");
    auto* data = static_cast<char*>(qvad_malloc(bytes ? bytes : 1));
    if (!data) throw std::bad_alloc();
    for (std::size_t i = 0; i < bytes; ++i) {
        int high = hexDigit(hex[2 * i]), low = hexDigit(hex[2 * i + 1]);
        data[i] = static_cast<char>(((high < 0 ? 0 : high) << 4) | (low < 0 ? 0 : low));
    }
    rb.resval.rbinary.clen = static_cast<short>(bytes);
    rb.resval.rbinary.buf = data;
}

namespace {

std::string binaryText(const qv_resbuf& rb) {
    static const char digits[] = "0123456789ABCDEF";
    const short length = rb.resval.rbinary.clen;
    if (length < 0 || (length > 0 && !rb.resval.rbinary.buf))
        throw DataListError("group " + std::to_string(rb.restype) + " has no bytes");
    std::string hex;
    for (short i = 0; i < length; ++i) {
        auto byte = static_cast<unsigned char>(rb.resval.rbinary.buf[i]);
        hex += digits[byte >> 4];
        hex += digits[byte & 15];
    }
    return hex;
}

void putValue(qv_resbuf& rb, const DataItem& item) {
    switch (bufferValueOf(item.code)) {
    case BufferValue::Point:
        if (const OdGePoint3d* p = item.point()) {
            rb.resval.rpoint[0] = p->x;
            rb.resval.rpoint[1] = p->y;
            rb.resval.rpoint[2] = p->z;
        } else if (const double* x = item.real()) {
            rb.resval.rpoint[0] = *x; // a lone x without its y
        }
        return;
    case BufferValue::Real:
        if (const double* d = item.real()) rb.resval.rreal = *d;
        if (const std::int64_t* n = item.integer()) rb.resval.rreal = static_cast<double>(*n);
        return;
    case BufferValue::Short:
        if (const std::int64_t* n = item.integer()) rb.resval.rint = static_cast<short>(*n);
        return;
    case BufferValue::Long:
        if (const std::int64_t* n = item.integer()) rb.resval.rlong = static_cast<int>(*n);
        return;
    case BufferValue::Int64:
        if (const std::int64_t* n = item.integer()) rb.resval.rlname[0] = *n;
        return;
    case BufferValue::Name:
        if (const ObjectRef* r = item.reference()) nameOfHandle(r->handle, rb.resval.rlname);
        return;
    case BufferValue::Binary:
        if (const std::string* s = item.text()) putHexBytes(rb, *s);
        return;
    case BufferValue::String:
        rb.resval.rstring = hostString(item.text() ? *item.text() : std::string());
        return;
    default:
        return;
    }
}

[[noreturn]] void bad(int code, const std::string& what) {
    throw DataListError("group " + std::to_string(code) + " " + what);
}

DataItem itemOf(const qv_resbuf& rb) {
    const int code = rb.restype;
    switch (bufferValueOf(code)) {
    case BufferValue::None:
        if (code != -3) bad(code, "is not a group of a data list");
        return DataItem(-3, std::monostate{});
    case BufferValue::Point:
        return DataItem(code, OdGePoint3d(rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]));
    case BufferValue::Real:
        return DataItem(code, rb.resval.rreal);
    case BufferValue::Short:
        return DataItem(code, std::int64_t{rb.resval.rint});
    case BufferValue::Long:
        return DataItem(code, std::int64_t{rb.resval.rlong});
    case BufferValue::Int64:
        return DataItem(code, std::int64_t{rb.resval.rlname[0]});
    case BufferValue::Name: {
        qvad::Handle handle = 0;
        if (!handleOf(rb.resval.rlname, handle)) bad(code, "names an object of no open drawing");
        return DataItem(code, ObjectRef{handle});
    }
    case BufferValue::Binary:
        return DataItem(code, binaryText(rb));
    case BufferValue::String:
        if (!rb.resval.rstring) bad(code, "has no text");
        return DataItem(code, std::string(rb.resval.rstring));
    default:
        bad(code, "is not a group of a data list");
    }
}

} // namespace

void putItemValue(qv_resbuf& rb, const DataItem& item) {
    putValue(rb, item);
}

qv_resbuf* toResultBuffers(const DataList& list) {
    BufferChain chain;
    for (const DataItem& item : list) putValue(chain.append(item.code), item);
    return chain.release();
}

DataList fromResultBuffers(const qv_resbuf* list) {
    DataList items;
    std::size_t guard = 0;
    for (const qv_resbuf* rb = list; rb; rb = rb->rbnext) {
        // A chain that loops back on itself would never end.
        if (++guard > 10'000'000) throw DataListError("the list does not end");
        items.push_back(itemOf(*rb));
    }
    return items;
}

} // namespace qvad::api
