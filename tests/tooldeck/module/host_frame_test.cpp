// The guard and the plainer frame, run inside real commands of the host on a new drawing.

#include "qvad/api/qvad_api.h"
#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/command_processor.h"
#include "qvad/shell/drawing_session.h"
#include "recording_console.h"
#include "tooldeck/host/CSysVarSet.h"
#include "tooldeck/host/CommandFrame.h"
#include "tooldeck/host/host_variables.h"
#include "tooldeck/host/user_break.h"

#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>

using qvad::shell::DrawingSession;

namespace {

// Each variable's value as text, to compare before and after.
std::map<std::string, std::string> guardedValues() {
    std::map<std::string, std::string> values;
    for (const char* name : qvtd::CSysVarSet::kSavedVariables) {
        qv_resbuf* buffer = qvutNewRb(QV_RTSHORT);
        EXPECT_EQ(qvedGetVar(name, buffer), QV_NORM) << name;
        std::string text = std::to_string(buffer->restype) + ":";
        if (buffer->restype == QV_RTSTR)
            text += buffer->resval.rstring ? buffer->resval.rstring : "";
        else if (buffer->restype == QV_RTREAL)
            text += std::to_string(buffer->resval.rreal);
        else
            text += std::to_string(buffer->resval.rint);
        values[name] = text;
        qvutRelRb(buffer);
    }
    return values;
}

void setReal(const char* name, double value) {
    qv_resbuf* buffer = qvutNewRb(QV_RTREAL);
    buffer->resval.rreal = value;
    EXPECT_EQ(qvedSetVar(name, buffer), QV_NORM) << name;
    qvutRelRb(buffer);
}

// Disturbs several guarded variables, then asks for a point (cancelled by the test's console).
void disturbThenPrompt() {
    qvtd::CSysVarSet guard;
    EXPECT_EQ(qvtd::getShortVar("CMDECHO"), 0);
    qvtd::setShortVar("OSMODE", 0);
    qvtd::setShortVar("ATTREQ", 0);
    setReal("PLINEWID", 2.5);
    qv_point point;
    if (qvedGetPoint(nullptr, "\nPick a point: ", point) != QV_NORM) return;
    qvtd::setShortVar("GRIDMODE", 1);
}

void disturbThenThrow() {
    try {
        qvtd::CSysVarSet guard;
        qvtd::setShortVar("OSMODE", 0);
        throw std::runtime_error("command failed half-way");
    } catch (const std::runtime_error&) {
    }
    qvedRetVoid();
}

short echoInsideFrame = -1;
void plainFrameCommand() {
    qvtd::CommandFrame frame(qvtd::CommandFrame::Implied::Take);
    echoInsideFrame = qvtd::getShortVar("CMDECHO");
    EXPECT_FALSE(frame.hasImpliedSelection());
}

class HostFrame : public ::testing::Test {
protected:
    void SetUp() override {
        DrawingSession::current().openNew();
        auto stack = odedRegCmds();
        stack->addCommand("QvtdFrameTest", "qvtdguard", "qvtdguard", 0, &disturbThenPrompt);
        stack->addCommand("QvtdFrameTest", "qvtdthrow", "qvtdthrow", 0, &disturbThenThrow);
        stack->addCommand("QvtdFrameTest", "qvtdframe", "qvtdframe", 0, &plainFrameCommand);
    }
    void TearDown() override {
        odedRegCmds()->removeGroup("QvtdFrameTest");
        DrawingSession::current().close();
    }
};

} // namespace

TEST_F(HostFrame, CancelledAtFirstPromptLeavesVariablesAndOneClosedUndoGroup) {
    UndoJournal* journal = DrawingSession::current().journal();
    ASSERT_NE(journal, nullptr);
    qvtd::setShortVar("CMDECHO", 1);
    qvtd::setShortVar("OSMODE", 7);
    const auto before = guardedValues();
    const int steps = journal->stepCount();

    RecordingConsole console({"^C"});
    // The host counts a command whose prompt was cancelled as cancelled, whatever the handler did next.
    EXPECT_EQ(qvad::shell::runCommand("qvtdguard"), qvad::shell::CommandOutcome::Cancelled);

    EXPECT_EQ(guardedValues(), before);
    EXPECT_EQ(journal->groupDepth(), 0);
    EXPECT_TRUE(journal->autoMode());
    EXPECT_EQ(journal->stepCount(), steps + 1);
    // The undo commands ran silenced even though CMDECHO was on before the command.
    EXPECT_NE(console.transcript.find("Pick a point"), std::string::npos) << console.transcript;
    EXPECT_EQ(console.transcript.find("undo"), std::string::npos) << console.transcript;
    EXPECT_EQ(console.transcript.find("Unknown"), std::string::npos) << console.transcript;
    EXPECT_EQ(qvtd::getShortVar("CMDECHO"), 1);
}

TEST_F(HostFrame, GuardRestoresEverythingWhenTheCommandThrows) {
    qvtd::setShortVar("OSMODE", 5);
    const auto before = guardedValues();
    RecordingConsole console;
    EXPECT_EQ(qvad::shell::runCommand("qvtdthrow"), qvad::shell::CommandOutcome::Done);
    EXPECT_EQ(guardedValues(), before);
    EXPECT_EQ(DrawingSession::current().journal()->groupDepth(), 0);
}

TEST_F(HostFrame, PlainFrameSilencesAndRestoresTheEcho) {
    qvtd::setShortVar("CMDECHO", 1);
    RecordingConsole console;
    EXPECT_EQ(qvad::shell::runCommand("qvtdframe"), qvad::shell::CommandOutcome::Done);
    EXPECT_EQ(echoInsideFrame, 0);
    EXPECT_EQ(qvtd::getShortVar("CMDECHO"), 1);
    EXPECT_EQ(DrawingSession::current().journal()->groupDepth(), 0);
    EXPECT_EQ(console.transcript.find("Undo"), std::string::npos) << console.transcript;
}

TEST_F(HostFrame, StepsStopOnCancelOrBreak) {
    RecordingConsole console;
    EXPECT_FALSE(qvtd::stepCancelled(QV_NORM));
    EXPECT_TRUE(qvtd::stepCancelled(QV_CANCEL));
    console.breakPressed = true;
    EXPECT_EQ(qvtd::stepStatus(QV_NORM), QV_CANCEL);
    // The break was taken once.
    EXPECT_EQ(qvtd::stepStatus(QV_NORM), QV_NORM);
    EXPECT_EQ(qvtd::stepStatus(QV_ERROR), QV_ERROR);
}
