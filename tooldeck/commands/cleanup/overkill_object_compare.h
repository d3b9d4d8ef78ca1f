#pragma once
// Whether two objects of one run-time class are duplicates within a tolerance, and what a bucket pass
// may group them by without ever separating two duplicates.

#include "qvad/db/OdDbEntity.h"

#include <array>
#include <cstdint>

namespace qvtd::overkill {

// True when b repeats a within e: the class's defining properties agree (points within e, lengths,
// scales and angles within e, names, strings and flags exactly). Objects of different classes are
// never the same. Never throws.
bool sameObject(const OdDbEntity& a, const OdDbEntity& b, double e);

// What grouping may rely on: sameObject(a, b, e) holds only when both have the same key and every
// anchor number of one lies within e of the other's. Objects with equal keys have equal anchor counts.
struct ObjectSignature {
    std::uint64_t key = 0;
    std::array<double, 3> anchor{};
    int anchorCount = 0;
};

ObjectSignature objectSignature(const OdDbEntity& entity);

} // namespace qvtd::overkill
