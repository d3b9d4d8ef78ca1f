// Owners: table records belong to their table, entities to their block, sub-entities to their parent,
// objects to the dictionary that lists them or the object that holds them; dictionary entries that
// name nothing are dropped.

#include "qvad/db/dictionary_entries.h"
#include "structure_support.h"

#include <gtest/gtest.h>

using namespace structure_test;

namespace {

TEST(Ownership, WrongOwnersOfRecordsAndEntitiesAreCorrected) {
    std::string text = completeDrawing("AC1015", R"(
        0 LINE
        5 100
        330 1B
        100 AcDbEntity
        8 0
        100 AcDbLine
        10 0.0
        20 0.0
        30 0.0
        11 1.0
        21 0.0
        31 0.0)");
    // The VPORT record names the LAYER table as its owner, as one widespread writer does.
    text.replace(text.find("5 29\n330 8"), 10, "5 29\n330 2");
    auto loaded = load(text);
    EXPECT_TRUE(hasRepair(*loaded, "corrected the owner of 1 objects")) << repairs(*loaded);
    auto db = saveAndLoad(*loaded);
    EXPECT_EQ(db->table("VPORT")->find("*Active")->ownerHandle(), db->table("VPORT")->handle());
    // An entity whose owner is the paper space record but that sits in the ENTITIES section without
    // the paper space flag belongs where its owner says.
    EXPECT_EQ(db->getObject(0x100)->ownerHandle(), 0x1Bu);
    EXPECT_EQ(db->paperSpace()->entities().size(), 1u);
}

TEST(Ownership, ObjectsWithoutOwnerBelongToTheirDictionaryOrHolder) {
    auto db = saveAndLoad(*load(completeDrawing("AC1015", R"(
        0 LINE
        5 100
        102 {ACAD_XDICTIONARY
        360 200
        102 }
        330 1F
        100 AcDbEntity
        8 0
        100 AcDbLine
        10 0.0
        20 0.0
        30 0.0
        11 1.0
        21 0.0
        31 0.0)",
                                                "", R"(
        0 DICTIONARY
        5 200
        100 AcDbDictionary
        281 1
        3 NOTE
        350 201
        0 XRECORD
        5 201
        330 0
        100 AcDbXrecord
        280 1
        1 text)")));
    EXPECT_EQ(db->getObject(0x200)->ownerHandle(), 0x100u) << "the extension dictionary belongs to its line";
    EXPECT_EQ(db->getObject(0x201)->ownerHandle(), 0x200u) << "the record belongs to its dictionary";
    // The owner goes after the handle, before the first subclass.
    EXPECT_EQ(indexOf(*db->getObject(0x201), 330), 1);
}

TEST(Ownership, DictionaryEntriesThatNameNothingAreDropped) {
    std::string text = completeDrawing("AC1015", "");
    text.replace(text.find("3 Standard\n350 18"), 17, "3 Standard\n350 18\n3 Gone\n350 999");
    auto loaded = load(text);
    EXPECT_TRUE(hasRepair(*loaded, "removed 1 dictionary entries that named no object")) << repairs(*loaded);
    auto db = saveAndLoad(*loaded);
    const OdDbObject* styles = qvad::db::rootDictionaryItem(*db, "ACAD_MLINESTYLE");
    ASSERT_TRUE(styles);
    EXPECT_EQ(qvad::db::dictionaryItem(*styles, "Gone"), 0u);
    EXPECT_EQ(qvad::db::dictionaryItem(*styles, "Standard"), 0x18u);
}

} // namespace
