#include "overkill_bucket_drawing.h"

#include "qvad/dxf/dxf_reader.h"
#include "tests/support/dxf_text.h"
#include "tooldeck/commands/cleanup/overkill_object_compare.h"

#include <cstdio>
#include <stdexcept>

namespace qvtd::overkill::bucket_testing {

std::string num(double value) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", value);
    return buffer;
}

std::string hex(unsigned handle) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%X", handle);
    return buffer;
}

TagList at(int code, double x, double y, double z) {
    return {{code, num(x)}, {code + 10, num(y)}, {code + 20, num(z)}};
}

TagList operator+(TagList a, const TagList& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

std::string entityText(std::string_view type, unsigned handle, const TagList& body) {
    std::string out = dxfText({{0, type}, {5, hex(handle)}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"}});
    for (const auto& [code, value] : body) out += std::to_string(code) + "\n" + value + "\n";
    return out;
}

std::string text(unsigned handle, double x, double y, std::string_view content, const TagList& extra) {
    // A height in `extra` replaces the usual one.
    bool hasHeight = false;
    for (const auto& tag : extra) hasHeight = hasHeight || tag.first == 40;
    const TagList height = hasHeight ? TagList{} : TagList{{40, "2.5"}};
    return entityText("TEXT", handle,
                      TagList{{100, "AcDbText"}} + at(10, x, y) + height +
                          TagList{{1, std::string(content)}} + extra + TagList{{100, "AcDbText"}});
}

std::string point(unsigned handle, double x, double y, double z, const TagList& extra) {
    return entityText("POINT", handle, TagList{{100, "AcDbPoint"}} + at(10, x, y, z) + extra);
}

std::string blockDefinition(unsigned handle, std::string_view name) {
    return dxfText({{0, "BLOCK"},
                    {5, hex(handle)},
                    {330, "2"},
                    {100, "AcDbEntity"},
                    {8, "0"},
                    {100, "AcDbBlockBegin"},
                    {2, name},
                    {70, "0"},
                    {10, "0"},
                    {20, "0"},
                    {30, "0"},
                    {3, name},
                    {1, ""},
                    {0, "ENDBLK"},
                    {5, hex(handle + 1)},
                    {330, "2"},
                    {100, "AcDbEntity"},
                    {8, "0"},
                    {100, "AcDbBlockEnd"}});
}

BucketDrawing::BucketDrawing(const std::string& entities, const std::string& blocks)
    : m_db(qvad::dxf::readDxfBuffer(r2000DrawingText(entities, blocks))) {}

const OdDbEntity& BucketDrawing::entity(unsigned handle) const {
    const OdDbObject* object = m_db->getObject(handle);
    if (!object || !object->isEntity()) throw std::logic_error("no entity " + hex(handle));
    return static_cast<const OdDbEntity&>(*object);
}

std::vector<BucketMember> BucketDrawing::members(const std::vector<unsigned>& handles) const {
    std::vector<BucketMember> out;
    for (unsigned handle : handles) out.push_back({handle, Properties{}, &entity(handle)});
    return out;
}

bool BucketDrawing::same(unsigned a, unsigned b, double e) const {
    return sameObject(entity(a), entity(b), e);
}

} // namespace qvtd::overkill::bucket_testing
