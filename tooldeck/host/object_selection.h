#pragma once
// The selection step most commands share: the pick-first set when there is one, else "Select
// objects:" with the host's full selection; objects on locked layers and objects of kinds the command
// does not work on are left out and counted in one line each.

#include "tooldeck/host/data_list.h"
#include "tooldeck/host/selection_set.h"

#include <functional>
#include <optional>
#include <vector>

namespace qvtd {

class CommandFrame;

struct PickedObject {
    EntityName name;
    DataList data; // without extended data
};

struct SelectionRules {
    // Null takes every kind; otherwise the kinds the command works on, judged from the data list.
    std::function<bool(const DataList&)> accepts;
    bool skipLockedLayers = true;
    // A filter list handed to the host's selection (not applied to the pick-first set).
    const qv_resbuf* filter = nullptr;
};

struct SkippedObjects {
    long onLockedLayers = 0;
    long otherKinds = 0;
};

// The kept objects in selection order, or nothing when the user cancelled. An empty answer at the
// prompt gives an empty list. The skipped counts are printed, and also handed back when asked for.
std::optional<std::vector<PickedObject>> selectObjects(CommandFrame& frame, const SelectionRules& rules,
                                                       SkippedObjects* skipped = nullptr);

// Keeps the objects the rules accept; the same counting as selectObjects, without printing.
std::vector<PickedObject> keepAccepted(const std::vector<EntityName>& names, const SelectionRules& rules,
                                       SkippedObjects& skipped);
void printSkipped(const SkippedObjects& skipped);

// True for TEXT, MTEXT, ATTRIB and ATTDEF.
bool isTextObject(const DataList& data);

// "\n<count> <noun>." as the commands close.
void printCount(long count, const char* noun);

} // namespace qvtd
