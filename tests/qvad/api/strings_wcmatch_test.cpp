// Wildcard matching: each construct, alternatives, escapes, UTF-8 text and malformed patterns.

#include "qvad/api/qvad_api.h"

#include <gtest/gtest.h>
#include <string>

namespace {

bool match(const char* text, const char* pattern) {
    return qvutWcMatch(text, pattern) == QV_NORM;
}

TEST(WildcardMatch, SingleCharacterClasses) {
    EXPECT_TRUE(match("A1", "A#"));
    EXPECT_FALSE(match("AB", "A#"));
    EXPECT_TRUE(match("7x", "#@"));
    EXPECT_FALSE(match("77", "#@"));
    EXPECT_TRUE(match("a-b", "@.@"));
    EXPECT_FALSE(match("a1b", "@.@"));
    EXPECT_FALSE(match("aXb", "@.@"));
    EXPECT_TRUE(match("abc", "a?c"));
    EXPECT_FALSE(match("ac", "a?c"));
}

TEST(WildcardMatch, RunsMatchAnythingIncludingNothing) {
    EXPECT_TRUE(match("", "*"));
    EXPECT_TRUE(match("WALL-1", "WALL*"));
    EXPECT_TRUE(match("WALL", "WALL*"));
    EXPECT_TRUE(match("A-WALL-X", "*WALL*"));
    EXPECT_FALSE(match("WAL", "WALL*"));
    EXPECT_TRUE(match("abcbc", "a*bc"));
    EXPECT_FALSE(match("abcb", "a*bc"));
    // A pattern that would take exponential time with naive backtracking.
    std::string text(200, 'a');
    EXPECT_FALSE(match(text.c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(WildcardMatch, MatchingIsCaseSensitive) {
    EXPECT_TRUE(match("Layer", "Layer"));
    EXPECT_FALSE(match("layer", "Layer"));
    EXPECT_FALSE(match("", "a"));
    EXPECT_TRUE(match("", ""));
    EXPECT_FALSE(match("a", ""));
}

TEST(WildcardMatch, SetsRangesAndNegatedSets) {
    EXPECT_TRUE(match("B", "[ABC]"));
    EXPECT_FALSE(match("D", "[ABC]"));
    EXPECT_TRUE(match("m", "[a-z]"));
    EXPECT_FALSE(match("M", "[a-z]"));
    EXPECT_TRUE(match("D", "[~ABC]"));
    EXPECT_FALSE(match("A", "[~ABC]"));
    EXPECT_TRUE(match("-", "[a-]"));
    EXPECT_TRUE(match("]", "[]x]"));
    EXPECT_TRUE(match("L3", "L[0-9]"));
    EXPECT_TRUE(match("[", "[")); // an unclosed set is a plain bracket
}

TEST(WildcardMatch, LeadingTildeNegatesThePattern) {
    EXPECT_TRUE(match("DIM", "~TEXT*"));
    EXPECT_FALSE(match("TEXT1", "~TEXT*"));
    EXPECT_TRUE(match("a~b", "a~b")); // elsewhere it is an ordinary character
}

TEST(WildcardMatch, CommasSeparateAlternatives) {
    EXPECT_TRUE(match("LINE", "ARC,LINE,CIRCLE"));
    EXPECT_FALSE(match("POINT", "ARC,LINE,CIRCLE"));
    EXPECT_TRUE(match("X9", "A*,X#"));
    EXPECT_TRUE(match(",", "[,]"));
    EXPECT_TRUE(match("", "A,"));
}

TEST(WildcardMatch, BackquoteEscapesTheNextCharacter) {
    EXPECT_TRUE(match("*", "`*"));
    EXPECT_FALSE(match("a", "`*"));
    EXPECT_TRUE(match("a,b", "a`,b"));
    EXPECT_TRUE(match("#1", "`##"));
    EXPECT_TRUE(match("~x", "`~x"));
    EXPECT_FALSE(match("yx", "`~x"));
    EXPECT_TRUE(match("`", "`"));
}

TEST(WildcardMatch, Utf8CharactersCountAsOne) {
    EXPECT_TRUE(match("图层1", "??#"));
    EXPECT_TRUE(match("Größe", "Gr?@e"));
    EXPECT_TRUE(match("é", "@"));
    EXPECT_TRUE(match("墙", "[墙柱]"));
    EXPECT_FALSE(match("门", "[墙柱]"));
    EXPECT_TRUE(match("a\xff", "a?")); // malformed bytes are still characters
    EXPECT_FALSE(match("a\xff", "a@"));
}

TEST(WildcardMatch, MissingArgumentsAreRefused) {
    EXPECT_EQ(qvutWcMatch(nullptr, "*"), QV_ERROR);
    EXPECT_EQ(qvutWcMatch("a", nullptr), QV_ERROR);
}

} // namespace
