#include "command_fixture.h"

#include <stdexcept>

namespace qvad::test {
namespace {

using qvad::shell::CommandOutcome;
using qvad::shell::runCommand;

std::vector<std::string> g_words;
bool g_sawRunning = false;
int g_innerDepth = 0;
int g_innerStatus = 0;

// Asks for one word and keeps it.
void askWord() {
    g_innerDepth = qvad::shell::commandDepth();
    char text[128] = {};
    if (qvedGetString(0, "\nWord: ", text, sizeof text) == QV_NORM) g_words.emplace_back(text);
}

bool layerExists(const char* name) {
    qv_resbuf* record = nullptr;
    const bool found = qvdbTblSearch("LAYER", name, 0, &record) == QV_NORM && record;
    qvutRelRb(record);
    return found;
}

void makeLayer(const char* name) {
    qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LAYER", 2, name, 70, 0, 62, 7, 6, "CONTINUOUS", 0);
    ASSERT_EQ(qvdbEntMake(list), QV_NORM);
    qvutRelRb(list);
}

void makeThenAsk() {
    makeLayer("PT_MADE");
    askWord();
}

void makeThenThrow() {
    makeLayer("PT_THROWN");
    throw std::runtime_error("the handler broke");
}

void runInner() {
    g_sawRunning = qvad::shell::commandRunning();
    g_innerStatus = qvedCommand(QV_RTSTR, "ptWord", QV_RTSTR, "inner", 0);
    makeLayer("PT_OUTER");
}

void queueKeys() {
    sds_sendmessage("^C^PptWord queued ");
    askWord(); // answered by the console: the queue waits for the Command: prompt
}

class ProcessorTest : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        g_words.clear();
        g_sawRunning = false;
        g_innerStatus = 0;
        OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
        stack->addCommand("PTEST", "ptWord", "ptWord", 0, askWord);
        stack->addCommand("PTEST", "ptMakeAsk", "ptMakeAsk", 0, makeThenAsk);
        stack->addCommand("PTEST", "ptThrow", "ptThrow", 0, makeThenThrow);
        stack->addCommand("PTEST", "ptOuter", "ptOuter", 0, runInner);
        stack->addCommand("PTEST", "ptSend", "ptSend", 0, queueKeys);
    }
    void TearDown() override {
        odedRegCmds()->removeGroup("PTEST");
        CommandTest::TearDown();
    }
};

TEST_F(ProcessorTest, UnknownNamesAndPrefixes) {
    FakeConsole& console = answers({"a", "b", "c", "d"});
    EXPECT_EQ(runCommand("noSuchCommand"), CommandOutcome::Unknown);
    EXPECT_NE(console.transcript().find("Unknown command \"NOSUCHCOMMAND\"."), std::string::npos);
    EXPECT_EQ(runCommand("_ptword"), CommandOutcome::Done);
    EXPECT_EQ(g_innerDepth, 1);
    EXPECT_EQ(qvad::shell::commandDepth(), 0);
    EXPECT_EQ(runCommand("_.PTWORD"), CommandOutcome::Done);
    EXPECT_EQ(runCommand("'ptWord"), CommandOutcome::Done);
    EXPECT_EQ(runCommand("._ptWord"), CommandOutcome::Done);
    EXPECT_EQ(g_words, (std::vector<std::string>{"a", "b", "c", "d"}));
    EXPECT_EQ(runCommand("_"), CommandOutcome::Unknown);
    EXPECT_EQ(runCommand(""), CommandOutcome::Unknown);
}

TEST_F(ProcessorTest, AThrowingHandlerIsReportedAndTakenBack) {
    FakeConsole& console = answers({});
    EXPECT_EQ(runCommand("ptThrow"), CommandOutcome::Failed);
    EXPECT_NE(console.transcript().find("the handler broke"), std::string::npos);
    EXPECT_FALSE(layerExists("PT_THROWN"));
    EXPECT_FALSE(qvad::shell::commandRunning());
}

TEST_F(ProcessorTest, InputEndingInsideACommandTakesItBackButACancelKeepsItsWork) {
    answers({});
    EXPECT_EQ(runCommand("ptMakeAsk"), CommandOutcome::InputEnded);
    EXPECT_FALSE(layerExists("PT_MADE"));

    answers({"^C"});
    EXPECT_EQ(runCommand("ptMakeAsk"), CommandOutcome::Cancelled);
    EXPECT_TRUE(layerExists("PT_MADE"));
}

