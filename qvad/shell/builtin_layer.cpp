// -LAYER: the layer table from the command line. Every change goes through the table interface
// (qvdbEntMake, qvdbEntMod) so that undo sees it like any other.

#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/builtin_prompts.h"

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace qvad::shell {
namespace {

constexpr int kFrozen = 1;
constexpr int kLocked = 4;

const char* const kColorNames[] = {"", "red", "yellow", "green", "cyan", "blue", "magenta", "white"};

std::string currentLayer() {
    qv_resbuf value{};
    if (qvedGetVar("CLAYER", &value) != QV_NORM || value.restype != QV_RTSTR || !value.resval.rstring)
        return "0";
    std::string name = value.resval.rstring;
    qvad_free(value.resval.rstring);
    return name;
}

bool setCurrentLayer(const std::string& name) {
    qv_resbuf value{};
    value.restype = QV_RTSTR;
    value.resval.rstring = const_cast<char*>(name.c_str());
    return qvedSetVar("CLAYER", &value) == QV_NORM;
}

bool sameLayer(const std::string& a, const std::string& b) {
    return upperCase(a) == upperCase(b);
}

// Names of the layers whose name matches one of the comma-separated patterns ("*" all).
std::vector<std::string> layersMatching(const std::string& patterns) {
    std::vector<std::string> names;
    const std::string upperPatterns = upperCase(patterns);
    for (int rewind = 1;; rewind = 0) {
        OwnedList record;
        if (qvdbTblNext("LAYER", rewind, record.out()) != QV_NORM || !record.get()) break;
        const qv_resbuf* name = record.find(2);
        if (!name || !name->resval.rstring) continue;
        if (qvutWcMatch(upperCase(name->resval.rstring).c_str(), upperPatterns.c_str()) == QV_NORM)
            names.emplace_back(name->resval.rstring);
    }
    return names;
}

struct LayerState {
    std::string name;
    int flags = 0;
    int color = 7; // negative: off
    std::string linetype;
};

std::optional<LayerState> readLayer(const std::string& name) {
    OwnedList record;
    if (qvdbTblSearch("LAYER", name.c_str(), 0, record.out()) != QV_NORM || !record.get())
        return std::nullopt;
    LayerState state;
    if (const qv_resbuf* rb = record.find(2); rb && rb->resval.rstring) state.name = rb->resval.rstring;
    if (const qv_resbuf* rb = record.find(70)) state.flags = rb->resval.rint;
    if (const qv_resbuf* rb = record.find(62)) state.color = rb->resval.rint;
    if (const qv_resbuf* rb = record.find(6); rb && rb->resval.rstring) state.linetype = rb->resval.rstring;
    return state;
}

// Rewrites the record's flags and colour; false (after a message) when the table refused.
bool writeLayer(const LayerState& state) {
    OwnedList record;
    if (qvdbTblSearch("LAYER", state.name.c_str(), 0, record.out()) != QV_NORM || !record.get()) return false;
    qv_resbuf* flags = record.find(70);
    qv_resbuf* color = record.find(62);
    if (!flags || !color) {
        say("Layer \"" + state.name + "\" cannot be changed.");
        return false;
    }
    flags->resval.rint = static_cast<short>(state.flags);
    color->resval.rint = static_cast<short>(state.color);
    if (qvdbEntMod(record.get()) != QV_NORM) {
        say("Layer \"" + state.name + "\" cannot be changed.");
        return false;
    }
    return true;
}

bool makeLayer(const std::string& name) {
    qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LAYER", 2, name.c_str(), 70, 0, 62, 7, 6, "Continuous", 0);
    OwnedList owned(list);
    if (!list || qvdbEntMake(list) != QV_NORM) {
        say("Invalid layer name \"" + name + "\".");
        return false;
    }
    return true;
}

std::string colorText(int color) {
    const int number = std::abs(color);
    if (number >= 1 && number <= 7) return std::to_string(number) + " (" + kColorNames[number] + ")";
    return std::to_string(number);
}

std::optional<int> parseColor(const std::string& text) {
    for (int i = 1; i <= 7; ++i)
        if (upperCase(text) == upperCase(kColorNames[i])) return i;
    char* end = nullptr;
    const long number = std::strtol(text.c_str(), &end, 10);
    if (!text.empty() && end && *end == '\0' && number >= 1 && number <= 255) return static_cast<int>(number);
    return std::nullopt;
}

// Asks for layer patterns and applies change to each matching layer; change returns false to skip one.
void changeLayers(const std::string& prompt, const std::function<bool(LayerState&)>& change,
                  const std::string& defaultPattern = {}) {
    std::optional<std::string> patterns =
        askText("\n" + prompt + (defaultPattern.empty() ? "" : " <" + defaultPattern + ">") + ": ", true);
    if (!patterns) return;
    if (patterns->empty()) patterns = defaultPattern;
    if (patterns->empty()) return;
    const std::vector<std::string> names = layersMatching(*patterns);
    if (names.empty()) {
        say("No matching layer names found.");
        return;
    }
    for (const std::string& name : names) {
        std::optional<LayerState> state = readLayer(name);
        if (state && change(*state)) writeLayer(*state);
    }
}

void listLayers() {
    std::optional<std::string> patterns = askText("\nEnter layer name(s) to list <*>: ", true);
    if (!patterns) return;
    const std::vector<std::string> names = layersMatching(patterns->empty() ? "*" : *patterns);
    const std::string current = currentLayer();
    say("Layer name                       State               Color        Linetype");
    for (const std::string& name : names) {
        std::optional<LayerState> state = readLayer(name);
        if (!state) continue;
        std::string flags = state->color < 0 ? "Off" : "On";
        flags += (state->flags & kFrozen) ? " Frozen" : "";
        flags += (state->flags & kLocked) ? " Locked" : "";
        char line[512];
        std::snprintf(line, sizeof line, "%-32s %-19s %-12s %s", name.c_str(), flags.c_str(),
                      colorText(state->color).c_str(), state->linetype.c_str());
        say(line);
    }
    say("Current layer: " + current);
}

void makeOrSetCurrent(bool create) {
    const std::string current = currentLayer();
    std::optional<std::string> name =
        askText(create ? "\nEnter name for new layer (becomes the current layer) <" + current + ">: "
                       : "\nEnter layer name to make current <" + current + ">: ",
                true);
    if (!name) return;
    if (name->empty()) return;
    std::optional<LayerState> state = readLayer(*name);
    if (!state) {
        if (!create) {
            say("Cannot find layer \"" + *name + "\".");
            return;
        }
        if (!makeLayer(*name)) return;
        state = readLayer(*name);
        if (!state) return;
    }
    if (state->flags & kFrozen) {
        say("Cannot make layer \"" + state->name + "\" current: it is frozen.");
        return;
    }
    if (!setCurrentLayer(state->name)) say("Cannot make layer \"" + state->name + "\" current.");
}

void newLayers() {
    std::optional<std::string> list = askText("\nEnter name list for new layer(s): ", true);
    if (!list) return;
    for (const std::string& name : splitNames(*list))
        if (!readLayer(name)) makeLayer(name);
}

void colorLayers() {
    std::optional<int> color;
    while (!color) {
        std::optional<std::string> text = askText("\nEnter color name or number (1-255): ");
        if (!text || text->empty()) return;
        color = parseColor(*text);
        if (!color) say("Enter a color number from 1 to 255 or a standard color name.");
    }
    const std::string current = currentLayer();
    changeLayers(
        "Enter name list of layer(s) for color " + colorText(*color),
        [&](LayerState& state) {
            state.color = state.color < 0 ? -*color : *color;
            return true;
        },
        current);
}

} // namespace

void cmdLayer() {
    const std::vector<std::string_view> options = {"?",     "Make", "Set",    "New",    "ON",  "OFF",
                                                   "Color", "LOck", "Unlock", "Freeze", "Thaw"};
    for (;;) {
        std::optional<std::string> answer =
            askText("\nEnter an option [?/Make/Set/New/ON/OFF/Color/LOck/Unlock/Freeze/Thaw]: ");
        if (!answer || answer->empty()) break;
        std::optional<std::size_t> option = matchOption(*answer, options);
        if (!option) {
            say("Invalid option keyword.");
            continue;
        }
        const std::string current = currentLayer();
        switch (*option) {
        case 0:
            listLayers();
            break;
        case 1:
            makeOrSetCurrent(true);
            break;
        case 2:
            makeOrSetCurrent(false);
            break;
        case 3:
            newLayers();
            break;
        case 4:
            changeLayers("Enter name list of layer(s) to turn On", [](LayerState& state) {
                state.color = std::abs(state.color);
                return true;
            });
            break;
        case 5:
            changeLayers("Enter name list of layer(s) to turn Off", [&](LayerState& state) {
                if (sameLayer(state.name, current)) {
                    say("Cannot turn off the current layer \"" + state.name + "\".");
                    return false;
                }
                state.color = -std::abs(state.color);
                return true;
            });
            break;
        case 6:
            colorLayers();
            break;
        case 7:
            changeLayers("Enter name list of layer(s) to lock", [](LayerState& state) {
                state.flags |= kLocked;
                return true;
            });
            break;
        case 8:
            changeLayers("Enter name list of layer(s) to unlock", [](LayerState& state) {
                state.flags &= ~kLocked;
                return true;
            });
            break;
        case 9:
            changeLayers("Enter name list of layer(s) to freeze", [&](LayerState& state) {
                if (sameLayer(state.name, current)) {
                    say("Cannot freeze the current layer \"" + state.name + "\".");
                    return false;
                }
                state.flags |= kFrozen;
                return true;
            });
            break;
        case 10:
            changeLayers("Enter name list of layer(s) to thaw", [](LayerState& state) {
                state.flags &= ~kFrozen;
                return true;
            });
            break;
        }
    }
    qvedRetVoid();
}

} // namespace qvad::shell
