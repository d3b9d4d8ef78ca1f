// The buffers qvdbEntGet writes straight from an object's tags are the ones the typed data list gives,
// buffer for buffer, over whole drawings and over damaged tags.

#include "qvad/api/data_list_buffers.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_reader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using qvad::api::BufferValue;
using qvad::api::HostSession;

// What the interface handed out before the direct path: the typed items of the data part, one by one.
qv_resbuf* typedListBuffers(const OdDbObject& object) {
    qvad::db::DataList items;
    items.emplace_back(-1, qvad::db::ObjectRef{object.handle()});
    items.emplace_back(0, std::string(object.typeName()));
    const auto data = object.tags().subspan(0, object.xdataStart());
    for (std::size_t i = 0; i < data.size();) items.push_back(qvad::db::readDataItem(data, i));
    return qvad::api::toResultBuffers(items);
}

// Empty when the chains agree; else where and how they part.
std::string difference(const qv_resbuf* direct, const qv_resbuf* typed) {
    for (int at = 0; direct || typed; ++at, direct = direct->rbnext, typed = typed->rbnext) {
        const std::string where = "buffer " + std::to_string(at) + ": ";
        if (!direct || !typed) return where + (direct ? "the typed list ends" : "the direct list ends");
        if (direct->restype != typed->restype)
            return where + "code " + std::to_string(direct->restype) + " against " +
                   std::to_string(typed->restype);
        const auto& a = direct->resval;
        const auto& b = typed->resval;
        switch (qvad::api::bufferValueOf(direct->restype)) {
        case BufferValue::String:
            if (!a.rstring || !b.rstring || std::strcmp(a.rstring, b.rstring) != 0)
                return where + "text \"" + (a.rstring ? a.rstring : "(null)") + "\" against \"" +
                       (b.rstring ? b.rstring : "(null)") + "\"";
            break;
        case BufferValue::Binary:
            if (a.rbinary.clen != b.rbinary.clen ||
                std::memcmp(a.rbinary.buf, b.rbinary.buf, static_cast<std::size_t>(a.rbinary.clen)) != 0)
                return where + "bytes differ";
            break;
        default:
            // Numbers bit for bit (a NaN or -0 must survive too) and the unused rest of the union.
            if (std::memcmp(&a, &b, sizeof a) != 0)
                return where + "value of group " + std::to_string(direct->restype) + " differs";
        }
    }
    return {};
}

// Compares every object of the drawing; the first disagreement names the object. Counts the objects.
std::size_t expectSameBuffers(OdDbDatabase& db, const std::string& drawing) {
    HostSession::current().setDrawing(&db);
    std::size_t compared = 0;
    for (const auto& object : db.allObjects()) {
        ++compared;
        qv_resbuf* direct = qvad::api::dataPartBuffers(*object);
        qv_resbuf* typed = typedListBuffers(*object);
        const std::string diff = difference(direct, typed);
        qvutRelRb(direct);
        qvutRelRb(typed);
        if (!diff.empty()) {
            ADD_FAILURE() << drawing << ", " << object->typeName() << " " << std::hex << object->handle()
                          << ": " << diff;
            break;
        }
    }
    HostSession::current().setDrawing(nullptr);
    return compared;
}

std::vector<fs::path> drawingsUnder(const fs::path& folder, std::size_t every) {
    std::vector<fs::path> found;
    std::error_code error;
    if (!fs::is_directory(folder, error)) return found;
    for (const auto& entry : fs::recursive_directory_iterator(folder, error))
        if (entry.is_regular_file() && entry.path().extension() == ".dxf") found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    std::vector<fs::path> picked;
    for (std::size_t i = 0; i < found.size(); i += every) picked.push_back(found[i]);
    return picked;
}

TEST(EntityGetBuffers, DirectPathMatchesTypedListOverRealDrawings) {
    std::vector<fs::path> drawings = drawingsUnder(fs::path(QV_SHARED_DIR) / "corpus", 1);
    const std::vector<fs::path> more = drawingsUnder("/usr/share/librecad", 40);
    drawings.insert(drawings.end(), more.begin(), more.end());
    if (drawings.empty()) GTEST_SKIP() << "no sample drawings on this machine";
    std::size_t read = 0, compared = 0;
    for (const fs::path& path : drawings) {
        std::unique_ptr<OdDbDatabase> db;
        try {
            db = qvad::dxf::readDxfFile(path.string());
        } catch (const std::exception&) {
            continue; // drawings the reader refuses have no objects to compare
        }
        if (!db) continue;
        ++read;
        compared += expectSameBuffers(*db, path.filename().string());
    }
    EXPECT_GT(read, 0u);
    EXPECT_GT(compared, 10 * read); // whole drawings, not just their first objects
}

