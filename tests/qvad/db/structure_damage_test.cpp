// Damage a lost line leaves behind: tables and records without names, records without their
// subclass markers, header variables without a value, layouts without their layout part. Each is
// mended so that the saved drawing reads cleanly, and a second load finds nothing more to mend.

#include "qvad/db/dictionary_entries.h"
#include "structure_support.h"

#include <gtest/gtest.h>

using namespace structure_test;

namespace {

void replaceOnce(std::string& text, std::string_view from, std::string_view to) {
    std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
}

// Loads, checks that the saved drawing needs nothing more, and returns it.
std::unique_ptr<OdDbDatabase> mended(const std::string& text, std::string_view expectedRepair) {
    auto loaded = load(text);
    EXPECT_TRUE(hasRepair(*loaded, expectedRepair)) << repairs(*loaded);
    auto db = saveAndLoad(*loaded);
    EXPECT_TRUE(db->repairs().empty()) << repairs(*db);
    return db;
}

TEST(Damage, ATableWithoutNameTakesItsRecordsType) {
    std::string text = completeDrawing("AC1015", "");
    replaceOnce(text, "0 TABLE\n2 LAYER\n", "0 TABLE\n2 \n");
    auto db = mended(text, "named a table that had no name after its entries: LAYER");
    ASSERT_TRUE(db->table("LAYER"));
    EXPECT_TRUE(db->table("LAYER")->find("0"));
}

TEST(Damage, RecordsWithoutNameAreNamedButShapeFileStylesStayNameless) {
    std::string text = completeDrawing("AC1015", "");
    replaceOnce(text, "2 ACAD\n70 0", "70 0");
    // A text style that loads a shape file has no name by design.
    text.insert(text.find("0 ENDTAB", text.find("2 STYLE")), R"(0 STYLE
5 130
330 3
100 AcDbSymbolTableRecord
100 AcDbTextStyleTableRecord
2 
70 1
40 0.0
41 1.0
50 0.0
71 0
42 1.0
3 symbols.shx
4 
)");
    auto db = mended(text, "named 1 table entries that had no name");
    EXPECT_TRUE(db->table("APPID")->find("UNNAMED1"));
    EXPECT_EQ(db->getObject(0x130)->getString(2), "");
}

TEST(Damage, RecordsWithoutTheirMarkersGetThemBack) {
    std::string text = completeDrawing("AC1015", "");
    replaceOnce(text, "100 AcDbLinetypeTableRecord\n2 Continuous", "2 Continuous");
    auto db = mended(text, "restored the subclass markers of 1 objects");
    const OdDbSymbolTableRecord* continuous = db->table("LTYPE")->find("Continuous");
    ASSERT_TRUE(continuous);
    EXPECT_EQ(markers(*continuous),
              (std::vector<std::string>{"AcDbSymbolTableRecord", "AcDbLinetypeTableRecord"}));
    EXPECT_EQ(continuous->getString(3, {}, "AcDbLinetypeTableRecord"), "Solid line");
}

TEST(Damage, HeaderVariablesWithoutValueOrNameAreDropped) {
    std::string text = completeDrawing("AC1015", "");
    replaceOnce(text, "9 $LTSCALE\n40 1.0\n", "9 $LTSCALE\n9 LTSCALE\n40 1.0\n");
    auto db = mended(text, "dropped 2 header variables without a name or a value");
    EXPECT_FALSE(db->header().find("$LTSCALE"));
    EXPECT_TRUE(db->header().find("$ATTMODE")) << "the neighbours stay";
}

TEST(Damage, ALayoutWithoutItsLayoutPartIsReplaced) {
    std::string text = completeDrawing("AC1015", "");
    // Layout1 loses everything from its AcDbLayout marker on.
    std::size_t layout1 = text.find("0 LAYOUT\n5 1E");
    std::size_t part = text.find("100 AcDbLayout", layout1);
    text.erase(part, text.find("0 ENDSEC", part) - part);
    auto db = mended(text, "added a layout to 1 space blocks that had none");
    const OdDbObject* layouts = qvad::db::rootDictionaryItem(*db, "ACAD_LAYOUT");
    ASSERT_TRUE(layouts);
    const OdDbObject* layout = db->getObject(db->paperSpace()->getHandle(340));
    ASSERT_TRUE(layout);
    EXPECT_TRUE(layout->hasSubclass("AcDbLayout"));
    EXPECT_EQ(layout->getHandle(330, "AcDbLayout"), db->paperSpace()->handle());
    EXPECT_FALSE(db->getObject(0x1E)) << "the broken one is gone";
}

TEST(Damage, ALayoutTheDictionaryLostIsListedAgain) {
    std::string text = completeDrawing("AC1015", "");
    // The key of Layout1 is lost; its handle stays behind without a partner.
    replaceOnce(text, "3 Layout1\n350 1E", "350 1E");
    auto db = mended(text, "put 1 layouts the layout dictionary did not list back into it");
    const OdDbObject* layouts = qvad::db::rootDictionaryItem(*db, "ACAD_LAYOUT");
    ASSERT_TRUE(layouts);
    EXPECT_EQ(qvad::db::dictionaryItem(*layouts, "Layout1"), 0x1Eu);
    EXPECT_EQ(qvad::db::dictionaryEntries(*layouts).size(), 2u);
    EXPECT_EQ(db->paperSpace()->getHandle(340), 0x1Eu);
    EXPECT_EQ(indexOf(*layouts, 350, "1E"), indexOf(*layouts, 3, "Layout1") + 1) << "no stray handle is left";
}

TEST(Damage, ALayoutWithoutNameTakesItsKey) {
    std::string text = completeDrawing("AC1015", "");
    replaceOnce(text, "1 Layout1\n", "");
    auto db = saveAndLoad(*load(text));
    EXPECT_EQ(db->getObject(0x1E)->getString(1, {}, "AcDbLayout"), "Layout1");
}

TEST(Damage, ATableOfAnUnknownKindIsDropped) {
    std::string text = completeDrawing("AC1015", "");
    replaceOnce(text, "0 TABLE\n2 VIEW\n", "0 TABLE\n2 LAYOUT\n");
    auto db = mended(text, "dropped a table of a kind DXF does not have, \"LAYOUT\", with 0 entries");
    EXPECT_FALSE(db->table("LAYOUT"));
    EXPECT_TRUE(db->table("VIEW")) << "the table every drawing has comes back empty";
}

} // namespace
