// Coordinate transformations between world, a rotated user system, a tilted display, paper space
// display, a tilted entity's object system and an extrusion direction: every pair, both ways.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_header.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

using qvad::api::HostSession;

void setHeaderPoint(OdDbDatabase& db, const char* name, double x, double y, double z) {
    qvad::api::SysVarValue value;
    value.type = qvad::api::SysVarType::Point3d;
    value.point.set(x, y, z);
    qvad::api::writeHeaderVariable(db, *qvad::api::findSysVar(name), value);
}

class Transforms : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        HostSession::current().setDrawing(db.get());
        // A user system turned 90 degrees about z, then tipped 30 degrees about its x axis.
        const double c = std::cos(M_PI / 6), s = std::sin(M_PI / 6);
        setHeaderPoint(*db, "UCSORG", 10, -5, 2);
        setHeaderPoint(*db, "UCSXDIR", 0, 1, 0);
        setHeaderPoint(*db, "UCSYDIR", -c, 0, s);
        // A circle on a tilted plane.
        qv_resbuf type{}, center{}, radius{}, normal{};
        char circleType[] = "CIRCLE";
        type = {&center, 0, {}};
        type.resval.rstring = circleType;
        center = {&radius, 10, {}};
        center.resval.rpoint[0] = 1;
        center.resval.rpoint[1] = 2;
        center.resval.rpoint[2] = 3;
        radius = {&normal, 40, {}};
        radius.resval.rreal = 2.0;
        normal = {nullptr, 210, {}};
        normal.resval.rpoint[0] = 0.3;
        normal.resval.rpoint[1] = -0.4;
        normal.resval.rpoint[2] = 0.866;
        ASSERT_EQ(qvdbEntMakeX(&type, circle), QV_NORM);
    }
    void TearDown() override { HostSession::current().setDrawing(nullptr); }

    void tiltView(double x, double y, double z) {
        OdDbSymbolTableRecord* active = db->table("VPORT")->find("*Active");
        ASSERT_NE(active, nullptr);
        active->setPoint(16, {x, y, z});
        active->setPoint(17, {4, 5, 6});
    }
    static qv_resbuf code(short value) {
        qv_resbuf rb{};
        rb.restype = QV_RTSHORT;
        rb.resval.rint = value;
        return rb;
    }
    std::vector<qv_resbuf> everySystem() const {
        std::vector<qv_resbuf> systems = {code(0), code(1), code(2), code(3)};
        qv_resbuf entity{};
        entity.restype = QV_RTENAME;
        entity.resval.rlname[0] = circle[0];
        entity.resval.rlname[1] = circle[1];
        qv_resbuf extrusion{};
        extrusion.restype = QV_RT3DPOINT;
        extrusion.resval.rpoint[0] = -1;
        extrusion.resval.rpoint[1] = 2;
        extrusion.resval.rpoint[2] = 0.5;
        systems.push_back(entity);
        systems.push_back(extrusion);
        return systems;
    }
    static void expectNear(const qv_point a, const qv_point b, const char* what) {
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], 1e-9) << what << " coordinate " << i;
    }

    std::unique_ptr<OdDbDatabase> db;
    qv_name circle{};
};

TEST_F(Transforms, EveryPairRoundTripsAndGoesThroughTheWorld) {
    tiltView(1, -1, 1);
    const qv_real point[3] = {3.5, -7.25, 11};
    std::vector<qv_resbuf> systems = everySystem();
    qv_resbuf world = code(0);
    for (std::size_t f = 0; f < systems.size(); ++f) {
        for (std::size_t t = 0; t < systems.size(); ++t) {
            for (int displacement : {0, 1}) {
                qv_point there, back, viaWorld, direct;
                ASSERT_EQ(qvedTrans(point, &systems[f], &systems[t], displacement, there), QV_NORM);
                ASSERT_EQ(qvedTrans(there, &systems[t], &systems[f], displacement, back), QV_NORM);
                expectNear(back, point, "round trip");
                ASSERT_EQ(qvedTrans(point, &systems[f], &world, displacement, viaWorld), QV_NORM);
                ASSERT_EQ(qvedTrans(viaWorld, &world, &systems[t], displacement, direct), QV_NORM);
                expectNear(direct, there, "through the world");
                // Turns keep lengths.
                if (displacement) {
                    EXPECT_NEAR(std::hypot(there[0], there[1], there[2]),
                                std::hypot(point[0], point[1], point[2]), 1e-9);
                }
            }
        }
    }
}

