// Entity data lists over the C interface: reading, changing, making, erasing and walking entities,
// and the refusals that leave the drawing as it was.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_writer.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>

namespace {

using qvad::api::HostError;
using qvad::api::HostSession;

class EntityLists : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        HostSession::current().setDrawing(db.get());
    }
    void TearDown() override { HostSession::current().setDrawing(nullptr); }

    void makeLine(qv_name made, const char* layer = "0") {
        const qv_real from[3] = {0, 0, 0}, to[3] = {3, 4, 0};
        qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LINE", 8, layer, 10, from, 11, to, 0);
        ASSERT_NE(list, nullptr);
        ASSERT_EQ(qvdbEntMakeX(list, made), QV_NORM);
        qvutRelRb(list);
    }
    static qv_resbuf* find(qv_resbuf* list, int code) {
        for (; list; list = list->rbnext)
            if (list->restype == code) return list;
        return nullptr;
    }
    int lastError() const { return HostSession::current().errorNumber(); }

    std::unique_ptr<OdDbDatabase> db;
};

TEST_F(EntityLists, MakeGetAndModifyALine) {
    qv_name line;
    makeLine(line);
    qv_resbuf* list = nullptr;
    ASSERT_EQ(qvdbEntGet(line, &list), QV_NORM);
    ASSERT_EQ(list->restype, -1);
    EXPECT_EQ(list->resval.rlname[1], line[1]);
    EXPECT_STREQ(find(list, 0)->resval.rstring, "LINE");
    EXPECT_EQ(find(list, 11)->resval.rpoint[1], 4.0);

    find(list, 11)->resval.rpoint[1] = 7.5;
    std::string before = qvad::dxf::writeDxf(*db);
    ASSERT_EQ(qvdbEntMod(list), QV_NORM);
    EXPECT_NE(qvad::dxf::writeDxf(*db), before);
    qvutRelRb(list);
    ASSERT_EQ(qvdbEntGet(line, &list), QV_NORM);
    EXPECT_EQ(find(list, 11)->resval.rpoint[1], 7.5);
    qvutRelRb(list);
}

TEST_F(EntityLists, FlatListsGetTheSubclassLayoutOfTheDrawingsVersion) {
    const qv_real at[3] = {1, 2, 0}, direction[3] = {1, 0, 0};
    qv_name text;
    qv_resbuf* list = qvutBuildList(QV_RTDXF0, "MTEXT", 8, "0", 10, at, 40, 2.5, 41, 0.0, 71, 1, 1, "one\\Ptwo",
                                    11, direction, 0);
    ASSERT_EQ(qvdbEntMakeX(list, text), QV_NORM);
    qvutRelRb(list);
    const OdDbObject* made = db->getObject(static_cast<qvad::Handle>(text[1]));
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->hasSubclass("AcDbEntity"));
    EXPECT_TRUE(made->hasSubclass("AcDbMText"));
    EXPECT_EQ(made->getString(1, {}, "AcDbMText"), "one\\Ptwo");
    EXPECT_EQ(made->getString(8, {}, "AcDbEntity"), "0") << "the layer belongs to the common part";
}

TEST_F(EntityLists, UnchangedListLeavesTheFileAlone) {
    qv_name line;
    makeLine(line);
    const std::string before = qvad::dxf::writeDxf(*db);
    qv_resbuf* list = nullptr;
    ASSERT_EQ(qvdbEntGet(line, &list), QV_NORM);
    ASSERT_EQ(qvdbEntMod(list), QV_NORM);
    qvutRelRb(list);
    EXPECT_EQ(qvad::dxf::writeDxf(*db), before);
}

