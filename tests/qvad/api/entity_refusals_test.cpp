// Calls the interface must refuse: names of a drawing no longer open, erased entities, lists with a
// group or value the drawing cannot hold, tables that do not exist and extended data beyond its room.
// Each refusal leaves the drawing's file exactly as it was.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_writer.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>

namespace {

using qvad::api::HostError;
using qvad::api::HostSession;

class EntityRefusals : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        HostSession::current().setDrawing(db.get());
        const qv_real from[3] = {0, 0, 0}, to[3] = {3, 4, 0};
        qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LINE", 8, "0", 10, from, 11, to, 0);
        ASSERT_NE(list, nullptr);
        ASSERT_EQ(qvdbEntMakeX(list, line), QV_NORM);
        qvutRelRb(list);
    }
    void TearDown() override { HostSession::current().setDrawing(nullptr); }

    int lastError() const { return HostSession::current().errorNumber(); }
    std::string file() const { return qvad::dxf::writeDxf(*HostSession::current().drawing()); }
    qv_resbuf* got(const qv_name name) {
        qv_resbuf* list = nullptr;
        EXPECT_EQ(qvdbEntGet(name, &list), QV_NORM);
        return list;
    }
    static qv_resbuf* find(qv_resbuf* list, int code) {
        for (; list; list = list->rbnext)
            if (list->restype == code) return list;
        return nullptr;
    }
    static qv_resbuf* last(qv_resbuf* list) {
        while (list->rbnext) list = list->rbnext;
        return list;
    }
    static int count(qv_resbuf* list) {
        int n = 0;
        for (; list; list = list->rbnext) ++n;
        return n;
    }
    // The number of entities qvdbEntNext walks.
    static int entities() {
        int n = 0;
        qv_name at = {0, 0};
        while (qvdbEntNext(at, at) == QV_NORM) ++n;
        return n;
    }

    std::unique_ptr<OdDbDatabase> db;
    qv_name line{};
};

TEST_F(EntityRefusals, NamesOfTheDrawingSetBeforeAreStale) {
    qv_resbuf* list = got(line);
    ASSERT_NE(list, nullptr);
    find(list, 11)->resval.rpoint[0] = 99;

    // The next drawing gets the same handles, so only the drawing part of a name tells them apart.
    auto next = qvad::db::newDrawing();
    HostSession::current().setDrawing(next.get());
    qv_name fresh;
    const qv_real p[3] = {0, 0, 0}, q[3] = {1, 0, 0};
    qv_resbuf* make = qvutBuildList(QV_RTDXF0, "LINE", 10, p, 11, q, 0);
    ASSERT_EQ(qvdbEntMakeX(make, fresh), QV_NORM);
    qvutRelRb(make);
    ASSERT_EQ(fresh[1], line[1]);
    const std::string before = file();

    qv_resbuf* stale = nullptr;
    EXPECT_EQ(qvdbEntGet(line, &stale), QV_ERROR);
    EXPECT_EQ(stale, nullptr);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadEntityName));
    EXPECT_EQ(qvdbEntMod(list), QV_ERROR);
    EXPECT_EQ(qvdbEntDel(line), QV_ERROR);
    long room = -1;
    EXPECT_EQ(qvdbXdRoom(line, &room), QV_ERROR);
    qv_name after;
    EXPECT_EQ(qvdbEntNext(line, after), QV_ERROR);
    EXPECT_EQ(file(), before);
    qvutRelRb(list);
}

TEST_F(EntityRefusals, AnErasedEntityIsRefusedUntilItIsBroughtBack) {
    qv_resbuf* was = got(line);
    const std::string before = file();
    ASSERT_EQ(qvdbEntDel(line), QV_NORM);

    qv_resbuf* list = nullptr;
    EXPECT_EQ(qvdbEntGet(line, &list), QV_ERROR);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::ErasedEntity));
    EXPECT_EQ(qvdbEntMod(was), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::ErasedEntity));
    EXPECT_EQ(entities(), 0);

    ASSERT_EQ(qvdbEntDel(line), QV_NORM);
    list = got(line);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(count(list), count(was));
    EXPECT_EQ(find(list, 11)->resval.rpoint[1], 4.0);
    EXPECT_EQ(entities(), 1);
    EXPECT_EQ(file(), before);
    qvutRelRb(list);
    qvutRelRb(was);
}

