// Character case over Unicode code points, and host-heap strings.

#include "qvad/api/qvad_api.h"

#include <clocale>
#include <gtest/gtest.h>

namespace {

TEST(CharacterCase, AsciiAndBeyond) {
    EXPECT_EQ(qvutToUpper('a'), 'A');
    EXPECT_EQ(qvutToUpper('A'), 'A');
    EXPECT_EQ(qvutToUpper('1'), '1');
    EXPECT_EQ(qvutToLower('Z'), 'z');
    EXPECT_EQ(qvutToUpper(0x3B1), 0x391);   // Greek alpha
    EXPECT_EQ(qvutToLower(0x416), 0x436);   // Cyrillic Zhe
    EXPECT_EQ(qvutToUpper(0x4E2D), 0x4E2D); // a Chinese character has no case
    EXPECT_TRUE(qvutIsUpper('Q'));
    EXPECT_FALSE(qvutIsUpper('q'));
    EXPECT_TRUE(qvutIsUpper(0x391));
    EXPECT_FALSE(qvutIsUpper(0x3B1));
}

TEST(CharacterCase, BytesOfUtf8SequencesAndNonCharactersStayAsTheyAre) {
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        EXPECT_EQ(qvutToUpper(byte), byte);
        EXPECT_EQ(qvutToLower(byte), byte);
    }
    EXPECT_EQ(qvutToUpper(-61), -61); // a signed char from UTF-8 text
    EXPECT_EQ(qvutToUpper(0x110000), 0x110000);
    EXPECT_FALSE(qvutIsUpper(-1));
}

TEST(CharacterCase, TheProgramsLocaleDoesNotMatter) {
    const char* previous = std::setlocale(LC_CTYPE, nullptr);
    std::string saved = previous ? previous : "C";
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(qvutToUpper(0x3B1), 0x391);
    std::setlocale(LC_CTYPE, saved.c_str());
}

TEST(HostStrings, NewUpdateAndDelete) {
    char* text = nullptr;
    ASSERT_EQ(qvutNewString("first", &text), QV_NORM);
    EXPECT_STREQ(text, "first");
    ASSERT_EQ(qvutUpdString("second, longer", &text), QV_NORM);
    EXPECT_STREQ(text, "second, longer");
    ASSERT_EQ(qvutUpdString(text, &text), QV_NORM); // its own text
    EXPECT_STREQ(text, "second, longer");
    ASSERT_EQ(qvutDelString(&text), QV_NORM);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(qvutDelString(&text), QV_NORM);
}

TEST(HostStrings, MissingArgumentsAreRefusedAndChangeNothing) {
    char* text = nullptr;
    EXPECT_EQ(qvutNewString(nullptr, &text), QV_ERROR);
    EXPECT_EQ(qvutNewString("x", nullptr), QV_ERROR);
    ASSERT_EQ(qvutNewString("kept", &text), QV_NORM);
    EXPECT_EQ(qvutUpdString(nullptr, &text), QV_ERROR);
    EXPECT_STREQ(text, "kept");
    EXPECT_EQ(qvutUpdString("x", nullptr), QV_ERROR);
    EXPECT_EQ(qvutDelString(nullptr), QV_ERROR);
    qvutDelString(&text);
}

} // namespace
