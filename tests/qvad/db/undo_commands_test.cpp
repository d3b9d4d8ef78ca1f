// UNDO, U and REDO as typed (through qvedCommand from outside any command), and UNDO run from inside
// another command, where it may only open and close groups.

#include "qvad/api/qvad_api.h"
#include "qvad/db/undo_journal.h"
#include "qvad/dxf/dxf_writer.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/drawing_session.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using qvad::shell::DrawingSession;

bool makeLine(double x) {
    const qv_real from[3] = {x, 0, 0}, to[3] = {x, 5, 0};
    qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LINE", 10, from, 11, to, 0);
    const int rc = qvdbEntMake(list);
    qvutRelRb(list);
    return rc == QV_NORM;
}

// A command that opens a group, draws, closes it and then asks UNDO to take a step back.
void nestedUndoCommand() {
    qvedCommand(QV_RTSTR, ".UNDO", QV_RTSTR, "g", 0);
    makeLine(40);
    qvedCommand(QV_RTSTR, ".UNDO", QV_RTSTR, "e", 0);
    qvedCommand(QV_RTSTR, ".UNDO", QV_RTSTR, "1", 0);
}

class UndoCommands : public ::testing::Test {
protected:
    void SetUp() override {
        auto stack = odedRegCmds();
        if (!stack->lookupCmd("UNDO")) qvad::shell::registerBuiltinCommands(*stack);
        stack->addCommand("UNDO_TESTS", "NESTEDUNDO", "NESTEDUNDO", 0, nestedUndoCommand);
        DrawingSession::current().openNew();
    }
    void TearDown() override {
        DrawingSession::current().close();
        odedRegCmds()->removeGroup("UNDO_TESTS");
    }
    static std::string bytes() { return qvad::dxf::writeDxf(*DrawingSession::current().drawing()); }
    static UndoJournal& journal() { return *DrawingSession::current().journal(); }
};

TEST_F(UndoCommands, BeginEndUAndRedo) {
    const std::string empty = bytes();
    ASSERT_EQ(qvedCommand(QV_RTSTR, "UNDO", QV_RTSTR, "BE", 0), QV_NORM);
    EXPECT_EQ(journal().groupDepth(), 1);
    ASSERT_TRUE(makeLine(1));
    ASSERT_TRUE(makeLine(2));
    ASSERT_EQ(qvedCommand(QV_RTSTR, "UNDO", QV_RTSTR, "E", 0), QV_NORM);
    EXPECT_EQ(journal().groupDepth(), 0);
    const std::string group = bytes();
    ASSERT_TRUE(makeLine(3));
    EXPECT_TRUE(DrawingSession::current().modified());

    ASSERT_EQ(qvedCommand(QV_RTSTR, "U", 0), QV_NORM);
    EXPECT_EQ(bytes(), group);
    ASSERT_EQ(qvedCommand(QV_RTSTR, "UNDO", QV_RTSTR, "1", 0), QV_NORM);
    EXPECT_EQ(bytes(), empty) << "the group is one step";
    EXPECT_FALSE(DrawingSession::current().modified());
    ASSERT_EQ(qvedCommand(QV_RTSTR, "REDO", 0), QV_NORM);
    EXPECT_EQ(bytes(), group);
}

TEST_F(UndoCommands, MarkBackAndShortBegin) {
    ASSERT_TRUE(makeLine(1));
    ASSERT_EQ(qvedCommand(QV_RTSTR, "UNDO", QV_RTSTR, "M", 0), QV_NORM);
    const std::string marked = bytes();
    ASSERT_EQ(qvedCommand(QV_RTSTR, "UNDO", QV_RTSTR, "g", 0), QV_NORM);
    EXPECT_EQ(journal().groupDepth(), 1);
    ASSERT_TRUE(makeLine(2));
    ASSERT_EQ(qvedCommand(QV_RTSTR, "UNDO", QV_RTSTR, "e", 0), QV_NORM);
    ASSERT_TRUE(makeLine(3));
    ASSERT_EQ(qvedCommand(QV_RTSTR, "UNDO", QV_RTSTR, "Back", 0), QV_NORM);
    EXPECT_EQ(bytes(), marked);
    // A wrong answer changes nothing.
    qvedCommand(QV_RTSTR, "UNDO", QV_RTSTR, "nonsense", 0);
    EXPECT_EQ(bytes(), marked);
}

TEST_F(UndoCommands, InsideAnotherCommandUndoOnlyGroups) {
    const std::string empty = bytes();
    ASSERT_EQ(qvedCommand(QV_RTSTR, "NESTEDUNDO", 0), QV_NORM);
    EXPECT_EQ(journal().groupDepth(), 0);
    EXPECT_EQ(journal().stepCount(), 1);
    const std::string drawn = bytes();
    EXPECT_NE(drawn, empty) << "the nested UNDO 1 took back the running command";
    ASSERT_EQ(qvedCommand(QV_RTSTR, "U", 0), QV_NORM);
    EXPECT_EQ(bytes(), empty);
}

} // namespace
