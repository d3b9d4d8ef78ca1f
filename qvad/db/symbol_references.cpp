#include "qvad/db/symbol_references.h"

#include "qvad/db/dictionary_entries.h"
#include "qvad/db/table_records.h"

#include <functional>
#include <map>
#include <set>

namespace qvad::db {
namespace {

constexpr std::string_view kForbidden = "<>/\\\":;?*=`";

std::string upper(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return out;
}

std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size() && i < 5; ++i) text += (i ? ", \"" : "\"") + names[i] + "\"";
    if (names.size() > 5) text += ", ...";
    return text;
}

bool namesTextStyle(std::string_view type) {
    return type == "TEXT" || type == "ATTDEF" || type == "ATTRIB" || type == "MTEXT";
}

bool namesDimensionStyle(std::string_view type) {
    return type == "DIMENSION" || type == "LEADER" || type == "TOLERANCE";
}

class ReferenceMender {
public:
    ReferenceMender(OdDbDatabase& db, bool reportAdded) : m_db(db), m_reportAdded(reportAdded) {}

    void run() {
        nameNamelessRecords();
        renameInvalidLayers();
        std::vector<std::string> layers, linetypes, styles, dimStyles;
        forEachEntity([&](OdDbEntity& e) {
            need("LAYER", e.getString(8, "0"), layers);
            std::string_view linetype = e.getString(6);
            if (!linetype.empty()) need("LTYPE", linetype, linetypes);
            if (namesTextStyle(e.typeName())) need("STYLE", e.getString(7, "Standard"), styles);
            if (namesDimensionStyle(e.typeName())) need("DIMSTYLE", e.getString(3, "Standard"), dimStyles);
        });
        // The header's current layer, linetype and styles must exist too, for what is drawn next; many
        // writers leave them undefined, and readers quietly fall back, so these go unreported.
        std::vector<std::string> current[4];
        need("LAYER", headerName("$CLAYER"), current[0]);
        need("LTYPE", headerName("$CELTYPE"), current[1]);
        need("STYLE", headerName("$TEXTSTYLE"), current[2]);
        need("DIMSTYLE", headerName("$DIMSTYLE"), current[3]);
        for (const auto& names : {layers, current[0]})
            for (const std::string& name : names) addLayer(name);
        if (OdDbSymbolTable* table = m_db.table("LAYER"))
            for (OdDbSymbolTableRecord* layer : table->records())
                if (!layer->getString(6).empty()) need("LTYPE", layer->getString(6), linetypes);
        for (const auto& names : {linetypes, current[1]})
            for (const std::string& name : names) addLinetype(name);
        std::vector<std::string> applications;
        for (const auto& o : m_db.allObjects()) {
            if (o->isErased()) continue;
            auto tags = o->tags();
            for (std::size_t i = o->xdataStart(); i < tags.size(); ++i)
                if (tags[i].code == 1001) need("APPID", tags[i].value(), applications);
        }
        for (const std::string& name : applications) addApplication(name);
        for (const auto& names : {styles, current[2]})
            for (const std::string& name : names) addTextStyle(name);
        for (const auto& names : {dimStyles, current[3]})
            for (const std::string& name : names) addDimensionStyle(name);
        report("layers", layers);
        report("linetypes", linetypes);
        report("text styles", styles);
        report("dimension styles", dimStyles);
        report("applications", applications, "extended data names but the drawing did not register");
    }

private:
    void forEachEntity(const std::function<void(OdDbEntity&)>& visit) {
        for (OdDbBlockTableRecord* block : m_db.blocks()) {
            if (block->isErased()) continue;
            if (block->blockBegin()) visit(*block->blockBegin());
            for (OdDbEntity* e : block->entities()) {
                if (e->isErased()) continue;
                visit(*e);
                if (e->isComplex())
                    for (OdDbEntity* sub : static_cast<OdDbComplexEntity*>(e)->subEntities()) visit(*sub);
            }
            if (block->blockEnd()) visit(*block->blockEnd());
        }
    }

    std::map<std::string_view, std::vector<std::string_view>> m_found;

    std::string_view headerName(std::string_view variable) const { return m_db.header().value(variable); }

