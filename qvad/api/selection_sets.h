#pragma once
// Selection sets as the C interface hands them out. A set's name is {kSelectionTag, number}: the tag
// keeps it apart from entity names (whose first word is a small drawing serial). A set belongs to the
// drawing that was open when it was made and is refused once that drawing closes or the set is freed.

#include "qvad/api/qvad_api.h"
#include "qvad/api/selection_handle_set.h"
#include "qvad/db/handle.h"

#include <vector>

namespace qvad::api {

inline constexpr long long kSelectionTag = 0x5153454C45435400LL; // "QSELECT\0"

class SelectionSet {
public:
    const std::vector<qvad::Handle>& members() const { return m_members; }
    bool contains(qvad::Handle handle) const { return m_index.contains(handle); }
    // False when the entity was already there.
    bool add(qvad::Handle handle);
    bool remove(qvad::Handle handle);
    void clear();
    void reserve(std::size_t count);

private:
    std::vector<qvad::Handle> m_members;
    HandleSet m_index;
};

// A new set of the open drawing holding these entities; its name goes to name.
void makeSelection(const std::vector<qvad::Handle>& members, qv_name name);
// The live set a name stands for; null for a freed, stale, foreign or malformed name.
SelectionSet* selectionOf(const qv_name name);

// The pick-first set (what a command finds already selected) and the previous set (what the last
// selection prompt or built-in SELECT ended with), both of the open drawing; empty otherwise.
std::vector<qvad::Handle> pickFirstSet();
void setPickFirstSet(std::vector<qvad::Handle> handles);
std::vector<qvad::Handle> previousSet();
void setPreviousSet(std::vector<qvad::Handle> handles);

} // namespace qvad::api
