#include "qvad/dxf/dxf_reader.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_repair.h"
#include "qvad/db/object_factory.h"
#include "qvad/dxf/code_page.h"
#include "qvad/dxf/dxf_error.h"
#include "qvad/dxf/tag_reader.h"

#include <array>
#include <cerrno>
#include <sstream>
#include <system_error>

namespace qvad::dxf {
namespace {

constexpr std::array kKnownVersions = {"AC1002", "AC1003", "AC1004", "AC1006", "AC1009", "AC1012", "AC1014",
                                       "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};

struct Section {
    std::string_view name;
    std::size_t begin; // first tag after "2 NAME"
    std::size_t end;   // the "0 ENDSEC" tag
};

class Reader {
public:
    Reader(OdDbDatabase& db, TagArray& tags) : m_db(db), m_tags(tags) {}

    void run() {
        std::vector<Section> sections = splitSections();
        for (const Section& s : sections)
            if (s.name == "HEADER") readHeader(s);
        checkVersion();
        decodeText();
        std::string_view previous;
        for (const Section& s : sections) {
            if (s.name == "HEADER") {
            } else if (s.name == "CLASSES") {
                m_db.classes().assign(m_tags.begin() + static_cast<std::ptrdiff_t>(s.begin),
                                      m_tags.begin() + static_cast<std::ptrdiff_t>(s.end));
            } else if (s.name == "TABLES") {
                readTables(s);
            } else if (s.name == "BLOCKS") {
                readBlocks(s);
            } else if (s.name == "ENTITIES") {
                readEntities(s.begin, s.end, m_entities);
            } else if (s.name == "OBJECTS") {
                readObjects(s);
            } else {
                m_db.rawSections().push_back(
                    {s.name, previous,
                     std::vector<Tag>(m_tags.begin() + static_cast<std::ptrdiff_t>(s.begin),
                                      m_tags.begin() + static_cast<std::ptrdiff_t>(s.end))});
                continue;
            }
            previous = s.name;
        }
        qvad::db::LoadedStructure loaded{std::move(m_blockDefs), std::move(m_entities),
                                         std::move(m_needHandle)};
        qvad::db::assembleDrawing(m_db, loaded);
    }

private:
    [[noreturn]] void fail(std::size_t index, const std::string& reason) const {
        throw DxfError(m_binary ? 0 : m_lines.lineOf(index), reason);
    }

    std::vector<Section> splitSections() {
        std::vector<Section> sections;
        std::size_t i = 0, n = m_tags.size();
        while (i < n) {
            const Tag& t = m_tags[i];
            if (t.is(0, "EOF")) return sections;
            if (!t.is(0, "SECTION")) {
                if (sections.empty())
                    fail(i, "SECTION expected, found group " + std::to_string(t.code) + " \"" +
                                std::string(t.value().substr(0, 40)) + "\"");
                i = strayTags(i, sections);
                continue;
            }
            if (i + 1 >= n || m_tags[i + 1].code != 2) fail(i + 1, "section name (group 2) expected");
            std::string_view name = m_tags[i + 1].value();
            std::size_t j = i + 2;
            while (j < n &&
                   !(m_tags[j].code == 0 && (m_tags[j].value() == "ENDSEC" ||
                                             m_tags[j].value() == "SECTION" || m_tags[j].value() == "EOF")))
                ++j;
            if (j >= n || m_tags[j].value() != "ENDSEC")
                fail(j < n ? j : n, "section " + std::string(name) + " is not closed by ENDSEC");
            sections.push_back({name, i + 2, j});
            i = j + 1;
        }
        // Every section was closed, only the final marker is missing: nothing was lost.
        if (!sections.empty()) {
            m_db.repairs().push_back("added the missing EOF marker");
            return sections;
        }
        fail(n, "unexpected end of file: no SECTION found");
    }

    // Tags between sections. Some writers close the header early or write variables outside it;
    // those join the header. Anything else up to the next section is dropped and reported.
    std::size_t strayTags(std::size_t i, std::vector<Section>& sections) {
        std::size_t n = m_tags.size();
        std::size_t j = i;
        while (j < n &&
               !(m_tags[j].code == 0 && (m_tags[j].value() == "ENDSEC" || m_tags[j].value() == "SECTION" ||
                                         m_tags[j].value() == "EOF")))
            ++j;
        if (m_tags[i].code == 9) {
            sections.push_back({"HEADER", i, j});
            m_db.repairs().push_back("took header variables found outside the HEADER section");
        } else {
            m_db.repairs().push_back("ignored " + std::to_string(j - i) +
                                     " stray tags between sections at line " +
                                     std::to_string(m_binary ? 0 : m_lines.lineOf(i)));
        }
        return j < n && m_tags[j].value() == "ENDSEC" ? j + 1 : j;
    }

    void readHeader(const Section& s) {
        auto& vars = m_db.header().all();
        for (std::size_t i = s.begin; i < s.end;) {
            if (m_tags[i].code != 9) fail(i, "header variable name (group 9) expected");
            std::size_t j = i + 1;
            while (j < s.end && m_tags[j].code != 9) ++j;
            vars.push_back(
                {m_tags[i].value(), std::vector<Tag>(m_tags.begin() + static_cast<std::ptrdiff_t>(i + 1),
                                                     m_tags.begin() + static_cast<std::ptrdiff_t>(j))});
            i = j;
        }
    }

    void checkVersion() {
        const HeaderVariable* v = m_db.header().find("$ACADVER");
        if (!v) {
            // Minimal files often carry no header at all; they follow the R12 rules.
            m_db.header().all().insert(m_db.header().all().begin(), {"$ACADVER", {Tag(1, "AC1009")}});
            return;
        }
        std::string_view version = m_db.version();
        for (const char* known : kKnownVersions)
            if (version == known) return;
        throw DxfError(0, "unsupported DXF version \"" + std::string(version.substr(0, 20)) + "\"");
    }

    // Moves every text value to UTF-8 in memory, whatever the file stored.
    void decodeText() {
        bool legacy = m_db.versionNumber() < 1021;
        // One look at the whole file spares a look at every text when there is nothing to decode.
        if ((!legacy || isAscii(m_source)) && m_source.find("\\U+") == std::string_view::npos) return;
        std::string codePage(m_db.codePage());
        auto decode = [&](Tag& t) {
            if (!isStringKind(t.code) || t.code == 0) return;
            std::string_view v = t.value();
            bool high = legacy && !isAscii(v);
            bool escaped = hasUnicodeEscape(v);
            if (!high && !escaped) return;
            std::string text = high ? decodeCodePage(v, codePage) : std::string(v);
            if (escaped) text = decodeUnicodeEscapes(text);
            t = Tag(t.code, m_db.keep(text));
        };
        for (Tag& t : m_tags) decode(t);
        // The header was read before the code page was known; its values are copies.
        for (HeaderVariable& v : m_db.header().all())
            for (Tag& t : v.tags) decode(t);
    }

    // Records of a tag range: each starts at a group 0 tag and runs to the next one.
    template <class F> void forEachRecord(std::size_t begin, std::size_t end, F&& visit) {
        std::size_t i = begin;
        while (i < end) {
            if (m_tags[i].code != 0) fail(i, "object type (group 0) expected");
            std::size_t j = i + 1;
            while (j < end && m_tags[j].code != 0) ++j;
            visit(i, j);
            i = j;
        }
    }

    OdDbObject* makeObject(std::size_t at, std::size_t end, ObjectContext context) {
        std::unique_ptr<OdDbObject> object = createObject(
            m_tags[at].value(), context, std::span<const Tag>(m_tags.data() + at + 1, end - at - 1));
        object->viewTags(m_tags.data() + at + 1, end - at - 1);
        object->syncHeadFromTags();
        qvad::Handle h = object->handle();
        OdDbObject* raw;
        if (h != 0 && m_db.getObject(h) == nullptr) {
            raw = m_db.add(std::move(object));
        } else {
            object->setHandle(0);
            raw = m_db.add(std::move(object));
            m_needHandle.push_back({raw, h});
        }
        return raw;
    }

    void readTables(const Section& s) {
        OdDbSymbolTable* current = nullptr;
        forEachRecord(s.begin, s.end, [&](std::size_t at, std::size_t end) {
            std::string_view type = m_tags[at].value();
            if (type == "TABLE") {
                auto table = std::make_unique<OdDbSymbolTable>();
                table->viewTags(m_tags.data() + at + 1, end - at - 1);
                table->syncHeadFromTags();
                qvad::Handle h = table->handle();
                bool duplicate = h != 0 && m_db.getObject(h) != nullptr;
                if (duplicate) table->setHandle(0);
                current = static_cast<OdDbSymbolTable*>(m_db.add(std::move(table)));
                if (h == 0 || duplicate) m_needHandle.push_back({current, h});
                if (OdDbSymbolTable* same = m_db.table(current->name()); same && same != current) {
                    // A second table of the same name: its records join the first.
                    m_db.repairs().push_back("merged a second " + std::string(current->name()) + " table");
                    current->setErased(true);
                    current = same;
                } else {
                    m_db.tables().push_back(current);
                }
            } else if (type == "ENDTAB") {
                current = nullptr;
            } else {
                if (!current) current = tableForStrayRecord(type);
                auto* record =
                    static_cast<OdDbSymbolTableRecord*>(makeObject(at, end, ObjectContext::TableRecord));
                current->records().push_back(record);
            }
        });
    }

    // A record outside any TABLE joins the table its type names, made if need be.
    OdDbSymbolTable* tableForStrayRecord(std::string_view type) {
        m_db.repairs().push_back("put a " + std::string(type) +
                                 " entry found outside its table back into it");
        if (OdDbSymbolTable* t = m_db.table(type)) return t;
        auto table = std::make_unique<OdDbSymbolTable>();
        table->assignTags({Tag(2, type), Tag(100, "AcDbSymbolTable"), Tag(70, "0")});
        auto* raw = static_cast<OdDbSymbolTable*>(m_db.add(std::move(table)));
        m_db.tables().push_back(raw);
        return raw;
    }

    void readBlocks(const Section& s) {
        qvad::db::BlockDefinition* open = nullptr;
        std::size_t i = s.begin;
        forEachRecord(s.begin, s.end, [&](std::size_t at, std::size_t end) {
            if (at < i) return; // consumed by readEntityRun
            std::string_view type = m_tags[at].value();
            if (type == "BLOCK") {
                if (open) m_db.repairs().push_back("closed a block that had no ENDBLK");
                m_blockDefs.push_back({});
                open = &m_blockDefs.back();
                open->begin = static_cast<OdDbEntity*>(makeObject(at, end, ObjectContext::Entity));
            } else if (type == "ENDBLK") {
                if (!open) {
                    m_db.repairs().push_back("dropped an ENDBLK without its BLOCK");
                    return;
                }
                open->end = static_cast<OdDbEntity*>(makeObject(at, end, ObjectContext::Entity));
                open = nullptr;
            } else {
                if (!open) fail(at, std::string(type) + " outside a BLOCK definition");
                // Entities run to the next BLOCK or ENDBLK.
                std::size_t j = at;
                while (j < s.end && !(m_tags[j].code == 0 &&
                                      (m_tags[j].value() == "ENDBLK" || m_tags[j].value() == "BLOCK")))
                    ++j;
                readEntities(at, j, open->entities);
                i = j;
            }
        });
    }

    void readEntities(std::size_t begin, std::size_t end, std::vector<OdDbEntity*>& out) {
        OdDbComplexEntity* parent = nullptr;
        forEachRecord(begin, end, [&](std::size_t at, std::size_t stop) {
            std::string_view type = m_tags[at].value();
            bool sub = type == "VERTEX" || type == "ATTRIB" || type == "SEQEND";
            if (sub && !parent) {
                m_db.repairs().push_back("dropped a " + std::string(type) + " that belonged to no entity");
                return;
            }
            auto* entity = static_cast<OdDbEntity*>(makeObject(at, stop, ObjectContext::Entity));
            if (sub) {
                parent->subEntities().push_back(entity);
                if (type == "SEQEND") parent = nullptr;
                return;
            }
            if (parent) closeWithoutSeqend(parent);
            out.push_back(entity);
            parent = nullptr;
            if (entity->isComplex()) {
                bool followed =
                    stop < end && (m_tags[stop].value() == "VERTEX" || m_tags[stop].value() == "ATTRIB" ||
                                   m_tags[stop].value() == "SEQEND");
                if (followed) parent = static_cast<OdDbComplexEntity*>(entity);
            }
        });
        if (parent) closeWithoutSeqend(parent);
    }

    void closeWithoutSeqend(OdDbComplexEntity* parent) {
        m_db.repairs().push_back("added the missing SEQEND of a " + std::string(parent->typeName()));
        m_missingSeqend.push_back(parent);
        qvad::db::addSeqend(m_db, *parent);
    }

    void readObjects(const Section& s) {
        forEachRecord(s.begin, s.end, [&](std::size_t at, std::size_t end) {
            m_db.objectsSection().push_back(makeObject(at, end, ObjectContext::Object));
        });
    }

    OdDbDatabase& m_db;
    TagArray& m_tags;
    bool m_binary = false;
    std::string_view m_source; // the file's bytes
    TagFile m_lines; // tags moved out; keeps what maps tags to lines
    std::vector<qvad::db::BlockDefinition> m_blockDefs;
    std::vector<OdDbEntity*> m_entities;
    std::vector<qvad::db::HandleRepair> m_needHandle;
    std::vector<OdDbComplexEntity*> m_missingSeqend;

public:
    void setSource(TagFile&& lines, std::string_view bytes) {
        m_source = bytes;
        m_binary = lines.binary;
        m_lines = std::move(lines);
    }
};

} // namespace

namespace {

std::unique_ptr<OdDbDatabase> readInto(std::unique_ptr<OdDbDatabase> db, std::string_view view) {
    TagFile file = readTags(view, db->strings());
    if (file.tags.empty()) throw DxfError(1, "not a DXF file: no tags found");
    if (file.bytesAfterEof)
        db->repairs().push_back("ignored " + std::to_string(file.bytesAfterEof) + " bytes after the end of file");
    db->fileTags() = std::move(file.tags);
    db->reserveObjects(file.records);
    Reader reader(*db, db->fileTags());
    reader.setSource(std::move(file), view);
    reader.run();
    return db;
}

} // namespace

std::unique_ptr<OdDbDatabase> readDxfBuffer(std::string buffer) {
    auto db = std::make_unique<OdDbDatabase>();
    std::string_view view = db->strings().adopt(std::move(buffer));
    return readInto(std::move(db), view);
}

std::unique_ptr<OdDbDatabase> readDxfFile(const std::string& path) {
    auto db = std::make_unique<OdDbDatabase>();
    std::string_view view = db->strings().mapFile(path);
    return readInto(std::move(db), view);
}

} // namespace qvad::dxf