    // Notes a name its table lacks, once; the names that need no record are skipped.
    void need(std::string_view tableName, std::string_view name, std::vector<std::string>& missing) {
        if (name.empty() ||
            (tableName == "LTYPE" && (equalsNoCase(name, "BYLAYER") || equalsNoCase(name, "BYBLOCK"))))
            return;
        // Most entities name the few layers and styles already met: those are answered here.
        std::vector<std::string_view>& known = m_found[tableName];
        for (std::string_view k : known)
            if (k == name) return;
        OdDbSymbolTable* table = m_db.table(tableName);
        if (!table) return;
        if (table->find(name)) {
            if (known.size() < 64) known.push_back(name);
            return;
        }
        if (!m_noted.insert(std::string(tableName) + ":" + upper(name)).second) return;
        missing.emplace_back(name);
    }

    // A record without a name cannot be named by anything; a block record takes its BLOCK's name.
    void nameNamelessRecords() {
        std::size_t named = 0;
        for (OdDbSymbolTable* table : m_db.tables()) {
            for (OdDbSymbolTableRecord* r : table->records()) {
                if (r->isErased() || !r->name().empty()) continue;
                // A shape file is loaded through a text style without a name.
                if (r->typeName() == "STYLE" && (r->getInt(70) & 1)) continue;
                auto* block = dynamic_cast<OdDbBlockTableRecord*>(r);
                OdDbEntity* begin = block ? block->blockBegin() : nullptr;
                std::string name(begin ? begin->getString(2) : "");
                if (name.empty() || table->find(name)) name = freeRecordName(*table);
                r->setString(2, name);
                if (begin)
                    for (int code : {2, 3}) begin->setString(code, name);
                ++named;
            }
        }
        if (named)
            m_db.repairs().push_back("named " + std::to_string(named) + " table entries that had no name");
    }

    static std::string freeRecordName(const OdDbSymbolTable& table) {
        for (int n = 1;; ++n)
            if (std::string name = "UNNAMED" + std::to_string(n); !table.find(name)) return name;
    }

    void renameInvalidLayers() {
        OdDbSymbolTable* table = m_db.table("LAYER");
        if (!table) return;
        for (OdDbSymbolTableRecord* layer : table->records()) {
            if (isValidSymbolName(layer->name())) continue;
            std::string name = freeName(*table, layer->name());
            m_renamed[std::string(layer->name())] = name;
            layer->setString(2, name);
        }
        std::size_t references = 0;
        forEachEntity([&](OdDbEntity& e) {
            std::string_view layer = e.getString(8, "0");
            if (isValidSymbolName(layer)) return;
            auto it = m_renamed.find(std::string(layer));
            if (it == m_renamed.end())
                it = m_renamed.emplace(std::string(layer), freeName(*table, layer)).first;
            // In place: some writers put the layer after the type's own marker, and readers take it there.
            e.setString(8, it->second);
            ++references;
        });
        if (HeaderVariable* current = m_db.header().find("$CLAYER"); current && !current->tags.empty()) {
            auto it = m_renamed.find(std::string(current->tags.front().value()));
            if (it != m_renamed.end()) current->tags.front() = Tag(8, m_db.keep(it->second));
        }
        if (m_renamed.empty()) return;
        std::vector<std::string> names;
        for (const auto& [from, to] : m_renamed) names.push_back(from + "\" to \"" + to);
        m_db.repairs().push_back(
            "renamed " + std::to_string(m_renamed.size()) +
            " layers whose names held characters a layer name cannot have: " + listed(names));
    }

    std::string freeName(const OdDbSymbolTable& table, std::string_view invalid) const {
        // An entity without a layer name is on layer 0.
        if (invalid.empty()) return "0";
        std::string base = validSymbolName(invalid);
        std::string name = base;
        for (int n = 2; table.find(name) && !equalsNoCase(table.find(name)->name(), invalid); ++n)
            name = base + "_" + std::to_string(n);
        return name;
    }

    Handle plotStyle() const {
        OdDbObject* styles = rootDictionaryItem(m_db, "ACAD_PLOTSTYLENAME");
        if (!styles) return 0;
        Handle h = styles->getHandle(340, "AcDbDictionaryWithDefault");
        return h ? h : dictionaryItem(*styles, "Normal");
    }

