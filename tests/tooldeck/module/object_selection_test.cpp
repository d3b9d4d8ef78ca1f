// The selection step commands share: the pick-first set or the prompt, locked layers and other kinds
// left out and counted, and a set left behind as the pick-first and previous set.

#include "qvad/api/qvad_api.h"
#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/command_processor.h"
#include "qvad/shell/drawing_session.h"
#include "recording_console.h"
#include "tooldeck/host/CommandFrame.h"
#include "tooldeck/host/object_selection.h"
#include "tooldeck/host/prompts.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

using qvad::shell::DrawingSession;

namespace {

// What the last run of the test command kept; cancelled when it got nothing back.
std::vector<std::string> keptTypes;
bool cancelled = false;

void selectTexts() {
    qvtd::CommandFrame frame(qvtd::CommandFrame::Implied::Take);
    qvtd::SelectionRules rules;
    rules.accepts = qvtd::isTextObject;
    auto picked = qvtd::selectObjects(frame, rules);
    keptTypes.clear();
    cancelled = !picked;
    if (!picked) return;
    for (const qvtd::PickedObject& object : *picked) keptTypes.push_back(object.data.text(0));
}

void leaveLinesPicked() {
    qvtd::SelectionSet lines;
    for (qv_name entity = {0, 0}, next = {0, 0}; qvdbEntNext(entity, next) == QV_NORM;) {
        entity[0] = next[0];
        entity[1] = next[1];
        if (qvtd::DataList::ofEntity(entity).text(0) == "LINE") lines.add(entity);
    }
    EXPECT_TRUE(lines.makePickFirst());
}

std::optional<std::string> keyword;
void askMaskType() {
    keyword =
        qvtd::askKeyword("\nMask type [Wipeout/3dface/Solid] <Wipeout>: ", "Wipeout 3dface Solid", "Wipeout");
}

void make(const char* type, const char* layer, const char* text = nullptr) {
    qv_point a = {0, 0, 0}, b = {10, 0, 0};
    qv_resbuf* list = text ? qvutBuildList(QV_RTDXF0, type, 8, layer, 10, a, 40, 2.5, 1, text, 0)
                           : qvutBuildList(QV_RTDXF0, type, 8, layer, 10, a, 11, b, 0);
    ASSERT_EQ(qvdbEntMake(list), QV_NORM);
    qvutRelRb(list);
}

class ObjectSelection : public ::testing::Test {
protected:
    void SetUp() override {
        DrawingSession::current().openNew();
        auto stack = odedRegCmds();
        stack->addCommand("QvtdSelectTest", "pickTexts", "pickTexts", 0, &selectTexts);
        stack->addCommand("QvtdSelectTest", "pickLines", "pickLines", 0, &leaveLinesPicked);
        stack->addCommand("QvtdSelectTest", "askMask", "askMask", 0, &askMaskType);
        {
            RecordingConsole console({"M", "Held", "LO", "Held", "", "S", "0", ""});
            qvad::shell::runCommand("-LAYER");
        }
        make("LINE", "0");
        make("TEXT", "0", "free");
        make("TEXT", "Held", "locked");
        make("LINE", "Held");
    }
    void TearDown() override {
        odedRegCmds()->removeGroup("QvtdSelectTest");
        DrawingSession::current().close();
    }
};

} // namespace

TEST_F(ObjectSelection, PromptKeepsAcceptedKindsOffLockedLayersAndCountsTheRest) {
    RecordingConsole console({"ALL", ""});
    qvad::shell::runCommand("pickTexts");
    ASSERT_FALSE(cancelled);
    EXPECT_EQ(keptTypes, std::vector<std::string>{"TEXT"});
    // The locked line is a line first: it counts once, as another kind.
    EXPECT_NE(console.transcript.find("1 object on locked layers was skipped."), std::string::npos)
        << console.transcript;
    EXPECT_NE(console.transcript.find("2 objects of another kind were skipped."), std::string::npos)
        << console.transcript;
}

TEST_F(ObjectSelection, PickFirstSetIsUsedWithoutAPromptAndIsAlsoThePreviousSet) {
    {
        RecordingConsole console;
        qvad::shell::runCommand("pickLines");
    }
    RecordingConsole console;
    qvad::shell::runCommand("pickTexts");
    ASSERT_FALSE(cancelled);
    EXPECT_TRUE(keptTypes.empty());
    EXPECT_EQ(console.transcript.find("Select objects"), std::string::npos) << console.transcript;

    RecordingConsole again({"P", ""});
    qvad::shell::runCommand("pickTexts");
    EXPECT_NE(again.transcript.find("2 objects of another kind were skipped."), std::string::npos)
        << again.transcript;
}

TEST_F(ObjectSelection, CancelGivesNothingAndEmptyAnswerAnEmptyList) {
    {
        RecordingConsole console({"^C"});
        qvad::shell::runCommand("pickTexts");
        EXPECT_TRUE(cancelled);
    }
    RecordingConsole console({""});
    qvad::shell::runCommand("pickTexts");
    ASSERT_FALSE(cancelled);
    EXPECT_TRUE(keptTypes.empty());
}

TEST_F(ObjectSelection, KeywordPromptTakesAbbreviationsAndTheDefault) {
    for (const auto& [answer, expected] : std::vector<std::pair<std::string, std::string>>{
             {"s", "Solid"}, {"3DFACE", "3dface"}, {"", "Wipeout"}}) {
        RecordingConsole console({answer});
        qvad::shell::runCommand("askMask");
        ASSERT_TRUE(keyword) << answer;
        EXPECT_EQ(*keyword, expected);
    }
    RecordingConsole console({"^C"});
    qvad::shell::runCommand("askMask");
    EXPECT_FALSE(keyword);
}
