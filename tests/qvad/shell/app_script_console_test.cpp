#include "qvad/shell/console_script.h"
#include "tests/support/temp_folder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

using qvad::api::ReadStatus;
using qvad::shell::ScriptConsole;

namespace {

std::unique_ptr<std::istream> text(const std::string& lines) {
    return std::make_unique<std::istringstream>(lines);
}

// The console after the script: answers "typed" and counts what reached it.
class NextConsole final : public qvad::api::Console {
public:
    ReadStatus readLine(std::string_view prompt, std::string& line) override {
        ++reads;
        line = "typed";
        return ReadStatus::Answer;
    }
    void write(std::string_view text) override { written += text; }
    bool takeBreak() override { return std::exchange(breakPressed, false); }
    bool interactive() const override { return true; }
    int reads = 0;
    bool breakPressed = false;
    std::string written;
};

} // namespace

TEST(AppScriptConsole, AnswersLineByLineSkippingCommentsAndKeepingEmptyLines) {
    std::ostringstream transcript;
    ScriptConsole script(text("LINE\r\n; a comment\n0,0\n\n;another\n  ; not a comment\n"), "draw.scr",
                         transcript);
    std::string line;
    EXPECT_EQ(script.readLine("Command: ", line), ReadStatus::Answer);
    EXPECT_EQ(line, "LINE"); // the CR of a Windows line end is not part of the answer
    EXPECT_EQ(script.lineNumber(), 1);
    EXPECT_EQ(script.readLine("From point: ", line), ReadStatus::Answer);
    EXPECT_EQ(line, "0,0");
    EXPECT_EQ(script.location(), "draw.scr:3");
    EXPECT_EQ(script.readLine("To point: ", line), ReadStatus::Answer);
    EXPECT_EQ(line, ""); // an empty line is Enter
    EXPECT_EQ(script.lineNumber(), 4);
    EXPECT_EQ(script.readLine("Command: ", line), ReadStatus::Answer);
    EXPECT_EQ(line, "  ; not a comment");
    EXPECT_EQ(script.location(), "draw.scr:6");
    EXPECT_FALSE(script.exhausted());

    line = "left over";
    EXPECT_EQ(script.readLine("Command: ", line), ReadStatus::Ended);
    EXPECT_EQ(line, "");
    EXPECT_TRUE(script.exhausted());
    // Once ended it stays ended, and the last line read is still where it stopped.
    EXPECT_EQ(script.readLine("Command: ", line), ReadStatus::Ended);
    EXPECT_EQ(script.location(), "draw.scr:6");
    EXPECT_FALSE(script.interactive());
    EXPECT_FALSE(script.takeBreak());

    EXPECT_EQ(transcript.str(), "Command: LINE\nFrom point: 0,0\nTo point: \nCommand:   ; not a comment\n"
                                "Command: \nCommand: \n");
}

TEST(AppScriptConsole, CommandLinesHandOverToTheNextConsole) {
    std::ostringstream transcript;
    ScriptConsole lines(std::vector<std::string>{"CIRCLE", "5,5"}, "--command", transcript);
    NextConsole next;
    lines.continueWith(&next);
    std::string line;
    ASSERT_EQ(lines.readLine("Command: ", line), ReadStatus::Answer);
    EXPECT_EQ(line, "CIRCLE");
    lines.write("said while lines remain\n");
    EXPECT_FALSE(lines.interactive());
    ASSERT_EQ(lines.readLine("Center: ", line), ReadStatus::Answer);
    EXPECT_EQ(line, "5,5");
    EXPECT_EQ(next.reads, 0);

    ASSERT_EQ(lines.readLine("Radius: ", line), ReadStatus::Answer);
    EXPECT_EQ(line, "typed");
    EXPECT_EQ(next.reads, 1);
    EXPECT_TRUE(lines.exhausted());
    EXPECT_TRUE(lines.interactive());
    lines.write("said after\n");
    next.breakPressed = true;
    EXPECT_TRUE(lines.takeBreak());
    EXPECT_FALSE(lines.takeBreak());

    EXPECT_EQ(transcript.str(), "Command: CIRCLE\nsaid while lines remain\nCenter: 5,5\n");
    EXPECT_EQ(next.written, "said after\n");
    EXPECT_EQ(lines.location(), "--command:2");
}

TEST(AppScriptConsole, ReadsAScriptFileAndRefusesAMissingOne) {
    std::filesystem::path folder = testTempFolder("qvad_app_script_console");
    std::filesystem::create_directories(folder);
    std::string path = (folder / "one.scr").string();
    std::ofstream(path) << "ZOOM\nE"; // no line end after the last answer
    std::ostringstream transcript;
    auto script = ScriptConsole::fromFile(path, transcript);
    ASSERT_NE(script, nullptr);
    std::string line;
    EXPECT_EQ(script->readLine("Command: ", line), ReadStatus::Answer);
    EXPECT_EQ(script->readLine("Option: ", line), ReadStatus::Answer);
    EXPECT_EQ(line, "E");
    EXPECT_EQ(script->readLine("Command: ", line), ReadStatus::Ended);
    EXPECT_EQ(script->location(), path + ":2");

    EXPECT_EQ(ScriptConsole::fromFile((folder / "absent.scr").string(), transcript), nullptr);
    std::filesystem::remove_all(folder);
}
