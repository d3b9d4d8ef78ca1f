#include "qvad/db/template_merge.h"

#include "qvad/db/dictionary_entries.h"
#include "qvad/db/drawing_template.h"
#include "qvad/db/object_factory.h"
#include "qvad/db/table_records.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace qvad::db {
namespace {

enum class Placement { Table, Record, Object };

struct Copy {
    const OdDbObject* source;
    Placement placement;
    std::string_view table;   // the table a record joins
    std::string_view rootKey; // the root dictionary entry a top-level object gets
};

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& n : names) text += (text.empty() ? "" : ", ") + n;
    return text;
}

// Plot settings groups that came with R2004; an R2000 reader does not expect them.
bool isNewerPlotSettingsCode(int code) {
    return code == 76 || code == 77 || code == 78 || code == 333;
}

class TemplateMerger {
public:
    TemplateMerger(OdDbDatabase& db, MergeScope scope) : m_db(db), m_template(newDrawing()), m_scope(scope) {}

    TemplateMergeReport run() {
        planTables();
        // Layouts, plot styles and their dictionaries arrived with R2000.
        if (m_db.versionNumber() >= 1015) planObjects();
        for (const Copy& c : m_copies) copy(c);
        for (std::string_view name : m_touchedTables) updateRecordCount(*m_db.table(name));
        addClasses();
        return m_report;
    }

private:
    void plan(const Copy& c) {
        m_map[c.source->handle()] = m_db.allocateHandle();
        m_copies.push_back(c);
    }

    void planTables() {
        for (const OdDbSymbolTable* t : m_template->tables()) {
            OdDbSymbolTable* target = m_db.table(t->name());
            if (target) {
                m_map[t->handle()] = target->handle();
            } else {
                plan({t, Placement::Table, {}, {}});
                m_report.tables.emplace_back(t->name());
            }
            for (const OdDbSymbolTableRecord* r : t->records()) {
                // Layout blocks come with the drawing's own BLOCK and ENDBLK; they are never copied.
                bool blocks = t->name() == "BLOCK_RECORD";
                OdDbObject* existing = blocks   ? m_db.findBlock(r->name())
                                       : target ? target->find(r->name())
                                                : nullptr;
                if (existing) {
                    m_map[r->handle()] = existing->handle();
                } else if (!blocks && (m_scope == MergeScope::Everything || isRequired(*t))) {
                    plan({r, Placement::Record, t->name(), {}});
                    if (target)
                        m_report.records.push_back(std::string(t->name()) + " \"" + std::string(r->name()) +
                                                   "\"");
                }
            }
        }
    }

    // The template's layers and linetypes are the ones no drawing may lack.
    static bool isRequired(const OdDbSymbolTable& table) {
        return table.name() == "LAYER" || table.name() == "LTYPE";
    }

    void planObjects() {
        const OdDbObject* templateRoot = m_template->namedObjectsDictionary();
        OdDbObject* root = m_db.namedObjectsDictionary();
        if (!root) {
            for (const OdDbObject* o : m_template->objectsSection()) plan({o, Placement::Object, {}, {}});
            m_report.objectsSection = true;
            return;
        }
        if (m_scope == MergeScope::Required) {
            mapByKeys(*templateRoot, *root);
            return;
        }
        m_map[templateRoot->handle()] = root->handle();
        for (const DictionaryEntry& e : dictionaryEntries(*templateRoot)) {
            const OdDbObject* child = m_template->getObject(e.handle);
            Handle h = dictionaryItem(*root, e.key);
            if (OdDbObject* existing = h ? m_db.getObject(h) : nullptr) {
                mapByKeys(*child, *existing);
                continue;
            }
            planSubtree(*child, e.key);
            m_report.dictionaries.emplace_back(e.key);
        }
    }

    // Lets copies point at what the drawing already has under the same dictionary keys (the plot
    // style a layer names, for one).
    void mapByKeys(const OdDbObject& templateObject, const OdDbObject& object) {
        m_map[templateObject.handle()] = object.handle();
        if (!isDictionary(templateObject) || !isDictionary(object)) return;
        for (const DictionaryEntry& e : dictionaryEntries(templateObject)) {
            Handle h = dictionaryItem(object, e.key);
            const OdDbObject* templateChild = m_template->getObject(e.handle);
            const OdDbObject* child = h ? m_db.getObject(h) : nullptr;
            if (templateChild && child) mapByKeys(*templateChild, *child);
        }
    }

    void planSubtree(const OdDbObject& o, std::string_view rootKey) {
        plan({&o, Placement::Object, {}, rootKey});
        if (!isDictionary(o)) return;
        for (const DictionaryEntry& e : dictionaryEntries(o))
            if (const OdDbObject* child = m_template->getObject(e.handle)) planSubtree(*child, {});
    }

    Handle mapped(std::string_view handleText) const {
        auto it = m_map.find(parseHandle(handleText));
        return it == m_map.end() ? 0 : it->second;
    }

