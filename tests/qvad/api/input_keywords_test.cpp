// Keyword lists: abbreviations by capital letters, whole words, local and returned words, and the
// keyword and text prompts that use them.

#include "input_fixture.h"
#include "qvad/api/input_keywords.h"

namespace {

using qvad::api::KeywordList;
using qvad::test::InputTest;
using InputKeywords = InputTest;

std::string matched(const KeywordList& list, std::string_view answer) {
    return list.match(answer).value_or("<none>");
}

TEST(InputKeywordList, CapitalsMarkTheShortestAnswer) {
    KeywordList list("Window Crossing STring 3Real Real eXit ALL Find&replace");
    EXPECT_EQ(matched(list, "w"), "Window");
    EXPECT_EQ(matched(list, "W"), "Window");
    EXPECT_EQ(matched(list, "win"), "Window");
    EXPECT_EQ(matched(list, "WINDOW"), "Window");
    EXPECT_EQ(matched(list, "windows"), "<none>");
    EXPECT_EQ(matched(list, "wx"), "<none>");
    EXPECT_EQ(matched(list, "s"), "<none>"); // STring needs both capitals
    EXPECT_EQ(matched(list, "st"), "STring");
    EXPECT_EQ(matched(list, "3r"), "3Real");
    EXPECT_EQ(matched(list, "r"), "Real");
    EXPECT_EQ(matched(list, "x"), "eXit");
    EXPECT_EQ(matched(list, "ex"), "eXit");
    EXPECT_EQ(matched(list, "e"), "<none>");
    EXPECT_EQ(matched(list, "al"), "<none>"); // all capitals: the whole word
    EXPECT_EQ(matched(list, "all"), "ALL");
    EXPECT_EQ(matched(list, "f"), "Find&replace");
    EXPECT_EQ(matched(list, " c "), "Crossing");
    EXPECT_EQ(matched(list, ""), "<none>");
}

TEST(InputKeywordList, WholeWordsLocalWordsAndNamedAbbreviations) {
    KeywordList single("E e A a S s");
    EXPECT_EQ(matched(single, "e"), "E");
    EXPECT_EQ(matched(single, "S"), "S");
    KeywordList whole("Sub S");
    EXPECT_EQ(matched(whole, "s"), "S"); // the whole word beats an abbreviation
    KeywordList local("Yes Next _ Y N");
    EXPECT_EQ(matched(local, "yes"), "Y");
    EXPECT_EQ(matched(local, "n"), "N");
    EXPECT_EQ(matched(local, "_Y"), "Y");
    EXPECT_EQ(matched(local, "_Q"), "<none>");
    KeywordList named("LTYPE,LT Layer");
    EXPECT_EQ(matched(named, "lt"), "LTYPE");
    EXPECT_EQ(matched(named, "lty"), "LTYPE");
    EXPECT_EQ(matched(named, "l"), "Layer");
    EXPECT_EQ(named.matchIndex("layer"), 1);
}

TEST_F(InputKeywords, KeywordPromptRefusesOtherWords) {
    auto& console = answers({"maybe", "n", "", "anything at all"});
    char word[16] = "";
    qvedInitGet(0, "Yes No");
    ASSERT_EQ(qvedGetKword("\nSure? [Yes/No]: ", word, sizeof word), QV_NORM);
    EXPECT_STREQ(word, "No");
    EXPECT_EQ(console.transcript(), "Sure? [Yes/No]: maybe\nInvalid option keyword.\nSure? [Yes/No]: n\n");
    qvedInitGet(0, "Yes No");
    EXPECT_EQ(qvedGetKword("\nSure? ", word, sizeof word), QV_RTNONE);
    qvedInitGet(QV_INP_ARBITRARY, "Yes No");
    ASSERT_EQ(qvedGetKword("\nSure? ", word, sizeof word), QV_NORM);
    EXPECT_STREQ(word, "anything at all");
}

TEST_F(InputKeywords, KeywordPromptNeedsKeywordsAndRoom) {
    answers({"yes"});
    char word[2] = "";
    EXPECT_EQ(qvedGetKword("\nSure? ", word, sizeof word), QV_ERROR); // no keyword list
    qvedInitGet(0, "Yes No");
    EXPECT_EQ(qvedGetKword("\nSure? ", word, sizeof word), QV_ERROR); // "Yes" does not fit
    EXPECT_STREQ(word, "");
}

TEST_F(InputKeywords, StringsWithAndWithoutSpaces) {
    auto& console = answers({"two words", "two words", "", "  padded  "});
    char text[64] = "x";
    ASSERT_EQ(qvedGetString(0, "\nName: ", text, sizeof text), QV_NORM);
    EXPECT_STREQ(text, "two");
    ASSERT_EQ(qvedGetString(1, "\nName: ", text, sizeof text), QV_NORM);
    EXPECT_STREQ(text, "two words");
    ASSERT_EQ(qvedGetString(1, "\nName: ", text, sizeof text), QV_NORM);
    EXPECT_STREQ(text, "");
    ASSERT_EQ(qvedGetString(1, "\nName: ", text, sizeof text), QV_NORM);
    EXPECT_STREQ(text, "  padded  ");
    EXPECT_EQ(console.answersLeft(), 0u);
}

TEST_F(InputKeywords, TooLongStringIsAskedAgain) {
    auto& console = answers({"abcdefgh", "abc"});
    char text[4] = "";
    ASSERT_EQ(qvedGetString(1, "\nName: ", text, sizeof text), QV_NORM);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(console.transcript(), "Name: abcdefgh\nAnswer is too long.\nName: abc\n");
}

} // namespace
