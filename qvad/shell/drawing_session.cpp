#include "qvad/shell/drawing_session.h"

#include "qvad/api/console.h"
#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_error.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"

#include <iostream>
#include <system_error>

namespace qvad::shell {
namespace {

void reportLoadFailure(const std::string& path, const qvad::dxf::DxfError& e) {
    std::cerr << "qvad: " << path;
    if (e.line() != 0) std::cerr << ":" << e.line();
    std::cerr << ": " << e.what() << "\n";
}

} // namespace

DrawingSession& DrawingSession::current() {
    static DrawingSession session;
    return session;
}

bool DrawingSession::open(const std::string& path) {
    std::unique_ptr<OdDbDatabase> loaded;
    try {
        loaded = qvad::dxf::readDxfFile(path);
    } catch (const qvad::dxf::DxfError& e) {
        reportLoadFailure(path, e);
        return false;
    } catch (const std::system_error& e) {
        std::cerr << "qvad: " << e.what() << "\n";
        return false;
    } catch (const std::exception& e) {
        std::cerr << "qvad: " << path << ": " << e.what() << "\n";
        return false;
    }
    for (const std::string& repair : loaded->repairs()) api::console().write("Repaired: " + repair + "\n");
    close();
    m_drawing = std::move(loaded);
    m_path = path;
    // The journal comes after loading so that reading the file is not a change to take back.
    m_journal = std::make_unique<UndoJournal>(*m_drawing);
    markSaved();
    api::HostSession::current().setDrawing(m_drawing.get());
    api::SysVarSession::current().setDrawingPath(m_path);
    return true;
}

void DrawingSession::openNew() {
    std::unique_ptr<OdDbDatabase> fresh = qvad::db::newDrawing();
    close();
    m_drawing = std::move(fresh);
    m_journal = std::make_unique<UndoJournal>(*m_drawing);
    markSaved();
    api::HostSession::current().setDrawing(m_drawing.get());
    api::SysVarSession::current().setDrawingPath({});
}

void DrawingSession::close() {
    api::HostSession::current().setDrawing(nullptr);
    api::SysVarSession::current().setDrawingPath({});
    // The journal observes the drawing, so it goes first.
    m_journal.reset();
    m_drawing.reset();
    m_path.clear();
    m_quit = false;
    m_savedStepMark = 0;
}

bool DrawingSession::modified() const {
    return m_journal && m_journal->changeCount() != m_savedStepMark;
}

void DrawingSession::markSaved() {
    m_savedStepMark = m_journal ? m_journal->changeCount() : 0;
}

bool DrawingSession::save(const std::string& path) {
    const std::string target = path.empty() ? m_path : path;
    if (!m_drawing) {
        api::console().write("qvad: no drawing is open\n");
        return false;
    }
    if (target.empty()) {
        api::console().write("qvad: the drawing has no file name yet\n");
        return false;
    }
    try {
        qvad::dxf::saveDxfFile(*m_drawing, target);
    } catch (const std::system_error& e) {
        std::cerr << "qvad: " << e.what() << "\n";
        return false;
    } catch (const std::exception& e) {
        std::cerr << "qvad: cannot save " << target << ": " << e.what() << "\n";
        return false;
    }
    // Once saved under a name, that file is where the drawing now lives.
    m_path = target;
    api::SysVarSession::current().setDrawingPath(m_path);
    markSaved();
    return true;
}

} // namespace qvad::shell
