#pragma once
// The drawing the host has open: where it came from, its undo journal, whether it changed since it was
// last saved, and opening, saving and closing it. The exported interface (HostSession) and the system
// variables (SysVarSession) are kept pointing at it.

#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/undo_journal.h"

#include <memory>
#include <string>

namespace qvad::shell {

class DrawingSession {
public:
    static DrawingSession& current();

    // Opens a drawing file (message printed and false when it cannot be read; the open drawing stays).
    bool open(const std::string& path);
    // A new drawing from the built-in template.
    void openNew();
    void close();

    OdDbDatabase* drawing() const { return m_drawing.get(); }
    UndoJournal* journal() const { return m_journal.get(); }
    const std::string& path() const { return m_path; }

    // True when the drawing changed since it was opened or last saved.
    bool modified() const;
    void markSaved();

    // Saves to path (the drawing's own file when empty) safely; message printed and false on failure.
    bool save(const std::string& path = {});

    bool quitRequested() const { return m_quit; }
    void requestQuit() { m_quit = true; }

private:
    std::unique_ptr<OdDbDatabase> m_drawing;
    std::unique_ptr<UndoJournal> m_journal;
    std::string m_path;
    bool m_quit = false;
    long m_savedStepMark = 0;
};

} // namespace qvad::shell
