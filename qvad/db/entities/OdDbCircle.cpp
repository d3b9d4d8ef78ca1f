#include "qvad/db/entities/OdDbCircle.h"

#include "qvad/ge/ocs.h"

OdGePoint3d OdDbCircle::centerWcs() const {
    return ocsToWcs(center(), normal());
}

void OdDbCircle::setCenterWcs(const OdGePoint3d& p) {
    setCenter(wcsToOcs(p, normal()));
}
