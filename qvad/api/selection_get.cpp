// qvedSSGet: every way a module builds a selection set. Mode strings may carry the "_" of untranslated
// input. Points of W and C, and of the point lists of F, WP and CP, are taken as world coordinates.
// A selection that ends up empty is QV_ERROR with no set made, as modules test for "nothing picked".

#include "qvad/api/answers.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"
#include "qvad/api/selection_prompt.h"
#include "qvad/api/selection_query.h"
#include "qvad/api/selection_sets.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/ge/segment_tests.h"

#include <cctype>
#include <string>

namespace qvad::api {

namespace {

struct ModeRequest {
    std::string word;        // "", "I", "X", "W", "C", "F", "WP", "CP", "P", "L"
    bool single = false;     // :S
    bool ownPrompts = false; // :$ (or $)
    bool known = true;
};

ModeRequest parseMode(const char* mode) {
    ModeRequest request;
    if (!mode) return request;
    std::string text(mode);
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (!text.empty() && text[0] == '_') text.erase(0, 1);
    if (text == "$") {
        request.ownPrompts = true;
        return request;
    }
    if (text.empty() || text[0] != ':') {
        static const char* const words[] = {"I", "X", "W", "C", "F", "WP", "CP", "P", "L", "A"};
        request.known = false;
        for (const char* w : words)
            if (text == w) request.known = true;
        request.word = text == "A" ? "X" : text;
        return request;
    }
    // Colon options, any of them, in any order: ":S", ":$", ":E", ":N", ":M", ":U", ":V".
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] != ':' || i + 1 >= text.size()) {
            request.known = false;
            break;
        }
        const char option = text[i + 1];
        if (option == 'S')
            request.single = true;
        else if (option == '$')
            request.ownPrompts = true;
        else if (option != 'E' && option != 'N' && option != 'M' && option != 'U' && option != 'V')
            request.known = false;
        i += 2;
    }
    return request;
}

bool readPointList(const void* list, std::vector<OdGePoint2d>& points) {
    for (auto* rb = static_cast<const qv_resbuf*>(list); rb; rb = rb->rbnext) {
        if (rb->restype != QV_RTPOINT && rb->restype != QV_RT3DPOINT) return false;
        points.push_back({rb->resval.rpoint[0], rb->resval.rpoint[1]});
    }
    return true;
}

std::vector<qvad::Handle> stillThere(std::vector<qvad::Handle> handles) {
    std::erase_if(handles, [](qvad::Handle h) {
        qv_name name;
        nameOfHandle(h, name);
        const OdDbObject* object = objectOf(name);
        return !object || object->isErased();
    });
    return handles;
}

int refuseWith(const std::string& message) {
    show("\n" + message);
    return refuse(HostError::BadArgument);
}

int select(const char* mode, const void* point1, const void* point2, const qv_resbuf* filterList,
           qv_name selection) {
    clearName(selection);
    if (!HostSession::current().drawing()) return refuse(HostError::NoDrawing);
    const ModeRequest request = parseMode(mode);
    if (!request.known) return refuseWith(std::string("Unknown selection mode \"") + mode + "\".");
    std::string error;
    std::optional<SelectionFilter> filter = SelectionFilter::parse(filterList, error);
    if (!filter) return refuseWith("Bad selection filter: " + error + ".");

    std::vector<qvad::Handle> found;
    const std::string& word = request.word;
    if (word.empty()) {
        SelectionPrompts prompts;
        if (request.ownPrompts) {
            const auto* texts = static_cast<const char* const*>(point1);
            if (texts && texts[0]) prompts.select = texts[0];
            if (texts && texts[1]) prompts.remove = texts[1];
        }
        if (int status = promptSelection(prompts, request.single, *filter, found); status != QV_NORM)
            return status;
    } else if (word == "I") {
        found = filtered(stillThere(pickFirstSet()), *filter);
    } else if (word == "X") {
        found = filtered(allEntities(), *filter);
    } else if (word == "P") {
        found = filtered(stillThere(previousSet()), *filter);
    } else if (word == "L") {
        if (auto last = lastEntityInCurrentSpace()) found = filtered({*last}, *filter);
    } else if (word == "W" || word == "C") {
        if (!point1 || !point2) return refuseWith("A window needs two corners.");
        const auto* a = static_cast<const qv_real*>(point1);
        const auto* b = static_cast<const qv_real*>(point2);
        const OdGePoint2d corners[2] = {{a[0], a[1]}, {b[0], b[1]}};
        found =
            filtered(entitiesInArea(word == "W" ? AreaMode::Window : AreaMode::Crossing, corners), *filter);
    } else {
        std::vector<OdGePoint2d> points;
        if (!readPointList(point1, points))
            return refuseWith("The point list holds something other than points.");
        const bool polygon = word != "F";
        if (points.size() < (polygon ? 3u : 2u) || (polygon && !qvad::ge::isSimplePolygon(points)))
            return refuseWith(polygon ? "A polygon needs three or more corners and edges that do not cross."
                                      : "A fence needs two or more points.");
        const AreaMode area = word == "F"    ? AreaMode::Fence
                              : word == "WP" ? AreaMode::WindowPolygon
                                             : AreaMode::CrossingPolygon;
        found = filtered(entitiesInArea(area, points), *filter);
    }
    if (found.empty()) return QV_ERROR;
    if (!word.empty()) setPreviousSet(found);
    makeSelection(found, selection);
    return QV_NORM;
}

} // namespace

} // namespace qvad::api

extern "C" QV_API int qvedSSGet(const char* mode, const void* point1, const void* point2,
                                const struct qv_resbuf* filter, qv_name selection) {
    return qvad::api::guarded([&] {
        if (!selection) return qvad::api::refuse(qvad::api::HostError::BadArgument);
        return qvad::api::select(mode, point1, point2, filter, selection);
    });
}
