#include "qvad/win32/clipboard_store.h"
#include "qvad/win32/windows_calls.h"
#include "win32_test_support.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

// Copies text to the clipboard the way the quantity tools do.
bool copyText(const std::string& text) {
    if (!OpenClipboard(nullptr)) return false;
    EmptyClipboard();
    HGLOBAL block = GlobalAlloc(GMEM_DDESHARE, text.size() + 1);
    std::memcpy(GlobalLock(block), text.c_str(), text.size() + 1);
    GlobalUnlock(block);
    bool set = SetClipboardData(CF_TEXT, block) == block;
    return CloseClipboard() && set;
}

// The ANSI text on the clipboard; "<none>" when it offers no text.
std::string pastedText() {
    if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return "<none>";
    if (!OpenClipboard(nullptr)) return "<locked>";
    HANDLE block = GetClipboardData(CF_TEXT);
    std::string text = block ? static_cast<const char*>(GlobalLock(block)) : "<none>";
    if (block) GlobalUnlock(block);
    CloseClipboard();
    return text;
}

class ClipboardTest : public testing::Test {
protected:
    void SetUp() override {
        const char* old = std::getenv("XDG_STATE_HOME");
        savedState = old ? old : "";
        hadState = old != nullptr;
        setenv("XDG_STATE_HOME", folder.path().c_str(), 1);
    }
    void TearDown() override {
        if (hadState)
            setenv("XDG_STATE_HOME", savedState.c_str(), 1);
        else
            unsetenv("XDG_STATE_HOME");
    }
    win32_test::TempFolder folder;
    std::string savedState;
    bool hadState = false;
};

TEST_F(ClipboardTest, TextCopiedInOneProcessPastesInAnother) {
    EXPECT_EQ(qvad::win32::clipboardFilePath(), folder.file("qvad/clipboard.txt"));
    EXPECT_EQ(pastedText(), "<none>");
    ASSERT_EQ(win32_test::inChildProcess([] { return copyText("12.5mm") ? 0 : 1; }), 0);
    EXPECT_EQ(pastedText(), "12.5mm");
    EXPECT_EQ(win32_test::readFile(folder.file("qvad/clipboard.txt")), "12.5mm");

    ASSERT_TRUE(copyText("42"));
    EXPECT_EQ(win32_test::inChildProcess([] { return pastedText() == "42" ? 0 : 1; }), 0);
}

TEST_F(ClipboardTest, TextIsOfferedAsUtf16Too) {
    ASSERT_TRUE(copyText("\xC2\xB1"
                         "1"));
    ASSERT_TRUE(OpenClipboard(nullptr));
    HANDLE wide = GetClipboardData(CF_UNICODETEXT);
    ASSERT_NE(wide, nullptr);
    ASSERT_EQ(GlobalSize(wide), 6u); // two UTF-16 units and a zero unit
    const auto* units = static_cast<const unsigned char*>(GlobalLock(wide));
    EXPECT_EQ(units[0] | units[1] << 8, 0xB1);
    EXPECT_EQ(units[2] | units[3] << 8, '1');
    EXPECT_EQ(units[4] | units[5] << 8, 0);
    CloseClipboard();
}

TEST_F(ClipboardTest, EmptyingLeavesNoTextAndClosedCallsAreRefused) {
    ASSERT_TRUE(copyText("7"));
    EXPECT_EQ(GetClipboardData(CF_TEXT), nullptr); // not open
    EXPECT_FALSE(EmptyClipboard());
    EXPECT_FALSE(CloseClipboard());
    ASSERT_TRUE(OpenClipboard(nullptr));
    EXPECT_FALSE(OpenClipboard(nullptr));
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_EQ(GetClipboardData(CF_TEXT), nullptr);
    EXPECT_TRUE(CloseClipboard());
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_EQ(win32_test::inChildProcess([] { return IsClipboardFormatAvailable(CF_UNICODETEXT) ? 1 : 0; }),
              0);
}

TEST_F(ClipboardTest, AnotherProcessCannotTakeItWhileItIsOpen) {
    // A forked child would share this process's lock, so an unrelated program tries to take it.
    std::string tryLock = "import fcntl\n"
                          "f = open(r'" +
                          folder.file("qvad/clipboard.lock") +
                          "', 'a')\n"
                          "try:\n"
                          "    fcntl.flock(f, fcntl.LOCK_EX | fcntl.LOCK_NB)\n"
                          "    print('taken')\n"
                          "except BlockingIOError:\n"
                          "    print('busy')\n";
    ASSERT_TRUE(OpenClipboard(nullptr));
    EXPECT_EQ(win32_test::runPython(tryLock), "busy\n");
    ASSERT_TRUE(CloseClipboard());
    EXPECT_EQ(win32_test::runPython(tryLock), "taken\n");
}

TEST_F(ClipboardTest, OnlyTextBlocksAreTaken) {
    ASSERT_TRUE(OpenClipboard(nullptr));
    int local = 0;
    EXPECT_EQ(SetClipboardData(CF_TEXT, &local), nullptr);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 4);
    EXPECT_EQ(SetClipboardData(2 /* bitmap */, block), nullptr);
    GlobalFree(block);
    CloseClipboard();
    EXPECT_FALSE(IsClipboardFormatAvailable(2));
}

} // namespace
