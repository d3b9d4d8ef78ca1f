#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"

// DIMENSION: the properties every kind shares. The kind is the low bits of group 70 and decides the
// class (see OdDbDimensionKinds.h). Definition points are world coordinates; the text position is
// in the object coordinates of the normal, as stored. Angles are radians (the file stores degrees).
class OdDbDimension : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbDimension";
    enum Kind {
        kRotated = 0,
        kAligned = 1,
        kAngular2Line = 2,
        kDiameter = 3,
        kRadius = 4,
        kAngular3Point = 5,
        kOrdinate = 6
    };

    OdDbDimension() : OdDbEntity("DIMENSION") {}

    // The kind from group 70; -1 for a value outside the seven kinds.
    int dimensionKind() const { return kindOf(getInt(70, 0, part())); }
    static int kindOf(long long flags);

    // The anonymous block that holds the dimension's drawn geometry.
    std::string_view blockName() const { return getString(2, {}, part()); }
    std::string_view dimensionStyle() const { return getString(3, "STANDARD", part()); }
    void setDimensionStyle(std::string_view name);
    // The text override: "" measures, "<>" stands for the measurement inside other text.
    std::string_view dimensionText() const { return getString(1, {}, part()); }
    void setDimensionText(std::string_view text);
    OdGePoint3d textPosition() const { return getPoint(11, {}, part()); }
    void setTextPosition(const OdGePoint3d& p) { setPoint(11, p, part()); }
    OdGePoint3d textPositionWcs() const;
    bool isUsingDefaultTextPosition() const { return (getInt(70, 0, part()) & 128) == 0; }
    double textRotation() const { return qvad::db::degreesToRadians(getDouble(53, 0.0, part())); }
    void setTextRotation(double a) { setDouble(53, qvad::db::radiansToDegrees(a), part()); }
    double horizontalRotation() const { return qvad::db::degreesToRadians(getDouble(51, 0.0, part())); }
    int textAttachment() const { return static_cast<int>(getInt(71, 5, part())); }
    // As measured when the file was written; absent in old files.
    double measurement() const { return getDouble(42, 0.0, part()); }

protected:
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};

// The class a DIMENSION with these tags belongs to.
std::unique_ptr<OdDbDimension> makeDimension(std::span<const Tag> tags);
