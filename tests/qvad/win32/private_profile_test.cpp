#include "qvad/win32/windows_calls.h"
#include "win32_test_support.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using win32_test::readFile;
using win32_test::writeFile;

constexpr const char* kSettings = "; settings of the tools\n"
                                  "[Other]\n"
                                  "; kept as it is\n"
                                  "Colour=red\n"
                                  "\n"
                                  "[QVADEXCMD]\n"
                                  "TEXTMASK_OFFSET=0.3500\n"
                                  "TEXTMASK_COLOR=junk\n"
                                  "Quoted=\"  spaced  \"\n"
                                  "Empty=\n"
                                  "\n"
                                  "[Last]\n"
                                  "k=v\n"
                                  "; the end\n";

class PrivateProfileTest : public testing::Test {
protected:
    std::string get(const char* section, const char* key, const char* fallback, DWORD size = 256) {
        std::string buffer(size + 1, '#');
        DWORD n = GetPrivateProfileStringA(section, key, fallback, buffer.data(), size, path.c_str());
        lastReturn = n;
        return buffer.substr(0, n);
    }

    win32_test::TempFolder folder;
    std::string path = folder.file("qvad.ini");
    DWORD lastReturn = 0;
};

TEST_F(PrivateProfileTest, ReadsIgnoringCaseAndFallsBackToTheDefault) {
    writeFile(path, kSettings);
    EXPECT_EQ(get("qvadexcmd", "textmask_offset", "x"), "0.3500");
    EXPECT_EQ(get("QVADEXCMD", "Quoted", "x"), "  spaced  ");
    EXPECT_EQ(get("QVADEXCMD", "Empty", "x"), "");
    EXPECT_EQ(get("QVADEXCMD", "Missing", "0.35  "), "0.35"); // trailing blanks of a default go
    EXPECT_EQ(get("NoSection", "k", nullptr), "");
    std::remove(path.c_str());
    EXPECT_EQ(get("QVADEXCMD", "TEXTMASK_OFFSET", "Wipeout"), "Wipeout");
}

TEST_F(PrivateProfileTest, ShortBuffersCutToSizeLessOne) {
    writeFile(path, kSettings);
    std::string buffer(8, '#');
    EXPECT_EQ(GetPrivateProfileStringA("QVADEXCMD", "TEXTMASK_OFFSET", "", buffer.data(), 4, path.c_str()),
              3u);
    EXPECT_EQ(buffer.substr(0, 4), std::string("0.3\0", 4));
    EXPECT_EQ(GetPrivateProfileStringA("QVADEXCMD", "Missing", "Wipeout", buffer.data(), 4, path.c_str()),
              3u);
    EXPECT_EQ(buffer.substr(0, 4), std::string("Wip\0", 4));
    EXPECT_EQ(GetPrivateProfileStringA("QVADEXCMD", "TEXTMASK_OFFSET", "", buffer.data(), 0, path.c_str()),
              0u);
    EXPECT_EQ(buffer[0], 'W'); // a zero-size buffer is not touched
}

TEST_F(PrivateProfileTest, NullSectionOrKeyListsNamesEndedByTwoZeros) {
    writeFile(path, kSettings);
    EXPECT_EQ(get(nullptr, nullptr, ""), std::string("Other\0QVADEXCMD\0Last\0", 21));
    EXPECT_EQ(get("last", nullptr, ""), std::string("k\0", 2));
    // A list that does not fit is cut and still ends with two zeros; the answer is size - 2.
    std::string buffer(10, '#');
    EXPECT_EQ(GetPrivateProfileStringA(nullptr, nullptr, "", buffer.data(), 9, path.c_str()), 7u);
    EXPECT_EQ(buffer.substr(0, 9), std::string("Other\0Q\0\0", 9));
}

TEST_F(PrivateProfileTest, IntegersReadTheLeadingNumber) {
    writeFile(path, kSettings + std::string("[Numbers]\nA=12abc\nB=-3\nC=0x1F\nD= 42\n"));
    EXPECT_EQ(GetPrivateProfileIntA("QVADEXCMD", "TEXTMASK_COLOR", 2, path.c_str()), 0u); // junk text
    EXPECT_EQ(GetPrivateProfileIntA("QVADEXCMD", "Missing", 2, path.c_str()), 2u);
    EXPECT_EQ(GetPrivateProfileIntA("QVADEXCMD", "Empty", 2, path.c_str()), 2u);
    EXPECT_EQ(GetPrivateProfileIntA("numbers", "a", 2, path.c_str()), 12u);
    EXPECT_EQ(static_cast<int>(GetPrivateProfileIntA("Numbers", "B", 2, path.c_str())), -3);
    EXPECT_EQ(GetPrivateProfileIntA("Numbers", "C", 2, path.c_str()), 31u);
    EXPECT_EQ(GetPrivateProfileIntA("Numbers", "D", 2, path.c_str()), 42u);
    EXPECT_EQ(GetPrivateProfileIntA("Numbers", "A", 2, folder.file("none.ini").c_str()), 2u);
}

