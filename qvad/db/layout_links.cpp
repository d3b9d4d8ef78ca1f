#include "qvad/db/layout_links.h"

#include "qvad/db/block_structure.h"
#include "qvad/db/dictionary_entries.h"
#include "qvad/db/drawing_template.h"
#include "qvad/db/object_factory.h"

#include <algorithm>
#include <map>
#include <string>

namespace qvad::db {
namespace {

constexpr std::string_view kLayoutPart = "AcDbLayout";

std::string_view layoutName(const OdDbObject& layout) {
    return layout.getString(1, {}, kLayoutPart);
}
long long tabOrder(const OdDbObject& layout) {
    return layout.getInt(71, 0, kLayoutPart);
}

class LayoutMender {
public:
    LayoutMender(OdDbDatabase& db, OdDbObject& dictionary) : m_db(db), m_dictionary(dictionary) {}

    void run() {
        collectLayouts();
        collectSpaces();
        linkByLayoutPointers();
        linkByRecordPointers();
        linkRemaining();
        for (OdDbObject* layout : std::vector<OdDbObject*>(m_layouts))
            if (!m_spaceOf.count(layout)) giveSpace(*layout);
        for (OdDbBlockTableRecord* space : m_spaces)
            if (!m_layoutOf.count(space)) giveLayout(*space);
        writeLinks();
        report();
    }

private:
    void collectLayouts() {
        for (const DictionaryEntry& e : dictionaryEntries(m_dictionary)) {
            OdDbObject* o = m_db.getObject(e.handle);
            if (o && !o->isErased() && o->typeName() == "LAYOUT") {
                if (o->hasSubclass(kLayoutPart)) {
                    // The dictionary key is the layout's name where the layout lost its own.
                    if (layoutName(*o).empty()) o->setString(1, e.key, kLayoutPart);
                    m_layouts.push_back(o);
                    continue;
                }
                // Plot settings without the layout part: no reader can place it; the space gets a new one.
                o->setErased(true);
            }
            removeDictionaryItem(m_dictionary, e.key);
            ++m_droppedEntries;
        }
        adoptUnlistedLayouts();
    }

    // A layout the dictionary does not list is found by no reader; it is listed under its name.
    void adoptUnlistedLayouts() {
        for (OdDbObject* o : m_db.objectsSection()) {
            if (o->isErased() || o->typeName() != "LAYOUT" || !o->hasSubclass(kLayoutPart)) continue;
            if (std::count(m_layouts.begin(), m_layouts.end(), o)) continue;
            std::string name(layoutName(*o));
            if (name.empty() || dictionaryItem(m_dictionary, name)) name = freeLayoutName();
            o->setString(1, name, kLayoutPart);
            setDictionaryItem(m_dictionary, name, o->handle());
            m_layouts.push_back(o);
            ++m_adopted;
        }
    }

    void collectSpaces() {
        if (OdDbBlockTableRecord* model = m_db.modelSpace()) m_spaces.push_back(model);
        if (OdDbBlockTableRecord* paper = m_db.paperSpace()) m_spaces.push_back(paper);
        for (OdDbBlockTableRecord* b : m_db.blocks())
            if (!b->isErased() && b->isPaperSpace() && b != m_db.paperSpace()) m_spaces.push_back(b);
    }

    void link(OdDbObject* layout, OdDbBlockTableRecord* space) {
        m_spaceOf[layout] = space;
        m_layoutOf[space] = layout;
    }

    bool isFreeSpace(OdDbObject* o) const {
        auto* space = dynamic_cast<OdDbBlockTableRecord*>(o);
        return space && std::count(m_spaces.begin(), m_spaces.end(), space) && !m_layoutOf.count(space);
    }

    void linkByLayoutPointers() {
        for (OdDbObject* layout : m_layouts) {
            OdDbObject* target = m_db.getObject(layout->getHandle(330, kLayoutPart));
            if (isFreeSpace(target)) link(layout, static_cast<OdDbBlockTableRecord*>(target));
        }
    }

    void linkByRecordPointers() {
        for (OdDbBlockTableRecord* space : m_spaces) {
            if (m_layoutOf.count(space)) continue;
            OdDbObject* layout = m_db.getObject(space->getHandle(340));
            if (layout && std::count(m_layouts.begin(), m_layouts.end(), layout) && !m_spaceOf.count(layout))
                link(layout, space);
        }
    }

    // What no pointer ties: "Model" to model space, the other layouts by tab order to the paper
    // spaces in their order (the active one first).
    void linkRemaining() {
        std::vector<OdDbObject*> open;
        for (OdDbObject* layout : m_layouts)
            if (!m_spaceOf.count(layout)) open.push_back(layout);
        std::stable_sort(open.begin(), open.end(),
                         [](OdDbObject* a, OdDbObject* b) { return tabOrder(*a) < tabOrder(*b); });
        for (OdDbObject* layout : open) {
            bool model = equalsNoCase(layoutName(*layout), "Model");
            for (OdDbBlockTableRecord* space : m_spaces) {
                if (m_layoutOf.count(space) || space->isModelSpace() != model) continue;
                link(layout, space);
                break;
            }
        }
    }

    void giveSpace(OdDbObject& layout) {
        if (equalsNoCase(layoutName(layout), "Model")) {
            // A second model layout: model space has one already.
            layout.setErased(true);
            for (const DictionaryEntry& e : dictionaryEntries(m_dictionary))
                if (e.handle == layout.handle()) removeDictionaryItem(m_dictionary, e.key);
            std::erase(m_layouts, &layout);
            ++m_droppedLayouts;
            return;
        }
        OdDbBlockTableRecord* space = newBlockRecord(m_db, uniqueBlockName(m_db, "*Paper_Space", 0));
        space->setBlockBegin(newBlockBegin(m_db, *space));
        space->setBlockEnd(newBlockEnd(m_db, *space));
        m_db.blocks().push_back(space);
        m_spaces.push_back(space);
        link(&layout, space);
        ++m_newSpaces;
    }

