#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"

// TEXT: one line of text. Points are in the object coordinates of the normal, as stored; angles are
// radians (the file stores degrees). The vertical alignment sits after a second AcDbText marker.
class OdDbText : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbText";
    enum TextHorzMode {
        kTextLeft = 0,
        kTextCenter = 1,
        kTextRight = 2,
        kTextAlign = 3,
        kTextMid = 4,
        kTextFit = 5
    };
    enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

    OdDbText() : OdDbEntity("TEXT") {}

    OdGePoint3d position() const { return getPoint(10, {}, part()); }
    void setPosition(const OdGePoint3d& p) { setPoint(10, p, part()); }
    // The second alignment point; the position when the file has none (left-aligned text).
    OdGePoint3d alignmentPoint() const { return getPoint(11, position(), part()); }
    void setAlignmentPoint(const OdGePoint3d& p) { setPoint(11, p, part()); }
    OdGePoint3d positionWcs() const;
    OdGePoint3d alignmentPointWcs() const;

    std::string_view textString() const { return getString(1, {}, part()); }
    // Throws std::invalid_argument for text with a line break.
    void setTextString(std::string_view text);
    double height() const { return getDouble(40, 0.0, part()); }
    void setHeight(double h) { setDouble(40, h, part()); }
    double rotation() const { return qvad::db::degreesToRadians(getDouble(50, 0.0, part())); }
    void setRotation(double a) { setDouble(50, qvad::db::radiansToDegrees(a), part()); }
    double widthFactor() const { return getDouble(41, 1.0, part()); }
    void setWidthFactor(double f) { setDouble(41, f, part()); }
    double oblique() const { return qvad::db::degreesToRadians(getDouble(51, 0.0, part())); }
    void setOblique(double a) { setDouble(51, qvad::db::radiansToDegrees(a), part()); }
    // The text style's name.
    std::string_view textStyle() const { return getString(7, "STANDARD", part()); }
    void setTextStyle(std::string_view name);
    double thickness() const { return getDouble(39, 0.0, part()); }
    void setThickness(double t) { setDouble(39, t, part()); }
    bool isMirroredInX() const { return (generationFlags() & 2) != 0; }
    bool isMirroredInY() const { return (generationFlags() & 4) != 0; }
    void setMirroredInX(bool on) { setGenerationFlag(2, on); }
    void setMirroredInY(bool on) { setGenerationFlag(4, on); }

    int horizontalMode() const { return static_cast<int>(getInt(72, 0, part())); }
    void setHorizontalMode(int mode) { setInt(72, mode, part()); }
    virtual int verticalMode() const;
    virtual void setVerticalMode(int mode);
    bool isDefaultAlignment() const { return horizontalMode() == kTextLeft && verticalMode() == kTextBase; }

protected:
    explicit OdDbText(std::string_view typeName) : OdDbEntity(typeName) {}
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }

private:
    int generationFlags() const { return static_cast<int>(getInt(71, 0, part())); }
    void setGenerationFlag(int bit, bool on);
};
