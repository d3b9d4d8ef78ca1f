// CECOLOR: the colour new objects get.

#include "qvad/api/sysvars_header.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/builtin_prompts.h"

namespace qvad::shell {
namespace {

std::string currentColor() {
    qv_resbuf value{};
    if (qvedGetVar("CECOLOR", &value) != QV_NORM || value.restype != QV_RTSTR || !value.resval.rstring)
        return "BYLAYER";
    std::string text = value.resval.rstring;
    qvad_free(value.resval.rstring);
    return text;
}

// The variable's own spelling of a colour number.
std::string colorSetting(int number) {
    if (number == 256) return "BYLAYER";
    if (number == 0) return "BYBLOCK";
    return std::to_string(number);
}

} // namespace

void cmdCeColor() {
    const std::string current = currentColor();
    for (;;) {
        std::optional<std::string> answer =
            askText("\nEnter default object color [Truecolor/COlorbook] <" + current + ">: ");
        if (!answer || answer->empty()) break;
        if (matchOption(*answer, {"Truecolor", "COlorbook"})) {
            say("Only indexed colors are available: enter BYLAYER, BYBLOCK, 1-255 or a color name.");
            continue;
        }
        std::optional<int> number = api::colorNumberOf(*answer);
        if (!number) {
            say("Invalid color \"" + *answer + "\": enter BYLAYER, BYBLOCK, 1-255 or a color name.");
            continue;
        }
        const std::string setting = colorSetting(*number);
        qv_resbuf value{};
        value.restype = QV_RTSTR;
        value.resval.rstring = const_cast<char*>(setting.c_str());
        if (qvedSetVar("CECOLOR", &value) != QV_NORM) say("The color could not be set.");
        break;
    }
    qvedRetVoid();
}

} // namespace qvad::shell
