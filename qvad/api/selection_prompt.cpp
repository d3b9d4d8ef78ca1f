#include "qvad/api/selection_prompt.h"

#include "qvad/api/answers.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/input_points.h"
#include "qvad/api/selection_query.h"
#include "qvad/api/selection_sets.h"
#include "qvad/db/OdDbObject.h"
#include "qvad/ge/segment_tests.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>

namespace qvad::api {

namespace {

constexpr const char* kOptionsHint =
    "Expects a point or Window/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Previous/Last/Add/Remove/Undo, or "
    "#handle.";

std::string upperTrimmed(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    std::string out(text);
    for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

bool isAny(const std::string& word, std::initializer_list<const char*> names) {
    return std::any_of(names.begin(), names.end(), [&](const char* n) { return word == n; });
}

// A handle typed as "#1F": the entity when it may be picked.
std::optional<qvad::Handle> typedHandle(const std::string& word) {
    if (word.size() < 2 || word[0] != '#') return std::nullopt;
    qvad::Handle handle = 0;
    const char* end = word.data() + word.size();
    auto [at, error] = std::from_chars(word.data() + 1, end, handle, 16);
    if (error != std::errc() || at != end || handle == 0) return std::nullopt;
    return handle;
}

enum class PointRead { Point, Empty, Cancelled };

// Asks for a point until one comes, the answer is empty, or the prompt is cancelled.
PointRead readPoint(std::string_view prompt, OdGePoint2d& point) {
    while (true) {
        Answer answer;
        if (ask(prompt, answer) != ReadStatus::Answer || answer.kind == Answer::Kind::Cancel)
            return PointRead::Cancelled;
        if (answer.kind == Answer::Kind::Point) {
            point = answer.point.convert2d();
            setLastPoint(answer.point);
            return PointRead::Point;
        }
        if (answer.kind == Answer::Kind::Text) {
            if (upperTrimmed(answer.text).empty()) return PointRead::Empty;
            if (auto typed = parseTypedPoint(answer.text)) {
                point = typed->convert2d();
                setLastPoint(*typed);
                return PointRead::Point;
            }
        }
        show("\nInvalid point.");
    }
}

class SelectionSession {
public:
    SelectionSession(const SelectionPrompts& prompts, bool single, const SelectionFilter& filter)
        : m_prompts(prompts), m_single(single), m_filter(filter) {}

    int run(std::vector<qvad::Handle>& result) {
        while (true) {
            Answer answer;
            if (ask(m_adding ? m_prompts.select : m_prompts.remove, answer) != ReadStatus::Answer ||
                answer.kind == Answer::Kind::Cancel)
                return QV_CANCEL;
            const Step step = handle(answer);
            if (step == Step::Cancelled) return QV_CANCEL;
            if (step == Step::Finished || (m_single && step == Step::Found)) break;
        }
        result = m_set.members();
        if (!result.empty()) setPreviousSet(result);
        return QV_NORM;
    }

private:
    enum class Step { Again, Found, Finished, Cancelled };

    struct Change {
        bool added;
        std::vector<qvad::Handle> handles; // the ones that actually changed the set
    };

    Step handle(const Answer& answer) {
        switch (answer.kind) {
        case Answer::Kind::Point:
            setLastPoint(answer.point);
            return pickAt(answer.point.convert2d());
        case Answer::Kind::Entity: {
            OdDbObject* object = objectOf(answer.name);
            if (!object || !object->isEntity() || object->isErased()) return invalid();
            return apply({object->handle()});
        }
        case Answer::Kind::Selection: {
            const SelectionSet* set = selectionOf(answer.name);
            if (!set) return invalid();
            return apply(set->members());
        }
        case Answer::Kind::Text:
            return handleText(answer.text);
        default:
            return invalid();
        }
    }

    Step handleText(const std::string& text) {
        const std::string word = upperTrimmed(text);
        if (word.empty()) return Step::Finished;
        if (isAny(word, {"W", "WINDOW", "C", "CROSSING", "BOX"})) return byCorners(word);
        if (isAny(word, {"ALL"})) return apply(entitiesInCurrentSpace());
        if (isAny(word, {"F", "FENCE"})) return byPoints(AreaMode::Fence, "\nFirst fence point: ");
        if (isAny(word, {"WP", "WPOLYGON"}))
            return byPoints(AreaMode::WindowPolygon, "\nFirst polygon point: ");
        if (isAny(word, {"CP", "CPOLYGON"}))
            return byPoints(AreaMode::CrossingPolygon, "\nFirst polygon point: ");
        if (isAny(word, {"P", "PREVIOUS"})) return apply(liveOnly(previousSet()));
        if (isAny(word, {"L", "LAST"})) {
            const auto last = lastEntityInCurrentSpace();
            return apply(last ? std::vector<qvad::Handle>{*last} : std::vector<qvad::Handle>{});
        }
        if (isAny(word, {"A", "ADD"})) {
            m_adding = true;
            return Step::Again;
        }
        if (isAny(word, {"R", "REMOVE"})) {
            m_adding = false;
            return Step::Again;
        }
        if (isAny(word, {"U", "UNDO"})) return undo();
        if (word[0] == '#') {
            const auto handle = typedHandle(word);
            if (!handle || !pickableByHandle(*handle)) {
                show("\nNo object with handle " + text + " can be selected.");
                return Step::Again;
            }
            return apply({*handle});
        }
        if (auto point = parseTypedPoint(text)) {
            setLastPoint(*point);
            return pickAt(point->convert2d());
        }
        return invalid();
    }

    static std::vector<qvad::Handle> liveOnly(std::vector<qvad::Handle> handles) {
        std::erase_if(handles, [](qvad::Handle h) {
            qv_name name;
            nameOfHandle(h, name);
            const OdDbObject* object = objectOf(name);
            return !object || object->isErased();
        });
        return handles;
    }

    Step invalid() {
        show("\n*Invalid selection*\n");
        show(kOptionsHint);
        return Step::Again;
    }

    Step pickAt(const OdGePoint2d& point) {
        if (const auto hit = entityAtPoint(point)) {
            const std::vector<qvad::Handle> accepted = filtered({*hit}, m_filter);
            if (!accepted.empty()) return apply(accepted);
        }
        // A miss opens a window at the point: dragged to the right a window, to the left a crossing.
        OdGePoint2d corner;
        const PointRead read = readPoint("\nSpecify opposite corner: ", corner);
        if (read == PointRead::Cancelled) return Step::Cancelled;
        if (read == PointRead::Empty) return Step::Again;
        const OdGePoint2d corners[2] = {point, corner};
        return apply(entitiesInArea(corner.x >= point.x ? AreaMode::Window : AreaMode::Crossing, corners));
    }

    Step byCorners(const std::string& word) {
        OdGePoint2d first, second;
        PointRead read = readPoint("\nSpecify first corner: ", first);
        if (read == PointRead::Empty) return Step::Again;
        if (read == PointRead::Cancelled) return Step::Cancelled;
        read = readPoint("\nSpecify opposite corner: ", second);
        if (read == PointRead::Empty) return Step::Again;
        if (read == PointRead::Cancelled) return Step::Cancelled;
        AreaMode mode = word[0] == 'W' ? AreaMode::Window : AreaMode::Crossing;
        if (word == "BOX") mode = second.x >= first.x ? AreaMode::Window : AreaMode::Crossing;
        const OdGePoint2d corners[2] = {first, second};
        return apply(entitiesInArea(mode, corners));
    }

    Step byPoints(AreaMode mode, const char* firstPrompt) {
        std::vector<OdGePoint2d> points;
        while (true) {
            OdGePoint2d p;
            const PointRead read =
                readPoint(points.empty() ? firstPrompt : "\nSpecify endpoint of line: ", p);
            if (read == PointRead::Cancelled) return Step::Cancelled;
            if (read == PointRead::Empty) break;
            points.push_back(p);
        }
        const bool polygon = mode != AreaMode::Fence;
        if (points.size() < (polygon ? 3u : 2u) || (polygon && !qvad::ge::isSimplePolygon(points))) {
            show(polygon ? "\nA polygon needs three or more corners and edges that do not cross."
                         : "\nA fence needs two or more points.");
            return Step::Again;
        }
        return apply(entitiesInArea(mode, points));
    }

    Step apply(const std::vector<qvad::Handle>& found) {
        const std::vector<qvad::Handle> accepted = filtered(found, m_filter);
        Change change{m_adding, {}};
        for (qvad::Handle h : accepted)
            if (m_adding ? m_set.add(h) : m_set.remove(h)) change.handles.push_back(h);
        const std::size_t total = m_set.members().size();
        if (m_adding) {
            const std::size_t duplicates = accepted.size() - change.handles.size();
            std::string report = "\n" + std::to_string(accepted.size()) + " found";
            if (duplicates > 0) report += " (" + std::to_string(duplicates) + " duplicate)";
            if (duplicates > 0 || total != change.handles.size())
                report += ", " + std::to_string(total) + " total";
            show(report);
        } else {
            show("\n" + std::to_string(change.handles.size()) + " removed, " + std::to_string(total) +
                 " total");
        }
        const bool foundAny = !accepted.empty();
        m_history.push_back(std::move(change));
        return foundAny ? Step::Found : Step::Again;
    }

    Step undo() {
        if (m_history.empty()) {
            show("\nAll selection steps have been undone.");
            return Step::Again;
        }
        const Change last = std::move(m_history.back());
        m_history.pop_back();
        for (qvad::Handle h : last.handles) last.added ? m_set.remove(h) : m_set.add(h);
        show("\n" + std::to_string(m_set.members().size()) + " total");
        return Step::Again;
    }

    const SelectionPrompts& m_prompts;
    bool m_single;
    const SelectionFilter& m_filter;
    bool m_adding = true;
    SelectionSet m_set;
    std::vector<Change> m_history;
};

} // namespace

int promptSelection(const SelectionPrompts& prompts, bool single, const SelectionFilter& filter,
                    std::vector<qvad::Handle>& result) {
    result.clear();
    return SelectionSession(prompts, single, filter).run(result);
}

} // namespace qvad::api
