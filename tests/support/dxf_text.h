#pragma once
// Small DXF texts for tests: tags written one pair of lines each, and a complete R2000 drawing
// (block table, both spaces, a root dictionary) around the entities a test needs.

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

inline std::string dxfText(std::initializer_list<std::pair<int, std::string_view>> tags) {
    std::string out;
    for (const auto& [code, value] : tags) {
        out += std::to_string(code);
        out += '\n';
        out += value;
        out += '\n';
    }
    return out;
}

// `blocks` are BLOCK ... ENDBLK runs after the two spaces; `objects` replaces the default OBJECTS
// section (one empty root dictionary, handle C). Handles below 10 are taken by the skeleton.
inline std::string r2000DrawingText(const std::string& entities, const std::string& blocks = {},
                                    const std::string& objects = {},
                                    std::string_view codePage = "ANSI_1252") {
    std::string text = dxfText({{0, "SECTION"},
                                {2, "HEADER"},
                                {9, "$ACADVER"},
                                {1, "AC1015"},
                                {9, "$DWGCODEPAGE"},
                                {3, codePage},
                                {9, "$HANDSEED"},
                                {5, "1000"},
                                {0, "ENDSEC"},
                                {0, "SECTION"},
                                {2, "TABLES"},
                                {0, "TABLE"},
                                {2, "BLOCK_RECORD"},
                                {5, "1"},
                                {330, "0"},
                                {100, "AcDbSymbolTable"},
                                {70, "2"},
                                {0, "BLOCK_RECORD"},
                                {5, "2"},
                                {330, "1"},
                                {100, "AcDbSymbolTableRecord"},
                                {100, "AcDbBlockTableRecord"},
                                {2, "*Model_Space"},
                                {0, "BLOCK_RECORD"},
                                {5, "3"},
                                {330, "1"},
                                {100, "AcDbSymbolTableRecord"},
                                {100, "AcDbBlockTableRecord"},
                                {2, "*Paper_Space"},
                                {0, "ENDTAB"},
                                {0, "ENDSEC"},
                                {0, "SECTION"},
                                {2, "BLOCKS"},
                                {0, "BLOCK"},
                                {5, "4"},
                                {330, "2"},
                                {100, "AcDbEntity"},
                                {8, "0"},
                                {100, "AcDbBlockBegin"},
                                {2, "*Model_Space"},
                                {70, "0"},
                                {10, "0.0"},
                                {20, "0.0"},
                                {30, "0.0"},
                                {3, "*Model_Space"},
                                {1, ""},
                                {0, "ENDBLK"},
                                {5, "5"},
                                {330, "2"},
                                {100, "AcDbEntity"},
                                {8, "0"},
                                {100, "AcDbBlockEnd"},
                                {0, "BLOCK"},
                                {5, "6"},
                                {330, "3"},
                                {100, "AcDbEntity"},
                                {67, "1"},
                                {8, "0"},
                                {100, "AcDbBlockBegin"},
                                {2, "*Paper_Space"},
                                {70, "0"},
                                {10, "0.0"},
                                {20, "0.0"},
                                {30, "0.0"},
                                {3, "*Paper_Space"},
                                {1, ""},
                                {0, "ENDBLK"},
                                {5, "7"},
                                {330, "3"},
                                {100, "AcDbEntity"},
                                {67, "1"},
                                {8, "0"},
                                {100, "AcDbBlockEnd"}});
    text += blocks;
    text += dxfText({{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}});
    text += entities;
    text += dxfText({{0, "ENDSEC"}, {0, "SECTION"}, {2, "OBJECTS"}});
    text += objects.empty() ? dxfText({{0, "DICTIONARY"}, {5, "C"}, {330, "0"}, {100, "AcDbDictionary"}})
                            : objects;
    text += dxfText({{0, "ENDSEC"}, {0, "EOF"}});
    return text;
}
