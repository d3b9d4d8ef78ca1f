// Symbol tables, the named-object dictionary and application registration.

#include "qvad/api/data_list_buffers.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/dictionary.h"
#include "qvad/db/symbol_references.h"
#include "qvad/db/table_records.h"

#include <algorithm>

using namespace qvad::api;

namespace {

std::string upperCase(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return upper;
}

// "BLOCK" is how callers name the table of block records.
OdDbSymbolTable* tableNamed(const OdDbDatabase& db, const char* name) {
    if (!name) return nullptr;
    const std::string upper = upperCase(name);
    return db.table(upper == "BLOCK" ? "BLOCK_RECORD" : upper);
}

int handOutRecord(const OdDbObject& record, qv_resbuf** out) {
    qvad::db::DataList items = qvad::db::entityToDataList(record);
    qvad::db::filterExtendedData(items, {});
    *out = toResultBuffers(items);
    return QV_NORM;
}

HostError openTable(const char* name, OdDbDatabase*& db, OdDbSymbolTable*& table) {
    db = HostSession::current().drawing();
    if (!db) return HostError::NoDrawing;
    table = tableNamed(*db, name);
    return table ? HostError::None : HostError::UnknownTable;
}

long indexOf(const OdDbSymbolTable& table, const OdDbSymbolTableRecord* record) {
    const auto& records = table.records();
    return static_cast<long>(std::find(records.begin(), records.end(), record) - records.begin());
}

} // namespace

extern "C" {

QV_API int qvdbTblSearch(const char* tableName, const char* name, int setNext, struct qv_resbuf** record) {
    return guarded([&] {
        if (!record || !name) return refuse(HostError::BadArgument);
        *record = nullptr;
        OdDbDatabase* db = nullptr;
        OdDbSymbolTable* table = nullptr;
        if (HostError e = openTable(tableName, db, table); e != HostError::None) return refuse(e);
        const OdDbSymbolTableRecord* found = table->find(name);
        if (!found) return refuse(HostError::BadSymbolName);
        if (setNext) HostSession::current().tableCursors()[upperCase(table->name())] = indexOf(*table, found);
        return handOutRecord(*found, record);
    });
}

QV_API int qvdbTblNext(const char* tableName, int rewind, struct qv_resbuf** record) {
    return guarded([&] {
        if (!record) return refuse(HostError::BadArgument);
        *record = nullptr;
        OdDbDatabase* db = nullptr;
        OdDbSymbolTable* table = nullptr;
        if (HostError e = openTable(tableName, db, table); e != HostError::None) return refuse(e);
        auto& cursors = HostSession::current().tableCursors();
        const std::string key = upperCase(table->name());
        if (rewind || !cursors.count(key)) cursors[key] = -1;
        const auto& records = table->records();
        for (long i = cursors[key] + 1; i < static_cast<long>(records.size()); ++i) {
            if (records[static_cast<std::size_t>(i)]->isErased()) continue;
            cursors[key] = i;
            return handOutRecord(*records[static_cast<std::size_t>(i)], record);
        }
        cursors[key] = static_cast<long>(records.size());
        return refuse(HostError::BadSymbolName);
    });
}

QV_API int qvdbTblObjName(const char* tableName, const char* name, qv_name record) {
    return guarded([&] {
        if (!record || !name) return refuse(HostError::BadArgument);
        clearName(record);
        OdDbDatabase* db = nullptr;
        OdDbSymbolTable* table = nullptr;
        if (HostError e = openTable(tableName, db, table); e != HostError::None) return refuse(e);
        const OdDbSymbolTableRecord* found = table->find(name);
        if (!found) return refuse(HostError::BadSymbolName);
        nameOf(*found, record);
        return QV_NORM;
    });
}

QV_API int qvdbNamedObjDict(qv_name dictionary) {
    return guarded([&] {
        if (!dictionary) return refuse(HostError::BadArgument);
        clearName(dictionary);
        const OdDbDatabase* db = HostSession::current().drawing();
        if (!db) return refuse(HostError::NoDrawing);
        const OdDbObject* root = db->namedObjectsDictionary();
        if (!root) return refuse(HostError::BadEntityName);
        nameOf(*root, dictionary);
        return QV_NORM;
    });
}

QV_API int qvdbDictSearch(const qv_name dictionary, const char* key, int setNext, struct qv_resbuf** entry) {
    return guarded([&] {
        if (!entry || !key) return refuse(HostError::BadArgument);
        *entry = nullptr;
        if (!HostSession::current().drawing()) return refuse(HostError::NoDrawing);
        const auto* dict = dynamic_cast<const OdDbDictionary*>(objectOf(dictionary));
        if (!dict || dict->isErased()) return refuse(HostError::BadEntityName);
        const OdDbObject* found = dict->getObject(key);
        if (!found || found->isErased()) return refuse(HostError::BadSymbolName);
        *entry = toResultBuffers(qvad::db::entityToDataList(*found));
        return QV_NORM;
    });
}

QV_API int qvdbRegApp(const char* application) {
    return guarded([&] {
        if (!application) return refuse(HostError::BadArgument);
        OdDbDatabase* db = nullptr;
        OdDbSymbolTable* table = nullptr;
        if (HostError e = openTable("APPID", db, table); e != HostError::None) return refuse(e);
        if (!qvad::db::isValidSymbolName(application)) return refuse(HostError::BadSymbolName);
        if (table->find(application)) return refuse(HostError::DuplicateName);
        db->notifyBeforeModify(*table);
        OdDbSymbolTableRecord* record =
            qvad::db::addTableRecord(*db, *table, {Tag(2, db->keep(application)), Tag(70, "0")});
        db->notifyCreated(*record);
        return QV_NORM;
    });
}

} // extern "C"