    std::string freeLayoutName() const {
        for (int n = 1;; ++n) {
            std::string name = "Layout" + std::to_string(n);
            if (!dictionaryItem(m_dictionary, name)) return name;
        }
    }

    void giveLayout(OdDbBlockTableRecord& space) {
        bool model = space.isModelSpace();
        std::string name = model ? "Model" : freeLayoutName();
        long long tab = 0;
        for (OdDbObject* layout : m_layouts) tab = std::max(tab, tabOrder(*layout) + 1);
        OdDbObject* layout =
            copyTemplateLayout(model ? "Model" : "Layout1", name, model ? 0 : std::max(tab, 1LL));
        m_layouts.push_back(layout);
        link(layout, &space);
        ++m_newLayouts;
    }

    // The template's layout with this drawing's handles: owned by the dictionary, no viewport yet.
    OdDbObject* copyTemplateLayout(std::string_view templateName, const std::string& name, long long tab) {
        std::unique_ptr<OdDbDatabase> source = newDrawing();
        OdDbObject* original = rootDictionaryItem(*source, "ACAD_LAYOUT");
        const OdDbObject* pattern = source->getObject(dictionaryItem(*original, templateName));
        Handle handle = m_db.allocateHandle();
        std::string_view dictionaryText = m_db.keep(formatHandle(m_dictionary.handle()));
        auto [plotBegin, plotEnd] = pattern->subclassRange("AcDbPlotSettings");
        auto [layoutBegin, layoutEnd] = pattern->subclassRange(kLayoutPart);
        std::vector<Tag> tags;
        std::span<const Tag> from = pattern->tags();
        for (std::size_t i = 0; i < from.size(); ++i) {
            const Tag& t = from[i];
            bool inLayout = i >= layoutBegin && i < layoutEnd;
            if (m_db.versionNumber() < 1018 && i >= plotBegin && i < plotEnd &&
                (t.code == 76 || t.code == 77 || t.code == 78))
                continue;
            if (t.code == 5)
                tags.emplace_back(5, m_db.keep(formatHandle(handle)));
            else if (t.code == 330 && !inLayout)
                tags.emplace_back(330, dictionaryText);
            else if (t.code == 331 && inLayout)
                continue;
            else if (t.code == 1 && inLayout)
                tags.emplace_back(1, m_db.keep(name));
            else if (t.code == 71 && inLayout)
                tags.emplace_back(71, m_db.keep(std::to_string(tab)));
            else
                tags.emplace_back(t.code, m_db.keep(t.value()));
        }
        auto layout = createObject("LAYOUT", ObjectContext::Object);
        layout->setDatabase(&m_db);
        layout->assignTags(std::move(tags));
        layout->syncHeadFromTags();
        OdDbObject* added = m_db.add(std::move(layout));
        m_db.objectsSection().push_back(added);
        setDictionaryItem(m_dictionary, name, added->handle());
        return added;
    }

    void writeLinks() {
        for (auto [space, layout] : m_layoutOf) {
            Handle toSpace = layout->getHandle(330, kLayoutPart);
            if (toSpace != space->handle()) {
                layout->setHandleRef(330, space->handle(), kLayoutPart);
                ++m_relinked;
            }
            Handle toLayout = space->getHandle(340);
            if (toLayout != layout->handle()) {
                std::string_view part =
                    space->hasSubclass("AcDbBlockTableRecord") ? "AcDbBlockTableRecord" : "";
                space->setHandleRef(340, layout->handle(), part);
                // A record that merely lacked the pointer is completed quietly.
                if (toLayout != 0) ++m_relinked;
            }
            if (layout->ownerHandle() != m_dictionary.handle()) layout->setOwnerHandle(m_dictionary.handle());
        }
    }

    void report() {
        auto& out = m_db.repairs();
        if (m_droppedEntries)
            out.push_back("removed " + std::to_string(m_droppedEntries) +
                          " layout dictionary entries that named no layout");
        if (m_droppedLayouts)
            out.push_back("removed " + std::to_string(m_droppedLayouts) + " second Model layouts");
        if (m_adopted)
            out.push_back("put " + std::to_string(m_adopted) +
                          " layouts the layout dictionary did not list back into it");
        if (m_relinked)
            out.push_back("relinked " + std::to_string(m_relinked) +
                          " layout links between layouts and their blocks");
        if (m_newSpaces)
            out.push_back("added a paper space block to " + std::to_string(m_newSpaces) +
                          " layouts that had none");
        if (m_newLayouts)
            out.push_back("added a layout to " + std::to_string(m_newLayouts) +
                          " space blocks that had none");
    }

    OdDbDatabase& m_db;
    OdDbObject& m_dictionary;
    std::vector<OdDbObject*> m_layouts;
    std::vector<OdDbBlockTableRecord*> m_spaces;
    std::map<OdDbObject*, OdDbBlockTableRecord*> m_spaceOf;
    std::map<OdDbBlockTableRecord*, OdDbObject*> m_layoutOf;
    std::size_t m_droppedEntries = 0, m_droppedLayouts = 0, m_relinked = 0, m_newSpaces = 0, m_newLayouts = 0,
                m_adopted = 0;
};

} // namespace

void mendLayoutLinks(OdDbDatabase& db) {
    OdDbObject* dictionary = rootDictionaryItem(db, "ACAD_LAYOUT");
    if (!dictionary || !isDictionary(*dictionary)) return;
    LayoutMender(db, *dictionary).run();
}

} // namespace qvad::db