class DamagedTags : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        HostSession::current().setDrawing(db.get());
        const qv_real from[3] = {0, 0, 0}, to[3] = {1, 1, 0};
        qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LINE", 10, from, 11, to, 0);
        ASSERT_NE(list, nullptr);
        qv_name made;
        ASSERT_EQ(qvdbEntMakeX(list, made), QV_NORM);
        qvutRelRb(list);
        object = db->getObject(static_cast<qvad::Handle>(made[1]));
        ASSERT_NE(object, nullptr);
    }
    void TearDown() override { HostSession::current().setDrawing(nullptr); }

    // The line's tags replaced by these (code, text) pairs.
    void give(std::initializer_list<std::pair<int, const char*>> tags) {
        std::vector<qvad::dxf::Tag> stored;
        for (const auto& [code, text] : tags) stored.emplace_back(code, db->strings().store(text));
        object->assignTags(std::move(stored));
    }

    // Both paths over the object, compared; the direct chain is handed back for closer looks.
    qv_resbuf* both() {
        qv_resbuf* direct = qvad::api::dataPartBuffers(*object);
        qv_resbuf* typed = typedListBuffers(*object);
        EXPECT_EQ(difference(direct, typed), "");
        qvutRelRb(typed);
        return direct;
    }

    static const qv_resbuf* find(const qv_resbuf* list, int code) {
        for (; list; list = list->rbnext)
            if (list->restype == code) return list;
        return nullptr;
    }

    std::unique_ptr<OdDbDatabase> db;
    OdDbObject* object = nullptr;
};

TEST_F(DamagedTags, BrokenPointsAndNumbersReadAlike) {
    give({{5, "2A"},
          {100, "AcDbEntity"},
          {8, ""},
          {100, "AcDbLine"},
          {10, "1.5"}, // x without y
          {40, "abc"},
          {11, "2"},
          {21, "3"}, // 2D point
          {12, " +4"},
          {22, "5"},
          {32, "6e400"},
          {50, "90"},
          {51, "nan"},
          {62, "99999"},
          {90, "-x"},
          {160, "123456789012"},
          {290, "7"},
          {18, "9"}}); // a lone x as the last tag
    qv_resbuf* list = both();
    const qv_resbuf* lone = find(list, 10);
    ASSERT_NE(lone, nullptr);
    EXPECT_EQ(lone->resval.rpoint[0], 1.5);
    EXPECT_EQ(lone->resval.rpoint[1], 0.0);
    EXPECT_EQ(lone->rbnext->restype, 40);
    const qv_resbuf* angle = find(list, 50);
    ASSERT_NE(angle, nullptr);
    EXPECT_NEAR(angle->resval.rreal, std::numbers::pi / 2, 1e-15);
    const qv_resbuf* flat = find(list, 11);
    ASSERT_NE(flat, nullptr);
    EXPECT_EQ(flat->resval.rpoint[1], 3.0);
    EXPECT_EQ(flat->rbnext->restype, 12);
    EXPECT_STREQ(find(list, 8)->resval.rstring, "");
    qvutRelRb(list);
}

TEST_F(DamagedTags, ReferencesBytesAndStrayCodesReadAlike) {
    give({{5, "2A"},
          {100, "AcDbEntity"},
          {330, "ZZ"},
          {340, ""},
          {360, "1F"},
          {320, "not a handle"},
          {310, "ABC"}, // an odd digit
          {310, "0g1F"},
          {1004, "00FF"},
          {999, "a comment"},
          {1010, "1"},
          {1020, "2"},
          {1030, "3"},
          {1100, "beyond the groups"},
          {-4, "<AND"},
          {-1, "2A"},
          {-3, ""},
          {1, ""}});
    qv_resbuf* list = both();
    const qv_resbuf* owner = find(list, 360);
    ASSERT_NE(owner, nullptr);
    EXPECT_EQ(owner->resval.rlname[1], 0x1F);
    const qv_resbuf* bytes = find(list, 310);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(bytes->resval.rbinary.clen, 1);
    qvutRelRb(list);
}

TEST_F(DamagedTags, TooManyBytesFailsOnBothPaths) {
    const std::string tooLong(2 * 32768, 'A');
    give({{100, "AcDbEntity"}, {310, tooLong.c_str()}});
    EXPECT_THROW(qvutRelRb(qvad::api::dataPartBuffers(*object)), qvad::db::DataListError);
    EXPECT_THROW(qvutRelRb(typedListBuffers(*object)), qvad::db::DataListError);
    // Through the interface: refused, and the half-made chain gone (the leak check sees it otherwise).
    qv_name name;
    qvad::api::nameOf(*object, name);
    qv_resbuf* list = nullptr;
    EXPECT_EQ(qvdbEntGet(name, &list), QV_ERROR);
    EXPECT_EQ(list, nullptr);
}

TEST(BufferValues, TableAnswersAsTheRulesForEveryCode) {
    for (int code = -40000; code <= 40000; ++code)
        ASSERT_EQ(qvad::api::bufferValueOf(code), qvad::api::bufferValueByRules(code)) << "code " << code;
    for (int code : {-2147483647 - 1, -70000, 70000, 2147483647})
        EXPECT_EQ(qvad::api::bufferValueOf(code), qvad::api::bufferValueByRules(code)) << "code " << code;
}

} // namespace
