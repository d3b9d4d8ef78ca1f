#include "qvad/db/entities/OdDbBlockReference.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/ge/ocs.h"

#include <cmath>
#include <stdexcept>

std::string_view OdDbBlockReference::part() const {
    if (hasSubclass(OdDbMInsertBlock::kMInsertSubclass)) return OdDbMInsertBlock::kMInsertSubclass;
    return qvad::db::dataPart(*this, kSubclass);
}

void OdDbBlockReference::setBlockName(std::string_view name) {
    qvad::db::requireSingleLine(name, "a block name");
    if (name.empty()) throw std::invalid_argument("a block reference needs a block name");
    setString(2, name, part());
}

OdDbBlockTableRecord* OdDbBlockReference::blockTableRecord() const {
    return database() ? database()->findBlock(blockName()) : nullptr;
}

OdGePoint3d OdDbBlockReference::positionWcs() const {
    return ocsToWcs(position(), normal());
}

void OdDbBlockReference::setScaleFactors(double x, double y, double z) {
    setDouble(41, x, part());
    setDouble(42, y, part());
    setDouble(43, z, part());
}

std::vector<OdDbAttribute*> OdDbBlockReference::attributes() const {
    std::vector<OdDbAttribute*> out;
    for (OdDbEntity* e : subEntities())
        if (auto* a = dynamic_cast<OdDbAttribute*>(e)) out.push_back(a);
    return out;
}

OdDbAttribute* OdDbBlockReference::attribute(std::string_view tag) const {
    for (OdDbAttribute* a : attributes())
        if (equalsNoCase(a->tag(), tag)) return a;
    return nullptr;
}

OdGeMatrix3d OdDbBlockReference::blockTransform() const {
    OdGePoint3d base;
    if (OdDbBlockTableRecord* block = blockTableRecord())
        if (block->blockBegin()) base = block->blockBegin()->getPoint(10);
    OdGeMatrix3d scale;
    scale(0, 0) = xScale();
    scale(1, 1) = yScale();
    scale(2, 2) = zScale();
    return OdGeMatrix3d::planeToWorld(normal()) * OdGeMatrix3d::translation(position().asVector()) *
           OdGeMatrix3d::rotation(rotation(), OdGeVector3d::kZAxis) * scale *
           OdGeMatrix3d::translation(-base.asVector());
}

void OdDbMInsertBlock::setColumns(int n) {
    if (n < 1) throw std::invalid_argument("a block array needs at least one column");
    setInt(70, n, part());
}

void OdDbMInsertBlock::setRows(int n) {
    if (n < 1) throw std::invalid_argument("a block array needs at least one row");
    setInt(71, n, part());
}

std::unique_ptr<OdDbBlockReference> makeBlockReference(std::span<const Tag> tags) {
    using qvad::db::firstInteger;
    if (qvad::db::hasMarker(tags, OdDbMInsertBlock::kMInsertSubclass) || firstInteger(tags, 70, 1) > 1 ||
        firstInteger(tags, 71, 1) > 1)
        return std::make_unique<OdDbMInsertBlock>();
    return std::make_unique<OdDbBlockReference>();
}
