#include "qvad/db/block_structure.h"
#include "qvad/db/dictionary_entries.h"
#include "qvad/db/drawing_repair.h"
#include "qvad/db/legacy_viewport.h"
#include "qvad/db/object_factory.h"
#include "qvad/db/subclass_markers.h"
#include "qvad/db/symbol_references.h"
#include "qvad/db/template_merge.h"
#include "qvad/dxf/code_page.h"

#include <algorithm>
#include <string>

namespace qvad::db {
namespace {

std::string releaseOf(int version) {
    switch (version) {
    case 1002:
        return "R2.5";
    case 1003:
        return "R2.6";
    case 1004:
        return "R9";
    case 1006:
        return "R10";
    default:
        return "R12";
    }
}

class LegacyUpgrade {
public:
    explicit LegacyUpgrade(OdDbDatabase& db) : m_db(db) {}

    void run() {
        std::string release = releaseOf(m_db.versionNumber());
        upgradeHeader();
        // R2000 could only spell such characters as \U+ escapes, which not every reader decodes; from
        // R2007 on text is UTF-8 and keeps every character as it is.
        bool unicode = holdsTextBeyondCodePage();
        if (unicode) m_db.header().set("$ACADVER", {Tag(1, "AC1021")});
        adoptSpaceBlocks();
        for (OdDbSymbolTable* table : m_db.tables()) {
            layoutLegacyTableHead(*table);
            for (OdDbSymbolTableRecord* r : table->records()) layoutLegacyTableRecord(*r);
        }
        for (OdDbBlockTableRecord* block : m_db.blocks()) upgradeBlock(*block);
        completeBlockStructure(m_db, false);
        convertArrowBlockNames();
        mergeTemplate(m_db, MergeScope::Everything);
        assignPlotStyles();
        mendSymbolReferences(m_db, false);
        if (unicode)
            m_db.repairs().push_back("upgraded an " + release +
                                     " drawing to R2007: its text holds characters that code page " +
                                     std::string(m_db.codePage()) + " cannot");
        else
            m_db.repairs().push_back("upgraded an " + release + " drawing to R2000");
    }

private:
    void upgradeHeader() {
        auto& vars = m_db.header().all();
        if (!m_db.header().find("$DWGCODEPAGE")) {
            // Drawings older than R12 name no code page; they were written on the common Western one.
            auto at = std::find_if(vars.begin(), vars.end(),
                                   [](const HeaderVariable& v) { return equalsNoCase(v.name, "$ACADVER"); });
            vars.insert(at == vars.end() ? vars.begin() : at + 1, {"$DWGCODEPAGE", {Tag(3, "ANSI_1252")}});
        }
        m_db.header().set("$ACADVER", {Tag(1, "AC1015")});
        // R12 could switch handles off; from R13 on every object has one.
        m_db.header().remove("$HANDLING");
    }

    // Some R12 writers list the two spaces as $MODEL_SPACE and $PAPER_SPACE blocks.
    void adoptSpaceBlocks() {
        adoptSpaceBlock("$MODEL_SPACE", "*Model_Space");
        adoptSpaceBlock("$PAPER_SPACE", "*Paper_Space");
    }

    void adoptSpaceBlock(std::string_view legacyName, std::string_view name) {
        OdDbBlockTableRecord* legacy = m_db.findBlock(legacyName);
        OdDbBlockTableRecord* space = m_db.findBlock(name);
        // "*MODEL_SPACE" and the like: the names compare without case, but R2000 spells them so.
        if (space && space->name() != name) {
            space->setString(2, name);
            if (OdDbEntity* begin = space->blockBegin())
                for (int code : {2, 3})
                    if (begin->findTag(code)) begin->setString(code, name);
        }
        if (!legacy || !space || space->blockBegin()) return;
        space->setBlockBegin(legacy->blockBegin());
        space->setBlockEnd(legacy->blockEnd());
        for (int code : {2, 3}) legacy->blockBegin()->setString(code, name);
        auto& entities = space->entities();
        entities.insert(entities.begin(), legacy->entities().begin(), legacy->entities().end());
        legacy->setErased(true);
        std::erase(m_db.blocks(), legacy);
        m_db.unregisterHandle(legacy->handle());
    }

