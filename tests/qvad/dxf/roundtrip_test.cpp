// What goes in comes out: numbers to the digit, unknown tags and sections in place, text in the
// version's encoding.

#include "dxf_text.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"
#include "qvad/dxf/file_save.h"
#include "qvad/dxf/tag_reader.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

using qvad::dxf::readDxfBuffer;
using qvad::dxf::writeDxf;

namespace {

TEST(RoundTrip, NumbersKeepTheirText) {
    std::string line = dxfText({{0, "LINE"},
                                {5, "10"},
                                {330, "2"},
                                {100, "AcDbEntity"},
                                {8, "0"},
                                {100, "AcDbLine"},
                                {10, "0.1000000000000000055511151231257827"},
                                {20, "1e-3"},
                                {30, "-0.0"},
                                {11, "1234567.125"},
                                {21, "2"},
                                {31, "0"}});
    std::string out = writeDxf(*readDxfBuffer(minimalR2000(line)));
    EXPECT_NE(out.find(" 10\n0.1000000000000000055511151231257827\n 20\n1e-3\n 30\n-0.0\n"),
              std::string::npos);
    EXPECT_EQ(writeDxf(*readDxfBuffer(out)), out);
}

TEST(RoundTrip, UnknownEntitiesObjectsAndSectionsComeOutUnchanged) {
    std::string custom = dxfText({{0, "ACME_WIDGET"},
                                  {5, "20"},
                                  {330, "2"},
                                  {100, "AcDbEntity"},
                                  {8, "0"},
                                  {100, "AcmeWidget"},
                                  {1, "knob"},
                                  {90, "7"},
                                  {1001, "ACME"},
                                  {1000, "x"},
                                  {1040, "2.5"}});
    std::string text = minimalR2000(custom);
    text.insert(text.rfind("0\nEOF"),
                dxfText({{0, "SECTION"}, {2, "ACME_DATA"}, {1, "opaque"}, {0, "ENDSEC"}}));
    std::string out = writeDxf(*readDxfBuffer(text));
    EXPECT_NE(
        out.find("  0\nACME_WIDGET\n  5\n20\n330\n2\n100\nAcDbEntity\n  8\n0\n100\nAcmeWidget\n  1\nknob\n"
                 " 90\n7\n1001\nACME\n1000\nx\n1040\n2.5\n"),
        std::string::npos);
    EXPECT_NE(out.find("  2\nACME_DATA\n  1\nopaque\n  0\nENDSEC\n"), std::string::npos);
}

TEST(RoundTrip, LegacyCodePageTextIsDecodedAndEncodedBack) {
    std::string line = dxfText({{0, "TEXT"},
                                {5, "10"},
                                {330, "2"},
                                {100, "AcDbEntity"},
                                {8, "M\xE4ngel"},
                                {100, "AcDbText"},
                                {10, "0"},
                                {20, "0"},
                                {40, "1"},
                                {1, "Gr\xFC\xDF"
                                    "e \\U+56FE"}});
    auto db = readDxfBuffer(minimalR2000(line));
    const OdDbEntity* text = db->modelSpace()->entities().at(0);
    EXPECT_EQ(text->layer(), "Mängel");
    EXPECT_EQ(text->getString(1), "Grüße 图");
    std::string out = writeDxf(*db);
    EXPECT_NE(out.find("\nGr\xFC\xDF"
                       "e \\U+56FE\n"),
              std::string::npos);
}

TEST(RoundTrip, Utf8VersionsWriteUtf8) {
    std::string line = dxfText({{0, "TEXT"},
                                {5, "10"},
                                {330, "2"},
                                {100, "AcDbEntity"},
                                {8, "0"},
                                {100, "AcDbText"},
                                {10, "0"},
                                {20, "0"},
                                {40, "1"},
                                {1, "图层 \\U+00C4"}});
    std::string text = minimalR2000(line);
    text.replace(text.find("AC1015"), 6, "AC1021");
    std::string out = writeDxf(*readDxfBuffer(text));
    EXPECT_NE(out.find("\n图层 Ä\n"), std::string::npos);
}

TEST(RoundTrip, DuplicateAndMissingHandlesGetFreshOnes) {
    std::string lines = dxfText({{0, "LINE"},
                                 {5, "10"},
                                 {330, "2"},
                                 {100, "AcDbEntity"},
                                 {8, "0"},
                                 {100, "AcDbLine"},
                                 {10, "0"},
                                 {20, "0"},
                                 {11, "1"},
                                 {21, "1"},
                                 {0, "LINE"},
                                 {5, "10"},
                                 {330, "2"},
                                 {100, "AcDbEntity"},
                                 {8, "0"},
                                 {100, "AcDbLine"},
                                 {10, "0"},
                                 {20, "0"},
                                 {11, "2"},
                                 {21, "2"},
                                 {0, "LINE"},
                                 {330, "2"},
                                 {100, "AcDbEntity"},
                                 {8, "0"},
                                 {100, "AcDbLine"},
                                 {10, "0"},
                                 {20, "0"},
                                 {11, "3"},
                                 {21, "3"}});
    auto db = readDxfBuffer(minimalR2000(lines));
    const auto& ents = db->modelSpace()->entities();
    ASSERT_EQ(ents.size(), 3u);
    EXPECT_EQ(ents[0]->handle(), 0x10u);
    std::set<qvad::Handle> seen;
    for (const auto& o : db->allObjects()) {
        if (o->isErased()) continue;
        EXPECT_TRUE(seen.insert(o->handle()).second) << o->typeName();
    }
    EXPECT_GT(db->handseed(), *seen.rbegin());
    // The saved file says the same.
    auto again = readDxfBuffer(writeDxf(*db));
    EXPECT_EQ(again->modelSpace()->entities()[1]->handle(), ents[1]->handle());
    EXPECT_EQ(again->modelSpace()->entities()[2]->handle(), ents[2]->handle());
}

TEST(RoundTrip, BinaryDxfReadsLikeAscii) {
    // A small binary file: header with the version, one LINE.
    std::string bin(qvad::dxf::binaryDxfSentinel());
    auto code = [&](int c) { bin.append(reinterpret_cast<const char*>(&c), 2); };
    auto str = [&](int c, const char* s) {
        code(c);
        bin.append(s);
        bin += '\0';
    };
    auto real = [&](int c, double v) {
        code(c);
        bin.append(reinterpret_cast<const char*>(&v), 8);
    };
    str(0, "SECTION");
    str(2, "HEADER");
    str(9, "$ACADVER");
    str(1, "AC1015");
    str(0, "ENDSEC");
    str(0, "SECTION");
    str(2, "ENTITIES");
    str(0, "LINE");
    str(5, "2A");
    str(8, "walls");
    real(10, 0.1);
    real(20, 2.0);
    real(11, 3.0);
    real(21, 4.0);
    str(0, "ENDSEC");
    str(0, "EOF");
    auto db = readDxfBuffer(bin);
    const OdDbEntity* line = db->modelSpace()->entities().at(0);
    EXPECT_EQ(line->layer(), "walls");
    EXPECT_EQ(line->handle(), 0x2Au);
    EXPECT_DOUBLE_EQ(line->getDouble(10), 0.1);
    EXPECT_EQ(line->getString(10), "0.1");
}

TEST(AtomicSave, ReplacesTheTargetAndLeavesNoTemporaryFile) {
    auto dir = std::filesystem::temp_directory_path() / ("qvad-save-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    auto target = dir / "plan.dxf";
    { std::ofstream(target) << "old"; }
    ::chmod(target.c_str(), 0640);
    qvad::dxf::writeFileAtomically(target.string(), "new contents");
    std::ifstream in(target);
    std::string got((std::istreambuf_iterator<char>(in)), {});
    EXPECT_EQ(got, "new contents");
    EXPECT_EQ(std::filesystem::status(target).permissions() & std::filesystem::perms::all,
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write |
                  std::filesystem::perms::group_read);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir), {}), 1);
    std::filesystem::remove_all(dir);
}

TEST(AtomicSave, FailureKeepsTheOldFile) {
    auto dir = std::filesystem::temp_directory_path() / ("qvad-ro-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    auto target = dir / "plan.dxf";
    { std::ofstream(target) << "old"; }
    EXPECT_THROW(qvad::dxf::writeFileAtomically((dir / "missing" / "x.dxf").string(), "x"),
                 std::system_error);
    // A folder in place of the file cannot be replaced by rename.
    std::filesystem::create_directories(dir / "taken.dxf" / "inner");
    EXPECT_THROW(qvad::dxf::writeFileAtomically((dir / "taken.dxf").string(), "x"), std::system_error);
    std::ifstream in(target);
    std::string got((std::istreambuf_iterator<char>(in)), {});
    EXPECT_EQ(got, "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir), {}), 2);
    std::filesystem::remove_all(dir);
}

} // namespace
