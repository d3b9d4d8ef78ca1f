// Non-graphical objects: dictionaries, groups (with the reactors of their members), draw order
// tables and xrecords.

#include "entities_drawing.h"
#include "qvad/db/dictionary.h"
#include "qvad/db/entities/OdDbGroup.h"
#include "qvad/db/entities/OdDbSortentsTable.h"
#include "qvad/db/entities/OdDbXrecord.h"
#include "qvad/db/entities/reactors.h"

#include <gtest/gtest.h>

using namespace entities_test;
using qvad::Handle;

namespace {

std::string line(const char* handle, bool inGroup) {
    if (!inGroup)
        return dxf({{0, "LINE"},
                    {5, handle},
                    {330, "2"},
                    {100, "AcDbEntity"},
                    {8, "0"},
                    {100, "AcDbLine"},
                    {10, "0"},
                    {20, "0"},
                    {30, "0"},
                    {11, "1"},
                    {21, "1"},
                    {31, "0"}});
    return dxf({{0, "LINE"},
                {5, handle},
                {102, "{ACAD_REACTORS"},
                {330, "E0"},
                {102, "}"},
                {330, "2"},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbLine"},
                {10, "0"},
                {20, "0"},
                {30, "0"},
                {11, "1"},
                {21, "1"},
                {31, "0"}});
}

std::string objects() {
    return dxf({{0, "DICTIONARY"},
                {5, "C"},
                {330, "0"},
                {100, "AcDbDictionary"},
                {281, "1"},
                {3, "ACAD_GROUP"},
                {350, "D"},
                {3, "ACME_DATA"},
                {350, "F1"},
                {0, "DICTIONARY"},
                {5, "D"},
                {330, "C"},
                {100, "AcDbDictionary"},
                {281, "1"},
                {3, "DOORS"},
                {350, "E0"},
                {0, "GROUP"},
                {5, "E0"},
                {102, "{ACAD_REACTORS"},
                {330, "D"},
                {102, "}"},
                {330, "D"},
                {100, "AcDbGroup"},
                {300, "all doors"},
                {70, "0"},
                {71, "1"},
                {340, "A0"},
                {340, "A1"},
                {0, "SORTENTSTABLE"},
                {5, "F0"},
                {330, "C"},
                {100, "AcDbSortentsTable"},
                {330, "2"},
                {331, "A0"},
                {5, "A9"},
                {0, "XRECORD"},
                {5, "F1"},
                {330, "C"},
                {100, "AcDbXrecord"},
                {280, "1"},
                {1, "text"},
                {40, "1.5"},
                {10, "1"},
                {20, "2"},
                {30, "3"}});
}

std::unique_ptr<OdDbDatabase> groupDrawing() {
    return drawing(line("A0", true) + line("A1", true) + line("A2", false) + line("A3", false), {},
                   objects());
}

TEST(DictionaryObject, EntriesByKeyWithoutRegardToCase) {
    auto db = groupDrawing();
    auto* root = object<OdDbDictionary>(*db, "C");
    ASSERT_NE(root, nullptr);
    EXPECT_FALSE(root->isHardOwner());
    ASSERT_EQ(root->numEntries(), 2u);
    EXPECT_EQ(root->entries()[1].name, "ACME_DATA");
    EXPECT_EQ(root->getAt("acad_group"), 0xDu);
    EXPECT_EQ(root->getAt("ACAD_LAYOUT"), 0u);
    EXPECT_EQ(root->nameOf(0xF1), "ACME_DATA");
    EXPECT_NE(dynamic_cast<OdDbDictionary*>(root->getObject("ACAD_GROUP")), nullptr);

    Lines before = snapshot(*root);
    root->setAt("Acme_Data", 0xF0);
    EXPECT_EQ(changes(before, snapshot(*root)), (Lines{"-350 F1", "+350 F0"}));
    root->setAt("NEW", 0x1A);
    EXPECT_EQ(snapshot(*root).end()[-2], "3 NEW");
    EXPECT_EQ(snapshot(*root).back(), "350 1A");
    EXPECT_TRUE(root->remove("new"));
    EXPECT_FALSE(root->remove("new"));
    EXPECT_THROW(root->setAt("", 0x10), std::invalid_argument);
    EXPECT_THROW(root->setAt("X", 0), std::invalid_argument);
    EXPECT_EQ(changes(before, snapshot(*root)), (Lines{"-350 F1", "+350 F0"}));
    expectRoundTrips(*db, *root);
}

TEST(GroupObject, MembersAndTheirReactorsMoveTogether) {
    auto db = groupDrawing();
    auto* group = object<OdDbGroup>(*db, "E0");
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->name(), "DOORS");
    EXPECT_EQ(group->description(), "all doors");
    EXPECT_TRUE(group->isSelectable());
    EXPECT_FALSE(group->isAnonymous());
    EXPECT_EQ(group->entityHandles(), (std::vector<Handle>{0xA0, 0xA1}));

