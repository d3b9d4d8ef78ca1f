#pragma once
// A new drawing in the shell's session and a scripted console, for tests that run commands.

#include "qvad/api/answers.h"
#include "qvad/api/input_state.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/command_processor.h"
#include "qvad/shell/drawing_session.h"
#include "tests/qvad/api/fake_console.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace qvad::test {

class CommandTest : public ::testing::Test {
protected:
    void SetUp() override {
        qvad::shell::DrawingSession::current().openNew();
        qvad::api::queuedKeystrokes().clear();
        qvad::api::clearInputEnded();
    }
    void TearDown() override {
        con.reset();
        qvad::api::queuedKeystrokes().clear();
        qvad::shell::DrawingSession::current().close();
        qvad::api::SysVarSession::current().reset();
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
    static std::string stringVar(const char* name) {
        qv_resbuf rb{};
        if (qvedGetVar(name, &rb) != QV_NORM || rb.restype != QV_RTSTR) return "?";
        std::string text = rb.resval.rstring ? rb.resval.rstring : "";
        qvad_free(rb.resval.rstring);
        return text;
    }
    // Runs a whole command line session over the answers; the transcript.
    std::string session(std::vector<std::string> lines, int* status = nullptr) {
        FakeConsole& console = answers(std::move(lines));
        const int result = qvad::shell::commandLoop();
        if (status) *status = result;
        return console.transcript();
    }

    std::optional<FakeConsole> con;
};

} // namespace qvad::test
