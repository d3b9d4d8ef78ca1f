#pragma once
// A new drawing open in the host interface with an undo journal observing it, and the few ways the
// undo tests change it and look at it.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/db/drawing_template.h"
#include "qvad/db/undo_journal.h"
#include "qvad/dxf/dxf_writer.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

class UndoTest : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        qvad::api::HostSession::current().setDrawing(db.get());
        journal = std::make_unique<UndoJournal>(*db);
    }
    void TearDown() override {
        journal.reset();
        qvad::api::HostSession::current().setDrawing(nullptr);
        qvad::api::SysVarSession::current().reset();
    }

    std::string bytes() const { return qvad::dxf::writeDxf(*db); }

    // Makes a list with qvdbEntMake and releases it; true when the host took it.
    static bool make(qv_resbuf* list) {
        const int rc = list ? qvdbEntMake(list) : QV_ERROR;
        qvutRelRb(list);
        return rc == QV_NORM;
    }
    static bool makeLine(double x, const char* layer = "0") {
        const qv_real from[3] = {x, 0, 0}, to[3] = {x, 5, 0};
        return make(qvutBuildList(QV_RTDXF0, "LINE", 8, layer, 10, from, 11, to, 0));
    }
    // One command's work, as the command line brackets it; undoCommand for UNDO, U and REDO.
    template <class Work> void command(Work&& work, bool undoCommand = false) {
        journal->commandStarted();
        work();
        journal->commandEnded(undoCommand);
    }

    std::unique_ptr<OdDbDatabase> db;
    std::unique_ptr<UndoJournal> journal;
};