TEST_F(ProcessorTest, CommandLoopRepeatsOnEnterAndTakesTypedAheadWords) {
    int status = -1;
    session({"ptWord", "one", "", "two", "ptWord three", "^C"}, &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(g_words, (std::vector<std::string>{"one", "two", "three"}));
}

TEST_F(ProcessorTest, CommandLoopStatusForScripts) {
    int status = -1;
    const std::string transcript = session({"ptWord", "x", "nonsense"}, &status);
    EXPECT_EQ(status, 1); // an unknown command fails a script
    EXPECT_NE(transcript.find("Unknown command \"NONSENSE\""), std::string::npos);

    session({"ptMakeAsk"}, &status);
    EXPECT_EQ(status, 1);
    EXPECT_FALSE(layerExists("PT_MADE"));
}

TEST_F(ProcessorTest, HostCommandRunsNestedWithinTheOuterCommand) {
    FakeConsole& console = answers({});
    EXPECT_EQ(runCommand("ptOuter"), CommandOutcome::Done);
    EXPECT_TRUE(g_sawRunning);
    EXPECT_EQ(g_innerDepth, 2);
    EXPECT_EQ(g_innerStatus, QV_NORM);
    EXPECT_EQ(g_words, (std::vector<std::string>{"inner"}));
    EXPECT_TRUE(console.prompts().empty()); // the feed answered everything
    EXPECT_NE(console.transcript().find("Word: inner"), std::string::npos);
    EXPECT_NE(console.transcript().find("ptWord"), std::string::npos);
    EXPECT_TRUE(layerExists("PT_OUTER"));
}

TEST_F(ProcessorTest, HostCommandsAreSilentWithCmdEchoOff) {
    setShort("CMDECHO", 0);
    FakeConsole& console = answers({});
    EXPECT_EQ(runCommand("ptOuter"), CommandOutcome::Done);
    EXPECT_EQ(g_words, (std::vector<std::string>{"inner"}));
    EXPECT_EQ(console.transcript().find("inner"), std::string::npos);
    EXPECT_EQ(console.transcript().find("ptWord"), std::string::npos);
}

TEST_F(ProcessorTest, HostCommandStatuses) {
    // Answers running out inside the command leave the prompt to the console.
    answers({"typed"});
    EXPECT_EQ(qvedCommand(QV_RTSTR, "ptWord", 0), QV_NORM);
    EXPECT_EQ(g_words, (std::vector<std::string>{"typed"}));
    // Several commands from one list, one after another.
    EXPECT_EQ(qvedCommand(QV_RTSTR, "ptWord", QV_RTSTR, "p", QV_RTSTR, "ptWord", QV_RTSTR, "q", 0), QV_NORM);
    EXPECT_EQ(g_words, (std::vector<std::string>{"typed", "p", "q"}));

    answers({"^C"});
    EXPECT_EQ(qvedCommand(QV_RTSTR, "ptWord", 0), QV_CANCEL);
    answers({});
    EXPECT_EQ(qvedCommand(QV_RTSTR, "noSuchCommand", 0), QV_ERROR);
    EXPECT_EQ(qvedCommand(QV_RTLB, QV_RTLE, 0), QV_ERROR);
    EXPECT_EQ(qvedCommand(QV_RTSHORT, 3, 0), QV_ERROR); // no command name
    EXPECT_EQ(qvedCommand(9999, 0), QV_ERROR);
    EXPECT_EQ(qvedCommand(0), QV_NORM);

    qv_resbuf* list = qvutBuildList(QV_RTSTR, "ptWord", QV_RTSTR, "listed", 0);
    EXPECT_EQ(qvedCmd(list), QV_NORM);
    qvutRelRb(list);
    EXPECT_EQ(g_words.back(), "listed");
}

TEST_F(ProcessorTest, QueuedKeystrokesRunAfterTheCommandAndCancelIsDropped) {
    int status = -1;
    const std::string transcript = session({"ptSend", "own"}, &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(g_words, (std::vector<std::string>{"own", "queued"}));
    EXPECT_NE(transcript.find("Command: ptWord"), std::string::npos);

    // A cancel among queued answers cancels the command that reads it.
    g_words.clear();
    ASSERT_EQ(sds_sendmessage("ptWord ^C"), QV_NORM);
    session({});
    EXPECT_TRUE(g_words.empty());
    EXPECT_EQ(sds_sendmessage(nullptr), QV_ERROR);
}

} // namespace
} // namespace qvad::test
