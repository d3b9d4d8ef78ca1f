// A drawing that cannot be read is refused with the line and the reason, never half loaded.

#include "dxf_text.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/dxf/dxf_error.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/tag_reader.h"

#include <gtest/gtest.h>

using qvad::dxf::DxfError;
using qvad::dxf::readDxfBuffer;

namespace {

// The line and message a bad text is refused with.
std::pair<std::size_t, std::string> refusal(const std::string& text) {
    try {
        readDxfBuffer(text);
    } catch (const DxfError& e) {
        return {e.line(), e.what()};
    }
    ADD_FAILURE() << "the text was accepted";
    return {0, ""};
}

std::size_t lineOf(const std::string& text, const std::string& needle) {
    std::size_t at = text.find("\n" + needle + "\n");
    return static_cast<std::size_t>(
               std::count(text.begin(), text.begin() + static_cast<long>(at) + 1, '\n')) +
           1;
}

TEST(ReaderErrors, TruncatedFileNamesTheLastLine) {
    std::string text = minimalR2000();
    std::string cut = text.substr(0, text.find("ENTITIES") + 9) + "0\nLINE\n8\n";
    auto [line, reason] = refusal(cut);
    EXPECT_NE(reason.find("end of file"), std::string::npos) << reason;
    EXPECT_EQ(line, static_cast<std::size_t>(std::count(cut.begin(), cut.end(), '\n')) + 1);
}

TEST(ReaderErrors, WrongGroupCodeNamesItsLine) {
    std::string text = minimalR2000();
    std::string bad = text;
    bad.replace(bad.find("\n11\n10.0"), 4, "\nx1\n");
    auto [line, reason] = refusal(bad);
    EXPECT_EQ(line, lineOf(bad, "x1"));
    EXPECT_NE(reason.find("group code expected"), std::string::npos) << reason;
}

TEST(ReaderErrors, TextWhereANumberBelongs) {
    std::string bad = minimalR2000();
    bad.replace(bad.find("\n1.5\n"), 5, "\none\n");
    auto [line, reason] = refusal(bad);
    EXPECT_EQ(line, lineOf(bad, "one"));
    EXPECT_NE(reason.find("needs a number"), std::string::npos) << reason;

    std::string badInt = minimalR2000();
    badInt.replace(badInt.find("\n70\n2\n"), 6, "\n70\n2.5\n");
    EXPECT_NE(refusal(badInt).second.find("group code 70"), std::string::npos);
}

TEST(ReaderErrors, MissingEndsecIsRefused) {
    std::string bad = minimalR2000();
    std::size_t at = bad.find("0\nENDSEC\n0\nSECTION\n2\nOBJECTS");
    bad.erase(at, 9);
    auto [line, reason] = refusal(bad);
    EXPECT_NE(reason.find("ENTITIES is not closed"), std::string::npos) << reason;
    EXPECT_GT(line, 0u);
}

TEST(ReaderErrors, UnknownVersionIsRefused) {
    std::string bad = minimalR2000();
    bad.replace(bad.find("AC1015"), 6, "AC1099");
    EXPECT_NE(refusal(bad).second.find("unsupported DXF version \"AC1099\""), std::string::npos);
}

TEST(ReaderErrors, NonDxfInputIsRefused) {
    EXPECT_FALSE(refusal("").second.empty());
    EXPECT_FALSE(refusal("hello world\n").second.empty());
    EXPECT_FALSE(refusal(dxfText({{0, "SECTION"}})).second.empty());
    EXPECT_FALSE(
        refusal(std::string(qvad::dxf::binaryDxfSentinel()) + std::string("\0\0SECT", 6)).second.empty());
}

TEST(ReaderErrors, CommentsDoNotShiftReportedLines) {
    std::string bad = "999\nwritten by a test\n999\nsecond comment\n" + minimalR2000();
    bad.replace(bad.find("\n1.5\n"), 5, "\nbad\n");
    EXPECT_EQ(refusal(bad).first, lineOf(bad, "bad"));
}

TEST(ReaderRepairs, MissingEofAfterClosedSectionsLoads) {
    std::string text = minimalR2000();
    text.erase(text.rfind("0\nEOF\n"));
    auto db = readDxfBuffer(text);
    ASSERT_EQ(db->modelSpace()->entities().size(), 1u);
    EXPECT_NE(std::find(db->repairs().begin(), db->repairs().end(), "added the missing EOF marker"),
              db->repairs().end());
}

TEST(ReaderRepairs, TrashAfterEofIsIgnoredAndReported) {
    auto db = readDxfBuffer(minimalR2000() + "garbage that follows\n\x01\x02");
    EXPECT_EQ(db->modelSpace()->entities().size(), 1u);
    ASSERT_FALSE(db->repairs().empty());
    EXPECT_NE(db->repairs().front().find("after the end of file"), std::string::npos);
}

} // namespace

namespace {

TEST(ReaderRepairs, ObjectsOfTheWrongKindForTheirSectionKeepTheirTags) {
    // A DICTIONARY among entities and a LINE among layers: both stay as plain objects of the place.
    std::string stray =
        dxfText({{0, "DICTIONARY"}, {5, "20"}, {330, "2"}, {100, "AcDbDictionary"}, {3, "KEY"}, {350, "C"}});
    std::string text = minimalR2000(stray);
    std::string line =
        dxfText({{0, "LINE"}, {5, "21"}, {330, "1"}, {100, "AcDbSymbolTableRecord"}, {2, "ODD"}});
    text.insert(text.find("0\nENDTAB"), line);
    auto db = readDxfBuffer(text);
    ASSERT_EQ(db->modelSpace()->entities().size(), 1u);
    const OdDbEntity* kept = db->modelSpace()->entities()[0];
    EXPECT_EQ(kept->typeName(), "DICTIONARY");
    EXPECT_TRUE(kept->isEntity());
    EXPECT_EQ(kept->getString(3), "KEY");
    const OdDbSymbolTableRecord* record = db->table("BLOCK_RECORD")->records().back();
    EXPECT_EQ(record->typeName(), "LINE");
    EXPECT_FALSE(record->isEntity());
    EXPECT_EQ(record->name(), "ODD");
}

} // namespace
