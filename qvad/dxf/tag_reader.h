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
    TagArray tags; // up to and including "0 EOF"
    bool binary = false;
    std::size_t records = 0;       // group 0 tags: about the number of objects to come
    std::size_t bytesAfterEof = 0; // non-blank bytes that followed EOF and were ignored
    // Tag indices before which a comment (group 999) was dropped; they shift line numbers.
    std::vector<std::size_t> commentsBefore;

    // 1-based line of a tag's group code in an ASCII file: every tag takes exactly two lines.
    std::size_t lineOf(std::size_t index) const;
};

bool isBinaryDxf(std::string_view buffer);
// The marker a binary DXF file starts with.
std::string_view binaryDxfSentinel();

// Throws DxfError naming the line (ASCII) or byte offset (binary) of the first malformed tag.
TagFile readTags(std::string_view buffer, StringPool& pool);

// Line numbers are counted while reading because dropped comments shift them.

} // namespace qvad::dxf
