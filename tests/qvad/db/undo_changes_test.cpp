// Every kind of change, whichever way it reaches the drawing, is taken back so that the drawing
// writes byte for byte as before, and redo brings back byte for byte what it undid.

#include "qvad/db/block_structure.h"
#include "undo_fixture.h"

#include <cstring>

namespace {

qv_resbuf* find(qv_resbuf* list, int code) {
    for (qv_resbuf* rb = list; rb; rb = rb->rbnext)
        if (rb->restype == code) return rb;
    return nullptr;
}

} // namespace

class UndoChangesTest : public UndoTest {
protected:
    // Runs change as one command and checks that undo gives back the drawing before it and redo
    // the one after it, and undo once more the one before.
    template <class Change> void expectUndoRedoExact(Change&& change) {
        const std::string before = bytes();
        const std::size_t objectsBefore = db->allObjects().size();
        command(change);
        const std::string after = bytes();
        ASSERT_NE(before, after) << "the change changed nothing";
        ASSERT_EQ(journal->undo(1), 1);
        EXPECT_EQ(bytes(), before);
        EXPECT_EQ(db->allObjects().size(), objectsBefore);
        ASSERT_TRUE(journal->redo());
        EXPECT_EQ(bytes(), after);
        ASSERT_EQ(journal->undo(1), 1);
        EXPECT_EQ(bytes(), before);
    }
};

TEST_F(UndoChangesTest, EntityModifiedThroughEntMod) {
    command([] { ASSERT_TRUE(makeLine(1)); });
    qv_name line;
    ASSERT_EQ(qvdbEntLast(line), QV_NORM);
    expectUndoRedoExact([&] {
        qv_resbuf* list = nullptr;
        ASSERT_EQ(qvdbEntGet(line, &list), QV_NORM);
        qv_resbuf* start = find(list, 10);
        ASSERT_NE(start, nullptr);
        start->resval.rpoint[0] = 7.5;
        qv_resbuf* layer = find(list, 8);
        ASSERT_NE(layer, nullptr);
        layer->resval.rstring[0] = 'Q'; // "0" becomes "Q", a layer the drawing has to make
        EXPECT_EQ(qvdbEntMod(list), QV_NORM);
        qvutRelRb(list);
    });
    EXPECT_EQ(db->table("LAYER")->find("Q"), nullptr);
}

TEST_F(UndoChangesTest, EntitiesMadeAreRemovedWholeAndComeBack) {
    expectUndoRedoExact([&] { ASSERT_TRUE(makeLine(2, "MADE")); });
    // The seed is back where it was: the next entity gets the handle the undone one had.
    const qvad::Handle seed = db->handseed();
    EXPECT_EQ(db->getObject(seed), nullptr);
    command([] { ASSERT_TRUE(makeLine(3)); });
    EXPECT_NE(db->getObject(seed), nullptr);

    const qv_real at[3] = {0, 0, 0}, p1[3] = {1, 1, 0}, p2[3] = {4, 2, 0};
    expectUndoRedoExact([&] {
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "POLYLINE", 66, 1, 10, at, 70, 1, 0)));
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "VERTEX", 10, p1, 0)));
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "VERTEX", 10, p2, 0)));
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "SEQEND", 0)));
    });
}

TEST_F(UndoChangesTest, InsertWithAttributesAndNewBlock) {
    // The block comes first, in a step of its own, made the way the drawing's own code makes blocks.
    const std::string empty = bytes();
    OdDbBlockTableRecord* block = nullptr;
    command([&] {
        block = qvad::db::newBlockRecord(*db, "TAGGED");
        block->setBlockBegin(qvad::db::newBlockBegin(*db, *block));
        block->setBlockEnd(qvad::db::newBlockEnd(*db, *block));
        db->blocks().push_back(block);
    });
    const std::string withBlock = bytes();
    ASSERT_NE(empty, withBlock);

    const qv_real at[3] = {2, 3, 0};
    expectUndoRedoExact([&] {
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "INSERT", 2, "TAGGED", 10, at, 66, 1, 0)));
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "ATTRIB", 10, at, 40, 1.0, 1, "V1", 2, "T1", 70, 0, 0)));
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "ATTRIB", 10, at, 40, 1.0, 1, "V2", 2, "T2", 70, 0, 0)));
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "SEQEND", 0)));
    });
    // The block's own step goes too: record, BLOCK, ENDBLK and its place in the block list.
    ASSERT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), empty);
    EXPECT_EQ(db->findBlock("TAGGED"), nullptr);
    ASSERT_TRUE(journal->redo());
    EXPECT_EQ(bytes(), withBlock);
    EXPECT_EQ(db->findBlock("TAGGED"), block);
}

