#pragma once
// A dialog layout in the readable text form resource libraries carry. There is no window: the layout
// lists the controls a dialog asks on the command line, in the order they are asked.
//
// Format: one statement per line; blank lines and lines whose first non-blank character is '#' are
// skipped. Tokens are separated by blanks; a token holding blanks is written in double quotes, inside
// which \" and \\ stand for " and \. A line is
//
//     KIND ID "TEXT" [VALUE] [NAME=VALUE ...] [disabled] [hidden]
//
// The first statement is `DIALOG <id> "<caption>"` and there is only one. Then, per control:
//
//     STATIC <id> "<text>"                       a label, printed once as a heading
//     CHECK  <id> "<label>" [0|1]                check box, unchecked unless 1
//     EDIT   <id> "<label>" ["<text>"]           edit box holding text
//     RADIO  <id> "<label>" [0|1] group="<name>" [key=<Word>]
//                                                one option of the radio group <name> (the question
//                                                asked for the group); key is the keyword that picks
//                                                it, by default the label's letters and digits
//     LIST   <id> "<label>" [<index>] [items="A|B|C"]  list box, item <index> (0-based) selected
//     COMBO  <id> "<label>" [<index>] [items="A|B|C"]  drop-down list, as LIST
//     BUTTON <id> "<label>"                      a push button; IDOK and IDCANCEL end the dialog
//
// ID is a decimal number or one of IDOK (1), IDCANCEL (2), IDC_STATIC (-1). Ids other than -1 are
// unique. Anything else (an unknown kind or attribute, a missing or extra token, an open quote, a
// selected index outside the items) makes the whole template invalid, with the line in the message.

#include <string>
#include <string_view>
#include <vector>

namespace qvad::shell {

enum class ControlKind { Static, Check, Edit, Radio, List, Combo, Button };

struct ControlTemplate {
    ControlKind kind = ControlKind::Static;
    int id = -1;
    std::string text;               // label, or the static text
    std::string value;              // EDIT: initial text
    bool checked = false;           // CHECK, RADIO
    std::string group;              // RADIO
    std::string keyword;            // RADIO
    std::vector<std::string> items; // LIST, COMBO
    int selected = -1;              // LIST, COMBO
    bool enabled = true;
    bool visible = true;
};

struct DialogTemplate {
    int id = 0;
    std::string caption;
    std::vector<ControlTemplate> controls;
};

struct DialogTemplateParse {
    DialogTemplate dialog;
    std::string error; // empty when the text was valid
    bool ok() const { return error.empty(); }
};

DialogTemplateParse parseDialogTemplate(std::string_view text);

} // namespace qvad::shell
