#pragma once
// Records every change made to a drawing so that it can be taken back exactly: the old state of each
// object the first time a step touches it, objects made and erased, header variables and the handle
// seed. Steps are what UNDO counts: one per command, or one per UNDO BEgin/End group however many
// commands run inside it. Groups nest: each BEgin needs its End before the group is one step.
// Changes made while no command runs and no group is open gather into one step that closes when the
// next command starts or an undo is asked for.

#include "qvad/db/OdDbDatabase.h"

#include <memory>

class UndoJournal final : public ChangeObserver {
public:
    // Observes the drawing from now on (and stops in the destructor).
    explicit UndoJournal(OdDbDatabase& drawing);
    ~UndoJournal() override;
    UndoJournal(const UndoJournal&) = delete;
    UndoJournal& operator=(const UndoJournal&) = delete;

    // A command typed at the Command: prompt (not one run from inside another) starts and ends.
    // Groups the command opened and left open are closed at its end (a group opened before it stays
    // open), except when the command was UNDO itself: UNDO BEgin opens a group on purpose.
    void commandStarted();
    // undoCommand: UNDO, U or REDO itself, which leave the groups as they set them and are no step of
    // their own. Every other command is one step, even one that changed nothing, so that U after LIST
    // takes back LIST and not the command before it.
    void commandEnded(bool undoCommand = false);
    bool commandRunning() const;
    // Takes back everything the running command changed (its part of an open group too).
    void rollbackCommand();

    void beginGroup();
    // False when no group was open.
    bool endGroup();
    int groupDepth() const;
    void setAuto(bool on);
    bool autoMode() const;

    void mark();
    bool hasMark() const;
    // Takes back steps up to the last mark (removing it); false when there was none and everything
    // recorded was taken back.
    bool backToMark();
    // Takes back up to count steps; how many were taken back. Open groups close first, so a group
    // still open is taken back as one step.
    int undo(int count);
    // Re-applies what the last undo took back; false when there is nothing (any new change clears it).
    bool redo();
    // Steps that undo can take back (marks not counted).
    int stepCount() const;

    // Names the drawing's state for "modified since saved": it moves with every change, undo and
    // redo, and comes back to an earlier value only when undo or redo brings that very state back.
    long changeCount() const;

    // Forgets everything recorded (a drawing opened from a file starts with an empty journal); the
    // drawing stays observed.
    void clear();

    void beforeModify(OdDbObject& object) override;
    void created(OdDbObject& object) override;
    void beforeEraseChange(OdDbObject& object, bool erasing) override;
    void beforeHeaderChange(std::string_view name) override;
    void beforeHandseedChange() override;

private:
    struct State;
    std::unique_ptr<State> m_state;
};
