#pragma once

#include "qvad/db/entities/OdDbAttribute.h"
#include "qvad/ge/matrix3d.h"

#include <vector>

class OdDbBlockTableRecord;

// INSERT: a placed block, optionally followed by its ATTRIB entities. Position in the object
// coordinates of the normal as stored, rotation in radians (the file stores degrees).
class OdDbBlockReference : public OdDbComplexEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbBlockReference";
    OdDbBlockReference() : OdDbComplexEntity("INSERT") {}

    std::string_view blockName() const { return getString(2, {}, part()); }
    void setBlockName(std::string_view name);
    // The block's record in the drawing; null when detached or when the block is missing.
    OdDbBlockTableRecord* blockTableRecord() const;

    OdGePoint3d position() const { return getPoint(10, {}, part()); }
    void setPosition(const OdGePoint3d& p) { setPoint(10, p, part()); }
    OdGePoint3d positionWcs() const;
    double xScale() const { return getDouble(41, 1.0, part()); }
    double yScale() const { return getDouble(42, 1.0, part()); }
    double zScale() const { return getDouble(43, 1.0, part()); }
    void setScaleFactors(double x, double y, double z);
    double rotation() const { return qvad::db::degreesToRadians(getDouble(50, 0.0, part())); }
    void setRotation(double a) { setDouble(50, qvad::db::radiansToDegrees(a), part()); }

    // Group 66: the file says ATTRIB entities follow.
    bool hasAttributes() const { return getInt(66, 0, part()) != 0; }
    std::vector<OdDbAttribute*> attributes() const;
    // The first attribute with this tag (compared without regard to case); null when none.
    OdDbAttribute* attribute(std::string_view tag) const;

    // Block coordinates to world coordinates: the block's base point to the position, then scale,
    // rotation and the object plane. Without the block the base point is taken as the origin.
    OdGeMatrix3d blockTransform() const;

protected:
    explicit OdDbBlockReference(std::string_view typeName) : OdDbComplexEntity(typeName) {}
    // AcDbMInsertBlock stands in for AcDbBlockReference in a MINSERT.
    std::string_view part() const;
};

// An INSERT repeated in rows and columns (MINSERT): spacings along the block's rotated axes.
class OdDbMInsertBlock : public OdDbBlockReference {
public:
    static constexpr std::string_view kMInsertSubclass = "AcDbMInsertBlock";
    OdDbMInsertBlock() : OdDbBlockReference("INSERT") {}

    int columns() const { return static_cast<int>(getInt(70, 1, part())); }
    int rows() const { return static_cast<int>(getInt(71, 1, part())); }
    double columnSpacing() const { return getDouble(44, 0.0, part()); }
    double rowSpacing() const { return getDouble(45, 0.0, part()); }
    // Throws std::invalid_argument for counts below 1.
    void setColumns(int n);
    void setRows(int n);
    void setColumnSpacing(double d) { setDouble(44, d, part()); }
    void setRowSpacing(double d) { setDouble(45, d, part()); }
};

// The class an INSERT with these tags belongs to.
std::unique_ptr<OdDbBlockReference> makeBlockReference(std::span<const Tag> tags);
