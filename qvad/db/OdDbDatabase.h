#pragma once
// The drawing: header, classes, symbol tables, blocks (model and paper space among them), the
// OBJECTS section and any sections nobody here knows, which are kept as they came.

#include "qvad/db/OdDbSymbolTable.h"
#include "qvad/db/change_observer.h"
#include "qvad/db/handle_table.h"
#include "qvad/db/header_variables.h"
#include "qvad/dxf/string_pool.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

struct RawSection {
    std::string_view name;
    std::string_view after; // the known section it followed in the file ("" when it came first)
    std::vector<qvad::dxf::Tag> tags;
};

class OdDbDatabase {
public:
    OdDbDatabase();
    ~OdDbDatabase();
    OdDbDatabase(const OdDbDatabase&) = delete;
    OdDbDatabase& operator=(const OdDbDatabase&) = delete;

    qvad::dxf::StringPool& strings() { return m_strings; }
    std::string_view keep(std::string_view text) { return m_strings.store(text); }

    // "AC1032" and so on; AC1009 and older are upgraded on load.
    std::string_view version() const { return m_header.value("$ACADVER", "AC1032"); }
    int versionNumber() const; // 1032 for "AC1032"
    std::string_view codePage() const { return m_header.value("$DWGCODEPAGE", "ANSI_1252"); }
    HeaderVariables& header() { return m_header; }
    const HeaderVariables& header() const { return m_header; }

    std::vector<qvad::dxf::Tag>& classes() { return m_classes; }
    std::vector<RawSection>& rawSections() { return m_rawSections; }
    const std::vector<RawSection>& rawSections() const { return m_rawSections; }

    // Takes ownership; registers the handle when it has one. The observer hears of it as created.
    OdDbObject* add(std::unique_ptr<OdDbObject> object);
    // Gives a new object a handle and an owner and takes it in; an entity owned by a block record is
    // appended to that block. Null id (and the object dropped) when the owner is not in the drawing.
    OdDbObjectId addOdDbObject(std::unique_ptr<OdDbObject> object, OdDbObjectId ownerId);
    // Gives an object back out of the database (handle map and object list; not the containers that
    // list it) so that undo can take a creation back and redo can put it back with reattach.
    std::unique_ptr<OdDbObject> detach(OdDbObject* object);
    OdDbObject* reattach(std::unique_ptr<OdDbObject> object);
    template <class T, class... A> T* make(A&&... args) {
        return static_cast<T*>(add(std::make_unique<T>(std::forward<A>(args)...)));
    }
    const std::vector<std::unique_ptr<OdDbObject>>& allObjects() const { return m_all; }
    // Loading knows roughly how many objects come; growing the tables as they come costs more.
    void reserveObjects(std::size_t count);

    OdDbObject* getObject(qvad::Handle h) const { return m_byHandle.find(h); }
    // Points the handle at the object (it must already carry that handle).
    void registerHandle(OdDbObject* object);
    void unregisterHandle(qvad::Handle h);
    // A fresh handle from $HANDSEED, which moves on.
    qvad::Handle allocateHandle();
    qvad::Handle handseed() const { return m_handseed; }
    void setHandseed(qvad::Handle h);

    std::vector<OdDbSymbolTable*>& tables() { return m_tables; }
    const std::vector<OdDbSymbolTable*>& tables() const { return m_tables; }
    OdDbSymbolTable* table(std::string_view name) const;

    // Blocks in the order the BLOCKS section lists them.
    std::vector<OdDbBlockTableRecord*>& blocks() { return m_blocks; }
    const std::vector<OdDbBlockTableRecord*>& blocks() const { return m_blocks; }
    OdDbBlockTableRecord* findBlock(std::string_view name) const;
    OdDbBlockTableRecord* modelSpace() const;
    // The active layout's block, "*Paper_Space".
    OdDbBlockTableRecord* paperSpace() const;

    std::vector<OdDbObject*>& objectsSection() { return m_objects; }
    const std::vector<OdDbObject*>& objectsSection() const { return m_objects; }
    OdDbObject* namedObjectsDictionary() const;

    // What loading had to mend, one line each, for the user to read.
    std::vector<std::string>& repairs() { return m_repairs; }

    // The file's own tags, which loaded objects point into; kept alive with the database.
    qvad::dxf::TagArray& fileTags() { return m_fileTags; }

    // The one way changes are announced; nothing happens while no observer is set. Objects, the
    // header and the handle seed announce their own changes; code that changes a container's list
    // (a block's entities, a table's records) announces it with notifyBeforeModify of the owner.
    void setChangeObserver(ChangeObserver* observer) {
        m_observer = observer;
        m_header.setObserver(observer);
    }
    ChangeObserver* changeObserver() const { return m_observer; }
    void notifyBeforeModify(OdDbObject& object) {
        if (m_observer) m_observer->beforeModify(object);
    }
    void notifyCreated(OdDbObject& object) {
        if (m_observer) m_observer->created(object);
    }
    void notifyBeforeEraseChange(OdDbObject& object, bool erasing) {
        if (m_observer) m_observer->beforeEraseChange(object, erasing);
    }
    void notifyBeforeHandseedChange() {
        if (m_observer) m_observer->beforeHandseedChange();
    }

private:
    ChangeObserver* m_observer = nullptr;
    qvad::dxf::StringPool m_strings;
    qvad::dxf::TagArray m_fileTags;
    HeaderVariables m_header;
    std::vector<qvad::dxf::Tag> m_classes;
    std::vector<RawSection> m_rawSections;
    std::vector<std::unique_ptr<OdDbObject>> m_all;
    HandleTable m_byHandle;
    qvad::Handle m_handseed = 1;
    std::vector<OdDbSymbolTable*> m_tables;
    std::vector<OdDbBlockTableRecord*> m_blocks;
    std::vector<OdDbObject*> m_objects;
    std::vector<std::string> m_repairs;
};
