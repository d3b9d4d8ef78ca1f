#pragma once
// Real drawing objects for the bucket pass tests: entities written as DXF tags, read into a drawing,
// and the members a bucket pass takes.

#include "qvad/db/OdDbDatabase.h"
#include "tooldeck/commands/cleanup/overkill_buckets.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qvtd::overkill::bucket_testing {

using TagList = std::vector<std::pair<int, std::string>>;

// A number as a DXF value, to the last digit.
std::string num(double value);
// A point's three groups (code, code + 10, code + 20).
TagList at(int code, double x, double y, double z = 0.0);
TagList operator+(TagList a, const TagList& b);

// One entity: type, handle, owner model space, the common part on layer 0, then `body` as given
// (subclass markers included).
std::string entityText(std::string_view type, unsigned handle, const TagList& body);

// Shorthands for the classes most tests use; `extra` goes into the class's data part.
std::string text(unsigned handle, double x, double y, std::string_view content = "A",
                 const TagList& extra = {});
std::string point(unsigned handle, double x, double y, double z = 0.0, const TagList& extra = {});
// A BLOCK ... ENDBLK run for the BLOCKS section.
std::string blockDefinition(unsigned handle, std::string_view name);

class BucketDrawing {
public:
    explicit BucketDrawing(const std::string& entities, const std::string& blocks = {});
    const OdDbEntity& entity(unsigned handle) const;
    // Members with default properties, in the order given.
    std::vector<BucketMember> members(const std::vector<unsigned>& handles) const;
    // sameObject of two entities of the drawing.
    bool same(unsigned a, unsigned b, double e = 1e-6) const;

private:
    std::unique_ptr<OdDbDatabase> m_db;
};

} // namespace qvtd::overkill::bucket_testing