TEST_F(EntityRefusals, ABadGroupOrValueChangesNothing) {
    const std::string before = file();
    const qv_real p[3] = {1, 2, 3};

    // Extended data without its -3 marker.
    qv_resbuf* stray = got(line);
    last(stray)->rbnext = qvutBuildList(1000, "stray", 0);
    EXPECT_EQ(qvdbEntMod(stray), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(stray);

    // A group no data list has.
    qv_resbuf* unknown = got(line);
    last(unknown)->rbnext = qvutNewRb(2000);
    EXPECT_EQ(qvdbEntMod(unknown), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(unknown);

    // A text group without its text.
    qv_resbuf* noText = got(line);
    qv_resbuf* layer = find(noText, 8);
    qvad_free(layer->resval.rstring);
    layer->resval.rstring = nullptr;
    EXPECT_EQ(qvdbEntMod(noText), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(noText);

    // Values their groups cannot take: a colour number out of range, a real that is no number.
    qv_resbuf* colour = got(line);
    last(colour)->rbnext = qvutBuildList(62, -1, 0);
    EXPECT_EQ(qvdbEntMod(colour), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(colour);
    qv_resbuf* infinite = got(line);
    find(infinite, 10)->resval.rpoint[0] = std::numeric_limits<double>::infinity();
    EXPECT_EQ(qvdbEntMod(infinite), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(infinite);

    // Made ones neither appear nor bring their new layer along.
    qv_resbuf* made = qvutBuildList(QV_RTDXF0, "LINE", 8, "Fresh", 10, p, 11, p, 62, 300, 0);
    EXPECT_EQ(qvdbEntMake(made), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(made);
    made = qvutBuildList(QV_RTDXF0, "LINE", 8, "Fresh", 10, p, 11, p, 1000, "stray", 0);
    EXPECT_EQ(qvdbEntMake(made), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::BadDataList));
    qvutRelRb(made);
    qv_resbuf* record = nullptr;
    EXPECT_EQ(qvdbTblSearch("LAYER", "Fresh", 0, &record), QV_ERROR);
    EXPECT_EQ(entities(), 1);
    EXPECT_EQ(file(), before);
}

TEST_F(EntityRefusals, AnUnknownTableIsNamedAsSuch) {
    qv_resbuf* record = nullptr;
    EXPECT_EQ(qvdbTblSearch("LAYERS", "0", 0, &record), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::UnknownTable));
    EXPECT_EQ(record, nullptr);
    EXPECT_EQ(qvdbTblNext("NOSUCHTABLE", 1, &record), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::UnknownTable));
    EXPECT_EQ(record, nullptr);
    qv_name name = {1, 1};
    EXPECT_EQ(qvdbTblObjName("NOSUCHTABLE", "0", name), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::UnknownTable));
    EXPECT_EQ(name[0], 0);
    EXPECT_EQ(name[1], 0);
    // The same names in a table that exists are found.
    ASSERT_EQ(qvdbTblSearch("layer", "0", 0, &record), QV_NORM);
    qvutRelRb(record);
    ASSERT_EQ(qvdbTblObjName("LAYER", "0", name), QV_NORM);
}

TEST_F(EntityRefusals, FullExtendedDataLeavesNoRoomAndTakesNoMore) {
    ASSERT_EQ(qvdbRegApp("ACME"), QV_NORM);
    // 2 bytes for the application, 255 for each of 64 strings of 253 characters, 61 for the last.
    const std::string chunk(253, 'x'), rest(59, 'y');
    qv_resbuf* list = got(line);
    qv_resbuf* at = last(list);
    at = at->rbnext = qvutBuildList(-3, 1001, "ACME", 0);
    at = last(at);
    for (int i = 0; i < 64; ++i) at = at->rbnext = qvutBuildList(1000, chunk.c_str(), 0);
    at = at->rbnext = qvutBuildList(1000, rest.c_str(), 0);
    long size = 0;
    ASSERT_EQ(qvdbXdSize(list, &size), QV_NORM);
    ASSERT_EQ(size, QV_XDATA_LIMIT);
    ASSERT_EQ(qvdbEntMod(list), QV_NORM);
    long room = -1;
    ASSERT_EQ(qvdbXdRoom(line, &room), QV_NORM);
    EXPECT_EQ(room, 0);

    const std::string before = file();
    at->rbnext = qvutBuildList(1070, 1, 0);
    EXPECT_EQ(qvdbEntMod(list), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::ExtendedDataFull));
    EXPECT_EQ(file(), before);
    ASSERT_EQ(qvdbXdRoom(line, &room), QV_NORM);
    EXPECT_EQ(room, 0);

    // A new entity with too much is not made either.
    qv_resbuf* head = list; // from group 0 on, without the name of the entity it was read from
    while (head->restype != 0) head = head->rbnext;
    EXPECT_EQ(qvdbEntMake(head), QV_ERROR);
    EXPECT_EQ(lastError(), static_cast<int>(HostError::ExtendedDataFull));
    EXPECT_EQ(entities(), 1);
    EXPECT_EQ(file(), before);
    qvutRelRb(list);
}

} // namespace
