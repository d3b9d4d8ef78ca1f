#include "qvad/dxf/dxf_writer.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/dxf/code_page.h"
#include "qvad/dxf/file_save.h"

#include <charconv>
#include <functional>

namespace qvad::dxf {
namespace {

class Writer {
public:
    // `flush` receives the text in pieces of about kFlushSize, so a large drawing is never held
    // twice in memory while it is saved.
    Writer(const OdDbDatabase& db, std::function<void(std::string_view)> flush)
        : m_db(db), m_flush(std::move(flush)) {
        m_legacyText = db.versionNumber() < 1021;
        m_codePage = db.codePage();
        m_out.reserve(kFlushSize + 64 * 1024);
    }

    void run() {
        section("HEADER", [&] { header(); });
        rawAfter("HEADER");
        section("CLASSES", [&] {
            for (const Tag& t : const_cast<OdDbDatabase&>(m_db).classes()) tag(t);
        });
        rawAfter("CLASSES");
        section("TABLES", [&] { tables(); });
        rawAfter("TABLES");
        section("BLOCKS", [&] { blocks(); });
        rawAfter("BLOCKS");
        section("ENTITIES", [&] { entities(); });
        rawAfter("ENTITIES");
        section("OBJECTS", [&] {
            for (const OdDbObject* o : m_db.objectsSection()) object(*o);
        });
        rawAfter("OBJECTS");
        // Sections that came first in the file, or after a section this program does not know.
        for (const RawSection& s : m_db.rawSections())
            if (!isKnown(s.after)) raw(s);
        line(0, "EOF");
        m_flush(m_out);
        m_out.clear();
    }

private:
    static bool isKnown(std::string_view name) {
        return name == "HEADER" || name == "CLASSES" || name == "TABLES" || name == "BLOCKS" ||
               name == "ENTITIES" || name == "OBJECTS";
    }

    template <class F> void section(std::string_view name, F&& body) {
        line(0, "SECTION");
        line(2, name);
        body();
        line(0, "ENDSEC");
    }

    void rawAfter(std::string_view known) {
        for (const RawSection& s : m_db.rawSections())
            if (s.after == known) raw(s);
    }

    void raw(const RawSection& s) {
        line(0, "SECTION");
        line(2, s.name);
        for (const Tag& t : s.tags) tag(t);
        line(0, "ENDSEC");
    }

    void header() {
        std::string seed = formatHandle(m_db.handseed());
        bool wroteSeed = false;
        for (const HeaderVariable& v : m_db.header().all()) {
            line(9, v.name);
            if (v.name == "$HANDSEED") {
                line(5, seed);
                wroteSeed = true;
                continue;
            }
            for (const Tag& t : v.tags) tag(t);
        }
        if (!wroteSeed) {
            line(9, "$HANDSEED");
            line(5, seed);
        }
    }

    void tables() {
        for (const OdDbSymbolTable* table : m_db.tables()) {
            if (table->isErased()) continue;
            object(*table);
            for (const OdDbSymbolTableRecord* r : table->records()) object(*r);
            line(0, "ENDTAB");
        }
    }

    void blocks() {
        for (const OdDbBlockTableRecord* b : m_db.blocks()) {
            if (b->isErased() || !b->blockBegin()) continue;
            object(*b->blockBegin());
            // Model space and the active paper space keep their entities in the ENTITIES section.
            if (!isEntitiesSectionBlock(*b))
                for (const OdDbEntity* e : b->entities()) entity(*e);
            if (b->blockEnd()) object(*b->blockEnd());
        }
    }

    static bool isEntitiesSectionBlock(const OdDbBlockTableRecord& b) {
        return b.isModelSpace() || equalsNoCase(b.name(), "*Paper_Space");
    }

    void entities() {
        if (const OdDbBlockTableRecord* model = m_db.modelSpace())
            for (const OdDbEntity* e : model->entities()) entity(*e);
        if (const OdDbBlockTableRecord* paper = m_db.paperSpace())
            for (const OdDbEntity* e : paper->entities()) entity(*e);
    }

    void entity(const OdDbEntity& e) {
        if (e.isErased()) return;
        object(e);
        if (e.isComplex())
            for (const OdDbEntity* sub : static_cast<const OdDbComplexEntity&>(e).subEntities()) object(*sub);
    }

    void object(const OdDbObject& o) {
        if (o.isErased()) return;
        line(0, o.typeName());
        for (const Tag& t : o.tags()) tag(t);
    }

    void tag(const Tag& t) {
        if (m_legacyText && isStringKind(t.code) && !isAscii(t.value()))
            line(t.code, encodeCodePage(t.value(), m_codePage));
        else
            line(t.code, t.value());
    }

    void line(int code, std::string_view value) {
        char digits[16];
        auto r = std::to_chars(digits, digits + sizeof digits, code);
        std::size_t n = static_cast<std::size_t>(r.ptr - digits);
        // Codes are right-aligned in three columns, as every DXF writer does.
        if (n < 3) m_out.append(3 - n, ' ');
        m_out.append(digits, n);
        m_out += '\n';
        m_out.append(value);
        m_out += '\n';
        if (m_out.size() >= kFlushSize) {
            m_flush(m_out);
            m_out.clear();
        }
    }

    static constexpr std::size_t kFlushSize = 1 << 20;

    const OdDbDatabase& m_db;
    std::function<void(std::string_view)> m_flush;
    bool m_legacyText;
    std::string m_codePage;
    std::string m_out;
};

} // namespace

std::string writeDxf(const OdDbDatabase& db) {
    std::string out;
    Writer(db, [&](std::string_view piece) { out.append(piece); }).run();
    return out;
}

void saveDxfFile(const OdDbDatabase& db, const std::string& path) {
    writeFileAtomically(path,
                        [&](const std::function<void(std::string_view)>& write) { Writer(db, write).run(); });
}

} // namespace qvad::dxf