    std::string_view continuous() const {
        OdDbSymbolTable* linetypes = m_db.table("LTYPE");
        OdDbSymbolTableRecord* r = linetypes ? linetypes->find("Continuous") : nullptr;
        return r ? r->name() : std::string_view("Continuous");
    }

    void addLayer(const std::string& name) {
        std::vector<Tag> data = {Tag(2, m_db.keep(name)), Tag(70, "0"), Tag(62, "7"), Tag(6, continuous())};
        if (m_db.versionNumber() >= 1015) {
            data.emplace_back(370, "-3");
            if (Handle h = plotStyle()) data.emplace_back(390, m_db.keep(formatHandle(h)));
        }
        addTableRecord(m_db, *m_db.table("LAYER"), std::move(data));
    }

    void addLinetype(const std::string& name) {
        addTableRecord(
            m_db, *m_db.table("LTYPE"),
            {Tag(2, m_db.keep(name)), Tag(70, "0"), Tag(3, ""), Tag(72, "65"), Tag(73, "0"), Tag(40, "0.0")});
    }

    void addTextStyle(const std::string& name) {
        addTableRecord(m_db, *m_db.table("STYLE"),
                       {Tag(2, m_db.keep(name)), Tag(70, "0"), Tag(40, "0.0"), Tag(41, "1.0"), Tag(50, "0.0"),
                        Tag(71, "0"), Tag(42, "2.5"), Tag(3, "txt"), Tag(4, "")});
    }

    // A lost dimension style takes the settings of the drawing's Standard style.
    void addDimensionStyle(const std::string& name) {
        OdDbSymbolTable* table = m_db.table("DIMSTYLE");
        std::vector<Tag> data = {Tag(2, m_db.keep(name)), Tag(70, "0")};
        if (OdDbSymbolTableRecord* standard = table->find("Standard")) {
            auto [begin, end] = standard->subclassRange("AcDbDimStyleTableRecord");
            for (std::size_t i = begin; i < end; ++i)
                if (standard->tags()[i].code != 2 && standard->tags()[i].code != 70)
                    data.push_back(standard->tags()[i]);
        }
        addTableRecord(m_db, *table, std::move(data));
    }

    void report(std::string_view kind, const std::vector<std::string>& names,
                std::string_view why = "the drawing uses but did not define") {
        if (names.empty() || !m_reportAdded) return;
        // "layers" -> "layer" for a single name.
        std::string noun(kind);
        if (names.size() == 1 && noun.ends_with('s')) noun.pop_back();
        m_db.repairs().push_back("added " + std::to_string(names.size()) + " " + noun + " that " +
                                 std::string(why) + ": " + listed(names));
    }

    // Every application that writes extended data has to be registered first.
    void addApplication(const std::string& name) {
        addTableRecord(m_db, *m_db.table("APPID"), {Tag(2, m_db.keep(name)), Tag(70, "0")});
    }

    OdDbDatabase& m_db;
    bool m_reportAdded;
    std::set<std::string> m_noted;
    std::map<std::string, std::string> m_renamed;
};

} // namespace

namespace {
// A leading '*' marks the system's own names (anonymous blocks, some special layers).
bool isForbidden(std::string_view name, std::size_t i) {
    char c = name[i];
    return static_cast<unsigned char>(c) < 0x20 ||
           (kForbidden.find(c) != std::string_view::npos && !(c == '*' && i == 0));
}
} // namespace

bool isValidSymbolName(std::string_view name) {
    if (name.empty()) return false;
    for (std::size_t i = 0; i < name.size(); ++i)
        if (isForbidden(name, i)) return false;
    return true;
}

std::string validSymbolName(std::string_view name) {
    std::string out(name);
    for (std::size_t i = 0; i < name.size(); ++i)
        if (isForbidden(name, i)) out[i] = '_';
    return out.empty() ? "0" : out;
}

void mendSymbolReferences(OdDbDatabase& db, bool reportAdded) {
    ReferenceMender(db, reportAdded).run();
}

} // namespace qvad::db
