#pragma once

#include "qvad/db/OdDbObject.h"
#include "qvad/db/entities/tag_access.h"

#include <vector>

// GROUP: a named set of entities. The name is the group's key in the ACAD_GROUP dictionary; the
// members are hard pointers, and each member names the group among its reactors so that it can find
// its groups.
class OdDbGroup : public OdDbObject {
public:
    static constexpr std::string_view kSubclass = "AcDbGroup";
    OdDbGroup() : OdDbObject("GROUP") {}

    // The key under which the owning dictionary lists this group; empty when detached.
    std::string_view name() const;
    std::string_view description() const { return getString(300, {}, part()); }
    void setDescription(std::string_view text);
    bool isAnonymous() const { return getInt(70, 0, part()) != 0; }
    bool isSelectable() const { return getInt(71, 1, part()) != 0; }
    void setSelectable(bool on);

    std::vector<qvad::Handle> entityHandles() const { return qvad::db::repeatedHandles(*this, 340, part()); }
    std::size_t numEntities() const { return entityHandles().size(); }
    bool has(qvad::Handle entity) const;
    // Adds the member (once) and the group to the member's reactors when the member is in the drawing.
    void append(qvad::Handle entity);
    // Removes the member and the group from the member's reactors; false when it was no member.
    bool remove(qvad::Handle entity);

private:
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
