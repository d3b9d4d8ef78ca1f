#include "qvad/api/entity_rules.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/entities/tag_access.h"
#include "qvad/db/symbol_references.h"
#include "qvad/db/table_records.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

namespace qvad::api {

using qvad::db::DataItem;
using qvad::db::DataList;

namespace {

// Types whose data is meaningless without these groups; others are not checked.
const std::map<std::string, std::vector<int>, std::less<>>& requiredGroups() {
    static const std::map<std::string, std::vector<int>, std::less<>> table = {
        {"LINE", {10, 11}},
        {"POINT", {10}},
        {"CIRCLE", {10, 40}},
        {"ARC", {10, 40, 50, 51}},
        {"ELLIPSE", {10, 11, 40}},
        {"LWPOLYLINE", {10}},
        {"TEXT", {10, 40, 1}},
        {"MTEXT", {10}},
        {"ATTDEF", {10, 40, 1, 2}},
        {"ATTRIB", {10, 40, 1, 2}},
        {"INSERT", {2, 10}},
        {"SOLID", {10, 11, 12}},
        {"TRACE", {10, 11, 12}},
        {"3DFACE", {10, 11, 12}},
        {"VERTEX", {10}},
        {"XLINE", {10, 11}},
        {"RAY", {10, 11}},
        {"LAYER", {2}},
        {"LTYPE", {2}},
        {"STYLE", {2}},
        {"DIMSTYLE", {2}},
        {"APPID", {2}},
        {"UCS", {2}},
        {"VIEW", {2}},
    };
    return table;
}

// "30.000" as "30.0": the form the writer gives whole numbers.
std::string trimmedDecimals(std::string_view text) {
    std::string kept(text);
    while (kept.size() > 2 && kept.back() == '0' && kept[kept.size() - 2] != '.') kept.pop_back();
    return kept;
}

bool inExtendedData(const DataList& list, std::size_t index) {
    for (std::size_t i = 0; i < index; ++i)
        if (list[i].code == -3) return true;
    return false;
}

} // namespace

std::string listType(const DataList& list) {
    for (const DataItem& item : list)
        if (item.code == 0 && item.text()) return *item.text();
    return {};
}

HostError checkRequiredGroups(const DataList& list, std::string_view type) {
    std::string upper(type);
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    auto it = requiredGroups().find(upper);
    if (it == requiredGroups().end()) return HostError::None;
    for (int code : it->second) {
        auto found =
            std::find_if(list.begin(), list.end(), [&](const DataItem& i) { return i.code == code; });
        if (found == list.end() || inExtendedData(list, static_cast<std::size_t>(found - list.begin())))
            return HostError::MissingGroup;
    }
    return HostError::None;
}

HostError checkEntityValues(const DataList& list) {
    for (const DataItem& item : list) {
        if (item.code == -3) break;
        const std::int64_t* n = item.integer();
        if (!n) continue;
        const bool bad = (item.code == 62 && (*n < 0 || *n > 256)) ||
                         (item.code == 370 && (*n < -3 || *n > 211)) ||
                         (item.code == 60 && (*n < 0 || *n > 1));
        if (bad) return HostError::BadDataList;
    }
    return HostError::None;
}

void chooseAngleText(DataList& list) {
    for (DataItem& item : list) {
        if (item.code == -3) break;
        const double* radians = item.real();
        if (!radians || !qvad::db::isAngleCode(item.code) || !item.source[0].empty() ||
            !std::isfinite(*radians))
            continue;
        const double degrees = qvad::db::radiansToDegrees(*radians);
        for (int decimals = 1; decimals <= 17; ++decimals) {
            char text[400];
            auto [end, status] =
                std::to_chars(text, text + sizeof text, degrees, std::chars_format::fixed, decimals);
            if (status != std::errc()) break;
            const std::string_view written(text, static_cast<std::size_t>(end - text));
            if (qvad::db::degreesToRadians(qvad::db::parseReal(written)) == *radians) {
                item.source[0] = trimmedDecimals(written);
                break;
            }
        }
    }
}

void markPlanarPoints(DataList& list, std::string_view type) {
    int tens = 0;
    for (DataItem& item : list) {
        if (item.code == -3) break;
        if (!item.point()) continue;
        const int code = item.code;
        bool planar = false;
        if (equalsNoCase(type, "LWPOLYLINE")) planar = code == 10;
        // HATCH: the first 10 is its elevation point; boundary and seed points are 2D.
        else if (equalsNoCase(type, "HATCH"))
            planar = code >= 10 && code <= 13 && (code != 10 || tens++ > 0);
        else if (equalsNoCase(type, "IMAGE") || equalsNoCase(type, "WIPEOUT"))
            planar = code == 13 || code == 14;
        else if (equalsNoCase(type, "VPORT"))
            planar = code >= 10 && code <= 15;
        else if (equalsNoCase(type, "VIEW"))
            planar = code == 10;
        else if (equalsNoCase(type, "VIEWPORT"))
            planar = code >= 12 && code <= 15;
        item.is2d = planar;
    }
}

HostError ensureLayer(OdDbDatabase& db, const DataList& list) {
    auto layer = std::find_if(list.begin(), list.end(), [](const DataItem& i) { return i.code == 8; });
    if (layer == list.end() || !layer->text()) return HostError::None;
    const std::string& name = *layer->text();
    if (!qvad::db::isValidSymbolName(name)) return HostError::BadSymbolName;
    OdDbSymbolTable* layers = db.table("LAYER");
    if (!layers) return HostError::UnknownTable;
    if (layers->find(name)) return HostError::None;
    std::string_view linetype = "Continuous";
    if (OdDbSymbolTable* linetypes = db.table("LTYPE"))
        if (OdDbSymbolTableRecord* continuous = linetypes->find("Continuous")) linetype = continuous->name();
    db.notifyBeforeModify(*layers);
    OdDbSymbolTableRecord* record = qvad::db::addTableRecord(
        db, *layers, {Tag(2, db.keep(name)), Tag(70, "0"), Tag(62, "7"), Tag(6, db.keep(linetype))});
    db.notifyCreated(*record);
    return HostError::None;
}

long extendedDataBytes(const DataList& list) {
    auto marker = std::find_if(list.begin(), list.end(), [](const DataItem& i) { return i.code == -3; });
    auto from = marker == list.end() ? list.begin() : marker + 1;
    long bytes = 0;
    for (auto it = from; it != list.end(); ++it) {
        const int code = it->code;
        const std::size_t text = it->text() ? it->text()->size() : 0;
        if (code == 1000 || code == 1003)
            bytes += static_cast<long>(text) + 2;
        else if (code == 1001)
            bytes += 2; // applications are stored by their table index
        else if (code == 1002)
            bytes += 1;
        else if (code == 1004)
            bytes += static_cast<long>(text / 2) + 1;
        else if (code == 1005)
            bytes += 8;
        else if (code >= 1010 && code <= 1013)
            bytes += 24;
        else if (code >= 1040 && code <= 1042)
            bytes += 8;
        else if (code == 1070)
            bytes += 2;
        else if (code == 1071)
            bytes += 4;
        else
            return -1;
    }
    return bytes;
}

HostError checkExtendedData(const OdDbDatabase& db, const DataList& list) {
    auto marker = std::find_if(list.begin(), list.end(), [](const DataItem& i) { return i.code == -3; });
    if (marker == list.end()) return HostError::None;
    const OdDbSymbolTable* applications = db.table("APPID");
    for (auto it = marker + 1; it != list.end(); ++it)
        if (it->code == 1001 && (!it->text() || !applications || !applications->find(*it->text())))
            return HostError::UnregisteredApplication;
    const long bytes = extendedDataBytes(list);
    if (bytes < 0) return HostError::BadDataList;
    return bytes > QV_XDATA_LIMIT ? HostError::ExtendedDataFull : HostError::None;
}

} // namespace qvad::api
