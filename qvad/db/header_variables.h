#pragma once
// The HEADER section: named variables, each a short list of tags, kept in file order so that
// variables this program does not know come out where they were.

#include "qvad/db/change_observer.h"
#include "qvad/dxf/tag.h"

#include <string_view>
#include <vector>

struct HeaderVariable {
    std::string_view name; // with its leading '$'
    std::vector<qvad::dxf::Tag> tags;
};

class HeaderVariables {
public:
    std::vector<HeaderVariable>& all() { return m_vars; }
    const std::vector<HeaderVariable>& all() const { return m_vars; }
    // Case-insensitive, as the names are.
    const HeaderVariable* find(std::string_view name) const;
    HeaderVariable* find(std::string_view name);
    // First tag's value of a variable, or the fallback.
    std::string_view value(std::string_view name, std::string_view fallback = {}) const;
    // Replaces the variable's tags, appending the variable when it is new.
    void set(std::string_view name, std::vector<qvad::dxf::Tag> tags);
    void remove(std::string_view name);
    // For code that edits a variable's tags in place through find() while a drawing is observed.
    void notifyBeforeChange(std::string_view name) {
        if (m_observer) m_observer->beforeHeaderChange(name);
    }
    void setObserver(ChangeObserver* observer) { m_observer = observer; }

private:
    ChangeObserver* m_observer = nullptr;
    std::vector<HeaderVariable> m_vars;
};
