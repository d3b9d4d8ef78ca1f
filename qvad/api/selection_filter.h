#pragma once
// Filter lists of selection: group tests on an entity's data list, relational tests (-4 before a
// group), logical groupings (-4 "<AND" ... "AND>" and OR, XOR, NOT), and extended-data application
// names (-3 then 1001 names). Text tests take wildcards and ignore case. Groups an entity leaves out
// are tested with their defaults (8 layer "0", 6 linetype and 62 colour BYLAYER, 67 model space).

#include "qvad/api/qvad_api.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvad::api {

struct FilterNode;

class SelectionFilter {
public:
    SelectionFilter();
    ~SelectionFilter();
    SelectionFilter(SelectionFilter&&) noexcept;
    SelectionFilter& operator=(SelectionFilter&&) noexcept;

    // nullopt with a message saying what is wrong for a malformed list; a null list passes everything.
    static std::optional<SelectionFilter> parse(const qv_resbuf* list, std::string& error);
    bool passesEverything() const;
    // Whether extended data must be read into the data lists handed to matches().
    bool needsExtendedData() const { return m_needsXData; }
    // dataList: the entity's data list, with extended data when needsExtendedData().
    bool matches(const qv_resbuf* dataList) const;

private:
    std::unique_ptr<FilterNode> m_root;
    bool m_needsXData = false;
};

} // namespace qvad::api
