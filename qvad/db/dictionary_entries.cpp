#include "qvad/db/dictionary_entries.h"

#include "qvad/db/OdDbDatabase.h"

namespace qvad::db {
namespace {

constexpr std::string_view kDictionary = "AcDbDictionary";

bool isEntryHandle(int code) {
    return code == 350 || code == 360;
}

} // namespace

bool isDictionary(const OdDbObject& object) {
    return object.typeName() == "DICTIONARY" || object.typeName() == "ACDBDICTIONARYWDFLT";
}

std::vector<DictionaryEntry> dictionaryEntries(const OdDbObject& dictionary) {
    std::vector<DictionaryEntry> entries;
    auto [begin, end] = dictionary.subclassRange(kDictionary);
    std::span<const Tag> tags = dictionary.tags();
    for (std::size_t i = begin; i + 1 < end; ++i)
        if (tags[i].code == 3 && isEntryHandle(tags[i + 1].code))
            entries.push_back({tags[i].value(), parseHandle(tags[i + 1].value())});
    return entries;
}

Handle dictionaryItem(const OdDbObject& dictionary, std::string_view key) {
    for (const DictionaryEntry& e : dictionaryEntries(dictionary))
        if (e.key == key) return e.handle;
    return 0;
}

void setDictionaryItem(OdDbObject& dictionary, std::string_view key, Handle h) {
    std::string_view handleText = dictionary.keep(formatHandle(h));
    auto [begin, end] = dictionary.subclassRange(kDictionary);
    auto& tags = dictionary.mutableTags();
    for (std::size_t i = begin; i + 1 < end; ++i) {
        if (tags[i].code == 3 && tags[i].value() == key && isEntryHandle(tags[i + 1].code)) {
            tags[i + 1] = Tag(tags[i + 1].code, handleText);
            return;
        }
    }
    Tag entry[2] = {Tag(3, dictionary.keep(key)), Tag(350, handleText)};
    tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(end), entry, entry + 2);
    dictionary.mutableTags();
}

void removeDictionaryItem(OdDbObject& dictionary, std::string_view key) {
    auto [begin, end] = dictionary.subclassRange(kDictionary);
    auto& tags = dictionary.mutableTags();
    for (std::size_t i = begin; i + 1 < end; ++i) {
        if (tags[i].code == 3 && tags[i].value() == key && isEntryHandle(tags[i + 1].code)) {
            tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(i),
                       tags.begin() + static_cast<std::ptrdiff_t>(i + 2));
            break;
        }
    }
    dictionary.mutableTags();
}

std::size_t removeBrokenEntries(OdDbObject& dictionary) {
    auto [begin, end] = dictionary.subclassRange(kDictionary);
    std::span<const Tag> tags = dictionary.tags();
    std::vector<bool> drop(tags.size(), false);
    std::size_t count = 0;
    for (std::size_t i = begin; i < end; ++i) {
        bool key = tags[i].code == 3, handle = isEntryHandle(tags[i].code);
        bool paired =
            key ? i + 1 < end && isEntryHandle(tags[i + 1].code) : i > begin && tags[i - 1].code == 3;
        if ((key || handle) && !paired) drop[i] = true, ++count;
    }
    if (!count) return 0;
    std::vector<Tag> kept;
    for (std::size_t i = 0; i < tags.size(); ++i)
        if (!drop[i]) kept.push_back(tags[i]);
    dictionary.assignTags(std::move(kept));
    return count;
}

OdDbObject* rootDictionaryItem(const OdDbDatabase& db, std::string_view key) {
    OdDbObject* root = db.namedObjectsDictionary();
    if (!root) return nullptr;
    Handle h = dictionaryItem(*root, key);
    return h ? db.getObject(h) : nullptr;
}

} // namespace qvad::db
