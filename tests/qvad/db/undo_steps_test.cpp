// What one undo step is: a command, a BEgin/End group however deeply nested, the changes of a
// command that failed (taken back at once), marks and Back, redo and what clears it, and the
// change count that tells whether the drawing differs from when it was saved.

#include "undo_fixture.h"

TEST_F(UndoTest, EachCommandIsAStep) {
    const std::string empty = bytes();
    command([] { ASSERT_TRUE(makeLine(1)); });
    const std::string one = bytes();
    command([] {
        ASSERT_TRUE(makeLine(2));
        ASSERT_TRUE(makeLine(3));
    });
    EXPECT_EQ(journal->stepCount(), 2);
    EXPECT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), one);
    EXPECT_EQ(journal->undo(5), 1); // only one step was left
    EXPECT_EQ(bytes(), empty);
    EXPECT_EQ(journal->undo(1), 0);
    EXPECT_TRUE(journal->redo()) << "the last undo that took something back";
    EXPECT_EQ(bytes(), one);
}

TEST_F(UndoTest, RedoBringsBackWhatTheLastUndoTookAndANewChangeClearsIt) {
    command([] { ASSERT_TRUE(makeLine(1)); });
    command([] { ASSERT_TRUE(makeLine(2)); });
    command([] { ASSERT_TRUE(makeLine(3)); });
    const std::string three = bytes();
    ASSERT_EQ(journal->undo(2), 2);
    EXPECT_TRUE(journal->redo());
    EXPECT_EQ(bytes(), three);
    EXPECT_FALSE(journal->redo());

    ASSERT_EQ(journal->undo(1), 1);
    const std::string two = bytes();
    command([] { ASSERT_TRUE(makeLine(9)); });
    EXPECT_FALSE(journal->redo());
    ASSERT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), two);
}

TEST_F(UndoTest, GroupsNestAndCloseAsOneStep) {
    const std::string empty = bytes();
    EXPECT_FALSE(journal->endGroup());
    command([&] { journal->beginGroup(); }, true); // UNDO BEgin
    command([] { ASSERT_TRUE(makeLine(1)); });
    EXPECT_EQ(journal->groupDepth(), 1) << "a group opened by UNDO BEgin stays open across commands";
    command([&] {
        journal->beginGroup();
        ASSERT_TRUE(makeLine(2));
    });
    EXPECT_EQ(journal->groupDepth(), 1) << "a group a command leaves open closes with the command";
    // A command running UNDO BEgin and End inside itself: the inner pair only nests.
    command([&] {
        journal->beginGroup();
        ASSERT_TRUE(makeLine(3));
        EXPECT_TRUE(journal->endGroup());
    });
    EXPECT_EQ(journal->groupDepth(), 1);
    command([&] { EXPECT_TRUE(journal->endGroup()); }, true); // UNDO End
    EXPECT_EQ(journal->groupDepth(), 0);

    EXPECT_EQ(journal->stepCount(), 1);
    const std::string grouped = bytes();
    command([] {}); // LIST: changes nothing, yet U takes it back and not the group
    EXPECT_EQ(journal->stepCount(), 2);
    ASSERT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), grouped);
    ASSERT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), empty);
}

TEST_F(UndoTest, UndoInsideAnOpenGroupTakesTheGroupBack) {
    command([] { ASSERT_TRUE(makeLine(1)); });
    const std::string one = bytes();
    command([&] { journal->beginGroup(); }, true);
    command([] { ASSERT_TRUE(makeLine(2)); });
    command([] { ASSERT_TRUE(makeLine(3)); });
    command([&] { EXPECT_EQ(journal->undo(1), 1); }, true);
    EXPECT_EQ(journal->groupDepth(), 0);
    EXPECT_EQ(bytes(), one);
}

TEST_F(UndoTest, MarksAndBack) {
    const std::string empty = bytes();
    command([] { ASSERT_TRUE(makeLine(1)); });
    const std::string marked = bytes();
    command([&] { journal->mark(); }, true);
    command([] { ASSERT_TRUE(makeLine(2)); });
    command([] { ASSERT_TRUE(makeLine(3)); });
    EXPECT_EQ(journal->stepCount(), 3);
    EXPECT_TRUE(journal->backToMark());
    EXPECT_EQ(bytes(), marked);
    EXPECT_FALSE(journal->backToMark()) << "the mark was used up";
    EXPECT_EQ(bytes(), empty);
    EXPECT_EQ(journal->stepCount(), 0);
}

TEST_F(UndoTest, AFailedCommandIsTakenBackAloneEvenInsideAGroup) {
    command([&] { journal->beginGroup(); }, true);
    command([] { ASSERT_TRUE(makeLine(1, "KEPT")); });
    const std::string kept = bytes();
    journal->commandStarted();
    ASSERT_TRUE(makeLine(2, "GONE"));
    qv_resbuf rb{};
    rb.restype = QV_RTREAL;
    rb.resval.rreal = 3.0;
    ASSERT_EQ(qvedSetVar("LTSCALE", &rb), QV_NORM);
    journal->rollbackCommand();
    journal->commandEnded();
    EXPECT_EQ(bytes(), kept);
    EXPECT_EQ(journal->groupDepth(), 1);
    command([&] { journal->endGroup(); }, true);
    EXPECT_EQ(journal->undo(1), 1);
    EXPECT_EQ(db->table("LAYER")->find("KEPT"), nullptr);
    EXPECT_TRUE(journal->redo());
    EXPECT_EQ(bytes(), kept);
}

TEST_F(UndoTest, ChangeCountFollowsTheDrawingsState) {
    const long fresh = journal->changeCount();
    command([] { ASSERT_TRUE(makeLine(1)); });
    const long one = journal->changeCount();
    EXPECT_NE(one, fresh);
    command([] {}); // a command that changes nothing is no change
    EXPECT_EQ(journal->changeCount(), one);
    journal->undo(1);
    EXPECT_EQ(journal->changeCount(), one) << "U took back the command that changed nothing";
    journal->undo(1);
    EXPECT_EQ(journal->changeCount(), fresh);
    journal->redo();
    EXPECT_EQ(journal->changeCount(), one);
    journal->undo(1);
    command([] { ASSERT_TRUE(makeLine(2)); });
    EXPECT_NE(journal->changeCount(), one) << "another drawing than the one counted before";
    EXPECT_NE(journal->changeCount(), fresh);
    journal->clear();
    EXPECT_EQ(journal->stepCount(), 0);
    EXPECT_EQ(journal->undo(1), 0);
}

TEST_F(UndoTest, AutoModeIsRemembered) {
    EXPECT_TRUE(journal->autoMode());
    journal->setAuto(false);
    EXPECT_FALSE(journal->autoMode());
}
