#pragma once
// DICTIONARY: named references to other objects, the drawing's filing cabinet (groups, layouts,
// application data). A hard-owner dictionary owns its entries (group 360), others only point at them
// (350). Keys compare without regard to case.

#include "qvad/db/OdDbObject.h"

#include <string_view>
#include <vector>

class OdDbDictionary : public OdDbObject {
public:
    struct Entry {
        std::string_view name;
        qvad::Handle handle = 0;
    };

    static constexpr std::string_view kSubclass = "AcDbDictionary";
    // ACDBDICTIONARYWDFLT is a dictionary with a default entry and uses this class too.
    explicit OdDbDictionary(std::string_view typeName = "DICTIONARY") : OdDbObject(typeName) {}

    bool isHardOwner() const { return getInt(280, 0, part()) != 0; }
    int mergeStyle() const { return static_cast<int>(getInt(281, 1, part())); }

    std::vector<Entry> entries() const;
    std::size_t numEntries() const { return entries().size(); }
    // 0 when there is no such key.
    qvad::Handle getAt(std::string_view name) const;
    bool has(std::string_view name) const { return getAt(name) != 0; }
    // The key of an entry; empty when the handle is not listed.
    std::string_view nameOf(qvad::Handle handle) const;
    OdDbObject* getObject(std::string_view name) const;

    // Points an existing key at the handle, or adds the key at the end. Throws std::invalid_argument
    // for an empty key, one with a line break, or a null handle.
    void setAt(std::string_view name, qvad::Handle handle);
    // False when there was no such key.
    bool remove(std::string_view name);

private:
    // Index of the key's group 3 tag, or tags().size().
    std::size_t keyIndex(std::string_view name) const;
    std::string_view part() const;
};
