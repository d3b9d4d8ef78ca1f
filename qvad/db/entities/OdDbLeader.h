#pragma once

#include "qvad/db/entities/OdDbCurve.h"

// LEADER: a line or spline path in world coordinates from the arrow to the annotation.
class OdDbLeader : public OdDbCurve {
public:
    static constexpr std::string_view kSubclass = "AcDbLeader";
    enum AnnoType { kMText = 0, kFcf = 1, kBlockRef = 2, kNoAnno = 3 };

    OdDbLeader() : OdDbCurve("LEADER") {}

    std::string_view dimensionStyle() const { return getString(3, "STANDARD", part()); }
    bool hasArrowHead() const { return getInt(71, 1, part()) != 0; }
    bool isSplined() const { return getInt(72, 0, part()) != 0; }
    int annoType() const { return static_cast<int>(getInt(73, kNoAnno, part())); }
    bool hasHookLine() const { return getInt(75, 0, part()) != 0; }
    double textHeight() const { return getDouble(40, 0.0, part()); }
    double textWidth() const { return getDouble(41, 0.0, part()); }
    // The MTEXT, tolerance or block reference the leader points at; 0 when none.
    qvad::Handle annotationHandle() const { return getHandle(340, part()); }
    OdGeVector3d horizontalDirection() const {
        return getPoint(211, OdGePoint3d(1, 0, 0), part()).asVector();
    }

    int numVertices() const;
    // Throws std::out_of_range for an index past the vertices.
    OdGePoint3d vertexAt(int index) const;
    void setVertexAt(int index, const OdGePoint3d& p);
    void appendVertex(const OdGePoint3d& p);
    // Throws std::out_of_range for an index past the vertices, std::invalid_argument when only two
    // are left: a leader needs both.
    void removeVertexAt(int index);

private:
    std::size_t vertexIndex(int index) const;
    void writeCount(int count);
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
