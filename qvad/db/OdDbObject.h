#pragma once
// Every drawing object keeps its data as the DXF tags it was read from (or made with). Typed classes
// below read and write their properties through these tags, so what a file stores is exactly what
// the object holds, and whatever no class here understands is kept in place.

#include "qvad/db/OdDbObjectId.h"
#include "qvad/db/OdResult.h"
#include "qvad/db/OdRxClass.h"
#include "qvad/db/handle.h"
#include "qvad/dxf/tag.h"
#include "qvad/ge/point3d.h"

#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

class OdDbDatabase;
class OdDbMemoryFiler;
using qvad::dxf::Tag;

class OdDbObject {
public:
    explicit OdDbObject(std::string_view typeName) : m_type(typeName) {}
    virtual ~OdDbObject();
    OdDbObject(const OdDbObject&) = delete;
    OdDbObject& operator=(const OdDbObject&) = delete;

    std::string_view typeName() const { return m_type; }
    virtual bool isEntity() const { return false; }

    OdDbDatabase* database() const { return m_db; }
    void setDatabase(OdDbDatabase* db) { m_db = db; }

    qvad::Handle handle() const { return m_handle; }
    qvad::Handle ownerHandle() const { return m_owner; }
    // Both keep the cached value and the tag that stores it in step.
    void setHandle(qvad::Handle h);
    void setOwnerHandle(qvad::Handle h);
    // Rereads handle and owner from the tags after they were replaced wholesale.
    void syncHeadFromTags();

    bool isErased() const { return m_erased; }
    void setErased(bool erased);

    OdDbObjectId objectId() const { return {m_db, m_handle}; }
    OdDbObjectId ownerId() const { return {m_db, m_owner}; }
    // The exact run-time class (not a kind-of test): the C++ class together with the DXF type.
    const OdRxClass* isA() const;
    // Erases (or unerases) the object as the undo journal sees it; a POLYLINE or INSERT takes its
    // vertices or attributes and their SEQEND along.
    OdResult erase(bool erasing = true);
    // Objects are not locked while open (see OdDb::OpenMode): these keep code that opens for read and
    // then for write honest about its intent, and always succeed on a live object.
    OdResult upgradeOpen() { return m_erased ? eWasErased : eOk; }
    OdResult downgradeOpen() { return eOk; }
    void close() {}
    // The object's defining fields: its data after the common entity part, without handle, owner,
    // reactors and extended data, so that two copies of one object write equal streams.
    void dwgOutFields(OdDbMemoryFiler& filer) const;

    std::span<const Tag> tags() const { return {m_tagData, m_tagCount}; }
    // The loader points objects at the file's tag array; the first edit copies them out.
    void viewTags(const Tag* data, std::size_t count);
    std::vector<Tag>& mutableTags();
    void assignTags(std::vector<Tag> tags);

    // Index of the first extended-data tag (1001), or tags().size().
    std::size_t xdataStart() const;
    // Tag range [begin, end) of a subclass (after its 100 marker); the whole data part when empty.
    std::pair<std::size_t, std::size_t> subclassRange(std::string_view subclass) const;
    bool hasSubclass(std::string_view subclass) const;

    const Tag* findTag(int code, std::string_view subclass = {}) const;
    std::string_view getString(int code, std::string_view fallback = {},
                               std::string_view subclass = {}) const;
    double getDouble(int code, double fallback = 0.0, std::string_view subclass = {}) const;
    long long getInt(int code, long long fallback = 0, std::string_view subclass = {}) const;
    OdGePoint3d getPoint(int code, const OdGePoint3d& fallback = {}, std::string_view subclass = {}) const;
    qvad::Handle getHandle(int code, std::string_view subclass = {}) const;

    // Replaces the first tag with the code (within the subclass), or inserts one at the end of the
    // subclass, before any extended data.
    void setString(int code, std::string_view value, std::string_view subclass = {});
    void setDouble(int code, double value, std::string_view subclass = {});
    void setInt(int code, long long value, std::string_view subclass = {});
    void setPoint(int code, const OdGePoint3d& p, std::string_view subclass = {});
    void setHandleRef(int code, qvad::Handle h, std::string_view subclass = {});
    void removeTags(int code, std::string_view subclass = {});

    // True while the object still shows the loaded file's tags, which stay as they are for the
    // database's whole life: a record of the object's state can point at them instead of copying.
    bool tagsAreFileView() const;
    // Puts back a recorded state whole (the undo journal's way back; tells no observer). A file view
    // is shown again as it is; other tags are copied.
    void restoreState(std::span<const Tag> tags, bool fileView, bool erased, qvad::Handle handle,
                      qvad::Handle owner);
    // The undo journal notes here which of its open records (one per slot) already hold the object's
    // old state, by the record's number: the test then costs no look-up in a set of its own.
    std::uint32_t journalMark(int slot) const { return m_journalMarks[slot]; }
    void setJournalMark(int slot, std::uint32_t mark) { m_journalMarks[slot] = mark; }
    // True between joining a database and leaving it; only then are changes announced.
    bool isInDatabase() const { return m_inDatabase; }

    // Text that outlives this call: stored in the database's pool (or a local pool when detached).
    std::string_view keep(std::string_view text);

private:
    friend class OdDbDatabase;
    // Every change passes here first: one test when nobody observes (as while loading).
    void aboutToChange();
    std::size_t handleTagIndex() const;
    std::size_t ownerTagIndex() const;

    std::string_view m_type;
    OdDbDatabase* m_db = nullptr;
    qvad::Handle m_handle = 0;
    qvad::Handle m_owner = 0;
    const Tag* m_tagData = nullptr;
    std::uint32_t m_tagCount = 0;
    std::uint32_t m_journalMarks[2] = {0, 0};
    bool m_erased = false;
    bool m_inDatabase = false;
    std::unique_ptr<std::vector<Tag>> m_ownTags;
};

std::string formatReal(double value);
