// The commands this module already does itself, and the placeholders of the others.

#include "qvad/api/answers.h"
#include "qvad/api/qvad_api.h"
#include "qvad/shell/drawing_session.h"
#include "recording_console.h"
#include "tooldeck/host/host_variables.h"
#include "tooldeck/module/command_handlers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using qvad::shell::DrawingSession;

namespace {

double snapAngle() {
    qv_resbuf* buffer = qvutNewRb(QV_RTSHORT);
    qvedGetVar("SNAPANG", buffer);
    double value = buffer->resval.rreal;
    qvutRelRb(buffer);
    return value;
}

class ModuleCommands : public ::testing::Test {
protected:
    void SetUp() override { DrawingSession::current().openNew(); }
    void TearDown() override {
        qvad::api::queuedKeystrokes().clear();
        DrawingSession::current().close();
    }
};

} // namespace

TEST_F(ModuleCommands, OrthoCommandsSetModeAndAngle) {
    RecordingConsole console;
    qvtd::cmd::cmd_rtcur45();
    EXPECT_EQ(qvtd::getShortVar("ORTHOMODE"), 1);
    EXPECT_NEAR(snapAngle(), std::numbers::pi / 4, 1e-12);
    qvtd::cmd::cmd_rtcur(); // toggles, keeping the angle
    EXPECT_EQ(qvtd::getShortVar("ORTHOMODE"), 0);
    EXPECT_NEAR(snapAngle(), std::numbers::pi / 4, 1e-12);
    qvtd::cmd::cmd_rtcur();
    EXPECT_EQ(qvtd::getShortVar("ORTHOMODE"), 1);
    qvtd::cmd::cmd_rtcur1();
    EXPECT_EQ(qvtd::getShortVar("ORTHOMODE"), 0);
    EXPECT_EQ(snapAngle(), 0.0);
    qvtd::cmd::cmd_rtcur45();
    qvtd::cmd::cmd_rtcur0();
    EXPECT_EQ(qvtd::getShortVar("ORTHOMODE"), 1);
    EXPECT_EQ(snapAngle(), 0.0);
}

TEST_F(ModuleCommands, BannerAddressAndPlaceholdersPrintOneLine) {
    RecordingConsole console;
    qvtd::cmd::cmd_ShowWendal();
    EXPECT_NE(console.transcript.find("QvTooldeck " QVTD_TEST_VERSION), std::string::npos)
        << console.transcript;
    console.transcript.clear();
    qvtd::cmd::cmd_sahttp();
    EXPECT_EQ(console.transcript, "https://qvtooldeck.example.org\n");
    console.transcript.clear();
    qvtd::cmd::cmd_dash_xlist();
    EXPECT_EQ(console.transcript, "-xlist: not available yet.\n");
}

TEST_F(ModuleCommands, BlockTrimQueuesTheHostTrimAndLeavesVariablesAlone) {
    RecordingConsole console;
    qvtd::setShortVar("CMDECHO", 1);
    qvtd::setShortVar("OSMODE", 33);
    qvtd::cmd::cmd_btrim();
    EXPECT_EQ(qvtd::getShortVar("CMDECHO"), 1);
    EXPECT_EQ(qvtd::getShortVar("OSMODE"), 33);
    std::string queued;
    for (const auto& answer : qvad::api::queuedKeystrokes())
        queued += answer.kind == qvad::api::Answer::Kind::Cancel ? "<cancel>" : answer.text + "|";
    EXPECT_NE(queued.find("TRIM"), std::string::npos) << queued;
    EXPECT_EQ(queued.find("EXTEND"), std::string::npos) << queued;
}
