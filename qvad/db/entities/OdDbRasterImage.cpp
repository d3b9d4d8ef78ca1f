#include "qvad/db/entities/OdDbRasterImage.h"

#include "qvad/ge/ocs.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

std::string_view OdDbRasterImage::part() const {
    if (hasSubclass(OdDbWipeout::kWipeoutSubclass)) return OdDbWipeout::kWipeoutSubclass;
    return qvad::db::dataPart(*this, kSubclass);
}

OdGePoint2d OdDbRasterImage::imageSize() const {
    OdGePoint3d s = getPoint(13, {}, part());
    return {s.x, s.y};
}

void OdDbRasterImage::setOrientation(const OdGePoint3d& origin, const OdGeVector3d& u,
                                     const OdGeVector3d& v) {
    setPoint(10, origin, part());
    setPoint(11, OdGePoint3d(u.x, u.y, u.z), part());
    setPoint(12, OdGePoint3d(v.x, v.y, v.z), part());
}

void OdDbRasterImage::setDisplayOpt(ImageDisplayOpt option, bool on) {
    int f = displayOptions();
    int wanted = on ? (f | option) : (f & ~option);
    if (wanted != f) setInt(70, wanted, part());
}

void OdDbRasterImage::setClipped(bool on) {
    if (isClipped() != on) setInt(280, on ? 1 : 0, part());
}

OdDbRasterImage::ClipBoundaryType OdDbRasterImage::clipBoundaryType() const {
    switch (getInt(71, 0, part())) {
    case 1:
        return kRect;
    case 2:
        return kPoly;
    default:
        return kInvalid;
    }
}

std::vector<OdGePoint2d> OdDbRasterImage::clipBoundary() const {
    std::vector<OdGePoint2d> out;
    for (const OdGePoint3d& p : qvad::db::repeatedPoints(*this, 14, part())) out.emplace_back(p.x, p.y);
    return out;
}

void OdDbRasterImage::setClipBoundary(ClipBoundaryType type, const std::vector<OdGePoint2d>& points) {
    if (type == kRect && points.size() != 2)
        throw std::invalid_argument("a rectangular clip boundary takes two opposite corners");
    if (type == kPoly && points.size() < 3)
        throw std::invalid_argument("a clip polygon needs at least three points");
    if (type == kInvalid) throw std::invalid_argument("a clip boundary is a rectangle or a polygon");
    std::vector<Tag> run = {qvad::db::integerTag(*this, 71, type),
                            qvad::db::integerTag(*this, 91, static_cast<long long>(points.size()))};
    for (const OdGePoint2d& p : points) {
        auto xy = qvad::db::pointTags(*this, 14, OdGePoint3d(p, 0.0), true);
        run.insert(run.end(), xy.begin(), xy.end());
    }
    qvad::db::replaceTagRun(*this, part(), {71, 91, 14, 24}, run, {290});
}

OdGePoint3d OdDbRasterImage::pixelToWcs(const OdGePoint2d& pixel) const {
    return insertionPoint() + uVector() * (pixel.x + 0.5) + vVector() * (imageSize().y - 0.5 - pixel.y);
}

std::vector<OdGePoint3d> OdDbRasterImage::boundaryWcs() const {
    std::vector<OdGePoint3d> out;
    std::vector<OdGePoint2d> clip = clipBoundary();
    ClipBoundaryType type = clipBoundaryType();
    if (isClipped() && type == kRect && clip.size() == 2) {
        const OdGePoint2d a = clip[0], b = clip[1];
        for (const OdGePoint2d& c : {a, OdGePoint2d(b.x, a.y), b, OdGePoint2d(a.x, b.y)})
            out.push_back(pixelToWcs(c));
        return out;
    }
    if (isClipped() && type == kPoly && clip.size() >= 3) {
        if (clip.front().isEqualTo(clip.back())) clip.pop_back();
        for (const OdGePoint2d& c : clip) out.push_back(pixelToWcs(c));
        return out;
    }
    const OdGePoint3d o = insertionPoint();
    const OdGeVector3d u = uVector() * imageSize().x, v = vVector() * imageSize().y;
    return {o, o + u, o + u + v, o + v};
}

void OdDbWipeout::setBoundary(const std::vector<OdGePoint3d>& points, const OdGeVector3d& normal) {
    if (points.size() < 3) throw std::invalid_argument("a wipeout needs at least three boundary points");
    std::vector<OdGePoint3d> plane;
    for (const OdGePoint3d& p : points) plane.push_back(wcsToOcs(p, normal));
    double minX = plane[0].x, maxX = minX, minY = plane[0].y, maxY = minY;
    for (const OdGePoint3d& p : plane) {
        minX = std::min(minX, p.x);
        maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y);
        maxY = std::max(maxY, p.y);
    }
    const double width = maxX - minX, height = maxY - minY;
    double twiceArea = 0.0;
    for (std::size_t i = 0; i < plane.size(); ++i) {
        const OdGePoint3d& a = plane[i];
        const OdGePoint3d& b = plane[(i + 1) % plane.size()];
        twiceArea += a.x * b.y - b.x * a.y;
    }
    if (!(width > kGeDefaultTol.equalPoint() && height > kGeDefaultTol.equalPoint()) ||
        std::abs(twiceArea) <= kGeDefaultTol.equalPoint() * std::max(width, height))
        throw std::invalid_argument("the wipeout boundary encloses no area");

    // One pixel stretched over the polygon's box; the polygon itself becomes the clip boundary.
    std::vector<OdGePoint2d> clip;
    for (const OdGePoint3d& p : plane)
        clip.emplace_back((p.x - minX) / width - 0.5, 0.5 - (p.y - minY) / height);
    if (!clip.front().isEqualTo(clip.back())) clip.push_back(clip.front());

    setOrientation(ocsToWcs(OdGePoint3d(minX, minY, plane[0].z), normal),
                   ocsToWcs(OdGeVector3d(width, 0.0, 0.0), normal),
                   ocsToWcs(OdGeVector3d(0.0, height, 0.0), normal));
    if (findTag(13, part())) {
        setPoint(13, OdGePoint3d(1.0, 1.0, 0.0), part());
    } else {
        std::vector<Tag> size = qvad::db::pointTags(*this, 13, OdGePoint3d(1.0, 1.0, 0.0), true);
        qvad::db::replaceTagRun(*this, part(), {13, 23}, size, {340, 70, 280, 71});
    }
    setClipBoundary(kPoly, clip);
    setDisplayOpt(kClip, true);
    setClipped(true);
}
