#pragma once
// The entries of a DICTIONARY (or ACDBDICTIONARYWDFLT) object: pairs of a key (3) and the handle of
// the object it names (350 soft or 360 hard owner), read and changed in place in the object's tags.

#include "qvad/db/OdDbObject.h"

#include <string>
#include <vector>

namespace qvad::db {

struct DictionaryEntry {
    std::string_view key;
    Handle handle;
};

bool isDictionary(const OdDbObject& object);
std::vector<DictionaryEntry> dictionaryEntries(const OdDbObject& dictionary);
// 0 when the key is absent (keys compare exactly, as dictionaries do).
Handle dictionaryItem(const OdDbObject& dictionary, std::string_view key);
// Points the key at the handle, adding the entry when the key is new.
void setDictionaryItem(OdDbObject& dictionary, std::string_view key, Handle h);
void removeDictionaryItem(OdDbObject& dictionary, std::string_view key);

// Removes keys without a handle and handles without a key, what is left of an entry a file lost half
// of; returns how many tags went.
std::size_t removeBrokenEntries(OdDbObject& dictionary);

// The object a dictionary entry of the drawing's root dictionary names ("ACAD_LAYOUT"), or null.
OdDbObject* rootDictionaryItem(const OdDbDatabase& db, std::string_view key);

} // namespace qvad::db
