#pragma once
// Entity data lists crossing the C boundary: the typed lists of the drawing library become chains of
// result buffers and back. Which member of the value union a buffer uses follows from its code.

#include "qvad/api/qvad_api.h"
#include "qvad/db/entity_data_list.h"

#include <cstdarg>
#include <string_view>

namespace qvad::api {

enum class BufferValue { None, Real, Point, Short, Long, Int64, String, Name, Binary, Unknown };

// Type codes (QV_RT*) and DXF group codes alike. Int64 groups (160-169) keep their value in rlname[0].
// Asked for every buffer made and freed, so answered from a table of bufferValueByRules.
BufferValue bufferValueOf(int code);
BufferValue bufferValueByRules(int code);

// A copy on the host heap; throws std::bad_alloc.
char* hostString(std::string_view text);

// One item's value into a buffer made for its code.
void putItemValue(qv_resbuf& rb, const qvad::db::DataItem& item);
// Hexadecimal text as the buffer's bytes; throws DataListError past 32767 bytes.
void putHexBytes(qv_resbuf& rb, std::string_view hex);

// Frees a chain when it leaves scope unless released, so a failure half-way leaks nothing.
class BufferChain {
public:
    BufferChain() = default;
    BufferChain(const BufferChain&) = delete;
    BufferChain& operator=(const BufferChain&) = delete;
    ~BufferChain();
    // Appends a zeroed buffer; throws std::bad_alloc.
    qv_resbuf& append(int code);
    qv_resbuf* release();

private:
    qv_resbuf* m_head = nullptr;
    qv_resbuf* m_tail = nullptr;
};

// (code, value) pairs ended by 0, as qvutBuildList takes them; nullptr (ERRNO set) for a bad list.
qv_resbuf* buildListFromArguments(int code, va_list args);

// Object references become names of the open drawing.
qv_resbuf* toResultBuffers(const qvad::db::DataList& list);
// The object's list without extended data, as toResultBuffers(entityToDataList(object, false)) gives
// it, written straight from the tags: reading every object of a large drawing goes through here.
qv_resbuf* dataPartBuffers(const OdDbObject& object);
// Throws DataListError for a buffer that no group of a data list can hold: an unknown code, a null
// string, a name of another drawing.
qvad::db::DataList fromResultBuffers(const qv_resbuf* list);

} // namespace qvad::api
