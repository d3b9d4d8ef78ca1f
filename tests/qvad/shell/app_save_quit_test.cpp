#include "dialog_test_console.h"
#include "qvad/api/qvad_api.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/drawing_session.h"
#include "tests/support/temp_folder.h"

#include <filesystem>
#include <gtest/gtest.h>

using qvad::shell::DrawingSession;

namespace {

class AppSaveQuit : public ::testing::Test {
protected:
    void SetUp() override {
        m_folder = testTempFolder("qvad_app_save_quit");
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
        DrawingSession::current().openNew();
    }
    void TearDown() override {
        DrawingSession::current().close();
        std::filesystem::remove_all(m_folder);
    }
    std::string file(const char* name) const { return (m_folder / name).string(); }

    static void change() {
        UndoJournal* journal = DrawingSession::current().journal();
        journal->commandStarted();
        qv_point from = {0, 0, 0}, to = {1, 1, 0};
        qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LINE", 10, from, 11, to, 0);
        ASSERT_EQ(qvdbEntMake(list), QV_NORM);
        qvutRelRb(list);
        journal->commandEnded();
    }

    std::filesystem::path m_folder;
};

} // namespace

TEST_F(AppSaveQuit, SaveAsAsksForTheNameAndTheDrawingMovesThere) {
    DrawingSession& session = DrawingSession::current();
    change();
    std::string first = file("first name.dxf"); // spaces are part of a file name
    {
        DialogTestConsole console({first});
        qvad::shell::cmdSaveAs();
        ASSERT_EQ(console.prompts.size(), 1u);
        EXPECT_NE(console.prompts[0].find("File name <"), std::string::npos);
    }
    EXPECT_TRUE(std::filesystem::exists(first));
    EXPECT_EQ(session.path(), first);
    EXPECT_FALSE(session.modified());

    // SAVE writes the drawing's own file without asking; SAVEAS offers it as the default.
    change();
    std::filesystem::remove(first);
    {
        DialogTestConsole console({});
        qvad::shell::cmdSave();
        EXPECT_TRUE(console.prompts.empty());
    }
    EXPECT_TRUE(std::filesystem::exists(first));
    {
        DialogTestConsole console({""});
        qvad::shell::cmdSaveAs();
        ASSERT_EQ(console.prompts.size(), 1u);
        EXPECT_NE(console.prompts[0].find("<" + first + ">"), std::string::npos) << console.prompts[0];
    }
    EXPECT_EQ(session.path(), first);

    // A cancelled name saves nothing.
    change();
    {
        DialogTestConsole console({"^C"});
        qvad::shell::cmdSaveAs();
    }
    EXPECT_TRUE(session.modified());
}

TEST_F(AppSaveQuit, SaveOfANewDrawingAsksForAName) {
    std::string target = file("new.dxf");
    DialogTestConsole console({target});
    qvad::shell::cmdSave();
    EXPECT_EQ(console.prompts.size(), 1u);
    EXPECT_TRUE(std::filesystem::exists(target));
    EXPECT_EQ(DrawingSession::current().path(), target);
}

TEST_F(AppSaveQuit, QuitAsksBeforeDiscardingChanges) {
    DrawingSession& session = DrawingSession::current();
    {
        DialogTestConsole console({});
        qvad::shell::cmdQuit();
        EXPECT_TRUE(console.prompts.empty()); // nothing to lose: no question
    }
    EXPECT_TRUE(session.quitRequested());

    session.openNew();
    change();
    for (const char* keep : {"", "No", "^C"}) {
        DialogTestConsole console({keep});
        qvad::shell::cmdQuit();
        ASSERT_EQ(console.prompts.size(), 1u);
        EXPECT_NE(console.prompts[0].find("Discard changes to the drawing? [Yes/No] <No>:"),
                  std::string::npos);
        EXPECT_FALSE(session.quitRequested()) << "answer '" << keep << "'";
    }
    DialogTestConsole console({"yes"});
    qvad::shell::cmdQuit();
    EXPECT_TRUE(session.quitRequested());
    EXPECT_TRUE(session.modified()); // quitting saves nothing
}