    void upgradeBlock(OdDbBlockTableRecord& block) {
        if (block.blockBegin()) layoutLegacyEntity(*block.blockBegin(), nullptr);
        for (OdDbEntity*& e : block.entities()) {
            if (e->typeName() == "3DLINE") e = replaceType(*e, "LINE");
            upgradeEntity(*e, nullptr);
            if (!e->isComplex()) continue;
            for (OdDbEntity* sub : static_cast<OdDbComplexEntity*>(e)->subEntities()) upgradeEntity(*sub, e);
        }
        if (block.blockEnd()) layoutLegacyEntity(*block.blockEnd(), nullptr);
    }

    void upgradeEntity(OdDbEntity& e, const OdDbEntity* parent) {
        if (e.typeName() == "VIEWPORT") addViewportFields(e);
        if (!layoutLegacyEntity(e, parent)) return;
        // From R13 on a dimension's type always carries the bit for "block used by this dimension only".
        if (e.typeName() == "DIMENSION") e.setInt(70, e.getInt(70, 0, "AcDbDimension") | 32, "AcDbDimension");
    }

    // 3DLINE (R10 and older) is a LINE with a Z coordinate.
    OdDbEntity* replaceType(OdDbEntity& old, std::string_view type) {
        auto replacement = createObject(type, ObjectContext::Entity);
        replacement->setDatabase(&m_db);
        replacement->assignTags(std::vector<Tag>(old.tags().begin(), old.tags().end()));
        replacement->syncHeadFromTags();
        m_db.unregisterHandle(old.handle());
        old.setErased(true);
        return static_cast<OdDbEntity*>(m_db.add(std::move(replacement)));
    }

    // R12 dimension styles name their arrow blocks (5, 6, 7); later versions point at the block records.
    void convertArrowBlockNames() {
        OdDbSymbolTable* styles = m_db.table("DIMSTYLE");
        if (!styles) return;
        constexpr std::string_view part = "AcDbDimStyleTableRecord";
        for (OdDbSymbolTableRecord* style : styles->records()) {
            for (auto [nameCode, handleCode] : {std::pair{5, 342}, {6, 343}, {7, 344}}) {
                std::string_view block = style->getString(nameCode, {}, part);
                if (!block.empty()) {
                    if (OdDbBlockTableRecord* record = m_db.findBlock(block))
                        style->setHandleRef(handleCode, record->handle(), part);
                }
                style->removeTags(nameCode, part);
            }
        }
    }

    // Every R2000 layer names its plot style; the template's "Normal" is the one R12 drawings imply.
    void assignPlotStyles() {
        OdDbObject* styles = rootDictionaryItem(m_db, "ACAD_PLOTSTYLENAME");
        OdDbSymbolTable* layers = m_db.table("LAYER");
        if (!styles || !layers) return;
        Handle normal = styles->getHandle(340, "AcDbDictionaryWithDefault");
        if (!normal) normal = dictionaryItem(*styles, "Normal");
        if (!normal) return;
        for (OdDbSymbolTableRecord* layer : layers->records())
            if (!layer->findTag(390)) layer->setHandleRef(390, normal, "AcDbLayerTableRecord");
    }

    bool holdsTextBeyondCodePage() const {
        std::string codePage(m_db.codePage());
        auto beyond = [&](const Tag& t) {
            return qvad::dxf::isStringKind(t.code) && t.code != 0 && !qvad::dxf::isAscii(t.value()) &&
                   qvad::dxf::encodeCodePage(t.value(), codePage).find("\\U+") != std::string::npos;
        };
        for (const auto& o : m_db.allObjects()) {
            std::span<const Tag> tags = o->tags();
            if (!o->isErased() && std::any_of(tags.begin(), tags.end(), beyond)) return true;
        }
        for (const HeaderVariable& v : m_db.header().all())
            if (std::any_of(v.tags.begin(), v.tags.end(), beyond)) return true;
        return false;
    }

    OdDbDatabase& m_db;
};

} // namespace

void upgradeLegacyDrawing(OdDbDatabase& db) {
    LegacyUpgrade(db).run();
}

} // namespace qvad::db