TEST_F(UndoChangesTest, EraseAndUnerase) {
    const qv_real at[3] = {0, 0, 0}, p1[3] = {1, 1, 0};
    command([&] {
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "POLYLINE", 66, 1, 10, at, 0)));
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "VERTEX", 10, p1, 0)));
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "SEQEND", 0)));
    });
    qv_name polyline;
    ASSERT_EQ(qvdbEntLast(polyline), QV_NORM);
    expectUndoRedoExact([&] { ASSERT_EQ(qvdbEntDel(polyline), QV_NORM); });
    command([&] { ASSERT_EQ(qvdbEntDel(polyline), QV_NORM); });
    EXPECT_TRUE(db->modelSpace()->entities().back()->isErased());
    expectUndoRedoExact([&] { ASSERT_EQ(qvdbEntDel(polyline), QV_NORM); });
}

TEST_F(UndoChangesTest, TableRecordsAndApplications) {
    expectUndoRedoExact([&] {
        ASSERT_TRUE(make(qvutBuildList(QV_RTDXF0, "LAYER", 2, "WALLS", 70, 0, 62, 3, 6, "CONTINUOUS", 0)));
    });
    EXPECT_EQ(db->table("LAYER")->find("WALLS"), nullptr);
    expectUndoRedoExact([&] { ASSERT_EQ(qvdbRegApp("UNDO_TEST_APP"), QV_NORM); });
    // What undo took back can be made again under the same name.
    ASSERT_EQ(qvdbRegApp("UNDO_TEST_APP"), QV_NORM);
}

TEST_F(UndoChangesTest, HeaderVariablesThroughSetVar) {
    expectUndoRedoExact([&] {
        qv_resbuf rb{};
        rb.restype = QV_RTREAL;
        rb.resval.rreal = 4.25;
        ASSERT_EQ(qvedSetVar("LTSCALE", &rb), QV_NORM);
        rb.restype = QV_RTSHORT;
        rb.resval.rint = 5;
        ASSERT_EQ(qvedSetVar("LUPREC", &rb), QV_NORM);
    });
}

TEST_F(UndoChangesTest, RawObjectAndHeaderChanges) {
    command([] { ASSERT_TRUE(makeLine(1)); });
    OdDbEntity* line = db->modelSpace()->entities().back();
    expectUndoRedoExact([&] {
        line->setString(8, "RAW", OdDbEntity::kSubclass());
        line->setPoint(10, {9, 9, 9}, "AcDbLine");
        line->removeTags(62);
        line->setErased(true);
    });
    const qvad::Handle handle = line->handle();
    expectUndoRedoExact([&] {
        db->unregisterHandle(handle);
        line->setHandle(0x4000);
        db->registerHandle(line); // moves the seed on
        line->setOwnerHandle(db->paperSpace()->handle());
    });
    EXPECT_EQ(line->handle(), handle);
    EXPECT_EQ(db->getObject(handle), line);
    EXPECT_EQ(db->getObject(0x4000), nullptr);
    EXPECT_EQ(line->ownerHandle(), db->modelSpace()->handle());
    expectUndoRedoExact([&] {
        db->header().set("$UNDOTESTVAR", {Tag(1, "new")});
        db->header().remove("$LTSCALE");
        db->header().set("$ORTHOMODE", {Tag(70, "1")});
        db->allocateHandle();
    });
    expectUndoRedoExact([&] {
        // Moving an entity between blocks: the lists change after their owners said so.
        db->notifyBeforeModify(*db->modelSpace());
        db->notifyBeforeModify(*db->paperSpace());
        std::erase(db->modelSpace()->entities(), line);
        db->paperSpace()->entities().push_back(line);
        line->setOwnerHandle(db->paperSpace()->handle());
    });
}

TEST_F(UndoChangesTest, ObjectsOutsideTheDatabaseAreNotRecorded) {
    OdDbEntity loose("LINE");
    loose.setDatabase(db.get());
    loose.setString(8, "LOOSE");
    loose.setHandle(0x77);
    loose.setErased(true);
    EXPECT_EQ(journal->undo(1), 0);
    EXPECT_EQ(journal->stepCount(), 0);
}
