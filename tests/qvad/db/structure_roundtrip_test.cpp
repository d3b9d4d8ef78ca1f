// What this program does not understand comes out of a load and a save exactly as it went in:
// unknown entity and object types, unknown sections, extended data, application groups and
// groups in places the reference does not list.

#include "qvad/dxf/dxf_writer.h"
#include "structure_support.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace structure_test;

namespace {

constexpr std::string_view kWidget = R"(
    0 ACME_WIDGET
    5 100
    102 {ACME_REACTORS
    330 101
    102 }
    330 1F
    100 AcDbEntity
    8 0
    100 AcmeDbWidget
    1 gear
    10 1.25
    20 2.5
    30 0.0
    90 7
    310 DEADBEEF
    1001 ACME
    1000 made by hand
    1002 {
    1040 3.14159265358979
    1070 42
    1005 101
    1002 }
    0 LINE
    5 102
    330 1F
    100 AcDbEntity
    8 0
    100 AcDbLine
    10 0.0
    20 0.0
    30 0.0
    11 1.0
    21 1.0
    31 0.0
    1 a note another program keeps here
    1001 ACAD
    1000 line xdata
    1010 1.0
    1020 2.0
    1030 3.0)";

constexpr std::string_view kData = R"(
    0 ACME_DATA
    5 101
    330 C
    100 AcmeDbData
    1 payload
    300 text
    0 DICTIONARYVAR
    5 103
    330 C
    100 DictionaryVariables
    280 0
    1 value)";

constexpr std::string_view kSection = R"(0 SECTION
2 ACME_SECTION
1 whatever
70 3
0 RECORD
1 kept
0 ENDSEC
)";

std::string drawingText() {
    std::string text = completeDrawing("AC1015", kWidget, "", kData);
    // An unknown section between TABLES and BLOCKS.
    text.insert(text.find("0 SECTION\n2 BLOCKS"), std::string(kSection));
    // ACME registers its application, as extended data requires.
    text.insert(text.find("0 ENDTAB", text.find("2 APPID")),
                "0 APPID\n5 104\n330 9\n100 AcDbSymbolTableRecord\n"
                "100 AcDbRegAppTableRecord\n2 ACME\n70 0\n");
    return text;
}

TEST(RoundTrip, UnknownEntitiesObjectsAndExtendedDataKeepEveryTag) {
    auto original = load(drawingText());
    EXPECT_TRUE(original->repairs().empty()) << repairs(*original);
    auto db = saveAndLoad(*original);
    for (qvad::Handle h : {0x100u, 0x101u, 0x102u, 0x103u}) {
        const OdDbObject* before = original->getObject(h);
        const OdDbObject* after = db->getObject(h);
        ASSERT_TRUE(before && after) << std::hex << h;
        EXPECT_EQ(after->typeName(), before->typeName());
        EXPECT_EQ(tagList(*after), tagList(*before)) << after->typeName();
    }
    // The values are the file's own text, not numbers formatted again.
    TagList widget = tagList(*db->getObject(0x100));
    EXPECT_NE(std::find(widget.begin(), widget.end(), std::pair<int, std::string>{1040, "3.14159265358979"}),
              widget.end());
}

TEST(RoundTrip, UnknownSectionsStayWhereTheyWere) {
    auto db = saveAndLoad(*load(drawingText()));
    ASSERT_EQ(db->rawSections().size(), 1u);
    const RawSection& section = db->rawSections()[0];
    EXPECT_EQ(section.name, "ACME_SECTION");
    EXPECT_EQ(section.after, "TABLES");
    EXPECT_EQ(tagList(section.tags), (TagList{{1, "whatever"}, {70, "3"}, {0, "RECORD"}, {1, "kept"}}));
    std::string written = qvad::dxf::writeDxf(*db);
    EXPECT_LT(written.find("ACME_SECTION"), written.find("BLOCKS"));
    EXPECT_GT(written.find("ACME_SECTION"), written.find("TABLES"));
}

TEST(RoundTrip, SavingTwiceWritesTheSameText) {
    auto once = saveAndLoad(*load(drawingText()));
    std::string first = qvad::dxf::writeDxf(*once);
    std::string second = qvad::dxf::writeDxf(*saveAndLoad(*once));
    EXPECT_EQ(first, second);
}

TEST(RoundTrip, AnUpgradedR12DrawingKeepsExtendedDataAndUnknownEntities) {
    auto db = saveAndLoad(*load(R"(
        0 SECTION
        2 HEADER
        9 $ACADVER
        1 AC1009
        9 $DWGCODEPAGE
        3 ANSI_1250
        0 ENDSEC
        0 SECTION
        2 ENTITIES
        0 LINE
        8 0
        10 0.0
        20 0.0
        11 1.0
        21 1.0
        1001 ACME
        1000 first
        1070 1
        1001 ACAD
        1000 second
        0 ACME_THING
        8 0
        10 5.0
        20 5.0
        1 as is
        0 ENDSEC
        0 EOF)"));
    EXPECT_EQ(db->codePage(), "ANSI_1250") << "the drawing keeps its code page";
    const OdDbEntity* line = firstEntity(*db, "LINE");
    ASSERT_TRUE(line);
    TagList tags = tagList(*line);
    TagList xdata(tags.begin() + static_cast<std::ptrdiff_t>(line->xdataStart()), tags.end());
    EXPECT_EQ(xdata,
              (TagList{{1001, "ACME"}, {1000, "first"}, {1070, "1"}, {1001, "ACAD"}, {1000, "second"}}));
    // Applications named by extended data are registered.
    EXPECT_TRUE(db->table("APPID")->find("ACME"));
    EXPECT_TRUE(db->table("APPID")->find("ACAD"));
    const OdDbEntity* thing = firstEntity(*db, "ACME_THING");
    ASSERT_TRUE(thing);
    TagList data = tagList(*thing);
    EXPECT_EQ(TagList(data.begin() + 2, data.end()),
              (TagList{{8, "0"}, {10, "5.0"}, {20, "5.0"}, {1, "as is"}}));
}

} // namespace
