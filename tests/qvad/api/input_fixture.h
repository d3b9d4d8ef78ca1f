#pragma once
// A new drawing and a scripted console for the input function tests.

#include "fake_console.h"
#include "qvad/api/host_session.h"
#include "qvad/api/input_state.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvad::test {

class InputTest : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        qvad::api::HostSession::current().setDrawing(db.get());
        qvad::api::clearInputEnded();
    }
    void TearDown() override {
        con.reset();
        qvad::api::HostSession::current().setDrawing(nullptr);
        qvad::api::SysVarSession::current().reset();
        qvad::api::clearInputEnded();
        qvedInitGet(0, nullptr);
    }
    FakeConsole& answers(std::vector<std::string> lines) {
        con.reset();
        con.emplace(std::move(lines));
        return *con;
    }
    static void setShort(const char* name, short value) {
        qv_resbuf rb{};
        rb.restype = QV_RTSHORT;
        rb.resval.rint = value;
        ASSERT_EQ(qvedSetVar(name, &rb), QV_NORM) << name;
    }
    static void setReal(const char* name, double value) {
        qv_resbuf rb{};
        rb.restype = QV_RTREAL;
        rb.resval.rreal = value;
        ASSERT_EQ(qvedSetVar(name, &rb), QV_NORM) << name;
    }
    static void setLastPoint(double x, double y, double z) {
        qv_resbuf rb{};
        rb.restype = QV_RT3DPOINT;
        rb.resval.rpoint[0] = x;
        rb.resval.rpoint[1] = y;
        rb.resval.rpoint[2] = z;
        ASSERT_EQ(qvedSetVar("LASTPOINT", &rb), QV_NORM);
    }
    static std::vector<double> lastPoint() {
        qv_resbuf rb{};
        EXPECT_EQ(qvedGetVar("LASTPOINT", &rb), QV_NORM);
        return {rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]};
    }

    std::unique_ptr<OdDbDatabase> db;
    std::optional<FakeConsole> con;
};

} // namespace qvad::test
