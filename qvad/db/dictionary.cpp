#include "qvad/db/dictionary.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/entities/tag_access.h"

#include <stdexcept>

namespace {
bool isEntryReference(int code) {
    return code == 350 || code == 360;
}
} // namespace

std::string_view OdDbDictionary::part() const {
    return qvad::db::dataPart(*this, kSubclass);
}

std::vector<OdDbDictionary::Entry> OdDbDictionary::entries() const {
    std::vector<Entry> out;
    auto tags = this->tags();
    auto [b, e] = subclassRange(part());
    for (std::size_t i = b; i + 1 < e; ++i)
        if (tags[i].code == 3 && isEntryReference(tags[i + 1].code))
            out.push_back({tags[i].value(), qvad::parseHandle(tags[i + 1].value())});
    return out;
}

std::size_t OdDbDictionary::keyIndex(std::string_view name) const {
    auto tags = this->tags();
    auto [b, e] = subclassRange(part());
    for (std::size_t i = b; i + 1 < e; ++i)
        if (tags[i].code == 3 && isEntryReference(tags[i + 1].code) && equalsNoCase(tags[i].value(), name))
            return i;
    return tags.size();
}

qvad::Handle OdDbDictionary::getAt(std::string_view name) const {
    std::size_t i = keyIndex(name);
    return i < tags().size() ? qvad::parseHandle(tags()[i + 1].value()) : 0;
}

std::string_view OdDbDictionary::nameOf(qvad::Handle handle) const {
    for (const Entry& entry : entries())
        if (entry.handle == handle) return entry.name;
    return {};
}

OdDbObject* OdDbDictionary::getObject(std::string_view name) const {
    qvad::Handle h = getAt(name);
    return h && database() ? database()->getObject(h) : nullptr;
}

void OdDbDictionary::setAt(std::string_view name, qvad::Handle handle) {
    if (name.empty()) throw std::invalid_argument("a dictionary key cannot be empty");
    qvad::db::requireSingleLine(name, "a dictionary key");
    if (handle == 0) throw std::invalid_argument("a dictionary entry must point at an object");
    const std::string_view text = keep(qvad::formatHandle(handle));
    const std::size_t at = keyIndex(name);
    if (at < tags().size()) {
        qvad::db::editTags(*this,
                           [&](std::vector<Tag>& tags) { tags[at + 1] = Tag(tags[at + 1].code, text); });
        return;
    }
    const Tag entry[] = {Tag(3, keep(name)), Tag(isHardOwner() ? 360 : 350, text)};
    const std::size_t end = subclassRange(part()).second;
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(end), std::begin(entry), std::end(entry));
    });
}

bool OdDbDictionary::remove(std::string_view name) {
    const std::size_t at = keyIndex(name);
    if (at >= tags().size()) return false;
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(at),
                   tags.begin() + static_cast<std::ptrdiff_t>(at + 2));
    });
    return true;
}
