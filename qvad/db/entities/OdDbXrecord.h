#pragma once

#include "qvad/db/OdDbObject.h"
#include "qvad/db/entities/tag_access.h"

#include <vector>

// XRECORD: arbitrary tagged data an application files under a dictionary key. The first group
// after the marker is the cloning rule (280); the data follows.
class OdDbXrecord : public OdDbObject {
public:
    static constexpr std::string_view kSubclass = "AcDbXrecord";
    OdDbXrecord() : OdDbObject("XRECORD") {}

    int mergeStyle() const;
    std::span<const Tag> dataTags() const;
    // Replaces the data; values are copied into the drawing's text store. Throws
    // std::invalid_argument for a value with a line break or a code outside 1..1071.
    void setDataTags(std::span<const Tag> data);

private:
    std::pair<std::size_t, std::size_t> dataRange() const;
};
