#include "dialog_test_console.h"
#include "qvad/api/qvad_api.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class FilePrompt : public ::testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() / ("qv_file_prompt_" + std::to_string(getpid()));
        fs::create_directories(folder);
        std::ofstream(folder / "old.dim") << "x";
    }
    void TearDown() override { fs::remove_all(folder); }

    // The name chosen, or "<status>" when there is none.
    std::string choose(std::deque<std::string> answers, const char* defaultName, const char* extension,
                       int flags) {
        DialogTestConsole console(std::move(answers));
        qv_resbuf result{};
        int status = qvedGetFiled("Style file", defaultName, extension, flags, &result);
        prompts = console.prompts;
        transcript = console.transcript;
        left = console.unanswered();
        if (status != QV_NORM) return "<" + std::to_string(status) + ">";
        EXPECT_EQ(result.restype, QV_RTSTR);
        std::string name = result.resval.rstring;
        qvutDelString(&result.resval.rstring);
        return name;
    }
    std::string in(const char* name) const { return (folder / name).string(); }

    fs::path folder;
    std::vector<std::string> prompts;
    std::string transcript;
    std::size_t left = 0;
};

} // namespace

TEST_F(FilePrompt, TheDefaultIsShownAndAnEmptyAnswerTakesIt) {
    EXPECT_EQ(choose({""}, in("old.dim").c_str(), "dim,*", 0), in("old.dim"));
    ASSERT_EQ(prompts.size(), 1u);
    EXPECT_EQ(prompts[0], "Style file <" + in("old.dim") + ">: ");
}

TEST_F(FilePrompt, TheExtensionIsAddedOnlyWhenTheAnswerHasNone) {
    std::ofstream(folder / "plain.txt") << "x";
    EXPECT_EQ(choose({in("old")}, nullptr, "dim,*", 0), in("old.dim"));
    EXPECT_EQ(choose({in("plain.txt")}, nullptr, "*.dim", 0), in("plain.txt"));
    EXPECT_EQ(choose({"\"" + in("new") + "\""}, nullptr, "*.txt", QV_GETFILED_SAVE), in("new.txt"));
    // "*" alone adds nothing; a folder name with a dot does not count as an extension.
    EXPECT_EQ(choose({in("bare")}, nullptr, "*", QV_GETFILED_SAVE), in("bare"));
    fs::create_directories(folder / "v1.2");
    EXPECT_EQ(choose({in("v1.2/out")}, nullptr, "dim", QV_GETFILED_SAVE), in("v1.2/out.dim"));
}

TEST_F(FilePrompt, OpeningAMissingFileAsksAgain) {
    EXPECT_EQ(choose({in("missing"), in("old")}, nullptr, "dim", 0), in("old.dim"));
    EXPECT_EQ(prompts.size(), 2u);
    EXPECT_NE(transcript.find("Cannot find " + in("missing.dim")), std::string::npos);
    // A folder is not a file either.
    EXPECT_EQ(choose({folder.string(), in("old.dim")}, nullptr, "", 0), in("old.dim"));
    EXPECT_NE(transcript.find("is a folder"), std::string::npos);
}

TEST_F(FilePrompt, SavingOverAnExistingFileNeedsAYes) {
    EXPECT_EQ(choose({in("old"), "No", in("old"), "Yes"}, nullptr, "dim", QV_GETFILED_SAVE), in("old.dim"));
    EXPECT_EQ(left, 0u);
    EXPECT_EQ(prompts.size(), 4u);
    EXPECT_EQ(prompts[1], "" + in("old.dim") + " already exists. Replace it? [Yes/No] <No>: ");
    // Enter at the question means No.
    EXPECT_EQ(choose({in("old"), "", in("fresh")}, nullptr, "dim", QV_GETFILED_SAVE), in("fresh.dim"));
    // Saving into a folder that does not exist is refused.
    EXPECT_EQ(choose({in("nowhere/a"), in("b")}, nullptr, "dim", QV_GETFILED_SAVE), in("b.dim"));
    EXPECT_NE(transcript.find("There is no folder"), std::string::npos);
}

TEST_F(FilePrompt, CancelAndEndedInputGiveCancel) {
    const std::string cancelled = "<" + std::to_string(QV_CANCEL) + ">";
    EXPECT_EQ(choose({"^C"}, in("old.dim").c_str(), "dim", 0), cancelled);
    EXPECT_EQ(choose({}, in("old.dim").c_str(), "dim", 0), cancelled);
    EXPECT_EQ(choose({in("old"), "^C"}, nullptr, "dim", QV_GETFILED_SAVE), cancelled);
    // No default and an empty answer: asked again until input ends.
    EXPECT_EQ(choose({"", ""}, "*.dim", "dim", 0), cancelled);
    EXPECT_NE(transcript.find("A file name is needed"), std::string::npos);
    EXPECT_EQ(prompts.at(0), "Style file: ");
    EXPECT_EQ(qvedGetFiled("t", nullptr, nullptr, 0, nullptr), QV_ERROR);
}
