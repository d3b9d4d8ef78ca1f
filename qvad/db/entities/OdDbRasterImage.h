#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"
#include "qvad/ge/point2d.h"

#include <vector>

// IMAGE: a picture placed in world coordinates. u and v are the sizes of one pixel along the
// picture's bottom and left edges; the clip boundary is in pixel coordinates, whose y runs down from
// the top row and whose pixel centres are whole numbers.
class OdDbRasterImage : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbRasterImage";
    enum ClipBoundaryType { kInvalid = 0, kRect = 1, kPoly = 2 };
    enum ImageDisplayOpt { kShow = 1, kShowUnAligned = 2, kClip = 4, kTransparent = 8 };

    OdDbRasterImage() : OdDbEntity("IMAGE") {}

    OdGePoint3d insertionPoint() const { return getPoint(10, {}, part()); }
    OdGeVector3d uVector() const { return getPoint(11, {}, part()).asVector(); }
    OdGeVector3d vVector() const { return getPoint(12, {}, part()).asVector(); }
    OdGePoint2d imageSize() const;
    void setOrientation(const OdGePoint3d& origin, const OdGeVector3d& u, const OdGeVector3d& v);
    qvad::Handle imageDefHandle() const { return getHandle(340, part()); }

    int displayOptions() const { return static_cast<int>(getInt(70, 0, part())); }
    bool isSetDisplayOpt(ImageDisplayOpt option) const { return (displayOptions() & option) != 0; }
    void setDisplayOpt(ImageDisplayOpt option, bool on);
    bool isClipped() const { return getInt(280, 0, part()) != 0; }
    void setClipped(bool on);
    int brightness() const { return static_cast<int>(getInt(281, 50, part())); }
    int contrast() const { return static_cast<int>(getInt(282, 50, part())); }
    int fade() const { return static_cast<int>(getInt(283, 0, part())); }

    ClipBoundaryType clipBoundaryType() const;
    std::vector<OdGePoint2d> clipBoundary() const;
    // Throws std::invalid_argument for a rectangle without exactly two corners or a polygon with
    // fewer than three points.
    void setClipBoundary(ClipBoundaryType type, const std::vector<OdGePoint2d>& points);

    OdGePoint3d pixelToWcs(const OdGePoint2d& pixel) const;
    // The outline as drawn: the clip boundary when clipping is on, else the whole picture; a
    // rectangle comes back as its four corners and a polygon without its closing point.
    std::vector<OdGePoint3d> boundaryWcs() const;

protected:
    explicit OdDbRasterImage(std::string_view typeName) : OdDbEntity(typeName) {}
    std::string_view part() const;
};

// WIPEOUT: a one-pixel image that masks what lies below its polygon.
class OdDbWipeout : public OdDbRasterImage {
public:
    static constexpr std::string_view kWipeoutSubclass = "AcDbWipeout";
    OdDbWipeout() : OdDbRasterImage("WIPEOUT") {}

    // Shapes the wipeout to the polygon (world coordinates, on a plane with the given normal) and
    // switches clipping on. Throws std::invalid_argument for fewer than three points or a polygon
    // that encloses no area.
    void setBoundary(const std::vector<OdGePoint3d>& points,
                     const OdGeVector3d& normal = OdGeVector3d::kZAxis);
};
