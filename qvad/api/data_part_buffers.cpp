// An object's data list written as result buffers straight from its tags, without building the typed
// list first. The rules are those of the typed list (entity_data_list.cpp) followed by those of
// toResultBuffers; a test holds the two paths to the same result over whole drawings.

#include "qvad/api/data_list_buffers.h"
#include "qvad/api/entity_names.h"
#include "qvad/db/entities/tag_access.h"

namespace qvad::api {

namespace {

using qvad::dxf::ValueKind;

// Codes the tables of a sound drawing never put in the data part; the typed list decides those.
bool isOrdinaryGroup(int code) {
    return code >= 0 && code <= 1071;
}

// A point's x at tags[i]; y and z join it when their codes follow. i moves past what was read.
void putPoint(qv_resbuf& rb, std::span<const Tag> tags, std::size_t& i) {
    const int code = tags[i].code;
    rb.resval.rpoint[0] = qvad::db::parseReal(tags[i++].value());
    if (i >= tags.size() || tags[i].code != code + 10) return; // a lone x stays a lone x
    rb.resval.rpoint[1] = qvad::db::parseReal(tags[i++].value());
    if (i < tags.size() && tags[i].code == code + 20)
        rb.resval.rpoint[2] = qvad::db::parseReal(tags[i++].value());
}

void putTag(qv_resbuf& rb, const Tag& tag) {
    const int code = tag.code;
    const std::string_view text = tag.value();
    switch (bufferValueOf(code)) {
    case BufferValue::Real: {
        const double value = qvad::db::parseReal(text);
        rb.resval.rreal = qvad::db::isAngleCode(code) ? qvad::db::degreesToRadians(value) : value;
        return;
    }
    case BufferValue::Short:
        rb.resval.rint = static_cast<short>(qvad::db::parseInteger(text));
        return;
    case BufferValue::Long:
        rb.resval.rlong = static_cast<int>(qvad::db::parseInteger(text));
        return;
    case BufferValue::Int64:
        rb.resval.rlname[0] = static_cast<long long>(qvad::db::parseInteger(text));
        return;
    case BufferValue::Name:
        if (qvad::dxf::valueKind(code) == ValueKind::Handle)
            nameOfHandle(qvad::parseHandle(text), rb.resval.rlname);
        return;
    case BufferValue::Binary:
        putHexBytes(rb, text);
        return;
    case BufferValue::String:
        rb.resval.rstring = hostString(text);
        return;
    default:
        return;
    }
}

} // namespace

qv_resbuf* dataPartBuffers(const OdDbObject& object) {
    BufferChain chain;
    nameOfHandle(object.handle(), chain.append(-1).resval.rlname);
    chain.append(0).resval.rstring = hostString(object.typeName());
    const auto data = object.tags().subspan(0, object.xdataStart());
    for (std::size_t i = 0; i < data.size();) {
        const int code = data[i].code;
        if (!isOrdinaryGroup(code)) {
            qv_resbuf& rb = chain.append(code);
            putItemValue(rb, qvad::db::readDataItem(data, i));
        } else if (bufferValueOf(code) == BufferValue::Point) {
            putPoint(chain.append(code), data, i);
        } else {
            putTag(chain.append(code), data[i++]);
        }
    }
    return chain.release();
}

} // namespace qvad::api
