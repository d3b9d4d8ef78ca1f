#include "qvad/db/entities/OdDbDimension.h"

#include "qvad/db/entities/OdDbDimensionKinds.h"
#include "qvad/ge/ocs.h"

int OdDbDimension::kindOf(long long flags) {
    // Bits 32, 64 and 128 are flags; below them the kind is a number, not a bit set.
    int kind = static_cast<int>(flags & 0x0F);
    return kind <= kOrdinate ? kind : -1;
}

void OdDbDimension::setDimensionStyle(std::string_view name) {
    qvad::db::requireSingleLine(name, "a dimension style name");
    setString(3, name, part());
}

void OdDbDimension::setDimensionText(std::string_view text) {
    qvad::db::requireSingleLine(text, "a dimension text");
    setString(1, text, part());
}

OdGePoint3d OdDbDimension::textPositionWcs() const {
    return ocsToWcs(textPosition(), normal());
}

std::unique_ptr<OdDbDimension> makeDimension(std::span<const Tag> tags) {
    switch (OdDbDimension::kindOf(qvad::db::firstInteger(tags, 70))) {
    case OdDbDimension::kRotated:
        return std::make_unique<OdDbRotatedDimension>();
    case OdDbDimension::kAligned:
        return std::make_unique<OdDbAlignedDimension>();
    case OdDbDimension::kAngular2Line:
        return std::make_unique<OdDb2LineAngularDimension>();
    case OdDbDimension::kDiameter:
        return std::make_unique<OdDbDiametricDimension>();
    case OdDbDimension::kRadius:
        return std::make_unique<OdDbRadialDimension>();
    case OdDbDimension::kAngular3Point:
        return std::make_unique<OdDb3PointAngularDimension>();
    case OdDbDimension::kOrdinate:
        return std::make_unique<OdDbOrdinateDimension>();
    default:
        return std::make_unique<OdDbDimension>();
    }
}
