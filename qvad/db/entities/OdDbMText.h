#pragma once

#include <vector>

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"

#include <string>

// MTEXT: formatted text in a column. Unlike TEXT, its location and direction are world coordinates.
// Contents longer than one DXF line are stored as 250-byte chunks (group 3) ending with group 1.
class OdDbMText : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbMText";
    enum AttachmentPoint {
        kTopLeft = 1,
        kTopCenter,
        kTopRight,
        kMiddleLeft,
        kMiddleCenter,
        kMiddleRight,
        kBottomLeft,
        kBottomCenter,
        kBottomRight
    };
    enum FlowDirection { kLtoR = 1, kTtoB = 3, kByStyle = 5 };
    static constexpr std::size_t kChunkSize = 250;

    OdDbMText() : OdDbEntity("MTEXT") {}

    // The whole contents with format codes, chunks joined.
    std::string contents() const;
    // Throws std::invalid_argument for text with line breaks: paragraphs are "\P" in MTEXT.
    void setContents(std::string_view text);

    OdGePoint3d location() const { return getPoint(10, {}, part()); }
    void setLocation(const OdGePoint3d& p) { setPoint(10, p, part()); }
    double textHeight() const { return getDouble(40, 0.0, part()); }
    void setTextHeight(double h) { setDouble(40, h, part()); }
    // The column width; 0 lets lines run as long as they are.
    double width() const { return getDouble(41, 0.0, part()); }
    void setWidth(double w) { setDouble(41, w, part()); }
    int attachment() const { return static_cast<int>(getInt(71, kTopLeft, part())); }
    // Throws std::invalid_argument outside 1..9.
    void setAttachment(int attachment);
    int flowDirection() const { return static_cast<int>(getInt(72, kLtoR, part())); }
    void setFlowDirection(int direction) { setInt(72, direction, part()); }
    std::string_view textStyle() const { return getString(7, "STANDARD", part()); }
    void setTextStyle(std::string_view name);
    double lineSpacingFactor() const { return getDouble(44, 1.0, part()); }
    void setLineSpacingFactor(double f) { setDouble(44, f, part()); }
    int lineSpacingStyle() const { return static_cast<int>(getInt(73, 1, part())); }
    // The size the writing program measured last; informative only.
    double actualWidth() const { return getDouble(42, 0.0, part()); }
    double actualHeight() const { return getDouble(43, 0.0, part()); }

    // The text's x direction in world coordinates: group 11, else the rotation (50) in the plane.
    OdGeVector3d direction() const;
    // Writes group 11 and drops a rotation angle, which 11 overrides anyway.
    void setDirection(const OdGeVector3d& direction);
    // Angle of the direction in the object coordinates of the normal, in [0, 2pi).
    double rotation() const;
    void setRotation(double angle);

private:
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }

    // The four corners of the text block in world coordinates: top left, top right, bottom left,
    // bottom right. Measuring needs the fonts, so this is defined beside the text extents.
    void getBoundingPoints(std::vector<OdGePoint3d>& points) const;
};
