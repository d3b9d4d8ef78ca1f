#include "tooldeck/host/object_selection.h"

#include "tooldeck/host/CommandFrame.h"
#include "tooldeck/host/layer_locks.h"

#include <strings.h>

namespace qvtd {

std::vector<PickedObject> keepAccepted(const std::vector<EntityName>& names, const SelectionRules& rules,
                                       SkippedObjects& skipped) {
    LayerLocks locks;
    std::vector<PickedObject> kept;
    kept.reserve(names.size());
    for (const EntityName& name : names) {
        DataList data = DataList::ofEntity(name.data());
        if (!data) continue;
        if (rules.accepts && !rules.accepts(data)) {
            ++skipped.otherKinds;
            continue;
        }
        if (rules.skipLockedLayers && locks.locked(data.text(8, "0"))) {
            ++skipped.onLockedLayers;
            continue;
        }
        kept.push_back({name, std::move(data)});
    }
    return kept;
}

void printSkipped(const SkippedObjects& skipped) {
    if (skipped.onLockedLayers > 0)
        qvutPrintf("\n%ld object%s on locked layers %s skipped.", skipped.onLockedLayers,
                   skipped.onLockedLayers == 1 ? "" : "s", skipped.onLockedLayers == 1 ? "was" : "were");
    if (skipped.otherKinds > 0)
        qvutPrintf("\n%ld object%s of another kind %s skipped.", skipped.otherKinds,
                   skipped.otherKinds == 1 ? "" : "s", skipped.otherKinds == 1 ? "was" : "were");
}

std::optional<std::vector<PickedObject>> selectObjects(CommandFrame& frame, const SelectionRules& rules,
                                                       SkippedObjects* skippedOut) {
    SelectionSet selection;
    if (frame.hasImpliedSelection()) {
        selection.adopt(frame.impliedSelection());
        frame.releaseImpliedSelection();
    } else {
        const int status = selection.select(nullptr, nullptr, nullptr, rules.filter);
        if (status == QV_CANCEL) return std::nullopt;
        if (status != QV_NORM) return std::vector<PickedObject>{};
    }
    SkippedObjects skipped;
    std::vector<PickedObject> kept = keepAccepted(selection.members(), rules, skipped);
    printSkipped(skipped);
    if (skippedOut) *skippedOut = skipped;
    return kept;
}

bool isTextObject(const DataList& data) {
    const std::string type = data.text(0);
    for (const char* kind : {"TEXT", "MTEXT", "ATTRIB", "ATTDEF"})
        if (strcasecmp(type.c_str(), kind) == 0) return true;
    return false;
}

void printCount(long count, const char* noun) {
    qvutPrintf("\n%ld %s.", count, noun);
}

} // namespace qvtd