    std::vector<Tag> translate(const OdDbObject& source) {
        bool olderLayout = source.typeName() == "LAYOUT" && m_db.versionNumber() < 1018;
        auto [plotBegin, plotEnd] = source.subclassRange("AcDbPlotSettings");
        std::vector<Tag> tags;
        std::span<const Tag> from = source.tags();
        for (std::size_t i = 0; i < from.size(); ++i) {
            const Tag& t = from[i];
            if (olderLayout && i >= plotBegin && i < plotEnd && isNewerPlotSettingsCode(t.code)) continue;
            bool handle = t.code == 5 || t.code == 105 || qvad::dxf::isHandleReference(t.code);
            tags.emplace_back(t.code, m_db.keep(handle ? formatHandle(mapped(t.value())) : t.value()));
        }
        return tags;
    }

    void copy(const Copy& c) {
        std::string_view type = m_db.keep(c.source->typeName());
        std::unique_ptr<OdDbObject> object;
        if (c.placement == Placement::Table)
            object = std::make_unique<OdDbSymbolTable>();
        else
            object = createObject(type, c.placement == Placement::Record ? ObjectContext::TableRecord
                                                                         : ObjectContext::Object);
        object->setDatabase(&m_db);
        object->assignTags(translate(*c.source));
        object->syncHeadFromTags();
        OdDbObject* added = m_db.add(std::move(object));
        m_copiedTypes.insert(std::string(type));
        switch (c.placement) {
        case Placement::Table:
            insertTable(static_cast<OdDbSymbolTable*>(added));
            break;
        case Placement::Record:
            m_db.table(c.table)->records().push_back(static_cast<OdDbSymbolTableRecord*>(added));
            m_touchedTables.insert(c.table);
            break;
        case Placement::Object:
            m_db.objectsSection().push_back(added);
            if (!c.rootKey.empty())
                setDictionaryItem(*m_db.namedObjectsDictionary(), c.rootKey, added->handle());
            break;
        }
    }

    // Tables keep the order every reader expects: VPORT, LTYPE, LAYER, ... BLOCK_RECORD.
    void insertTable(OdDbSymbolTable* table) {
        auto rank = [&](const OdDbSymbolTable* t) {
            const auto& order = m_template->tables();
            for (std::size_t i = 0; i < order.size(); ++i)
                if (equalsNoCase(order[i]->name(), t->name())) return i;
            return order.size();
        };
        auto& tables = m_db.tables();
        auto at = std::find_if(tables.begin(), tables.end(),
                               [&](const OdDbSymbolTable* t) { return rank(t) > rank(table); });
        tables.insert(at, table);
        m_touchedTables.insert(table->name());
    }

    // Objects of classes outside the built-in set need a CLASS entry in the drawing.
    void addClasses() {
        auto& classes = m_db.classes();
        const auto& source = m_template->classes();
        for (std::size_t i = 0; i < source.size();) {
            std::size_t end = i + 1;
            while (end < source.size() && !source[end].is(0, "CLASS")) ++end;
            std::string_view name = end > i + 1 && source[i + 1].code == 1 ? source[i + 1].value() : "";
            if (m_copiedTypes.count(std::string(name)) && !hasClass(classes, name)) {
                for (std::size_t k = i; k < end; ++k) {
                    // The instance count arrived with R2004.
                    if (source[k].code == 91 && m_db.versionNumber() < 1018) continue;
                    classes.emplace_back(source[k].code, m_db.keep(source[k].value()));
                }
            }
            i = end;
        }
    }

    static bool hasClass(const std::vector<Tag>& classes, std::string_view name) {
        for (std::size_t i = 0; i + 1 < classes.size(); ++i)
            if (classes[i].is(0, "CLASS") && classes[i + 1].code == 1 && classes[i + 1].value() == name)
                return true;
        return false;
    }

    OdDbDatabase& m_db;
    std::unique_ptr<OdDbDatabase> m_template;
    std::unordered_map<Handle, Handle> m_map; // template handle -> drawing handle
    std::vector<Copy> m_copies;
    std::set<std::string_view> m_touchedTables;
    std::set<std::string> m_copiedTypes;
    MergeScope m_scope;
    TemplateMergeReport m_report;
};

} // namespace

TemplateMergeReport mergeTemplate(OdDbDatabase& db, MergeScope scope) {
    return TemplateMerger(db, scope).run();
}

std::vector<std::string> describe(const TemplateMergeReport& report) {
    std::vector<std::string> lines;
    if (report.objectsSection)
        lines.push_back("added the missing OBJECTS section with its dictionaries and layouts");
    if (!report.tables.empty()) lines.push_back("added the missing tables " + joined(report.tables));
    if (!report.records.empty()) lines.push_back("added the missing table entries " + joined(report.records));
    if (!report.dictionaries.empty())
        lines.push_back("added the missing dictionaries " + joined(report.dictionaries));
    return lines;
}

} // namespace qvad::db