TEST_F(Transforms, UserSystemFollowsTheHeader) {
    qv_resbuf user = code(1), world = code(0);
    const qv_real origin[3] = {0, 0, 0}, xUnit[3] = {1, 0, 0};
    qv_point result;
    ASSERT_EQ(qvedTrans(origin, &user, &world, 0, result), QV_NORM);
    const qv_real ucsOrigin[3] = {10, -5, 2};
    expectNear(result, ucsOrigin, "origin");
    ASSERT_EQ(qvedTrans(xUnit, &user, &world, 1, result), QV_NORM);
    const qv_real yWorld[3] = {0, 1, 0};
    expectNear(result, yWorld, "x axis");
    qv_point viaShortcut;
    ASSERT_EQ(qvdbUcs2Wcs(xUnit, 0, viaShortcut), QV_NORM);
    ASSERT_EQ(qvedTrans(xUnit, &user, &world, 0, result), QV_NORM);
    expectNear(viaShortcut, result, "qvdbUcs2Wcs");
}

TEST_F(Transforms, DisplayLooksAlongTheViewDirectionOrUsesTheUserSystem) {
    qv_resbuf display = code(2), paper = code(3), world = code(0), user = code(1);
    const qv_real zUnit[3] = {0, 0, 1}, p[3] = {1, 2, 3};
    qv_point result, asUser, asPaper;
    tiltView(0, -2, 2);
    ASSERT_EQ(qvedTrans(zUnit, &display, &world, 1, result), QV_NORM);
    const qv_real viewDirection[3] = {0, -M_SQRT1_2, M_SQRT1_2};
    expectNear(result, viewDirection, "view direction");
    ASSERT_EQ(qvedTrans(p, &display, &world, 0, result), QV_NORM);
    ASSERT_EQ(qvedTrans(p, &paper, &world, 0, asPaper), QV_NORM);
    expectNear(result, asPaper, "paper space display in model space");

    db->table("VPORT")->find("*Active")->setErased(true);
    ASSERT_EQ(qvedTrans(p, &display, &world, 0, result), QV_NORM);
    ASSERT_EQ(qvedTrans(p, &user, &world, 0, asUser), QV_NORM);
    expectNear(result, asUser, "display without a viewport");
}

TEST_F(Transforms, EntitySystemIsItsExtrusionsObjectSystem) {
    qv_resbuf entity{}, world = code(0);
    entity.restype = QV_RTENAME;
    entity.resval.rlname[0] = circle[0];
    entity.resval.rlname[1] = circle[1];
    const qv_real p[3] = {2, -1, 0.5}, normal[3] = {0.3, -0.4, 0.866};
    qv_point viaEntity, viaNormal, back;
    ASSERT_EQ(qvedTrans(p, &entity, &world, 0, viaEntity), QV_NORM);
    ASSERT_EQ(qvdbEcs2Wcs(p, normal, 0, viaNormal), QV_NORM);
    expectNear(viaEntity, viaNormal, "entity and its normal");
    ASSERT_EQ(qvdbWcs2Ecs(viaNormal, normal, 0, back), QV_NORM);
    expectNear(back, p, "object system round trip");
    // The object system's z axis is the normal itself.
    const qv_real zUnit[3] = {0, 0, 1};
    ASSERT_EQ(qvdbEcs2Wcs(zUnit, normal, 1, viaNormal), QV_NORM);
    double length = std::hypot(0.3, -0.4, 0.866);
    const qv_real unitNormal[3] = {0.3 / length, -0.4 / length, 0.866 / length};
    expectNear(viaNormal, unitNormal, "normal");
}

TEST_F(Transforms, BadSystemsAndPointsAreRefusedAndLeaveTheResultAlone) {
    const qv_real p[3] = {1, 2, 3}, zero[3] = {0, 0, 0}, bad[3] = {NAN, 0, 0};
    qv_point result = {7, 7, 7};
    qv_resbuf world = code(0), four = code(4), negative = code(-1);
    qv_resbuf nameless{};
    nameless.restype = QV_RTENAME;
    nameless.resval.rlname[0] = circle[0];
    nameless.resval.rlname[1] = 0x7FFFFFFF;
    qv_resbuf noDirection{};
    noDirection.restype = QV_RT3DPOINT;
    qv_resbuf text{};
    text.restype = QV_RTSTR;
    for (qv_resbuf* system : {&four, &negative, &nameless, &noDirection, &text}) {
        EXPECT_EQ(qvedTrans(p, system, &world, 0, result), QV_ERROR);
        EXPECT_EQ(qvedTrans(p, &world, system, 0, result), QV_ERROR);
    }
    EXPECT_EQ(qvedTrans(p, nullptr, &world, 0, result), QV_ERROR);
    EXPECT_EQ(qvedTrans(nullptr, &world, &world, 0, result), QV_ERROR);
    EXPECT_EQ(qvedTrans(bad, &world, &world, 0, result), QV_ERROR);
    EXPECT_EQ(qvdbWcs2Ecs(p, zero, 0, result), QV_ERROR);
    EXPECT_EQ(qvdbEcs2Wcs(p, nullptr, 0, result), QV_ERROR);
    EXPECT_EQ(qvdbUcs2Wcs(bad, 0, result), QV_ERROR);
    const qv_real untouched[3] = {7, 7, 7};
    expectNear(result, untouched, "result");
}

} // namespace
