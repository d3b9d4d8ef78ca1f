#pragma once
// An object's data as the host interface hands it to commands: DXF group codes with typed values.
// The list holds what the file stores (planar entities in their object coordinates), with three
// differences that the interface has always had: x, y and z combine into one point item (2D where
// the file has no z), references to other objects are object references, and angles (groups 50-58)
// are radians where the file has degrees. It starts with -1 (the object itself) and 0 (its type);
// extended data follows a -3 marker. Numbers remember the text they were read from, so a value that
// was not changed goes back into the drawing exactly as it came.

#include "qvad/db/OdDbObject.h"
#include "qvad/dxf/string_pool.h"

#include <array>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace qvad::db {

struct ObjectRef {
    Handle handle = 0;
    friend bool operator==(const ObjectRef&, const ObjectRef&) = default;
};

// monostate only for the -3 marker, which carries no value.
using DataValue = std::variant<std::monostate, std::string, double, std::int64_t, OdGePoint3d, ObjectRef>;

struct DataItem {
    int code = 0;
    DataValue value;
    bool is2d = false; // a point without z
    // The text each number (each coordinate of a point) was read from; empty for new values.
    std::array<std::string, 3> source;

    DataItem() = default;
    DataItem(int c, DataValue v, bool twoD = false) : code(c), value(std::move(v)), is2d(twoD) {}

    const std::string* text() const { return std::get_if<std::string>(&value); }
    const double* real() const { return std::get_if<double>(&value); }
    const std::int64_t* integer() const { return std::get_if<std::int64_t>(&value); }
    const OdGePoint3d* point() const { return std::get_if<OdGePoint3d>(&value); }
    const ObjectRef* reference() const { return std::get_if<ObjectRef>(&value); }
};

using DataList = std::vector<DataItem>;

// What is wrong with a list, in one sentence naming the group.
class DataListError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// x codes that combine with the y (code + 10) and z (code + 20) right after them into one point.
bool isPointCode(int code);
// Groups 50-58 outside extended data.
bool isAngleCode(int code);
// Pointers and owners (330-369 and the like); 320-329 and 1005 are handles kept as text.
bool isObjectReferenceCode(int code);

// withSourceText keeps the text each number was read from, which writing the list back needs to leave
// unchanged values byte for byte; a list only handed out as result buffers does without.
DataList entityToDataList(const OdDbObject& object, bool withSourceText = true);
// The item whose first tag is tags[i] (outside extended data, without source texts); i moves past it.
DataItem readDataItem(std::span<const Tag> tags, std::size_t& i);

// The tags an object of this type stores for the list: -1 is skipped, a 0 item must name the type.
// Throws DataListError for any item that does not fit its group code; nothing is produced then.
std::vector<Tag> dataListToTags(const DataList& list, std::string_view typeName, qvad::dxf::StringPool& pool);

// Keeps the extended data of the applications matching any of the patterns (without regard to case;
// '*' matches any run of characters, '?' any one) and drops the rest, and the -3 marker with it when
// nothing is left. No patterns drop all extended data.
void filterExtendedData(DataList& list, std::span<const std::string> applicationPatterns);
bool matchesApplication(std::string_view name, std::string_view pattern);

} // namespace qvad::db
