#include "qvad/db/table_records.h"

#include "qvad/db/object_factory.h"
#include "qvad/db/subclass_markers.h"

#include <algorithm>

namespace qvad::db {

OdDbSymbolTableRecord* addTableRecord(OdDbDatabase& db, OdDbSymbolTable& table, std::vector<Tag> data) {
    std::string_view type = db.keep(table.name());
    auto record = createObject(type, ObjectContext::TableRecord);
    record->setDatabase(&db);
    std::vector<Tag> tags = {Tag(type == "DIMSTYLE" ? 105 : 5, db.keep(formatHandle(db.allocateHandle()))),
                             Tag(330, db.keep(formatHandle(table.handle()))),
                             Tag(100, "AcDbSymbolTableRecord"), Tag(100, recordSubclass(type))};
    tags.insert(tags.end(), data.begin(), data.end());
    record->assignTags(std::move(tags));
    record->syncHeadFromTags();
    auto* raw = static_cast<OdDbSymbolTableRecord*>(db.add(std::move(record)));
    db.notifyBeforeModify(table);
    table.records().push_back(raw);
    updateRecordCount(table);
    return raw;
}

void updateRecordCount(OdDbSymbolTable& table) {
    auto live = std::count_if(table.records().begin(), table.records().end(),
                              [](const OdDbSymbolTableRecord* r) { return !r->isErased(); });
    std::string_view part = table.hasSubclass("AcDbSymbolTable") ? "AcDbSymbolTable" : "";
    if (table.getInt(70, -1, part) != live) table.setInt(70, live, part);
}

} // namespace qvad::db
