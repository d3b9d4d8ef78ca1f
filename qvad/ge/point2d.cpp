#include "qvad/ge/point2d.h"

const OdGePoint2d OdGePoint2d::kOrigin{0.0, 0.0};
