#include "tooldeck/commands/cleanup/overkill_buckets.h"

#include "tooldeck/commands/cleanup/overkill_candidates.h"
#include "tooldeck/commands/cleanup/overkill_object_compare.h"

#include <algorithm>
#include <cmath>
#include <utility>

// Why the grouping never separates a pair the pairwise scheme would erase.
//
// A pair is erased only when it passes the property test and sameObject holds. The property test
// demands equal colour, layer, linetype, lineweight and plot style, so the first split (by those) keeps
// the pair together. sameObject demands equal signature keys, so the split by key keeps it together.
// sameObject also demands each anchor number of the two within e (objectSignature promises it), and
// the sweeps along the anchor numbers give every member an interval of width e plus an allowance for
// rounding around its number: two numbers within e have touching intervals, which a sweep never
// separates (see overkill_candidates.cpp).
//
// Within a group the pairwise scheme runs in list order. Pairs from different groups are never the
// same, so each member meets, in its group, exactly the references it would meet in one pass over the
// whole bucket, and is erased by the same one. Sorting the erasures by (reference, erased member)
// gives the order of that single pass.

namespace qvtd::overkill {
namespace {

// Width of a member's interval along one anchor number: e, a little more so that a pair within e
// after rounding never falls just outside, and an allowance for rounding at the number's magnitude.
double reachFor(double value, double e) {
    return e * (1.0 + 1e-9) + 1e-12 * (1.0 + std::abs(value));
}

std::vector<CandidateGroup> splitByKey(std::vector<CandidateGroup> groups,
                                       const std::vector<ObjectSignature>& signatures) {
    std::vector<CandidateGroup> parts;
    for (CandidateGroup& group : groups) {
        std::stable_sort(group.begin(), group.end(),
                         [&](std::size_t a, std::size_t b) { return signatures[a].key < signatures[b].key; });
        std::size_t begin = 0;
        for (std::size_t k = 1; k <= group.size(); ++k) {
            if (k < group.size() && signatures[group[k]].key == signatures[group[begin]].key) continue;
            if (k - begin > 1)
                parts.emplace_back(group.begin() + static_cast<std::ptrdiff_t>(begin),
                                   group.begin() + static_cast<std::ptrdiff_t>(k));
            begin = k;
        }
    }
    return parts;
}

SweepCoordinate anchorCoordinate(const std::vector<ObjectSignature>& signatures, std::size_t axis, double e) {
    return [&signatures, axis, e](std::span<const std::size_t> group, std::span<Interval> out) {
        for (std::size_t k = 0; k < group.size(); ++k) {
            const ObjectSignature& s = signatures[group[k]];
            // Members of one key have the same anchor count; without this number they all stay put.
            if (static_cast<std::size_t>(s.anchorCount) <= axis) {
                out[k] = {0.0, 0.0};
                continue;
            }
            const double v = s.anchor[axis];
            out[k] = widened(v, v, reachFor(v, e));
        }
    };
}

} // namespace

void runBucketPass(const std::vector<BucketMember>& members, const OverkillSettings& settings,
                   OverkillEdits& edits) {
    if (members.size() < 2) return;
    const double e = comparisonTolerance(settings);

    std::vector<ObjectSignature> signatures(members.size());
    std::vector<std::size_t> present;
    present.reserve(members.size());
    for (std::size_t i = 0; i < members.size(); ++i)
        if (members[i].entity) {
            signatures[i] = objectSignature(*members[i].entity);
            present.push_back(i);
        }

    std::vector<CandidateGroup> groups =
        groupByExactProperties(settings, present.size(),
                               [&](std::size_t k) -> const Properties& { return members[present[k]].props; });
    for (CandidateGroup& group : groups)
        for (std::size_t& index : group) index = present[index];
    groups = splitByKey(std::move(groups), signatures);
    groups = refineCandidateGroups(std::move(groups),
                                   {anchorCoordinate(signatures, 0, e), anchorCoordinate(signatures, 1, e),
                                    anchorCoordinate(signatures, 2, e)});

    std::vector<char> erased(members.size(), 0);
    std::vector<std::pair<std::size_t, std::size_t>> erasures; // (reference, erased member)
    for (const CandidateGroup& group : groups) {
        for (std::size_t r = 0; r < group.size(); ++r) {
            const std::size_t reference = group[r];
            if (erased[reference]) continue;
            for (std::size_t c = r + 1; c < group.size(); ++c) {
                const std::size_t other = group[c];
                if (erased[other] || members[other].key == members[reference].key) continue;
                if (!propertiesMatch(settings, members[reference].props, members[other].props)) continue;
                if (!sameObject(*members[reference].entity, *members[other].entity, e)) continue;
                erased[other] = 1;
                erasures.emplace_back(reference, other);
            }
        }
    }
    std::sort(erasures.begin(), erasures.end());
    for (const auto& [reference, other] : erasures) {
        edits.erased.push_back(members[other].key);
        ++edits.erasedTally;
    }
}

} // namespace qvtd::overkill
