#pragma once
// What the selection tests share: a new drawing made current, entities made through the C interface,
// drawings with blocks written as R12 "CODE VALUE" lines, and a console that answers from a list and
// keeps everything shown.

#include "qvad/api/console.h"
#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_reader.h"

#include <array>
#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace selection_test {

class ScriptConsole : public qvad::api::Console {
public:
    std::deque<std::string> answers;
    std::string shown; // prompts and messages, in order

    qvad::api::ReadStatus readLine(std::string_view prompt, std::string& line) override {
        shown += prompt;
        if (answers.empty()) return qvad::api::ReadStatus::Ended;
        line = answers.front();
        answers.pop_front();
        shown += line;
        return qvad::api::ReadStatus::Answer;
    }
    void write(std::string_view text) override { shown += text; }
};

class SelectionTest : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        qvad::api::HostSession::current().setDrawing(db.get());
        qvad::api::setConsole(&console);
    }
    void TearDown() override {
        qvad::api::setConsole(nullptr);
        qvad::api::HostSession::current().setDrawing(nullptr);
    }

    // Replaces the drawing with one read from R12 "CODE VALUE" lines (blocks and entities sections).
    void loadR12(const std::string& blocks, const std::string& entities) {
        std::string file = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n";
        file += "0\nSECTION\n2\nBLOCKS\n" + lines(blocks) + "0\nENDSEC\n";
        file += "0\nSECTION\n2\nENTITIES\n" + lines(entities) + "0\nENDSEC\n0\nEOF\n";
        qvad::api::HostSession::current().setDrawing(nullptr);
        db = qvad::dxf::readDxfBuffer(std::move(file));
        ASSERT_TRUE(db);
        qvad::api::HostSession::current().setDrawing(db.get());
    }

    static std::string lines(const std::string& codeValueLines) {
        std::istringstream in(codeValueLines);
        std::string line, out;
        while (std::getline(in, line)) {
            const auto start = line.find_first_not_of(" \t");
            if (start == std::string::npos) continue;
            const auto space = line.find(' ', start);
            out += line.substr(start, space - start) + "\n" +
                   (space == std::string::npos ? std::string() : line.substr(space + 1)) + "\n";
        }
        return out;
    }

    // Makes an entity from (code, value) pairs ended by 0 and returns its handle.
    template <class... A> long long make(A... args) {
        qv_resbuf* list = qvutBuildList(args..., 0);
        EXPECT_NE(list, nullptr);
        qv_name made = {0, 0};
        EXPECT_EQ(qvdbEntMakeX(list, made), QV_NORM);
        qvutRelRb(list);
        return made[1];
    }
    long long line(double x1, double y1, double x2, double y2, const char* layer = "0") {
        const qv_real a[3] = {x1, y1, 0}, b[3] = {x2, y2, 0};
        return make(QV_RTDXF0, "LINE", 8, layer, 10, a, 11, b);
    }
    long long circle(double x, double y, double r, const char* layer = "0") {
        const qv_real c[3] = {x, y, 0};
        return make(QV_RTDXF0, "CIRCLE", 8, layer, 10, c, 40, r);
    }

    // Handles of a selection set (freed), empty when the status is not QV_NORM.
    static std::set<long long> members(qv_name selection) {
        std::set<long long> out;
        long length = 0;
        if (qvedSSLength(selection, &length) != QV_NORM) return out;
        for (long i = 0; i < length; ++i) {
            qv_name e;
            if (qvedSSName(selection, i, e) == QV_NORM) out.insert(e[1]);
        }
        qvedSSFree(selection);
        return out;
    }
    std::set<long long> window(bool crossing, double x1, double y1, double x2, double y2,
                               const qv_resbuf* filter = nullptr) {
        const qv_real a[3] = {x1, y1, 0}, b[3] = {x2, y2, 0};
        qv_name ss = {0, 0};
        if (qvedSSGet(crossing ? "C" : "W", a, b, filter, ss) != QV_NORM) return {};
        return members(ss);
    }
    std::set<long long> everything(const qv_resbuf* filter, int* status = nullptr) {
        qv_name ss = {0, 0};
        const int s = qvedSSGet("X", nullptr, nullptr, filter, ss);
        if (status) *status = s;
        if (s != QV_NORM) return {};
        return members(ss);
    }
    // Sets the view height (the *Active viewport's) so that the pick aperture is known.
    void setViewHeight(double height) {
        OdDbSymbolTable* viewports = db->table("VPORT");
        ASSERT_TRUE(viewports);
        OdDbSymbolTableRecord* active = viewports->find("*Active");
        ASSERT_TRUE(active);
        active->setDouble(40, height);
    }

    ScriptConsole console;
    std::unique_ptr<OdDbDatabase> db;
};

} // namespace selection_test
