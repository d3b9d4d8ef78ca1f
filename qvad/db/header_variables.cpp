#include "qvad/db/header_variables.h"

#include "qvad/db/OdDbSymbolTable.h"

#include <algorithm>

const HeaderVariable* HeaderVariables::find(std::string_view name) const {
    for (const HeaderVariable& v : m_vars)
        if (equalsNoCase(v.name, name)) return &v;
    return nullptr;
}

HeaderVariable* HeaderVariables::find(std::string_view name) {
    return const_cast<HeaderVariable*>(static_cast<const HeaderVariables*>(this)->find(name));
}

std::string_view HeaderVariables::value(std::string_view name, std::string_view fallback) const {
    const HeaderVariable* v = find(name);
    return v && !v->tags.empty() ? v->tags.front().value() : fallback;
}

void HeaderVariables::set(std::string_view name, std::vector<qvad::dxf::Tag> tags) {
    notifyBeforeChange(name);
    if (HeaderVariable* v = find(name)) {
        v->tags = std::move(tags);
        return;
    }
    m_vars.push_back({name, std::move(tags)});
}

void HeaderVariables::remove(std::string_view name) {
    if (m_observer && find(name)) notifyBeforeChange(name);
    std::erase_if(m_vars, [&](const HeaderVariable& v) { return equalsNoCase(v.name, name); });
}
