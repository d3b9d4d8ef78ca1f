#include "tooldeck/module/nester_frame.h"

namespace qvtd {

int nestingFrame(int pointCount, int dimension, const double* coordinates, int* extremes) {
    if (pointCount < 1 || (dimension != 2 && dimension != 3) || !coordinates || !extremes) return 0;
    int minX = 0, minY = 0, maxX = 0, maxY = 0;
    auto x = [&](int i) { return coordinates[i * dimension]; };
    auto y = [&](int i) { return coordinates[i * dimension + 1]; };
    for (int i = 1; i < pointCount; ++i) {
        if (x(i) < x(minX)) minX = i;
        if (y(i) < y(minY)) minY = i;
        if (x(i) > x(maxX)) maxX = i;
        if (y(i) > y(maxY)) maxY = i;
    }
    extremes[0] = minX;
    extremes[1] = minY;
    extremes[2] = maxX;
    extremes[3] = maxY;
    return 4;
}

} // namespace qvtd
