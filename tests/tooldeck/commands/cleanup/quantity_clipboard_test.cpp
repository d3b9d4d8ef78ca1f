#include "tooldeck/commands/cleanup/quantity_clipboard.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

namespace qvtd::quantity {
namespace {

// A clipboard of this test's own: XDG_STATE_HOME points into a fresh folder while it runs.
class QuantityClipboard : public ::testing::Test {
protected:
    void SetUp() override {
        m_folder = std::filesystem::temp_directory_path() / ("qvtd_clipboard_" + std::to_string(getpid()));
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder / "qvad");
        const char* old = std::getenv("XDG_STATE_HOME");
        m_hadOld = old != nullptr;
        if (old) m_old = old;
        setenv("XDG_STATE_HOME", m_folder.c_str(), 1);
    }
    void TearDown() override {
        if (m_hadOld)
            setenv("XDG_STATE_HOME", m_old.c_str(), 1);
        else
            unsetenv("XDG_STATE_HOME");
        std::filesystem::remove_all(m_folder);
    }
    void put(const std::string& text) { std::ofstream(m_folder / "qvad" / "clipboard.txt") << text; }
    std::string held() {
        std::ifstream in(m_folder / "qvad" / "clipboard.txt");
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    std::filesystem::path m_folder;
    std::string m_old;
    bool m_hadOld = false;
};

TEST_F(QuantityClipboard, ReadsTheLeadingNumberOfTheText) {
    double value = -1.0;
    put("12.5mm");
    EXPECT_TRUE(readClipboardNumber(value));
    EXPECT_DOUBLE_EQ(value, 12.5);
    put("abc");
    EXPECT_TRUE(readClipboardNumber(value));
    EXPECT_DOUBLE_EQ(value, 0.0);
}

TEST_F(QuantityClipboard, AnEmptyClipboardGivesNoNumber) {
    double value = -1.0;
    EXPECT_FALSE(readClipboardNumber(value));
    EXPECT_DOUBLE_EQ(value, 0.0);
}

TEST_F(QuantityClipboard, WritesTextAndRefusesAnEmptyOne) {
    put("7");
    EXPECT_FALSE(writeClipboardText(""));
    EXPECT_EQ(held(), "7");
    EXPECT_TRUE(writeClipboardText("3.25"));
    EXPECT_EQ(held(), "3.25");
    double value = 0.0;
    EXPECT_TRUE(readClipboardNumber(value));
    EXPECT_DOUBLE_EQ(value, 3.25);
}

} // namespace
} // namespace qvtd::quantity
