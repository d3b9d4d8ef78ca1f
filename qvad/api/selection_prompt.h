#pragma once
// The "Select objects:" prompt. Answers: a point (picks within the aperture; a point that picks
// nothing starts a window whose other corner is asked: left to right a window, right to left a
// crossing), "#HANDLE", W, C, BOX, ALL, F, WP, CP, P, L, A, R, U, an entity or a selection set handed
// over by a feed, and an empty answer to finish. Each step reports what it found ("2 found (1
// duplicate), 3 total", "1 removed, 2 total"); a bad answer gets "*Invalid selection*" and the options.

#include "qvad/api/selection_filter.h"
#include "qvad/db/handle.h"

#include <string>
#include <vector>

namespace qvad::api {

struct SelectionPrompts {
    std::string select = "\nSelect objects: ";
    std::string remove = "\nRemove objects: ";
};

// QV_NORM with what was selected (possibly nothing), or QV_CANCEL when the prompt was cancelled or
// input ended. single: done after the first step that finds something. A non-empty result becomes
// the previous set.
int promptSelection(const SelectionPrompts& prompts, bool single, const SelectionFilter& filter,
                    std::vector<qvad::Handle>& result);

} // namespace qvad::api
