#include "qvad/win32/windows_calls.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

class StringResourcesTest : public testing::Test {
protected:
    void SetUp() override {
        library = LoadLibraryA("qv_test_strings.dll");
        ASSERT_NE(library, nullptr);
    }
    void TearDown() override { FreeLibrary(library); }
    HMODULE library = nullptr;
};

TEST_F(StringResourcesTest, CopiesTheStringAndReturnsItsLength) {
    char buffer[1000];
    EXPECT_EQ(LoadStringA(library, 101, buffer, sizeof buffer), 11);
    EXPECT_STREQ(buffer, "Hello world");
    EXPECT_EQ(LoadStringA(library, 999, buffer, sizeof buffer), 999);
    EXPECT_EQ(std::string(buffer), std::string(999, 'x'));
}

TEST_F(StringResourcesTest, CutsToTheBufferLessOne) {
    char buffer[1000];
    EXPECT_EQ(LoadStringA(library, 1200, buffer, sizeof buffer), 999);
    EXPECT_EQ(std::string(buffer), std::string(999, 'y'));

    char small[6];
    EXPECT_EQ(LoadStringA(library, 101, small, sizeof small), 5);
    EXPECT_STREQ(small, "Hello");
    char one[1] = {'z'};
    EXPECT_EQ(LoadStringA(library, 101, one, 1), 0);
    EXPECT_EQ(one[0], '\0');
    // A cut never splits a character: 5 bytes of room hold one three-byte character.
    EXPECT_EQ(LoadStringA(library, 103, small, sizeof small), 3);
    EXPECT_STREQ(small, "\xE5\xAE\xBD");
}

TEST_F(StringResourcesTest, MissingStringsGiveZeroAndAnEmptyBuffer) {
    char buffer[32];
    std::strcpy(buffer, "old");
    EXPECT_EQ(LoadStringA(library, 4242, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
    // A library without a string table, and no library at all, have no strings either.
    HMODULE noTable = GetModuleHandleA(nullptr);
    std::strcpy(buffer, "old");
    EXPECT_EQ(LoadStringA(noTable, 101, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(LoadStringA(library, 101, nullptr, 10), 0);
}

TEST_F(StringResourcesTest, ZeroSizeHandsOutAPointerToTheResource) {
    const char* text = nullptr;
    EXPECT_EQ(LoadStringA(library, 101, reinterpret_cast<LPSTR>(&text), 0), 11);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::string(text, 11), "Hello world");
}

} // namespace
