#include "qvad/ge/point3d.h"

#include "qvad/ge/matrix3d.h"

const OdGePoint3d OdGePoint3d::kOrigin{0.0, 0.0, 0.0};

OdGePoint3d& OdGePoint3d::rotateBy(double angle, const OdGeVector3d& axis, const OdGePoint3d& center) {
    return *this = center + (*this - center).rotateBy(angle, axis);
}

OdGePoint3d& OdGePoint3d::transformBy(const OdGeMatrix3d& matrix) {
    return *this = matrix * *this;
}