TEST_F(EntityLists, BadListsAreRefusedAndChangeNothing) {
    qv_name line;
    makeLine(line);
    const std::string before = qvad::dxf::writeDxf(*db);
    const qv_real p[3] = {1, 2, 3};

    qv_resbuf* wrongType = qvutBuildList(-1, line, QV_RTDXF0, "CIRCLE", 10, p, 40, 1.0, 0);
    EXPECT_EQ(qvdbEntMod(wrongType), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::WrongEntityType));
    qvutRelRb(wrongType);

    qv_resbuf* missing = qvutBuildList(-1, line, QV_RTDXF0, "LINE", 10, p, 0);
    EXPECT_EQ(qvdbEntMod(missing), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::MissingGroup));
    qvutRelRb(missing);

    // 300 fits the short of group 62 but is no colour number.
    qv_resbuf* badValue = qvutBuildList(-1, line, QV_RTDXF0, "LINE", 10, p, 11, p, 62, 300, 0);
    ASSERT_NE(badValue, nullptr);
    EXPECT_EQ(qvdbEntMod(badValue), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(badValue);

    qv_resbuf* badGroup = qvutBuildList(-1, line, QV_RTDXF0, "LINE", 10, p, 11, p, 1000, "stray", 0);
    EXPECT_EQ(qvdbEntMod(badGroup), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(badGroup);

    const qv_name stale = {line[0] + 1000, line[1]};
    qv_resbuf* staleList = qvutBuildList(-1, stale, QV_RTDXF0, "LINE", 10, p, 11, p, 0);
    EXPECT_EQ(qvdbEntMod(staleList), QV_ERROR);
    qvutRelRb(staleList);
    qv_resbuf* got = nullptr;
    EXPECT_EQ(qvdbEntGet(stale, &got), QV_ERROR);
    EXPECT_EQ(got, nullptr);

    EXPECT_EQ(qvad::dxf::writeDxf(*db), before);
}

TEST_F(EntityLists, UnknownLayerIsCreated) {
    qv_name line;
    makeLine(line, "Walls");
    qv_resbuf* layer = nullptr;
    ASSERT_EQ(qvdbTblSearch("layer", "WALLS", 0, &layer), QV_NORM);
    EXPECT_STREQ(find(layer, 2)->resval.rstring, "Walls");
    qvutRelRb(layer);
}

TEST_F(EntityLists, EraseTogglesAndWalkSkipsErased) {
    qv_name first, second, walked;
    makeLine(first);
    makeLine(second);
    ASSERT_EQ(qvdbEntNext(nullptr, walked), QV_NORM);
    EXPECT_EQ(walked[1], first[1]);
    ASSERT_EQ(qvdbEntDel(first), QV_NORM);
    qv_resbuf* list = nullptr;
    EXPECT_EQ(qvdbEntGet(first, &list), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::ErasedEntity));
    ASSERT_EQ(qvdbEntNext(nullptr, walked), QV_NORM);
    EXPECT_EQ(walked[1], second[1]);
    EXPECT_EQ(qvdbEntNext(second, walked), QV_ERROR);
    ASSERT_EQ(qvdbEntDel(first), QV_NORM);
    ASSERT_EQ(qvdbEntGet(first, &list), QV_NORM);
    qvutRelRb(list);
    ASSERT_EQ(qvdbEntLast(walked), QV_NORM);
    EXPECT_EQ(walked[1], second[1]);
}

TEST_F(EntityLists, PolylineIsMadeInPiecesAndClosedBySeqend) {
    const qv_real origin[3] = {0, 0, 0}, a[3] = {1, 1, 0}, b[3] = {2, 0, 0};
    qv_name made;
    qv_resbuf* head = qvutBuildList(QV_RTDXF0, "POLYLINE", 66, 1, 10, origin, 70, 0, 0);
    qv_resbuf* v1 = qvutBuildList(QV_RTDXF0, "VERTEX", 10, a, 0);
    qv_resbuf* v2 = qvutBuildList(QV_RTDXF0, "VERTEX", 10, b, 0);
    qv_resbuf* end = qvutBuildList(QV_RTDXF0, "SEQEND", 0);
    EXPECT_EQ(qvdbEntMake(v1), QV_ERROR); // a vertex without its polyline
    ASSERT_EQ(qvdbEntMake(head), QV_NORM);
    ASSERT_EQ(qvdbEntMake(v1), QV_NORM);
    ASSERT_EQ(qvdbEntMake(v2), QV_NORM);
    ASSERT_EQ(qvdbEntMakeX(end, made), QV_NORM);
    for (qv_resbuf* l : {head, v1, v2, end}) qvutRelRb(l);

    qv_name walked;
    int pieces = 0;
    const char* types[4] = {};
    for (int rc = qvdbEntNext(made, walked); rc == QV_NORM && pieces < 4; rc = qvdbEntNext(walked, walked)) {
        qv_resbuf* list = nullptr;
        ASSERT_EQ(qvdbEntGet(walked, &list), QV_NORM);
        types[pieces++] = strdup(find(list, 0)->resval.rstring);
        qvutRelRb(list);
    }
    ASSERT_EQ(pieces, 3);
    EXPECT_STREQ(types[0], "VERTEX");
    EXPECT_STREQ(types[1], "VERTEX");
    EXPECT_STREQ(types[2], "SEQEND");
    for (const char* t : types) free(const_cast<char*>(t));
}

