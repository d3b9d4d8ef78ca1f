#pragma once

#include "qvad/db/entities/OdDbDimension.h"

// The seven kinds of DIMENSION. Each keeps its own points after its subclass marker; group 10 is
// the common definition point, whose meaning depends on the kind.
class OdDbDimensionKindBase : public OdDbDimension {
protected:
    virtual std::string_view kindSubclass() const = 0;
    std::string_view kindPart() const { return qvad::db::dataPart(*this, kindSubclass()); }
    OdGePoint3d kindPoint(int code) const { return getPoint(code, {}, kindPart()); }
    void setKindPoint(int code, const OdGePoint3d& p) { setPoint(code, p, kindPart()); }
    OdGePoint3d commonPoint() const { return getPoint(10, {}, part()); }
    void setCommonPoint(const OdGePoint3d& p) { setPoint(10, p, part()); }
};

class OdDbAlignedDimension : public OdDbDimensionKindBase {
public:
    static constexpr std::string_view kKindSubclass = "AcDbAlignedDimension";
    OdGePoint3d xLine1Point() const { return kindPoint(13); }
    OdGePoint3d xLine2Point() const { return kindPoint(14); }
    OdGePoint3d dimLinePoint() const { return commonPoint(); }
    void setXLine1Point(const OdGePoint3d& p) { setKindPoint(13, p); }
    void setXLine2Point(const OdGePoint3d& p) { setKindPoint(14, p); }
    void setDimLinePoint(const OdGePoint3d& p) { setCommonPoint(p); }
    double oblique() const { return qvad::db::degreesToRadians(getDouble(52, 0.0, kindPart())); }

protected:
    std::string_view kindSubclass() const override { return kKindSubclass; }
};

// A linear dimension measured along a direction; its data sits in the aligned part of the file.
class OdDbRotatedDimension : public OdDbDimensionKindBase {
public:
    static constexpr std::string_view kKindSubclass = "AcDbAlignedDimension";
    OdGePoint3d xLine1Point() const { return kindPoint(13); }
    OdGePoint3d xLine2Point() const { return kindPoint(14); }
    OdGePoint3d dimLinePoint() const { return commonPoint(); }
    void setXLine1Point(const OdGePoint3d& p) { setKindPoint(13, p); }
    void setXLine2Point(const OdGePoint3d& p) { setKindPoint(14, p); }
    void setDimLinePoint(const OdGePoint3d& p) { setCommonPoint(p); }
    double rotation() const { return qvad::db::degreesToRadians(getDouble(50, 0.0, kindPart())); }
    void setRotation(double a) { setDouble(50, qvad::db::radiansToDegrees(a), kindPart()); }
    double oblique() const { return qvad::db::degreesToRadians(getDouble(52, 0.0, kindPart())); }

protected:
    std::string_view kindSubclass() const override { return kKindSubclass; }
};

class OdDb2LineAngularDimension : public OdDbDimensionKindBase {
public:
    static constexpr std::string_view kKindSubclass = "AcDb2LineAngularDimension";
    OdGePoint3d xLine1Start() const { return kindPoint(13); }
    OdGePoint3d xLine1End() const { return kindPoint(14); }
    OdGePoint3d xLine2Start() const { return commonPoint(); }
    OdGePoint3d xLine2End() const { return kindPoint(15); }
    // In the object coordinates of the normal.
    OdGePoint3d arcPoint() const { return kindPoint(16); }

protected:
    std::string_view kindSubclass() const override { return kKindSubclass; }
};

class OdDbDiametricDimension : public OdDbDimensionKindBase {
public:
    static constexpr std::string_view kKindSubclass = "AcDbDiametricDimension";
    OdGePoint3d chordPoint() const { return kindPoint(15); }
    OdGePoint3d farChordPoint() const { return commonPoint(); }
    double leaderLength() const { return getDouble(40, 0.0, kindPart()); }

protected:
    std::string_view kindSubclass() const override { return kKindSubclass; }
};

class OdDbRadialDimension : public OdDbDimensionKindBase {
public:
    static constexpr std::string_view kKindSubclass = "AcDbRadialDimension";
    OdGePoint3d center() const { return commonPoint(); }
    OdGePoint3d chordPoint() const { return kindPoint(15); }
    void setCenter(const OdGePoint3d& p) { setCommonPoint(p); }
    void setChordPoint(const OdGePoint3d& p) { setKindPoint(15, p); }
    double leaderLength() const { return getDouble(40, 0.0, kindPart()); }

protected:
    std::string_view kindSubclass() const override { return kKindSubclass; }
};

class OdDb3PointAngularDimension : public OdDbDimensionKindBase {
public:
    static constexpr std::string_view kKindSubclass = "AcDb3PointAngularDimension";
    OdGePoint3d xLine1Point() const { return kindPoint(13); }
    OdGePoint3d xLine2Point() const { return kindPoint(14); }
    OdGePoint3d centerPoint() const { return kindPoint(15); }
    OdGePoint3d arcPoint() const { return commonPoint(); }

protected:
    std::string_view kindSubclass() const override { return kKindSubclass; }
};

class OdDbOrdinateDimension : public OdDbDimensionKindBase {
public:
    static constexpr std::string_view kKindSubclass = "AcDbOrdinateDimension";
    OdGePoint3d origin() const { return commonPoint(); }
    OdGePoint3d definingPoint() const { return kindPoint(13); }
    OdGePoint3d leaderEndPoint() const { return kindPoint(14); }
    // Bit 64 of group 70: the dimension measures x (else y).
    bool isUsingXAxis() const { return (getInt(70, 0, part()) & 64) != 0; }

protected:
    std::string_view kindSubclass() const override { return kKindSubclass; }
};
