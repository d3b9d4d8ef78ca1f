// Layouts and their space blocks point at each other; loading mends broken links, missing layouts,
// missing space blocks, a missing OBJECTS section and blocks without names.

#include "qvad/db/dictionary_entries.h"
#include "structure_support.h"

#include <gtest/gtest.h>

using namespace structure_test;
using qvad::db::dictionaryEntries;
using qvad::db::dictionaryItem;
using qvad::db::rootDictionaryItem;

namespace {

void replaceOnce(std::string& text, std::string_view from, std::string_view to) {
    std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
}

const OdDbObject* layoutNamed(const OdDbDatabase& db, std::string_view name) {
    const OdDbObject* dictionary = rootDictionaryItem(db, "ACAD_LAYOUT");
    return dictionary ? db.getObject(dictionaryItem(*dictionary, name)) : nullptr;
}

// Every space block and every layout of the dictionary are paired both ways, one to one.
void expectLinked(const OdDbDatabase& db) {
    const OdDbObject* dictionary = rootDictionaryItem(db, "ACAD_LAYOUT");
    ASSERT_TRUE(dictionary);
    std::size_t spaces = 0;
    for (const OdDbBlockTableRecord* b : db.blocks()) {
        if (b->isErased() || !b->isLayout()) continue;
        ++spaces;
        const OdDbObject* layout = db.getObject(b->getHandle(340));
        ASSERT_TRUE(layout) << b->name();
        EXPECT_EQ(layout->typeName(), "LAYOUT");
        EXPECT_EQ(layout->getHandle(330, "AcDbLayout"), b->handle()) << b->name();
        EXPECT_EQ(layout->ownerHandle(), dictionary->handle());
        EXPECT_TRUE(b->blockBegin() && b->blockEnd()) << b->name();
    }
    EXPECT_EQ(dictionaryEntries(*dictionary).size(), spaces);
}

TEST(LayoutLinks, LayoutPointersThatLeadNowhereAreRestoredFromTheBlockRecords) {
    std::string text = completeDrawing("AC1015", "");
    replaceOnce(text, "76 0\n330 1F", "76 0\n330 FFFA");
    replaceOnce(text, "76 0\n330 1B", "76 0\n330 FFFB");
    auto loaded = load(text);
    EXPECT_TRUE(hasRepair(*loaded, "relinked 2 layout links")) << repairs(*loaded);
    auto db = saveAndLoad(*loaded);
    expectLinked(*db);
    EXPECT_EQ(layoutNamed(*db, "Model")->getHandle(330, "AcDbLayout"), db->modelSpace()->handle());
    EXPECT_TRUE(db->repairs().empty()) << repairs(*db);
}

TEST(LayoutLinks, WithNoPointerLeftLayoutsPairByNameAndTabOrder) {
    std::string text = completeDrawing("AC1015", "", R"(
        0 BLOCK
        5 110
        330 111
        100 AcDbEntity
        67 1
        8 0
        100 AcDbBlockBegin
        2 *Paper_Space0
        70 0
        10 0.0
        20 0.0
        30 0.0
        3 *Paper_Space0
        1
        0 ENDBLK
        5 112
        330 111
        100 AcDbEntity
        67 1
        8 0
        100 AcDbBlockEnd)",
                                       R"(
        0 LAYOUT
        5 200
        102 {ACAD_REACTORS
        330 1A
        102 }
        330 1A
        100 AcDbPlotSettings
        1
        70 688
        100 AcDbLayout
        1 Sheet B
        70 1
        71 2
        330 FFFC)");
    replaceOnce(text, "2 *Model_Space\n340 22", "2 *Model_Space");
    replaceOnce(text, "2 *Paper_Space\n340 1E", "2 *Paper_Space");
    replaceOnce(text, "76 0\n330 1F", "76 0\n330 FFFA");
    replaceOnce(text, "76 0\n330 1B", "76 0\n330 FFFB");
    replaceOnce(text, "3 Model\n350 22", "3 Model\n350 22\n3 Sheet B\n350 200");
    auto db = saveAndLoad(*load(text));
    expectLinked(*db);
    EXPECT_EQ(db->modelSpace()->getHandle(340), layoutNamed(*db, "Model")->handle());
    // Layout1 (tab 1) goes with the active paper space, Sheet B (tab 2) with the next one.
    EXPECT_EQ(db->paperSpace()->getHandle(340), layoutNamed(*db, "Layout1")->handle());
    EXPECT_EQ(db->findBlock("*Paper_Space0")->getHandle(340), layoutNamed(*db, "Sheet B")->handle());
}

TEST(LayoutLinks, ASpaceBlockWithoutLayoutGetsOne) {
    auto loaded = load(completeDrawing("AC1015", "", R"(
        0 BLOCK
        5 110
        330 111
        100 AcDbEntity
        67 1
        8 0
        100 AcDbBlockBegin
        2 *Paper_Space0
        70 0
        10 0.0
        20 0.0
        30 0.0
        3 *Paper_Space0
        1
        0 ENDBLK
        5 112
        330 111
        100 AcDbEntity
        67 1
        8 0
        100 AcDbBlockEnd)"));
    EXPECT_TRUE(hasRepair(*loaded, "added a layout to 1 space blocks")) << repairs(*loaded);
    auto db = saveAndLoad(*loaded);
    expectLinked(*db);
    const OdDbObject* layout = layoutNamed(*db, "Layout2");
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->getHandle(330, "AcDbLayout"), db->findBlock("*Paper_Space0")->handle());
    EXPECT_EQ(layout->getInt(71, 0, "AcDbLayout"), 2);
    // An R2000 layout has no R2004 plot groups.
    EXPECT_FALSE(layout->findTag(78, "AcDbPlotSettings"));
}

