#pragma once
// Splits a DXF file (ASCII or binary) into tags. Structure is not checked here, only that every
// group code is a number and every numeric value looks like one.

#include "qvad/dxf/string_pool.h"
#include "qvad/dxf/tag.h"

#include <string>
#include <string_view>
#include <vector>

namespace qvad::dxf {

struct TagFile {
    std::vector<Tag> tags; // up to and including "0 EOF"
    bool binary = false;
    std::size_t bytesAfterEof = 0; // non-blank bytes that followed EOF and were ignored
};

bool isBinaryDxf(std::string_view buffer);

// Throws DxfError naming the line (ASCII) or byte offset (binary) of the first malformed tag.
TagFile readTags(std::string_view buffer, StringPool& pool);

// 1-based line of a tag's group code in an ASCII file: every tag takes exactly two lines.
inline std::size_t lineOfTag(std::size_t index) { return 2 * index + 1; }

} // namespace qvad::dxf
