#include "qvad/ge/matrix3d.h"

#include "qvad/ge/ocs.h"

#include <cmath>

const OdGeMatrix3d OdGeMatrix3d::kIdentity{};

OdGeMatrix3d OdGeMatrix3d::operator*(const OdGeMatrix3d& m) const {
    OdGeMatrix3d product;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k) sum += entry[r][k] * m.entry[k][c];
            product.entry[r][c] = sum;
        }
    }
    return product;
}

OdGePoint3d OdGeMatrix3d::operator*(const OdGePoint3d& p) const {
    const auto row = [&](int r) {
        return entry[r][0] * p.x + entry[r][1] * p.y + entry[r][2] * p.z + entry[r][3];
    };
    return {row(0), row(1), row(2)};
}

OdGeVector3d OdGeMatrix3d::operator*(const OdGeVector3d& v) const {
    const auto row = [&](int r) { return entry[r][0] * v.x + entry[r][1] * v.y + entry[r][2] * v.z; };
    return {row(0), row(1), row(2)};
}

OdGeMatrix3d& OdGeMatrix3d::setToTranslation(const OdGeVector3d& offset) {
    setToIdentity();
    entry[0][3] = offset.x;
    entry[1][3] = offset.y;
    entry[2][3] = offset.z;
    return *this;
}

OdGeMatrix3d& OdGeMatrix3d::setToRotation(double angle, const OdGeVector3d& axis, const OdGePoint3d& center) {
    // The columns are the images of the world axes; rotating about an axis through center is the same as
    // rotating about the origin and then moving center back onto itself.
    OdGeVector3d xAxis = OdGeVector3d::kXAxis;
    OdGeVector3d yAxis = OdGeVector3d::kYAxis;
    OdGeVector3d zAxis = OdGeVector3d::kZAxis;
    xAxis.rotateBy(angle, axis);
    yAxis.rotateBy(angle, axis);
    zAxis.rotateBy(angle, axis);
    setCoordSystem(OdGePoint3d::kOrigin, xAxis, yAxis, zAxis);
    const OdGeVector3d shift = center - *this * center;
    return preMultBy(translation(shift));
}

OdGeMatrix3d& OdGeMatrix3d::setToScaling(double factor, const OdGePoint3d& center) {
    setToIdentity();
    for (int i = 0; i < 3; ++i) entry[i][i] = factor;
    const OdGeVector3d shift = center.asVector() * (1.0 - factor);
    entry[0][3] = shift.x;
    entry[1][3] = shift.y;
    entry[2][3] = shift.z;
    return *this;
}

OdGeMatrix3d& OdGeMatrix3d::setToMirroring(const OdGePoint3d& pointOnPlane, const OdGeVector3d& planeNormal) {
    setToIdentity();
    const OdGeVector3d n = planeNormal.normal();
    if (n.isZeroLength()) return *this;
    // Householder reflection I - 2nn^T, shifted so that the plane stays where it is.
    const double nv[3] = {n.x, n.y, n.z};
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) entry[r][c] -= 2.0 * nv[r] * nv[c];
    }
    const OdGeVector3d shift = n * (2.0 * n.dotProduct(pointOnPlane.asVector()));
    entry[0][3] = shift.x;
    entry[1][3] = shift.y;
    entry[2][3] = shift.z;
    return *this;
}

OdGeMatrix3d& OdGeMatrix3d::setCoordSystem(const OdGePoint3d& origin, const OdGeVector3d& xAxis,
                                           const OdGeVector3d& yAxis, const OdGeVector3d& zAxis) {
    const OdGeVector3d columns[4] = {xAxis, yAxis, zAxis, origin.asVector()};
    for (int c = 0; c < 4; ++c) {
        entry[0][c] = columns[c].x;
        entry[1][c] = columns[c].y;
        entry[2][c] = columns[c].z;
        entry[3][c] = c == 3 ? 1.0 : 0.0;
    }
    return *this;
}

void OdGeMatrix3d::getCoordSystem(OdGePoint3d& origin, OdGeVector3d& xAxis, OdGeVector3d& yAxis,
                                  OdGeVector3d& zAxis) const {
    xAxis.set(entry[0][0], entry[1][0], entry[2][0]);
    yAxis.set(entry[0][1], entry[1][1], entry[2][1]);
    zAxis.set(entry[0][2], entry[1][2], entry[2][2]);
    origin.set(entry[0][3], entry[1][3], entry[2][3]);
}

