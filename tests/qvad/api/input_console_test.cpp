// The command line as a person sees it: no doubled line breaks, feeds answering ahead of the console
// with and without echo, printing, alerts, the break key and the values commands return.

#include "input_fixture.h"
#include "qvad/api/answers.h"
#include "qvad/api/console.h"

#include <string>

namespace {

using qvad::api::Answer;
using qvad::api::AnswerFeed;
using qvad::test::InputTest;
using InputConsole = InputTest;

Answer textAnswer(std::string text) {
    Answer answer;
    answer.text = std::move(text);
    return answer;
}

TEST_F(InputConsole, LeadingBreakOnlyStartsALineWhenNeeded) {
    auto& console = answers({"ok"});
    qvad::api::console().write("\nFirst");
    qvad::api::console().write("\nSecond\n");
    qvad::api::console().write("\n\nAfter a blank line");
    char text[8];
    ASSERT_EQ(qvedGetString(0, "\nName: ", text, sizeof text), QV_NORM);
    qvad::api::console().write("\nDone.");
    EXPECT_EQ(console.transcript(), "First\nSecond\n\nAfter a blank line\nName: ok\nDone.");
    // The console itself is handed prompts without line breaks.
    EXPECT_EQ(console.prompts(), (std::vector<std::string>{"Name: "}));
}

TEST_F(InputConsole, FeedsAnswerAheadOfTheConsoleAndEchoWithCmdecho) {
    auto& console = answers({"9,9"});
    qv_point p{};
    {
        std::deque<Answer> list{textAnswer("3,4")};
        Answer point;
        point.kind = Answer::Kind::Point;
        point.point = OdGePoint3d(5, 6, 7);
        point.text = "5,6,7";
        list.push_back(point);
        AnswerFeed feed(std::move(list), true);
        ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
        EXPECT_EQ(p[0], 3.0);
        ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
        EXPECT_EQ(p[2], 7.0);
        ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM); // the feed ran dry: the console answers
        EXPECT_EQ(p[0], 9.0);
    }
    EXPECT_EQ(console.transcript(), "P: 3,4\nP: 5,6,7\nP: 9,9\n");

    setShort("CMDECHO", 0);
    console.clearTranscript();
    AnswerFeed silent({textAnswer("1,x"), textAnswer("2,2")}, true);
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_EQ(p[0], 2.0);
    EXPECT_EQ(console.transcript(), ""); // neither the answers nor the refusal
}

TEST_F(InputConsole, EchoedFeedGetsTheSameRefusalAsAPerson) {
    auto& console = answers({});
    AnswerFeed feed({textAnswer("abc"), textAnswer("4")}, true);
    int value = 0;
    ASSERT_EQ(qvedGetInt("\nCount: ", &value), QV_NORM);
    EXPECT_EQ(value, 4);
    EXPECT_EQ(console.transcript(), "Count: abc\nRequires an integer value or option keyword.\nCount: 4\n");
}

TEST_F(InputConsole, PauseAndTypedValuesFromAFeed) {
    auto& console = answers({"12"});
    Answer pause;
    pause.kind = Answer::Kind::Pause;
    Answer real;
    real.kind = Answer::Kind::Real;
    real.real = 2.5;
    real.text = "2.5";
    AnswerFeed feed({pause, real}, true);
    int count = 0;
    ASSERT_EQ(qvedGetInt("\nCount: ", &count), QV_NORM); // the pause lets the person answer
    EXPECT_EQ(count, 12);
    double value = 0.0;
    ASSERT_EQ(qvedGetDist(nullptr, "\nLength: ", &value), QV_NORM);
    EXPECT_EQ(value, 2.5);
    EXPECT_EQ(console.answersLeft(), 0u);
}

TEST_F(InputConsole, PrintingAlertsAndBreaks) {
    auto& console = answers({});
    std::string longText(20000, 'x');
    ASSERT_EQ(qvutPrintf("\n%d %s.", 3, "objects"), QV_NORM);
    ASSERT_EQ(qvutPrintf("\n%s|", longText.c_str()), QV_NORM);
    ASSERT_EQ(qvedPrompt("\nPlain % text"), QV_NORM);
    ASSERT_EQ(qvedAlert("Careful!"), QV_NORM);
    EXPECT_EQ(console.transcript(), "3 objects.\n" + longText + "|\nPlain % text\nCareful!\n");
    EXPECT_EQ(qvedUsrBrk(), 0);
    console.pressBreak();
    EXPECT_NE(qvedUsrBrk(), 0);
    EXPECT_EQ(qvedUsrBrk(), 0);
}

TEST_F(InputConsole, ReturnValuesAreKeptForTheCommandProcessor) {
    using Kind = qvad::api::ReturnValue::Kind;
    qvad::api::clearLastReturnValue();
    EXPECT_EQ(qvad::api::lastReturnValue().kind, Kind::None);
    qvedRetInt(7);
    EXPECT_EQ(qvad::api::lastReturnValue().kind, Kind::Int);
    EXPECT_EQ(qvad::api::lastReturnValue().integer, 7);
    qv_resbuf* list = qvutBuildList(QV_RTSTR, "a", QV_RTSHORT, 3, 0);
    qvedRetList(list);
    qvutRelRb(list);
    ASSERT_EQ(qvad::api::lastReturnValue().list.size(), 2u);
    EXPECT_EQ(qvad::api::lastReturnValue().list[0].text, "a");
    EXPECT_EQ(qvad::api::lastReturnValue().list[1].text, "3");
    qvedRetVoid();
    EXPECT_EQ(qvad::api::lastReturnValue().kind, Kind::Void);
    EXPECT_TRUE(qvad::api::lastReturnValue().list.empty());
}

} // namespace
