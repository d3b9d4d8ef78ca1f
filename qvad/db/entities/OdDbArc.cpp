#include "qvad/db/entities/OdDbArc.h"

#include "qvad/ge/angle.h"
#include "qvad/ge/ocs.h"

#include <cmath>

OdGePoint3d OdDbArc::centerWcs() const {
    return ocsToWcs(center(), normal());
}

OdGePoint3d OdDbArc::pointWcsAt(double angle) const {
    const OdGePoint3d c = center();
    const double r = radius();
    return ocsToWcs(OdGePoint3d(c.x + r * std::cos(angle), c.y + r * std::sin(angle), c.z), normal());
}

OdGePoint3d OdDbArc::startPointWcs() const {
    return pointWcsAt(startAngle());
}
OdGePoint3d OdDbArc::endPointWcs() const {
    return pointWcsAt(endAngle());
}
double OdDbArc::includedAngle() const {
    return arcIncludedAngle(startAngle(), endAngle());
}