TEST_F(EntityLists, TablesApplicationsAndExtendedDataRoom) {
    EXPECT_EQ(qvdbRegApp("ACME"), QV_NORM);
    EXPECT_EQ(qvdbRegApp("acme"), QV_ERROR);
    qv_resbuf* rec = nullptr;
    EXPECT_EQ(qvdbTblSearch("NOSUCHTABLE", "0", 0, &rec), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::UnknownTable));
    ASSERT_EQ(qvdbTblNext("APPID", 1, &rec), QV_NORM);
    qvutRelRb(rec);

    qv_name line;
    makeLine(line);
    long room = 0;
    ASSERT_EQ(qvdbXdRoom(line, &room), QV_NORM);
    EXPECT_EQ(room, QV_XDATA_LIMIT);

    const std::string big(250, 'x');
    qv_resbuf* list = nullptr;
    ASSERT_EQ(qvdbEntGet(line, &list), QV_NORM);
    qv_resbuf* tail = list;
    while (tail->rbnext) tail = tail->rbnext;
    tail->rbnext = qvutBuildList(-3, 1001, "ACME", 1000, big.c_str(), 0);
    long size = 0;
    ASSERT_EQ(qvdbXdSize(tail->rbnext, &size), QV_NORM);
    EXPECT_EQ(size, 2 + 252);
    ASSERT_EQ(qvdbEntMod(list), QV_NORM);
    ASSERT_EQ(qvdbXdRoom(line, &room), QV_NORM);
    EXPECT_EQ(room, QV_XDATA_LIMIT - size);

    // More than the room left: refused, and the object keeps what it had.
    qv_resbuf* more = tail->rbnext;
    qv_resbuf* at = more->rbnext->rbnext;
    for (int i = 0; i < 70; ++i) at = at->rbnext = qvutBuildList(1000, big.c_str(), 0);
    const std::string before = qvad::dxf::writeDxf(*db);
    EXPECT_EQ(qvdbEntMod(list), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::ExtendedDataFull));
    EXPECT_EQ(qvad::dxf::writeDxf(*db), before);
    qvutRelRb(list);
}

TEST(ResultBuffers, BuildListRefusesUnbalancedAndUnknown) {
    EXPECT_EQ(qvutBuildList(QV_RTLB, QV_RTSHORT, 1, 0), nullptr);
    EXPECT_EQ(qvutBuildList(QV_RTLE, 0), nullptr);
    EXPECT_EQ(qvutBuildList(4999, 0), nullptr);
    qv_resbuf* nested = qvutBuildList(QV_RTLB, QV_RTSTR, "a", QV_RTLONG, 70000, QV_RTLE, 0);
    ASSERT_NE(nested, nullptr);
    EXPECT_STREQ(nested->rbnext->resval.rstring, "a");
    EXPECT_EQ(nested->rbnext->rbnext->resval.rlong, 70000);
    EXPECT_EQ(nested->rbnext->rbnext->rbnext->restype, QV_RTLE);
    qvutRelRb(nested);
}

TEST(HostSessionNames, ClosedDrawingMakesNamesStale) {
    auto db = qvad::db::newDrawing();
    HostSession::current().setDrawing(db.get());
    qv_name dict;
    ASSERT_EQ(qvdbNamedObjDict(dict), QV_NORM);
    HostSession::current().setDrawing(db.get()); // the same drawing opened again
    EXPECT_EQ(qvdbEntUpd(dict), QV_ERROR);
    HostSession::current().setDrawing(nullptr);
    EXPECT_EQ(qvdbNamedObjDict(dict), QV_ERROR);
}

} // namespace
