#pragma once

// A point of the host geometry library, reduced to what the containers need: value semantics and an
// ordering. The order is lexicographic on (x, y, z) so that sorted point arrays can be searched.
struct QvGePoint {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    QvGePoint() = default;
    QvGePoint(double px, double py, double pz = 0.0) : x(px), y(py), z(pz) {}

    bool operator==(const QvGePoint& other) const { return x == other.x && y == other.y && z == other.z; }
    bool operator!=(const QvGePoint& other) const { return !(*this == other); }
    bool operator<(const QvGePoint& other) const {
        if (x != other.x) return x < other.x;
        if (y != other.y) return y < other.y;
        return z < other.z;
    }
    bool operator>(const QvGePoint& other) const { return other < *this; }
};
