#include "qvad/dxf/code_page.h"

#include <gtest/gtest.h>

using namespace qvad::dxf;

TEST(CodePage, NamesMapToIconv) {
    EXPECT_EQ(iconvName("ANSI_1252"), "CP1252");
    EXPECT_EQ(iconvName("ansi_936"), "GBK");
    EXPECT_EQ(iconvName("ANSI_1251"), "CP1251");
    EXPECT_EQ(iconvName("DOS850"), "CP850");
    EXPECT_EQ(iconvName("nonsense"), "CP1252");
}

TEST(CodePage, Windows1252RoundTrip) {
    std::string bytes = "Stra\xDF"
                        "e \xC4\xD6\xDC \x80";
    std::string utf8 = decodeCodePage(bytes, "ANSI_1252");
    EXPECT_EQ(utf8, "Straße ÄÖÜ €");
    EXPECT_EQ(encodeCodePage(utf8, "ANSI_1252"), bytes);
}

TEST(CodePage, ChineseGbkRoundTrip) {
    std::string utf8 = "图层一";
    std::string gbk = encodeCodePage(utf8, "ANSI_936");
    EXPECT_EQ(gbk.size(), 6u);
    EXPECT_EQ(decodeCodePage(gbk, "ANSI_936"), utf8);
}

TEST(CodePage, CharactersOutsideTheCodePageBecomeEscapes) {
    EXPECT_EQ(encodeCodePage("A图B", "ANSI_1252"), "A\\U+56FEB");
    EXPECT_EQ(encodeCodePage("\xF0\x9F\x98\x80", "ANSI_1252"), "\\U+1F600");
    EXPECT_EQ(decodeUnicodeEscapes("A\\U+56FEB"), "A图B");
}

TEST(CodePage, UndefinedBytesSurviveAsTheirOwnNumber) {
    // 0x81 has no character in Windows-1252.
    EXPECT_EQ(decodeCodePage("a\x81z", "ANSI_1252"), "a\xC2\x81z");
}

TEST(CodePage, EscapesNeedFourHexDigits) {
    EXPECT_EQ(decodeUnicodeEscapes("\\U+00C4x"), "Äx");
    EXPECT_EQ(decodeUnicodeEscapes("\\U+00"), "\\U+00");
    EXPECT_EQ(decodeUnicodeEscapes("\\U+ZZZZ"), "\\U+ZZZZ");
    EXPECT_EQ(decodeUnicodeEscapes("\\P line"), "\\P line");
}
