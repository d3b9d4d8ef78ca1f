// Large files are read by two threads that meet at a guessed tag boundary; what they give must not
// differ from a plain reading, whatever the guess.

#include "qvad/dxf/dxf_error.h"
#include "qvad/dxf/string_pool.h"
#include "qvad/dxf/tag_reader.h"

#include <gtest/gtest.h>
#include <string>

using namespace qvad::dxf;

namespace {

std::string line(int i) {
    return "  0\nLINE\n  5\n" + std::to_string(100 + i) + "\n  8\n0\n 10\n" + std::to_string(i) +
           ".5\n 20\n2.0\n 11\n3.0\n 21\n4.0\n";
}

std::string entities(int count) {
    std::string out;
    for (int i = 0; i < count; ++i) out += line(i);
    return out;
}

const std::string kHead = "  0\nSECTION\n  2\nENTITIES\n";
const std::string kTail = "  0\nENDSEC\n  0\nEOF\n";

// Reads the text both ways: in two threads (large) and, line by line, as the reference.
void expectSameAsPlainReading(const std::string& text) {
    ASSERT_GT(text.size(), 9u << 20);
    StringPool pool;
    TagFile whole = readTags(text, pool);
    std::size_t at = 0, index = 0;
    while (at < text.size()) {
        std::size_t nl = text.find('\n', at);
        std::string code = text.substr(at, nl - at);
        std::size_t nl2 = text.find('\n', nl + 1);
        std::string value = text.substr(nl + 1, nl2 - nl - 1);
        at = nl2 + 1;
        if (std::stoi(code) == 999) continue;
        ASSERT_LT(index, whole.tags.size());
        ASSERT_EQ(whole.tags[index].code, std::stoi(code)) << "tag " << index;
        ASSERT_EQ(std::string(whole.tags[index].value()), value) << "tag " << index;
        ++index;
    }
    EXPECT_EQ(index, whole.tags.size());
}

TEST(LargeFileRead, TwoThreadsGiveTheTagsInOrder) {
    std::string text = kHead + entities(160000) + kTail;
    expectSameAsPlainReading(text);
}

TEST(LargeFileRead, AGuessThatLandsOnAValueLineIsReadAgain) {
    // A text whose value is "  0" sits just after the middle, where the boundary is guessed.
    std::string before = kHead + entities(160000) + "  0\nTEXT\n  5\nAB\n  8\n0\n  1\n";
    std::size_t valueAt = before.size();
    std::string text = before + "  0\n" + entities(10) + kTail;
    std::size_t total = 2 * (valueAt - 12);
    ASSERT_GT(total, text.size());
    std::string padding = "999\n" + std::string(total - text.size() - 5, 'x') + "\n";
    text.insert(text.size() - kTail.size(), padding);
    ASSERT_EQ(text.size(), total);
    expectSameAsPlainReading(text);
}

TEST(LargeFileRead, ErrorsInTheSecondHalfNameTheirLine) {
    std::string text = kHead + entities(160000) + kTail;
    std::size_t bad = text.find("\n 20\n2.0\n", text.size() * 3 / 4);
    text.replace(bad + 5, 3, "two");
    std::size_t expectedLine =
        static_cast<std::size_t>(std::count(text.begin(), text.begin() + bad + 5, '\n')) + 1;
    StringPool pool;
    try {
        readTags(text, pool);
        FAIL() << "accepted";
    } catch (const DxfError& e) {
        EXPECT_EQ(e.line(), expectedLine);
        EXPECT_NE(std::string(e.what()).find("needs a number"), std::string::npos);
    }
}

TEST(LargeFileRead, EofInTheFirstHalfEndsTheReading) {
    std::string text = kHead + entities(10) + kTail + std::string(10u << 20, 'z');
    // A "  0" line in the trash, where the second thread would start.
    text.replace(text.size() / 2, 5, "\n  0\n");
    StringPool pool;
    TagFile file = readTags(text, pool);
    EXPECT_EQ(file.tags.back().value(), "EOF");
    EXPECT_EQ(file.bytesAfterEof, 10u << 20);
    EXPECT_EQ(file.tags.size(), 2u + 10 * 7 + 2);
}

} // namespace
