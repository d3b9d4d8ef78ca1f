// txt2mtxt: joins single-line texts into one multiline text, keeping height and colour changes as
// format codes, and erases the sources, all in one undo group.

#include "qvad/api/qvad_api.h"
#include "tooldeck/commands/text/CTxt2mtxtDialog.h"
#include "tooldeck/commands/text/txt2mtxt_join.h"
#include "tooldeck/host/data_list.h"
#include "tooldeck/host/host_variables.h"
#include "tooldeck/host/layer_locks.h"
#include "tooldeck/host/selection_set.h"
#include "tooldeck/module/ResourceText.h"
#include "tooldeck/module/command_handlers.h"
#include "tooldeck/module/settings.h"

#include <array>
#include <cmath>
#include <cstring>
#include <strings.h>
#include <vector>

namespace qvtd::cmd {

namespace {

using txt2mtxt::Point3;
using txt2mtxt::SourceText;

constexpr unsigned kSelectedText = 2040;
constexpr unsigned kCountEnd = 2041;
constexpr unsigned kSelectPrompt = 2042;
constexpr unsigned kNothingToJoin = 2043;
constexpr unsigned kJoinedText = 2044;
constexpr unsigned kSkippedText = 2046;

// CMDECHO is 0 while the command runs and comes back on every way out.
class EchoSilenced {
public:
    EchoSilenced() : m_saved(getShortVar("CMDECHO")) { setShortVar("CMDECHO", 0); }
    ~EchoSilenced() { setShortVar("CMDECHO", m_saved); }
    EchoSilenced(const EchoSilenced&) = delete;
    EchoSilenced& operator=(const EchoSilenced&) = delete;

private:
    short m_saved;
};

struct Settings {
    bool selectionOrder;
    bool wordWrap;
};

// The command's own defaults: top to bottom, word wrap.
Settings readSettings() {
    return {readSettingBool("TXT2MTXT_SELECTTYPE", false), readSettingBool("TXT2MTXT_WORDWARD", true)};
}

void printCount(unsigned before, long count, unsigned after) {
    ResourceText first(before, "error");
    ResourceText last(after, "error");
    qvutPrintf("%s%d%s", first.fetch(), static_cast<int>(count), last.fetch());
}

void printText(unsigned id) {
    ResourceText text(id, "error");
    qvutPrintf("%s", text.fetch());
}

// The members that are single-line texts on unlocked layers, in selection order.
std::vector<EntityName> joinableTexts(const std::vector<EntityName>& members, bool exactTypeName) {
    std::vector<EntityName> kept;
    LayerLocks locks;
    for (const EntityName& name : members) {
        DataList data;
        if (qvdbEntGet(name.data(), data.out()) != QV_NORM) continue;
        const std::string type = data.text(0);
        const bool isText = exactTypeName ? type == "TEXT" : strcasecmp(type.c_str(), "TEXT") == 0;
        if (isText && !locks.locked(data.text(8))) kept.push_back(name);
    }
    return kept;
}

struct TextEntity {
    EntityName name;
    SourceText source;
    std::string layer;
    std::string style;
    Point3 extrusion{0.0, 0.0, 1.0};
};

bool readText(const EntityName& name, TextEntity& entity) {
    DataList data;
    if (qvdbEntGet(name.data(), data.out()) != QV_NORM) return false;
    entity.name = name;
    SourceText& source = entity.source;
    source.text = data.text(1);
    source.alignment = data.point(10, Point3{});
    source.height = data.real(40, 0.0);
    source.rotation = data.real(50, 0.0);
    source.colour = static_cast<int>(data.integer(62, 256));
    entity.layer = data.text(8);
    entity.style = data.text(7);
    // A text without a style group uses the drawing's standard style; the new text must name it.
    if (entity.style.empty()) entity.style = "Standard";
    entity.extrusion = data.point(210, Point3{0.0, 0.0, 1.0});
    qv_point lowerLeft = {0, 0, 0};
    qv_point upperRight = {0, 0, 0};
    if (qvedTextBox(data.get(), lowerLeft, upperRight) == QV_NORM)
        source.boxLength = upperRight[0] - lowerLeft[0];
    return true;
}

std::string hostHeightText(double height) {
    char text[64] = {};
    if (qvdbRToS(height, 2, -1, text, sizeof text) != QV_NORM) std::snprintf(text, sizeof text, "%g", height);
    return text;
}

Point3 toWorld(const Point3& value, const Point3& extrusion, bool displacement) {
    DataList from(qvutBuildList(QV_RT3DPOINT, extrusion.data(), 0));
    DataList to(qvutBuildList(QV_RTSHORT, 0, 0));
    qv_point result = {value[0], value[1], value[2]};
    if (!from.get() || !to.get() ||
        qvedTrans(value.data(), from.get(), to.get(), displacement ? 1 : 0, result) != QV_NORM)
        return value;
    return {result[0], result[1], result[2]};
}

// Both orderings end here: the first text leads, the MTEXT is made, then the sources go.
void joinInOrder(const std::vector<TextEntity>& ordered, bool wordWrap) {
    if (ordered.empty()) return;
    std::vector<SourceText> sources;
    sources.reserve(ordered.size());
    for (const TextEntity& text : ordered) sources.push_back(text.source);
    const txt2mtxt::JoinedText joined = txt2mtxt::joinTexts(sources, wordWrap, hostHeightText);

    const TextEntity& lead = ordered.front();
    const Point3 insertion = toWorld(joined.insertion, lead.extrusion, false);
    const Point3 direction =
        toWorld({std::cos(lead.source.rotation), std::sin(lead.source.rotation), 0.0}, lead.extrusion, true);
    // The host keeps the groups as listed, and readers of newer drawing versions want the subclass
    // markers, with the colour among the common entity groups.
    DataList mtext(qvutBuildList(QV_RTDXF0, "MTEXT", 100, "AcDbEntity", 8, lead.layer.c_str(), 62,
                                 lead.source.colour, 100, "AcDbMText", 10, insertion.data(), 40,
                                 lead.source.height, 41, joined.width, 71, 1, 72, 5, 1,
                                 joined.contents.c_str(), 7, lead.style.c_str(), 11, direction.data(), 0));
    // Made before anything is erased, so that a refused entity leaves the drawing as it was.
    if (!mtext.get() || qvdbEntMake(mtext.get()) != QV_NORM) {
        printText(625);
        return;
    }
    for (std::size_t i = 1; i < ordered.size(); ++i) qvdbEntDel(ordered[i].name.data());
    qvdbEntDel(lead.name.data());
    ResourceText joinedText(kJoinedText, "error");
    qvutPrintf("%d%s", static_cast<int>(ordered.size()), joinedText.fetch());
}

std::vector<TextEntity> readTexts(const std::vector<EntityName>& names) {
    std::vector<TextEntity> texts;
    texts.reserve(names.size());
    for (const EntityName& name : names) {
        TextEntity text;
        if (readText(name, text)) texts.push_back(std::move(text));
    }
    return texts;
}

void joinInSelectionOrder(const std::vector<EntityName>& names, bool wordWrap) {
    joinInOrder(readTexts(names), wordWrap);
}

void joinTopToBottom(const std::vector<EntityName>& names, bool wordWrap) {
    std::vector<TextEntity> texts = readTexts(names);
    std::vector<double> ys;
    ys.reserve(texts.size());
    for (const TextEntity& text : texts) ys.push_back(text.source.alignment[1]);
    std::vector<TextEntity> ordered;
    ordered.reserve(texts.size());
    for (std::size_t index : txt2mtxt::positionOrder(ys)) ordered.push_back(std::move(texts[index]));
    joinInOrder(ordered, wordWrap);
}

// Filters the chosen set, reports what it dropped and joins the rest in one undo group.
void joinSelection(const SelectionSet& selection, const Settings& settings) {
    const std::vector<EntityName> members = selection.members();
    const std::vector<EntityName> texts = joinableTexts(members, false);
    const long selected = static_cast<long>(members.size());
    const long kept = static_cast<long>(texts.size());
    if (kept < selected) printCount(kSkippedText, selected - kept, kCountEnd);
    if (kept == 0) {
        // The first count already said how many went; this one repeats the total, as the messages go.
        printCount(kSkippedText, selected, kCountEnd);
        printText(kNothingToJoin);
        return;
    }
    qvedCommand(QV_RTSTR, "Undo", QV_RTSTR, "BE", 0);
    if (settings.selectionOrder)
        joinInSelectionOrder(texts, settings.wordWrap);
    else
        joinTopToBottom(texts, settings.wordWrap);
    qvedCommand(QV_RTSTR, "Undo", QV_RTSTR, "E", 0);
}

bool isEmptyAnswer(short errorNumber) {
    return errorNumber == 0 || errorNumber == 2 || errorNumber == 74;
}

void runTxt2mtxt() {
    EchoSilenced echo;
    Settings settings = readSettings();

    SelectionSet selection;
    if (selection.select("I") == QV_NORM && selection.length() >= 2) {
        const long selected = selection.length();
        const long valid = static_cast<long>(joinableTexts(selection.members(), true).size());
        printCount(kSelectedText, selected, kCountEnd);
        if (valid >= 2) {
            joinSelection(selection, settings);
            return;
        }
        printCount(kSkippedText, valid, kCountEnd);
    }
    selection.release();

    while (true) {
        printText(kSelectPrompt);
        // A failure left over from an earlier call must not hide an empty answer.
        setShortVar("ERRNO", 0);
        const int status = selection.select();
        if (status == QV_NORM) break;
        if (status == QV_CANCEL) return;
        if (isEmptyAnswer(getShortVar("ERRNO"))) {
            CTxt2mtxtDialog dialog(nullptr);
            if (dialog.DoModal() == IDOK) settings = readSettings();
        }
    }
    joinSelection(selection, settings);
}

} // namespace

void cmd_txt2mtxt() {
    runTxt2mtxt();
    qvedRetVoid();
}

} // namespace qvtd::cmd
