#include "qvad/db/entities/OdDbSolid.h"

#include "qvad/ge/ocs.h"

#include <stdexcept>
#include <string>

namespace {
int cornerCode(int corner) {
    if (corner < 0 || corner > 3)
        throw std::out_of_range("a quadrilateral has corners 0 to 3, not " + std::to_string(corner));
    return 10 + corner;
}
} // namespace

OdGePoint3d OdDbQuadrilateral::getPointAt(int corner) const {
    int code = cornerCode(corner);
    // A triangle may leave out its fourth corner, which then is the third.
    if (code == 13 && !findTag(13, part())) return getPoint(12, {}, part());
    return getPoint(code, {}, part());
}

void OdDbQuadrilateral::setPointAt(int corner, const OdGePoint3d& p) {
    setPoint(cornerCode(corner), p, part());
}

OdGePoint3d OdDbQuadrilateral::getPointAtWcs(int corner) const {
    return ocsToWcs(getPointAt(corner), normal());
}

OdGePoint3d OdDbFace::getVertexAt(int corner) const {
    int code = cornerCode(corner);
    if (code == 13 && !findTag(13, part())) return getPoint(12, {}, part());
    return getPoint(code, {}, part());
}

void OdDbFace::setVertexAt(int corner, const OdGePoint3d& p) {
    setPoint(cornerCode(corner), p, part());
}

bool OdDbFace::isEdgeVisibleAt(int corner) const {
    cornerCode(corner);
    return (getInt(70, 0, part()) & (1 << corner)) == 0;
}

void OdDbFace::setEdgeHidden(int corner, bool hidden) {
    cornerCode(corner);
    int flags = static_cast<int>(getInt(70, 0, part()));
    int wanted = hidden ? (flags | (1 << corner)) : (flags & ~(1 << corner));
    if (wanted != flags) setInt(70, wanted, part());
}
