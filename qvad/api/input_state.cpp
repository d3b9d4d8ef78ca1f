#include "qvad/api/input_state.h"

namespace qvad::api {
namespace {

struct InputState {
    InputControls pending;
    std::string lastInput;
    bool ended = false;
    ReturnValue returned;
};

InputState& state() {
    static InputState s;
    return s;
}

} // namespace

void setPendingControls(InputControls controls) {
    state().pending = std::move(controls);
}

InputControls takePendingControls() {
    InputControls taken = std::move(state().pending);
    state().pending = InputControls{};
    return taken;
}

const std::string& lastInputText() {
    return state().lastInput;
}

void setLastInputText(std::string text) {
    state().lastInput = std::move(text);
}

bool inputEnded() {
    return state().ended;
}

void clearInputEnded() {
    state().ended = false;
}

void markInputEnded() {
    state().ended = true;
}

const ReturnValue& lastReturnValue() {
    return state().returned;
}

void setLastReturnValue(ReturnValue value) {
    state().returned = std::move(value);
}

void clearLastReturnValue() {
    state().returned = ReturnValue{};
}

} // namespace qvad::api
