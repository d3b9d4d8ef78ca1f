// txt2mtxt run as a command of the host on a new drawing, answered by a scripted console.

#include "../../module/recording_console.h"
#include "qvad/api/qvad_api.h"
#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/command_processor.h"
#include "qvad/shell/drawing_session.h"
#include "tests/support/temp_folder.h"
#include "tooldeck/host/host_variables.h"
#include "tooldeck/module/command_handlers.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using qvad::shell::DrawingSession;

namespace {

std::string makeText(const char* text, double y, int colour) {
    const qv_real at[3] = {0.0, y, 0.0};
    qv_resbuf* list = qvutBuildList(QV_RTDXF0, "TEXT", 8, "0", 10, at, 40, 2.5, 1, text, 62, colour, 0);
    EXPECT_EQ(qvdbEntMake(list), QV_NORM);
    qvutRelRb(list);
    qv_name last;
    EXPECT_EQ(qvdbEntLast(last), QV_NORM);
    qv_resbuf* data = nullptr;
    EXPECT_EQ(qvdbEntGet(last, &data), QV_NORM);
    std::string handle;
    for (qv_resbuf* item = data; item; item = item->rbnext)
        if (item->restype == 5) handle = item->resval.rstring;
    qvutRelRb(data);
    return "#" + handle;
}

// The group 1 texts of every entity of the type, in drawing order.
std::vector<std::string> contentsOf(const char* type) {
    std::vector<std::string> texts;
    qv_resbuf* filter = qvutBuildList(QV_RTDXF0, type, 0);
    qv_name set;
    if (qvedSSGet("X", nullptr, nullptr, filter, set) == QV_NORM) {
        long count = 0;
        qvedSSLength(set, &count);
        for (long i = 0; i < count; ++i) {
            qv_name entity;
            qvedSSName(set, i, entity);
            qv_resbuf* data = nullptr;
            qvdbEntGet(entity, &data);
            for (qv_resbuf* item = data; item; item = item->rbnext)
                if (item->restype == 1) texts.emplace_back(item->resval.rstring);
            qvutRelRb(data);
        }
        qvedSSFree(set);
    }
    qvutRelRb(filter);
    return texts;
}

class Txt2mtxtCommand : public ::testing::Test {
protected:
    void SetUp() override {
        // No settings file: the command's own defaults, top to bottom with word wrap.
        config = testTempFolder("txt2mtxt_config");
        std::filesystem::remove_all(config);
        std::filesystem::create_directories(config);
        setenv("XDG_CONFIG_HOME", config.c_str(), 1);
        DrawingSession::current().openNew();
        odedRegCmds()->addCommand("QvtdTxt2mtxtTest", "txt2mtxt", "txt2mtxt", 0, &qvtd::cmd::cmd_txt2mtxt);
    }
    void TearDown() override {
        odedRegCmds()->removeGroup("QvtdTxt2mtxtTest");
        DrawingSession::current().close();
        std::filesystem::remove_all(config);
    }
    std::filesystem::path config;
};

} // namespace

TEST_F(Txt2mtxtCommand, CancelAtThePromptChangesNothingAndRestoresTheEcho) {
    makeText("one", 0.0, 256);
    makeText("two", 5.0, 256);
    qvtd::setShortVar("CMDECHO", 1);
    RecordingConsole console({"^C"});
    EXPECT_EQ(qvad::shell::runCommand("txt2mtxt"), qvad::shell::CommandOutcome::Cancelled);
    EXPECT_EQ(contentsOf("TEXT"), (std::vector<std::string>{"one", "two"}));
    EXPECT_TRUE(contentsOf("MTEXT").empty());
    EXPECT_EQ(qvtd::getShortVar("CMDECHO"), 1);
    EXPECT_EQ(DrawingSession::current().journal()->groupDepth(), 0);
}

TEST_F(Txt2mtxtCommand, JoinsTopToBottomAndOneUndoBringsTheTextsBack) {
    const std::string low = makeText("low", 0.0, 256);
    const std::string high = makeText("high", 9.0, 0);
    const std::string middle = makeText("middle", 4.0, 256);
    qvtd::setShortVar("CMDECHO", 1);
    {
        RecordingConsole console({low, high, middle, ""});
        EXPECT_EQ(qvad::shell::runCommand("txt2mtxt"), qvad::shell::CommandOutcome::Done)
            << console.transcript;
        EXPECT_NE(console.transcript.find("3"), std::string::npos) << console.transcript;
    }
    EXPECT_TRUE(contentsOf("TEXT").empty());
    EXPECT_EQ(contentsOf("MTEXT"), (std::vector<std::string>{"high\\C256; middle low"}));
    EXPECT_EQ(qvtd::getShortVar("CMDECHO"), 1);
    EXPECT_EQ(DrawingSession::current().journal()->groupDepth(), 0);

    RecordingConsole console;
    EXPECT_EQ(qvad::shell::runCommand("U"), qvad::shell::CommandOutcome::Done) << console.transcript;
    EXPECT_EQ(contentsOf("TEXT"), (std::vector<std::string>{"low", "high", "middle"}));
    EXPECT_TRUE(contentsOf("MTEXT").empty());
}
