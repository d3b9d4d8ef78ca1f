// Redrawing and temporary vectors without a screen: accepted, and highlighting remembered.

#include "qvad/api/display_state.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"

#include <map>
#include <utility>

namespace qvad::api {
namespace {

struct Shown {
    bool hidden = false;
    bool highlighted = false;
};

std::map<std::pair<long long, long long>, Shown>& shownEntities() {
    static std::map<std::pair<long long, long long>, Shown> entities;
    return entities;
}

const Shown* shownOf(const qv_name entity) {
    if (!entity) return nullptr;
    auto found = shownEntities().find({entity[0], entity[1]});
    return found == shownEntities().end() ? nullptr : &found->second;
}

} // namespace

bool isHighlighted(const qv_name entity) {
    const Shown* shown = shownOf(entity);
    return shown && shown->highlighted;
}

bool isHidden(const qv_name entity) {
    const Shown* shown = shownOf(entity);
    return shown && shown->hidden;
}

void clearDisplayState() {
    shownEntities().clear();
}

} // namespace qvad::api

using namespace qvad::api;

extern "C" QV_API int qvedRedraw(const qv_name entity, int mode) {
    return guarded([&] {
        if (!entity || isNullName(entity)) return QV_NORM;
        if (mode < 1 || mode > 4) return refuse(HostError::BadArgument);
        if (!objectOf(entity)) return refuse(HostError::BadEntityName);
        Shown& shown = shownEntities()[{entity[0], entity[1]}];
        switch (mode) {
        case 1:
            shown.hidden = false;
            break;
        case 2:
            shown.hidden = true;
            break;
        case 3:
            shown.highlighted = true;
            break;
        case 4:
            shown.highlighted = false;
            break;
        }
        return QV_NORM;
    });
}

extern "C" QV_API int qvedGrDraw(const qv_point from, const qv_point to, int colour, int highlight) {
    (void)colour;
    (void)highlight;
    return guarded([&] { return from && to ? QV_NORM : refuse(HostError::BadArgument); });
}
