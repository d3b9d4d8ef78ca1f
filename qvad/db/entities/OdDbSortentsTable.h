#pragma once

#include "qvad/db/OdDbObject.h"
#include "qvad/db/entities/tag_access.h"

#include <span>
#include <utility>
#include <vector>

// SORTENTSTABLE: the draw order of one block's entities. Entities are drawn by ascending sort
// handle; an entity without an entry sorts by its own handle. Reordering hands the block's own
// handles out again in the new order, so sort keys never tie.
class OdDbSortentsTable : public OdDbObject {
public:
    static constexpr std::string_view kSubclass = "AcDbSortentsTable";
    OdDbSortentsTable() : OdDbObject("SORTENTSTABLE") {}

    // The block whose order this is.
    qvad::Handle blockHandle() const { return getHandle(330, part()); }
    // (entity, sort handle) pairs as stored.
    std::vector<std::pair<qvad::Handle, qvad::Handle>> entries() const;
    qvad::Handle sortHandle(qvad::Handle entity) const;

    // The block's entities (erased ones left out) in the order they are drawn; empty when the block
    // cannot be found.
    std::vector<qvad::Handle> drawOrder() const;
    // Puts the block's entities in this order, bottom first. Throws std::invalid_argument unless it
    // lists exactly the block's entities.
    void setDrawOrder(std::span<const qvad::Handle> order);
    // Entities not in the block are ignored; moving relative to an entity not in the block changes
    // nothing.
    void moveToBottom(std::span<const qvad::Handle> entities);
    void moveToTop(std::span<const qvad::Handle> entities);
    void moveBelow(std::span<const qvad::Handle> entities, qvad::Handle target);
    void moveAbove(std::span<const qvad::Handle> entities, qvad::Handle target);

private:
    void moveTo(std::span<const qvad::Handle> entities, qvad::Handle target, bool after);
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
