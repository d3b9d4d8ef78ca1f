// Names entities use but the tables lack are created, and layer names no table may hold are renamed
// wherever they are used.

#include "qvad/db/symbol_references.h"
#include "structure_support.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace structure_test;

namespace {

constexpr std::string_view kOrphans = R"(
    0 LINE
    5 100
    330 1F
    100 AcDbEntity
    8 GHOST
    6 DASHDOT
    100 AcDbLine
    10 0.0
    20 0.0
    30 0.0
    11 1.0
    21 0.0
    31 0.0
    0 TEXT
    5 101
    330 1F
    100 AcDbEntity
    8 ghost
    6 ByLayer
    100 AcDbText
    10 0.0
    20 0.0
    30 0.0
    40 2.5
    1 Label
    7 ROMANS
    100 AcDbText
    0 DIMENSION
    5 102
    330 1F
    100 AcDbEntity
    8 0
    100 AcDbDimension
    2 *D1
    10 0.0
    20 0.0
    30 0.0
    11 5.0
    21 1.0
    31 0.0
    70 33
    3 ISO-25
    100 AcDbAlignedDimension
    13 0.0
    23 0.0
    33 0.0
    14 10.0
    24 0.0
    34 0.0)";

class MissingRecords : public ::testing::Test {
protected:
    void SetUp() override {
        loaded = load(completeDrawing("AC1015", kOrphans, R"(
            0 BLOCK
            5 110
            330 111
            100 AcDbEntity
            8 0
            100 AcDbBlockBegin
            2 *D1
            70 1
            10 0.0
            20 0.0
            30 0.0
            3 *D1
            1
            0 ENDBLK
            5 112
            330 111
            100 AcDbEntity
            8 0
            100 AcDbBlockEnd)"));
        db = saveAndLoad(*loaded);
    }
    std::unique_ptr<OdDbDatabase> loaded, db;
};

TEST_F(MissingRecords, ALayerEntitiesUseIsCreatedOnceWhateverTheCase) {
    const OdDbSymbolTable* layers = db->table("LAYER");
    const OdDbSymbolTableRecord* ghost = layers->find("GHOST");
    ASSERT_TRUE(ghost);
    EXPECT_EQ(layers->records().size(), 2u);
    EXPECT_EQ(layers->getInt(70, 0, "AcDbSymbolTable"), 2);
    EXPECT_EQ(ghost->ownerHandle(), layers->handle());
    EXPECT_EQ(markers(*ghost), (std::vector<std::string>{"AcDbSymbolTableRecord", "AcDbLayerTableRecord"}));
    EXPECT_EQ(ghost->getInt(62), 7);
    EXPECT_TRUE(db->table("LTYPE")->find(ghost->getString(6)));
    // An R2000 layer names its plot style.
    ASSERT_TRUE(db->getObject(ghost->getHandle(390)));
    EXPECT_EQ(db->getObject(ghost->getHandle(390))->typeName(), "ACDBPLACEHOLDER");
    // The entities keep their assignment.
    EXPECT_EQ(firstEntity(*db, "LINE")->getString(8), "GHOST");
    EXPECT_TRUE(hasRepair(*loaded, "added 1 layer that the drawing uses but did not define: \"GHOST\""))
        << repairs(*loaded);
}

TEST_F(MissingRecords, LinetypesTextStylesAndDimensionStylesAreCreatedToo) {
    EXPECT_TRUE(db->table("LTYPE")->find("DASHDOT"));
    EXPECT_FALSE(hasRepair(*loaded, "ByLayer")) << "ByLayer is not a record to create";
    const OdDbSymbolTableRecord* romans = db->table("STYLE")->find("ROMANS");
    ASSERT_TRUE(romans);
    EXPECT_EQ(markers(*romans),
              (std::vector<std::string>{"AcDbSymbolTableRecord", "AcDbTextStyleTableRecord"}));
    // A lost dimension style takes the drawing's Standard settings, not a reader's imperial defaults.
    const OdDbSymbolTableRecord* iso = db->table("DIMSTYLE")->find("ISO-25");
    ASSERT_TRUE(iso);
    EXPECT_EQ(indexOf(*iso, 105), 0);
    EXPECT_EQ(iso->getDouble(41), db->table("DIMSTYLE")->find("Standard")->getDouble(41));
    EXPECT_EQ(iso->getString(2), "ISO-25");
    for (std::string_view kind : {"linetype ", "text style ", "dimension style "})
        EXPECT_TRUE(hasRepair(*loaded, "added 1 " + std::string(kind))) << kind << "\n" << repairs(*loaded);
}

TEST(LayerNames, ForbiddenCharactersAreReplacedInTheTableAndInEveryEntity) {
    std::string text = completeDrawing("AC1015", R"(
        0 LINE
        5 100
        330 1F
        100 AcDbEntity
        8 A?B
        100 AcDbLine
        10 0.0
        20 0.0
        30 0.0
        11 1.0
        21 0.0
        31 0.0
        0 LINE
        5 101
        330 1F
        100 AcDbEntity
        100 AcDbLine
        8 X:Y
        10 0.0
        20 0.0
        30 0.0
        11 1.0
        21 0.0
        31 0.0)");
    // A layer record with the forbidden name, after the template's layer 0.
    text.insert(text.find("0 ENDTAB", text.find("2 LAYER")), R"(0 LAYER
5 120
330 2
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 A?B
70 0
62 3
6 Continuous
390 F
)");
    text.replace(text.find("9 $CLAYER\n8 0"), 13, "9 $CLAYER\n8 A?B");
    auto loaded = load(text);
    auto db = saveAndLoad(*loaded);
    const OdDbSymbolTable* layers = db->table("LAYER");
    const OdDbSymbolTableRecord* renamed = layers->find("A_B");
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->handle(), 0x120u);
    EXPECT_EQ(renamed->getInt(62), 3) << "the layer keeps its properties";
    EXPECT_FALSE(layers->find("A?B"));
    EXPECT_EQ(db->header().value("$CLAYER"), "A_B");
    std::vector<const OdDbEntity*> lines;
    for (const OdDbEntity* e : db->modelSpace()->entities()) lines.push_back(e);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0]->getString(8), "A_B");
    // A layer name written after the type's marker is renamed where it stands, not duplicated.
    EXPECT_EQ(lines[1]->getString(8), "X_Y");
    EXPECT_EQ(lines[1]->getString(8, {}, "AcDbLine"), "X_Y");
    EXPECT_EQ(std::count_if(lines[1]->tags().begin(), lines[1]->tags().end(),
                            [](const Tag& t) { return t.code == 8; }),
              1);
    EXPECT_TRUE(layers->find("X_Y"));
    EXPECT_TRUE(hasRepair(*loaded, "renamed 2 layers")) << repairs(*loaded);
    EXPECT_TRUE(db->repairs().empty()) << repairs(*db);
}

