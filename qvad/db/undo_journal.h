#pragma once
// Records every change made to a drawing so that it can be taken back exactly: the old state of each
// object the first time a step touches it, objects made and erased, header variables and the handle
// seed. Steps are what UNDO counts: one per command, or one per UNDO BEgin/End group however many
// commands run inside it. Groups nest: each BEgin needs its End before the group is one step.

#include "qvad/db/OdDbDatabase.h"

#include <memory>

class UndoJournal final : public ChangeObserver {
public:
    // Observes the drawing from now on (and stops in the destructor).
    explicit UndoJournal(OdDbDatabase& drawing);
    ~UndoJournal() override;

    // A command typed at the Command: prompt (not one run from inside another) starts and ends.
    // Groups the command opened and left open are closed at its end, except when the command was
    // UNDO BEgin itself (keepGroupsOpen).
    void commandStarted();
    void commandEnded(bool keepGroupsOpen = false);
    // Takes back everything the running command changed (its part of an open group too).
    void rollbackCommand();

    void beginGroup();
    // False when no group was open.
    bool endGroup();
    int groupDepth() const;
    void setAuto(bool on);
    bool autoMode() const;

    void mark();
    // Takes back steps up to the last mark (removing it); false when there was none and everything
    // recorded was taken back.
    bool backToMark();
    // Takes back up to count steps; how many were taken back.
    int undo(int count);
    // Re-applies what the last undo took back; false when there is nothing (any new change clears it).
    bool redo();
    int stepCount() const;

    // Turns recording off (a drawing opened from a file starts with an empty journal).
    void clear();

    void beforeModify(OdDbObject& object) override;
    void created(OdDbObject& object) override;
    void beforeEraseChange(OdDbObject& object, bool erasing) override;

private:
    struct State;
    std::unique_ptr<State> m_state;
};
