#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/shell/drawing_session.h"
#include "tests/support/temp_folder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using qvad::shell::DrawingSession;

namespace {

class AppDrawingSession : public ::testing::Test {
protected:
    void SetUp() override {
        m_folder = testTempFolder("qvad_app_drawing_session");
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override {
        DrawingSession::current().close();
        std::filesystem::remove_all(m_folder);
    }
    std::string file(const char* name) const { return (m_folder / name).string(); }

    // One command's worth of change, as the command loop brackets it.
    static void drawLine() {
        UndoJournal* journal = DrawingSession::current().journal();
        journal->commandStarted();
        qv_point from = {0, 0, 0}, to = {10, 5, 0};
        qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LINE", 8, "0", 10, from, 11, to, 0);
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(qvdbEntMake(list), QV_NORM);
        qvutRelRb(list);
        journal->commandEnded();
    }

    static std::size_t lineCount(const OdDbDatabase& db) {
        std::size_t lines = 0;
        for (const OdDbBlockTableRecord* block : db.blocks())
            if (block->isLayout())
                for (const OdDbEntity* e : block->entities())
                    lines += !e->isErased() && e->typeName() == "LINE";
        return lines;
    }

    std::filesystem::path m_folder;
};

} // namespace

TEST_F(AppDrawingSession, NewDrawingIsSavedUnderTheNameGivenAndTracksChanges) {
    DrawingSession& session = DrawingSession::current();
    session.openNew();
    ASSERT_NE(session.drawing(), nullptr);
    ASSERT_NE(session.journal(), nullptr);
    EXPECT_EQ(qvad::api::HostSession::current().drawing(), session.drawing());
    EXPECT_EQ(session.path(), "");
    EXPECT_FALSE(session.modified());
    EXPECT_FALSE(session.save()); // a new drawing has no file of its own yet

    drawLine();
    EXPECT_TRUE(session.modified());
    std::string saved = file("first.dxf");
    ASSERT_TRUE(session.save(saved));
    EXPECT_FALSE(session.modified());
    EXPECT_EQ(session.path(), saved);
    EXPECT_EQ(qvad::api::SysVarSession::current().drawingPath(), saved);

    // Undoing past the save brings back a state the file does not hold.
    EXPECT_EQ(session.journal()->undo(1), 1);
    EXPECT_TRUE(session.modified());
    EXPECT_TRUE(session.journal()->redo());
    EXPECT_FALSE(session.modified());

    ASSERT_TRUE(session.open(saved));
    EXPECT_FALSE(session.modified());
    EXPECT_EQ(lineCount(*session.drawing()), 1u);
    EXPECT_EQ(qvad::api::HostSession::current().drawing(), session.drawing());
}

TEST_F(AppDrawingSession, UnreadableFileLeavesTheOpenDrawingAlone) {
    DrawingSession& session = DrawingSession::current();
    session.openNew();
    drawLine();
    std::string good = file("good.dxf");
    ASSERT_TRUE(session.save(good));
    drawLine();
    const OdDbDatabase* before = session.drawing();

    std::string broken = file("broken.dxf");
    std::ofstream(broken) << "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nnot a number\n";
    EXPECT_FALSE(session.open(broken));
    EXPECT_FALSE(session.open(file("absent.dxf")));
    EXPECT_EQ(session.drawing(), before);
    EXPECT_EQ(session.path(), good);
    EXPECT_TRUE(session.modified());
    EXPECT_EQ(qvad::api::HostSession::current().drawing(), before);
    EXPECT_EQ(lineCount(*session.drawing()), 2u);

    // A save that cannot happen changes nothing either: the old file stays, the changes stay unsaved.
    EXPECT_FALSE(session.save(file("no such folder/out.dxf")));
    EXPECT_EQ(session.path(), good);
    EXPECT_TRUE(session.modified());
}

TEST_F(AppDrawingSession, CloseLetsGoOfTheDrawingEverywhere) {
    DrawingSession& session = DrawingSession::current();
    session.openNew();
    session.requestQuit();
    session.close();
    EXPECT_EQ(session.drawing(), nullptr);
    EXPECT_EQ(qvad::api::HostSession::current().drawing(), nullptr);
    EXPECT_FALSE(session.modified());
    EXPECT_FALSE(session.quitRequested());
    EXPECT_FALSE(session.save(file("x.dxf")));
}
