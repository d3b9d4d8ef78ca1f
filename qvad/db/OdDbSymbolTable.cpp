#include "qvad/db/OdDbSymbolTable.h"

bool equalsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 32);
        if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 32);
        if (x != y) return false;
    }
    return true;
}

OdDbSymbolTableRecord* OdDbSymbolTable::find(std::string_view name) const {
    for (OdDbSymbolTableRecord* r : m_records)
        if (!r->isErased() && equalsNoCase(r->name(), name)) return r;
    return nullptr;
}

bool OdDbBlockTableRecord::isModelSpace() const {
    return equalsNoCase(name(), "*Model_Space");
}

bool OdDbBlockTableRecord::isPaperSpace() const {
    std::string_view n = name();
    return n.size() >= 12 && equalsNoCase(n.substr(0, 12), "*Paper_Space");
}
