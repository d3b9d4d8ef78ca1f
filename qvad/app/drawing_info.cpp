#include "qvad/app/drawing_info.h"

#include "qvad/db/OdDbDatabase.h"

#include <map>
#include <string>

namespace qvad::app {
namespace {

std::string_view releaseName(std::string_view version) {
    static const std::map<std::string_view, std::string_view> names = {
        {"AC1002", "R2.5"},  {"AC1003", "R2.6"},  {"AC1004", "R9"},    {"AC1006", "R10"},
        {"AC1009", "R12"},   {"AC1012", "R13"},   {"AC1014", "R14"},   {"AC1015", "R2000"},
        {"AC1018", "R2004"}, {"AC1021", "R2007"}, {"AC1024", "R2010"}, {"AC1027", "R2013"},
        {"AC1032", "R2018"}};
    auto it = names.find(version);
    return it == names.end() ? "unknown" : it->second;
}

void countInto(const OdDbEntity& e, std::map<std::string, std::size_t>& counts) {
    if (e.isErased()) return;
    ++counts[std::string(e.typeName())];
}

} // namespace

void printDrawingInfo(const OdDbDatabase& db, std::ostream& out) {
    out << "Version: " << db.version() << " (" << releaseName(db.version()) << ")\n";
    out << "Code page: " << db.codePage() << "\n";
    std::size_t blockCount = 0;
    for (const OdDbBlockTableRecord* b : db.blocks()) {
        if (b->isErased()) continue;
        if (!b->isLayout()) {
            ++blockCount;
            continue;
        }
        std::map<std::string, std::size_t> counts;
        std::size_t total = 0;
        for (const OdDbEntity* e : b->entities()) {
            countInto(*e, counts);
            total += e->isErased() ? 0 : 1;
        }
        out << "Layout " << b->name() << ": " << total << (total == 1 ? " entity\n" : " entities\n");
        for (const auto& [type, n] : counts) out << "  " << type << " " << n << "\n";
    }
    out << "Block definitions: " << blockCount << "\n";
    for (const OdDbSymbolTable* t : db.tables())
        if (!t->isErased() && (t->name() == "LAYER" || t->name() == "STYLE" || t->name() == "LTYPE"))
            out << "Table " << t->name() << ": " << t->records().size() << " entries\n";
}

} // namespace qvad::app