TEST(RequiredRecords, CoreEntriesAndWhatTheHeaderNamesAreAddedButNothingElse) {
    std::string text = completeDrawing("AC1015", "");
    // No layer 0, no Continuous linetype, a current text style the table lacks, and no Standard
    // dimension style (which nothing uses).
    auto cut = [&](std::string_view from, std::string_view to) {
        std::size_t begin = text.find(from), end = text.find(to, begin);
        text.erase(begin, end - begin);
    };
    cut("0 LAYER\n5 10", "0 ENDTAB");
    cut("0 LTYPE\n5 16", "0 ENDTAB");
    cut("0 DIMSTYLE\n105 27", "0 ENDTAB");
    auto replace = [&](std::string_view from, std::string_view to) {
        text.replace(text.find(from), from.size(), to);
    };
    replace("9 $TEXTSTYLE\n7 Standard", "9 $TEXTSTYLE\n7 Notes");
    replace("9 $DIMSTYLE\n2 Standard", "9 $DIMSTYLE\n2 ");
    auto loaded = load(text);
    auto db = saveAndLoad(*loaded);
    EXPECT_TRUE(db->table("LAYER")->find("0"));
    EXPECT_TRUE(db->table("LTYPE")->find("Continuous"));
    EXPECT_TRUE(db->table("STYLE")->find("Notes"));
    EXPECT_FALSE(db->table("DIMSTYLE")->find("Standard"))
        << "an unused optional entry is not forced on a drawing";
    EXPECT_TRUE(hasRepair(*loaded, "added the missing table entries LTYPE \"Continuous\", LAYER \"0\""))
        << repairs(*loaded);
    EXPECT_FALSE(hasRepair(*loaded, "text styles")) << "a current style the header names is made quietly";
}

TEST(LayerNames, Validity) {
    using qvad::db::isValidSymbolName;
    using qvad::db::validSymbolName;
    EXPECT_TRUE(isValidSymbolName("Walls 1-2 (new) | xref"));
    EXPECT_TRUE(isValidSymbolName("\xce\x9b\xce\x91")); // Greek letters are fine
    EXPECT_TRUE(isValidSymbolName("*ADSK_SYSTEM"));
    for (std::string_view bad :
         {"", "a<b", "a>b", "a/b", "a\\b", "a\"b", "a:b", "a;b", "a?b", "a*b", "a=b", "a`b", "a\tb"})
        EXPECT_FALSE(isValidSymbolName(bad)) << bad;
    EXPECT_EQ(validSymbolName("????????? ESK"), "_________ ESK");
    EXPECT_EQ(validSymbolName("*A*B"), "*A_B");
}

} // namespace
