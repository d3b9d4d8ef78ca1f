#pragma once
// The comparisons every class rule is made of, all with the run's tolerance e, and the key hasher
// the grouping uses.

#include "qvad/ge/point2d.h"
#include "qvad/ge/point3d.h"
#include "qvad/ge/vector3d.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qvtd::overkill::compare {

struct Within {
    double e;

    bool point(const OdGePoint3d& a, const OdGePoint3d& b) const { return a.isEqualTo(b, OdGeTol(e, e)); }
    bool point(const OdGePoint2d& a, const OdGePoint2d& b) const { return a.isEqualTo(b, OdGeTol(e, e)); }
    bool vector(const OdGeVector3d& a, const OdGeVector3d& b) const { return (a - b).length() <= e; }
    bool scalar(double a, double b) const { return a == b || std::abs(a - b) < e; }
    // Angles in radians; whole turns between them do not count.
    bool angle(double a, double b) const;
    // An angular range given by its start and end: same start (whole turns out) and same sweep, where
    // ends that meet make a full turn (0 to 2pi and 2pi to 4pi are one range).
    bool range(double startA, double endA, double startB, double endB) const;
    // Normals of data kept in the normal's object coordinates must point the same way: the opposite
    // normal mirrors the object.
    bool codirectional(const OdGeVector3d& a, const OdGeVector3d& b) const;
    // Normals that only set the direction of a thickness.
    bool parallel(const OdGeVector3d& a, const OdGeVector3d& b) const;
    bool points(const std::vector<OdGePoint3d>& a, const std::vector<OdGePoint3d>& b) const;
    bool points(const std::vector<OdGePoint2d>& a, const std::vector<OdGePoint2d>& b) const;
    bool scalars(const std::vector<double>& a, const std::vector<double>& b) const;
};

// Names of drawing records (styles, blocks, layers) are looked up without regard to case.
bool sameName(std::string_view a, std::string_view b);

// FNV-1a over the exactly compared parts of an object.
class KeyHasher {
public:
    KeyHasher& add(std::string_view text);
    KeyHasher& add(long long value);
    KeyHasher& addName(std::string_view name); // without regard to case
    std::uint64_t value() const { return m_hash; }

private:
    void byte(unsigned char c) {
        m_hash ^= c;
        m_hash *= 1099511628211ULL;
    }
    std::uint64_t m_hash = 14695981039346656037ULL;
};

} // namespace qvtd::overkill::compare