OdGeMatrix3d OdGeMatrix3d::translation(const OdGeVector3d& offset) {
    return OdGeMatrix3d().setToTranslation(offset);
}

OdGeMatrix3d OdGeMatrix3d::rotation(double angle, const OdGeVector3d& axis, const OdGePoint3d& center) {
    return OdGeMatrix3d().setToRotation(angle, axis, center);
}

OdGeMatrix3d OdGeMatrix3d::scaling(double factor, const OdGePoint3d& center) {
    return OdGeMatrix3d().setToScaling(factor, center);
}

OdGeMatrix3d OdGeMatrix3d::mirroring(const OdGePoint3d& pointOnPlane, const OdGeVector3d& planeNormal) {
    return OdGeMatrix3d().setToMirroring(pointOnPlane, planeNormal);
}

OdGeMatrix3d OdGeMatrix3d::planeToWorld(const OdGeVector3d& planeNormal) {
    return ocsToWcsMatrix(planeNormal);
}

OdGeMatrix3d OdGeMatrix3d::worldToPlane(const OdGeVector3d& planeNormal) {
    return wcsToOcsMatrix(planeNormal);
}

double OdGeMatrix3d::det() const {
    // The bottom row is (0, 0, 0, 1) for an affine matrix, so its determinant is that of the 3x3 part.
    const auto& e = entry;
    return e[0][0] * (e[1][1] * e[2][2] - e[1][2] * e[2][1]) -
           e[0][1] * (e[1][0] * e[2][2] - e[1][2] * e[2][0]) +
           e[0][2] * (e[1][0] * e[2][1] - e[1][1] * e[2][0]);
}

bool OdGeMatrix3d::isSingular(const OdGeTol& tol) const {
    // Judge the volume spanned by the unit column directions rather than the raw determinant, so that a
    // drawing scaled to tiny units is not mistaken for a flattening transformation.
    OdGePoint3d origin;
    OdGeVector3d xAxis, yAxis, zAxis;
    getCoordSystem(origin, xAxis, yAxis, zAxis);
    const double scale = xAxis.length() * yAxis.length() * zAxis.length();
    if (scale == 0.0) return true;
    return std::abs(det()) / scale <= tol.equalVector();
}

bool OdGeMatrix3d::inverse(OdGeMatrix3d& result, const OdGeTol& tol) const {
    if (isSingular(tol)) return false;
    const auto& e = entry;
    const double invDet = 1.0 / det();
    OdGeMatrix3d inv;
    // The inverse of the 3x3 part is its adjugate over the determinant.
    inv.entry[0][0] = (e[1][1] * e[2][2] - e[1][2] * e[2][1]) * invDet;
    inv.entry[0][1] = (e[0][2] * e[2][1] - e[0][1] * e[2][2]) * invDet;
    inv.entry[0][2] = (e[0][1] * e[1][2] - e[0][2] * e[1][1]) * invDet;
    inv.entry[1][0] = (e[1][2] * e[2][0] - e[1][0] * e[2][2]) * invDet;
    inv.entry[1][1] = (e[0][0] * e[2][2] - e[0][2] * e[2][0]) * invDet;
    inv.entry[1][2] = (e[0][2] * e[1][0] - e[0][0] * e[1][2]) * invDet;
    inv.entry[2][0] = (e[1][0] * e[2][1] - e[1][1] * e[2][0]) * invDet;
    inv.entry[2][1] = (e[0][1] * e[2][0] - e[0][0] * e[2][1]) * invDet;
    inv.entry[2][2] = (e[0][0] * e[1][1] - e[0][1] * e[1][0]) * invDet;
    // p = A^-1 (p' - t), so the new translation is -A^-1 t.
    const OdGeVector3d back = -(inv * OdGeVector3d(e[0][3], e[1][3], e[2][3]));
    inv.entry[0][3] = back.x;
    inv.entry[1][3] = back.y;
    inv.entry[2][3] = back.z;
    result = inv;
    return true;
}

OdGeMatrix3d OdGeMatrix3d::inverse() const {
    OdGeMatrix3d result = *this;
    inverse(result);
    return result;
}

OdGeMatrix3d OdGeMatrix3d::transpose() const {
    OdGeMatrix3d t;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) t.entry[r][c] = entry[c][r];
    }
    return t;
}

bool OdGeMatrix3d::isEqualTo(const OdGeMatrix3d& m, const OdGeTol& tol) const {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            if (std::abs(entry[r][c] - m.entry[r][c]) > tol.equalVector()) return false;
        }
    }
    return true;
}
