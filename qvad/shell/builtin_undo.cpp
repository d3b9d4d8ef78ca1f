// UNDO, U and REDO: take back and re-apply steps of the drawing's undo journal. Run through
// qvedCommand inside another command, UNDO only opens and closes groups: taking back steps there
// would take back the running command under its feet.

#include "qvad/api/qvad_api.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/builtin_prompts.h"
#include "qvad/shell/command_processor.h"
#include "qvad/shell/drawing_session.h"

#include <string>
#include <vector>

namespace qvad::shell {

namespace {

// What UNDO Control was last told; only remembered.
std::string g_controlMode = "All";

UndoJournal* journalOrSay() {
    UndoJournal* journal = DrawingSession::current().journal();
    if (!journal) say("No drawing is open.");
    return journal;
}

bool runningInsideAnotherCommand() {
    return commandDepth() > 1;
}

void reportUndone(const char* command, int count) {
    if (count == 0)
        say(std::string() + command + ": nothing to undo.");
    else
        say(std::string() + command + ": " + std::to_string(count) + (count == 1 ? " step" : " steps") +
            " undone.");
}

void undoSteps(UndoJournal& journal, int count) {
    if (runningInsideAnotherCommand()) {
        say("UNDO: inside another command only BEgin and End apply.");
        return;
    }
    reportUndone("UNDO", journal.undo(count));
}

void askAuto(UndoJournal& journal) {
    char word[16] = "";
    qvedInitGet(0, "ON OFF");
    const std::string prompt =
        std::string("\nEnter UNDO Auto mode [ON/OFF] <") + (journal.autoMode() ? "ON" : "OFF") + ">: ";
    const int status = qvedGetKword(prompt.c_str(), word, sizeof word);
    if (status == QV_NORM) journal.setAuto(upperCase(word) == "ON");
}

void askControl() {
    char word[16] = "";
    qvedInitGet(0, "All None One");
    const std::string prompt = "\nEnter an UNDO control option [All/None/One] <" + g_controlMode + ">: ";
    if (qvedGetKword(prompt.c_str(), word, sizeof word) != QV_NORM || !*word) return;
    static const std::vector<std::string_view> kModes = {"All", "None", "One"};
    if (auto index = matchOption(word, kModes)) g_controlMode = std::string(kModes[*index]);
}

void goBack(UndoJournal& journal) {
    if (runningInsideAnotherCommand()) {
        say("UNDO: inside another command only BEgin and End apply.");
        return;
    }
    if (!journal.hasMark()) {
        char word[16] = "";
        qvedInitGet(0, "Yes No");
        const int status =
            qvedGetKword("\nThis will undo everything. OK? [Yes/No] <Yes>: ", word, sizeof word);
        if (status == QV_CANCEL || status == QV_ERROR || upperCase(word) == "NO") return;
    }
    const int before = journal.stepCount();
    const bool found = journal.backToMark();
    reportUndone("UNDO", before - journal.stepCount());
    if (!found) say("Everything has been undone.");
}

} // namespace

void cmdUndo() {
    UndoJournal* journal = journalOrSay();
    if (!journal) return;
    // "G" is the short form scripts use for BEgin; the list only names the long one.
    static const std::vector<std::string_view> kOptions = {"Auto", "Control", "BEgin", "End",
                                                           "Mark", "Back",    "G"};
    qvedInitGet(QV_INP_NOZERO | QV_INP_NONEG, "Auto Control BEgin End Mark Back G");
    int count = 1;
    const int status = qvedGetInt(
        "\nEnter the number of operations to undo or [Auto/Control/BEgin/End/Mark/Back] <1>: ", &count);
    if (status == QV_CANCEL || status == QV_ERROR) return;
    if (status != QV_KWORD) {
        undoSteps(*journal, status == QV_NORM ? count : 1);
        return;
    }
    char word[32] = "";
    qvedGetInput(word, sizeof word);
    const auto option = matchOption(word, kOptions);
    if (!option) {
        say("UNDO: unknown option \"" + std::string(word) + "\".");
        return;
    }
    switch (*option) {
    case 0:
        askAuto(*journal);
        break;
    case 1:
        askControl();
        break;
    case 2:
    case 6:
        journal->beginGroup();
        break;
    case 3:
        if (!journal->endGroup()) say("UNDO: no group is open.");
        break;
    case 4:
        journal->mark();
        break;
    case 5:
        goBack(*journal);
        break;
    }
}

void cmdU() {
    UndoJournal* journal = journalOrSay();
    if (!journal) return;
    if (runningInsideAnotherCommand()) {
        say("U: cannot undo inside another command.");
        return;
    }
    reportUndone("U", journal->undo(1));
}

void cmdRedo() {
    UndoJournal* journal = journalOrSay();
    if (!journal) return;
    if (runningInsideAnotherCommand()) {
        say("REDO: cannot redo inside another command.");
        return;
    }
    if (journal->redo())
        say("REDO: done.");
    else
        say("REDO: nothing to redo.");
}

} // namespace qvad::shell