TEST_F(PrivateProfileTest, WritingKeepsEverythingElseAndAnotherReaderSeesIt) {
    writeFile(path, kSettings);
    ASSERT_TRUE(WritePrivateProfileStringA("qvadexcmd", "textmask_offset", "0.5000", path.c_str()));
    ASSERT_TRUE(WritePrivateProfileStringA("QVADEXCMD", "TEXTCIRCLE", "0.3500", path.c_str()));
    ASSERT_TRUE(WritePrivateProfileStringA("NewSection", "Key", "value", path.c_str()));

    std::string text = readFile(path);
    // Spelling, comments and order of what was not changed stay as they were (blank lines may not).
    EXPECT_LT(text.find("; settings of the tools\n"), text.find("[Other]\n")) << text;
    EXPECT_LT(text.find("[Other]\n"), text.find("; kept as it is\n"));
    EXPECT_LT(text.find("; kept as it is\n"), text.find("Colour=red\n"));
    EXPECT_NE(text.find("Quoted=\"  spaced  \"\n"), std::string::npos);
    EXPECT_NE(text.find("TEXTMASK_OFFSET=0.5000\n"), std::string::npos) << text;
    EXPECT_LT(text.find("[Other]"), text.find("[QVADEXCMD]"));
    EXPECT_LT(text.find("[QVADEXCMD]"), text.find("[Last]"));
    EXPECT_LT(text.find("[Last]"), text.find("[NewSection]"));
    EXPECT_LT(text.find("TEXTMASK_OFFSET"), text.find("TEXTCIRCLE"));
    EXPECT_LT(text.find("TEXTCIRCLE"), text.find("[Last]"));
    EXPECT_EQ(text.substr(text.size() - 10), "; the end\n");
    // Writing a value the file already holds leaves it byte for byte as it was.
    ASSERT_TRUE(WritePrivateProfileStringA("QVADEXCMD", "TEXTCIRCLE", "0.3500", path.c_str()));
    EXPECT_EQ(readFile(path), text);

    // Another program's INI reader, in another process, reads the same values.
    std::string out =
        win32_test::runPython("import configparser\n"
                              "c = configparser.ConfigParser(interpolation=None)\n"
                              "c.read(r'''" +
                              path +
                              "''')\n"
                              "print(c['QVADEXCMD']['TEXTMASK_OFFSET'], c['QVADEXCMD']['textcircle'],\n"
                              "      c['Other']['colour'], c['NewSection']['key'])\n");
    EXPECT_EQ(out, "0.5000 0.3500 red value\n");
}

TEST_F(PrivateProfileTest, ChangesInOneProcessAreSeenInTheNext) {
    int status = win32_test::inChildProcess([this] {
        return WritePrivateProfileStringA("QVADEXCMD", "EXOFFSET-DIST", "2.50", path.c_str()) ? 0 : 1;
    });
    ASSERT_EQ(status, 0);
    EXPECT_EQ(get("QVADEXCMD", "EXOFFSET-DIST", "0"), "2.50");
    int seen = win32_test::inChildProcess([this] {
        char buffer[16];
        GetPrivateProfileStringA("qvadexcmd", "exoffset-dist", "0", buffer, sizeof buffer, path.c_str());
        return std::string(buffer) == "2.50" ? 0 : 1;
    });
    EXPECT_EQ(seen, 0);
}

TEST_F(PrivateProfileTest, NullValueDeletesTheKeyAndNullKeyTheSection) {
    writeFile(path, kSettings);
    ASSERT_TRUE(WritePrivateProfileStringA("QVADEXCMD", "Quoted", nullptr, path.c_str()));
    EXPECT_EQ(get("QVADEXCMD", "Quoted", "gone"), "gone");
    EXPECT_EQ(get("QVADEXCMD", "TEXTMASK_OFFSET", "x"), "0.3500");
    ASSERT_TRUE(WritePrivateProfileStringA("other", nullptr, nullptr, path.c_str()));
    EXPECT_EQ(readFile(path).find("[Other]"), std::string::npos);
    EXPECT_EQ(get("Last", "k", "x"), "v");
    EXPECT_FALSE(WritePrivateProfileStringA(nullptr, "k", "v", path.c_str()));
}

TEST_F(PrivateProfileTest, UnwritablePlacesChangeNothing) {
    std::string nowhere = folder.file("missing-folder/qvad.ini");
    EXPECT_FALSE(WritePrivateProfileStringA("QVADEXCMD", "K", "V", nowhere.c_str()));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "missing-folder"));
    EXPECT_FALSE(WritePrivateProfileStringA("QVADEXCMD", "K", "V", nullptr));
    // A folder where the file should be is neither read nor replaced.
    std::filesystem::create_directory(path);
    EXPECT_EQ(get("QVADEXCMD", "K", "default"), "default");
    EXPECT_FALSE(WritePrivateProfileStringA("QVADEXCMD", "K", "V", path.c_str()));
    EXPECT_TRUE(std::filesystem::is_directory(path));
}

TEST_F(PrivateProfileTest, FilesARewriteWouldDamageAreReadButNeverRewritten) {
    const std::string damaged[] = {
        std::string("[A]\nx=1\n\0[B]\ny=2\n", 17), // a zero byte
        "[A]\nx=1\nkey without value\n",           // a line that is neither key nor section
        "[A]\nx=1\n=novalue\n",                    // a value without a key
        "[A]\nx=1\nX=2\n",                         // the same key twice
        "[A]\nx=1\n[a]\ny=2\n",                    // the same section twice
        "[A\nx=1\n",                               // a section never closed
    };
    for (const std::string& text : damaged) {
        writeFile(path, text);
        EXPECT_EQ(get("nothing", "here", "d"), "d");
        EXPECT_FALSE(WritePrivateProfileStringA("A", "z", "3", path.c_str())) << text;
        EXPECT_EQ(readFile(path), text);
    }
    writeFile(path, "[A]\r\nx=1\r\n");
    EXPECT_EQ(GetPrivateProfileIntA("A", "x", 7, path.c_str()), 1u);
    EXPECT_TRUE(WritePrivateProfileStringA("A", "z", "3", path.c_str()));
}

} // namespace
