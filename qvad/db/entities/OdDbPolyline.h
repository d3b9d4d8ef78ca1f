#pragma once

#include "qvad/db/entities/OdDbCurve.h"
#include "qvad/ge/arcsegment2d.h"

#include <optional>
#include <vector>

// LWPOLYLINE: 2D vertices in the object coordinates of the normal, lifted by the elevation. Each
// vertex may carry its own start and end width and the bulge of the segment that leaves it; a vertex
// without widths takes the constant width. Vertex indices out of range throw std::out_of_range.
class OdDbPolyline : public OdDbCurve {
public:
    static constexpr std::string_view kSubclass = "AcDbPolyline";
    OdDbPolyline() : OdDbCurve("LWPOLYLINE") {}

    struct Vertex {
        OdGePoint2d point;
        double bulge = 0.0;
        double startWidth = 0.0;
        double endWidth = 0.0;
    };
    unsigned numVerts() const;
    // Every vertex in one pass over the tags (the per-index getters each walk them from the start).
    std::vector<Vertex> getVertices() const;
    OdGePoint2d getPointAt(unsigned index) const;
    OdGePoint3d getPointAtWcs(unsigned index) const;
    double getBulgeAt(unsigned index) const;
    void getWidthsAt(unsigned index, double& startWidth, double& endWidth) const;
    // The arc of the segment leaving the vertex; none for a straight segment.
    std::optional<OdGeArcSegment2d> arcSegmentAt(unsigned index) const;

    void setPointAt(unsigned index, const OdGePoint2d& p);
    void setBulgeAt(unsigned index, double bulge);
    void setWidthsAt(unsigned index, double startWidth, double endWidth);
    // Inserts before the vertex at index (index == numVerts() appends). Negative widths mean "the
    // constant width".
    void addVertexAt(unsigned index, const OdGePoint2d& p, double bulge = 0.0, double startWidth = -1.0,
                     double endWidth = -1.0);
    void removeVertexAt(unsigned index);

    bool isClosed() const override { return (flags() & 1) != 0; }
    void setClosed(bool closed);
    bool hasPlinegen() const { return (flags() & 128) != 0; }
    bool isOnlyLines() const;
    double elevation() const { return getDouble(38, 0.0, part()); }
    void setElevation(double z) { setHeadValue(38, formatReal(z)); }
    double thickness() const { return getDouble(39, 0.0, part()); }
    void setThickness(double t) { setHeadValue(39, formatReal(t)); }
    double getConstantWidth() const { return getDouble(43, 0.0, part()); }
    // Drops the vertices' own widths, so every segment takes this one.
    void setConstantWidth(double width);

private:
    int flags() const { return static_cast<int>(getInt(70, 0, part())); }
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
    // Tag range [begin, end) of a vertex: its 10 tag and the tags that belong to it.
    std::pair<std::size_t, std::size_t> vertexRange(unsigned index) const;
    const Tag* vertexTag(unsigned index, int code) const;
    void setVertexValue(unsigned index, int code, std::string_view text);
    bool anyVertexHas(int code) const;
    void writeCount(unsigned count);
    void setHeadValue(int code, std::string_view text);
};
