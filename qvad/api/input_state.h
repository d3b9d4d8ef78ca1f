#pragma once
// What the input functions leave behind for the command processor and for the next call: the
// qvedInitGet settings waiting for the next input call, the keyword or text of the last input call,
// whether the input has ended for good, and the value a command handed back with qvedRet*.

#include "qvad/api/input_keywords.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace qvad::api {

// Set by qvedInitGet, taken (and so cleared) by the next input call.
struct InputControls {
    int bits = 0;
    KeywordList keywords;
};
void setPendingControls(InputControls controls);
InputControls takePendingControls();

// The keyword or arbitrary text the last input call returned (qvedGetInput); empty otherwise.
const std::string& lastInputText();
void setLastInputText(std::string text);

// True once a prompt met the end of all input (end of script or of standard input). The prompt
// returned QV_CANCEL; the command processor uses this to stop reading commands.
bool inputEnded();
void clearInputEnded();
void markInputEnded();

// What a command returned through qvedRetVoid/RetInt/RetNil/RetList.
struct ReturnValue {
    enum class Kind { None, Void, Int, Nil, List };
    Kind kind = Kind::None;
    int integer = 0;
    // A copy of the list as (type code, text) pairs for the command processor to print or pass on.
    struct Item {
        short type = 0;
        std::string text;
    };
    std::vector<Item> list;
};
const ReturnValue& lastReturnValue();
void setLastReturnValue(ReturnValue value);
// The command processor clears it before running a command.
void clearLastReturnValue();

} // namespace qvad::api