TEST(LayoutLinks, ALayoutWithoutSpaceBlockGetsOneAndDeadEntriesGo) {
    std::string text = completeDrawing("AC1015", "", "", R"(
        0 LAYOUT
        5 200
        102 {ACAD_REACTORS
        330 1A
        102 }
        330 1A
        100 AcDbPlotSettings
        1
        70 688
        100 AcDbLayout
        1 Layout2
        70 1
        71 2
        330 FFFC)");
    replaceOnce(text, "3 Model\n350 22", "3 Model\n350 22\n3 Layout2\n350 200\n3 Ghost\n350 300");
    auto loaded = load(text);
    EXPECT_TRUE(hasRepair(*loaded, "added a paper space block to 1 layouts")) << repairs(*loaded);
    EXPECT_TRUE(hasRepair(*loaded, "removed 1 layout dictionary entries")) << repairs(*loaded);
    auto db = saveAndLoad(*loaded);
    expectLinked(*db);
    const OdDbBlockTableRecord* space = db->findBlock("*Paper_Space0");
    ASSERT_TRUE(space);
    EXPECT_EQ(space->getHandle(340), 0x200u);
    EXPECT_EQ(space->blockBegin()->getInt(67), 1);
    EXPECT_TRUE(db->table("BLOCK_RECORD")->find("*Paper_Space0"));
}

TEST(LayoutLinks, AnR2000DrawingWithoutObjectsGetsTheStandardDictionaries) {
    std::string text = completeDrawing("AC1015", "");
    text.erase(text.find("0 SECTION\n2 OBJECTS"),
               text.rfind("0 ENDSEC") + 9 - text.find("0 SECTION\n2 OBJECTS"));
    text.replace(text.find("2 *Model_Space\n340 22"), 21, "2 *Model_Space");
    auto loaded = load(text);
    EXPECT_TRUE(hasRepair(*loaded, "added the missing OBJECTS section")) << repairs(*loaded);
    auto db = saveAndLoad(*loaded);
    expectLinked(*db);
    for (std::string_view key :
         {"ACAD_GROUP", "ACAD_LAYOUT", "ACAD_MLINESTYLE", "ACAD_PLOTSETTINGS", "ACAD_PLOTSTYLENAME"})
        EXPECT_TRUE(rootDictionaryItem(*db, key)) << key;
    EXPECT_EQ(db->namedObjectsDictionary()->ownerHandle(), 0u);
}

TEST(BlockNames, ANamelessBlockTakesItsRecordsNameOrANewOne) {
    std::string text = completeDrawing("AC1015", "", R"(
        0 BLOCK
        5 110
        330 111
        100 AcDbEntity
        8 0
        100 AcDbBlockBegin
        70 0
        10 0.0
        20 0.0
        30 0.0
        1
        0 ENDBLK
        5 112
        330 111
        100 AcDbEntity
        8 0
        100 AcDbBlockEnd
        0 BLOCK
        5 120
        330 FFF0
        100 AcDbEntity
        8 0
        100 AcDbBlockBegin
        70 0
        10 0.0
        20 0.0
        30 0.0
        1
        0 ENDBLK
        5 122
        330 FFF0
        100 AcDbEntity
        8 0
        100 AcDbBlockEnd)");
    text.insert(text.find("0 ENDTAB", text.find("2 BLOCK_RECORD")), R"(0 BLOCK_RECORD
5 111
330 1
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 Test
340 0
)");
    auto loaded = load(text);
    EXPECT_TRUE(hasRepair(*loaded, "gave block \"Test\" back the name its record holds")) << repairs(*loaded);
    EXPECT_TRUE(hasRepair(*loaded, "named a block that had no name \"UNNAMED1\"")) << repairs(*loaded);
    auto db = saveAndLoad(*loaded);
    for (std::string_view name : {"Test", "UNNAMED1"}) {
        const OdDbBlockTableRecord* block = db->findBlock(name);
        ASSERT_TRUE(block) << name;
        EXPECT_EQ(block->blockBegin()->getString(2, {}, "AcDbBlockBegin"), name);
        EXPECT_EQ(block->blockBegin()->getString(3, {}, "AcDbBlockBegin"), name);
        EXPECT_EQ(db->table("BLOCK_RECORD")->find(name), block);
    }
    EXPECT_EQ(db->findBlock("Test")->handle(), 0x111u);
    EXPECT_TRUE(db->repairs().empty()) << repairs(*db);
}

TEST(BlockNames, AnR12BlockWithoutNameIsNamedAndUpgraded) {
    auto db = saveAndLoad(*load(R"(
        0 SECTION
        2 BLOCKS
        0 BLOCK
        8 0
        70 0
        10 0.0
        20 0.0
        30 0.0
        0 CIRCLE
        8 0
        10 0.0
        20 0.0
        40 1.0
        0 ENDBLK
        8 0
        0 ENDSEC
        0 EOF)"));
    const OdDbBlockTableRecord* block = db->findBlock("UNNAMED1");
    ASSERT_TRUE(block);
    EXPECT_EQ(block->entities().size(), 1u);
    EXPECT_EQ(block->ownerHandle(), db->table("BLOCK_RECORD")->handle());
}

} // namespace
