// Handles: objects without one or with one already taken get fresh ones, and $HANDSEED stays above
// every handle in the drawing.

#include "structure_support.h"

#include <gtest/gtest.h>
#include <set>

using namespace structure_test;

namespace {

std::set<qvad::Handle> liveHandles(const OdDbDatabase& db) {
    std::set<qvad::Handle> handles;
    for (const auto& o : db.allObjects())
        if (!o->isErased()) handles.insert(o->handle());
    return handles;
}

std::size_t liveObjects(const OdDbDatabase& db) {
    std::size_t n = 0;
    for (const auto& o : db.allObjects()) n += !o->isErased();
    return n;
}

TEST(Handles, DuplicatesAndMissingOnesBecomeFreshUniqueHandles) {
    // Two lines claim the template's layer handle (10); one has an empty handle, one none at all.
    auto loaded = load(completeDrawing("AC1015", R"(
        0 LINE
        5 10
        330 1F
        100 AcDbEntity
        8 0
        100 AcDbLine
        10 0.0
        20 0.0
        30 0.0
        11 1.0
        21 0.0
        31 0.0
        0 LINE
        5 10
        330 1F
        100 AcDbEntity
        8 0
        100 AcDbLine
        10 1.0
        20 0.0
        30 0.0
        11 2.0
        21 0.0
        31 0.0
        0 CIRCLE
        5
        330 1F
        100 AcDbEntity
        8 0
        100 AcDbCircle
        10 0.0
        20 0.0
        30 0.0
        40 1.0
        0 POINT
        100 AcDbEntity
        8 0
        100 AcDbPoint
        10 5.0
        20 5.0
        30 0.0)"));
    EXPECT_TRUE(hasRepair(*loaded, "gave new handles to 2 objects whose handle was taken"))
        << repairs(*loaded);
    EXPECT_TRUE(hasRepair(*loaded, "gave handles to 2 objects that had none")) << repairs(*loaded);

    auto db = saveAndLoad(*loaded);
    // Nothing is left to mend once saved.
    EXPECT_TRUE(db->repairs().empty()) << repairs(*db);
    std::set<qvad::Handle> handles = liveHandles(*db);
    EXPECT_EQ(handles.size(), liveObjects(*db)) << "handles are unique";
    EXPECT_EQ(handles.count(0), 0u);
    EXPECT_GT(db->handseed(), *handles.rbegin());
    // The layer kept its handle; the entities that claimed it were moved, not the other way round.
    EXPECT_EQ(db->getObject(0x10)->typeName(), "LAYER");
    ASSERT_EQ(db->modelSpace()->entities().size(), 4u);
    for (const OdDbEntity* e : db->modelSpace()->entities()) {
        EXPECT_EQ(e->ownerHandle(), db->modelSpace()->handle()) << e->typeName();
        EXPECT_EQ(indexOf(*e, 5), 0) << e->typeName();
    }
}

TEST(Handles, TheSeedMovesAboveHandlesTheFileUsesBeyondItsOwnSeed) {
    std::string text = completeDrawing("AC1015", R"(
        0 LINE
        5 7FFF
        330 1F
        100 AcDbEntity
        8 0
        100 AcDbLine
        10 0.0
        20 0.0
        30 0.0
        11 1.0
        21 0.0
        31 0.0)");
    auto db = saveAndLoad(*load(text));
    EXPECT_EQ(db->getObject(0x7FFF)->typeName(), "LINE");
    EXPECT_GT(db->handseed(), 0x7FFFu);
    EXPECT_EQ(db->header().value("$HANDSEED"), qvad::formatHandle(db->handseed()));
}

TEST(Handles, TheFirstOfTwoObjectsWithOneHandleKeepsIt) {
    auto db = saveAndLoad(*load(completeDrawing("AC1015", R"(
        0 LINE
        5 100
        330 1F
        100 AcDbEntity
        8 0
        100 AcDbLine
        10 0.0
        20 0.0
        30 0.0
        11 1.0
        21 0.0
        31 0.0
        0 ARC
        5 100
        330 1F
        100 AcDbEntity
        8 0
        100 AcDbCircle
        10 0.0
        20 0.0
        30 0.0
        40 1.0
        100 AcDbArc
        50 0.0
        51 90.0)")));
    EXPECT_EQ(db->getObject(0x100)->typeName(), "LINE");
    const OdDbEntity* arc = firstEntity(*db, "ARC");
    ASSERT_TRUE(arc);
    EXPECT_NE(arc->handle(), 0x100u);
    EXPECT_EQ(db->getObject(arc->handle()), arc);
}

} // namespace