    auto* a2 = object<OdDbEntity>(*db, "A2");
    group->append(0xA2);
    group->append(0xA2); // once only
    EXPECT_EQ(group->entityHandles(), (std::vector<Handle>{0xA0, 0xA1, 0xA2}));
    EXPECT_EQ(qvad::db::reactors(*a2), (std::vector<Handle>{0xE0}));
    // The reactor group sits between the handle and the owner.
    EXPECT_EQ(snapshot(*a2)[1], "102 {ACAD_REACTORS");
    EXPECT_EQ(snapshot(*a2)[4], "330 2");
    EXPECT_EQ(a2->ownerHandle(), 2u);

    auto* a0 = object<OdDbEntity>(*db, "A0");
    const Lines lineBefore = snapshot(*a0);
    EXPECT_TRUE(group->remove(0xA0));
    EXPECT_FALSE(group->remove(0xA0));
    EXPECT_EQ(changes(lineBefore, snapshot(*a0)), (Lines{"-102 {ACAD_REACTORS", "-330 E0", "-102 }"}));
    EXPECT_EQ(a0->ownerHandle(), 2u);
    EXPECT_FALSE(group->has(0xA0));

    group->setSelectable(false);
    EXPECT_EQ(group->getInt(71), 0);
    EXPECT_THROW(group->setDescription("a\nb"), std::invalid_argument);
    for (const char* h : {"E0", "A0", "A2"}) expectRoundTrips(*db, *db->getObject(qvad::parseHandle(h)));
}

TEST(Reactors, OtherReactorsStayPut) {
    auto db = groupDrawing();
    auto* a1 = object<OdDbEntity>(*db, "A1");
    qvad::db::addReactor(*a1, 0x77);
    qvad::db::addReactor(*a1, 0x77);
    EXPECT_EQ(qvad::db::reactors(*a1), (std::vector<Handle>{0xE0, 0x77}));
    qvad::db::removeReactor(*a1, 0xE0);
    EXPECT_EQ(qvad::db::reactors(*a1), (std::vector<Handle>{0x77}));
    EXPECT_EQ(snapshot(*a1)[3], "102 }");
}

TEST(SortentsTable, DrawOrderAndMoves) {
    auto db = groupDrawing();
    auto* table = object<OdDbSortentsTable>(*db, "F0");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->blockHandle(), 2u);
    EXPECT_EQ(table->sortHandle(0xA0), 0xA9u);
    EXPECT_EQ(table->sortHandle(0xA1), 0xA1u);
    // A0 sorts as A9: drawn last.
    EXPECT_EQ(table->drawOrder(), (std::vector<Handle>{0xA1, 0xA2, 0xA3, 0xA0}));

    const Handle mask[] = {0xA3};
    table->moveBelow(mask, 0xA1);
    EXPECT_EQ(table->drawOrder(), (std::vector<Handle>{0xA3, 0xA1, 0xA2, 0xA0}));
    // The block's own handles are handed out again in the new order.
    EXPECT_EQ(table->entries(), (std::vector<std::pair<Handle, Handle>>{{0xA3, 0xA0}, {0xA0, 0xA3}}));

    const Handle top[] = {0xA1, 0xA3};
    table->moveToTop(top);
    EXPECT_EQ(table->drawOrder(), (std::vector<Handle>{0xA2, 0xA0, 0xA3, 0xA1}));
    table->moveToBottom(top);
    EXPECT_EQ(table->drawOrder(), (std::vector<Handle>{0xA3, 0xA1, 0xA2, 0xA0}));
    table->moveAbove(mask, 0xA0);
    EXPECT_EQ(table->drawOrder(), (std::vector<Handle>{0xA1, 0xA2, 0xA0, 0xA3}));

    const Lines before = snapshot(*table);
    table->moveBelow(mask, 0xBAD);
    const Handle wrong[] = {0xA0, 0xA1};
    EXPECT_THROW(table->setDrawOrder(wrong), std::invalid_argument);
    EXPECT_EQ(snapshot(*table), before);
    const Handle natural[] = {0xA0, 0xA1, 0xA2, 0xA3};
    table->setDrawOrder(natural);
    EXPECT_TRUE(table->entries().empty());
    expectRoundTrips(*db, *table);
}

TEST(XrecordObject, DataAfterTheCloningFlag) {
    auto db = groupDrawing();
    auto* record = object<OdDbXrecord>(*db, "F1");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->mergeStyle(), 1);
    EXPECT_EQ(snapshot(record->dataTags()), (Lines{"1 text", "40 1.5", "10 1", "20 2", "30 3"}));

    const Tag data[] = {Tag(70, "4"), Tag(1, "new")};
    record->setDataTags(data);
    EXPECT_EQ(snapshot(record->dataTags()), (Lines{"70 4", "1 new"}));
    const Tag bad[] = {Tag(1, "ok"), Tag(1001, "APP")};
    EXPECT_THROW(record->setDataTags(bad), std::invalid_argument);
    const Tag broken[] = {Tag(1, "two\nlines")};
    EXPECT_THROW(record->setDataTags(broken), std::invalid_argument);
    EXPECT_EQ(snapshot(record->dataTags()), (Lines{"70 4", "1 new"}));
    expectRoundTrips(*db, *record);
}

} // namespace
