#include "structure_support.h"

#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"

#include <stdexcept>

namespace structure_test {

std::string dxfText(std::string_view lines) {
    std::string out;
    while (!lines.empty()) {
        std::size_t end = lines.find('\n');
        std::string_view line = lines.substr(0, end);
        lines = end == std::string_view::npos ? std::string_view() : lines.substr(end + 1);
        while (!line.empty() && line.front() == ' ') line.remove_prefix(1);
        if (line.empty()) continue;
        std::size_t space = line.find(' ');
        out.append(line.substr(0, space)).append("\n");
        if (space != std::string_view::npos) out.append(line.substr(space + 1));
        out.append("\n");
    }
    return out;
}

std::unique_ptr<OdDbDatabase> load(std::string_view lines) {
    return qvad::dxf::readDxfBuffer(dxfText(lines));
}

std::unique_ptr<OdDbDatabase> saveAndLoad(const OdDbDatabase& db) {
    return qvad::dxf::readDxfBuffer(qvad::dxf::writeDxf(db));
}

TagList tagList(std::span<const Tag> tags) {
    TagList out;
    for (const Tag& t : tags) out.emplace_back(t.code, std::string(t.value()));
    return out;
}

std::vector<std::string> markers(const OdDbObject& o) {
    std::vector<std::string> out;
    for (const Tag& t : o.tags())
        if (t.code == 100) out.emplace_back(t.value());
    return out;
}

int indexOf(const OdDbObject& o, int code, std::string_view value) {
    auto tags = o.tags();
    for (std::size_t i = 0; i < tags.size(); ++i)
        if (tags[i].code == code && (value.empty() || tags[i].value() == value)) return static_cast<int>(i);
    return -1;
}

std::vector<const OdDbEntity*> allEntities(const OdDbDatabase& db) {
    std::vector<const OdDbEntity*> out;
    for (const OdDbBlockTableRecord* b : db.blocks()) {
        if (b->isErased()) continue;
        if (b->blockBegin()) out.push_back(b->blockBegin());
        for (const OdDbEntity* e : b->entities()) {
            if (e->isErased()) continue;
            out.push_back(e);
            if (e->isComplex())
                for (const OdDbEntity* sub : static_cast<const OdDbComplexEntity*>(e)->subEntities())
                    out.push_back(sub);
        }
        if (b->blockEnd()) out.push_back(b->blockEnd());
    }
    return out;
}

const OdDbEntity* firstEntity(const OdDbDatabase& db, std::string_view type) {
    for (const OdDbEntity* e : allEntities(db))
        if (e->typeName() == type) return e;
    return nullptr;
}

const OdDbObject* firstObject(const OdDbDatabase& db, std::string_view type) {
    for (const OdDbObject* o : db.objectsSection())
        if (o->typeName() == type) return o;
    return nullptr;
}

bool hasRepair(const OdDbDatabase& db, std::string_view fragment) {
    for (const std::string& r : const_cast<OdDbDatabase&>(db).repairs())
        if (r.find(fragment) != std::string::npos) return true;
    return false;
}

std::string repairs(const OdDbDatabase& db) {
    std::string out;
    for (const std::string& r : const_cast<OdDbDatabase&>(db).repairs()) out += r + "\n";
    return out;
}

namespace {
// Inserts lines after the first line at or after `from` that starts with `marker`.
void insertAfter(std::string& text, std::string_view marker, std::string_view lines, std::size_t from = 0) {
    std::size_t at = text.find(marker, from);
    if (at == std::string::npos) throw std::logic_error("template lacks " + std::string(marker));
    std::size_t lineEnd = text.find('\n', at);
    text.insert(lineEnd, "\n" + std::string(lines));
}
} // namespace

std::string completeDrawing(std::string_view version, std::string_view entities, std::string_view blocks,
                            std::string_view objects) {
    std::string text(qvad::db::templateTagLines());
    text.replace(text.find("1 AC1032"), 8, "1 " + std::string(version));
    insertAfter(text, "2 ENTITIES", entities);
    // The paper space block's ENDBLK closes the template's BLOCKS section.
    insertAfter(text, "100 AcDbBlockEnd", blocks, text.find("2 *Paper_Space\n70"));
    text.insert(text.rfind("0 ENDSEC"), std::string(objects) + "\n");
    return text;
}

} // namespace structure_test
