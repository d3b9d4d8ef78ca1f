#include "tooldeck/commands/cleanup/overkill_candidates.h"

#include "tooldeck/commands/cleanup/overkill_arcs.h"
#include "tooldeck/commands/cleanup/overkill_circles.h"
#include "tooldeck/commands/cleanup/overkill_lines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <numeric>
#include <tuple>

// Why no group ever splits a pair the pair rules could relate.
//
// A sweep sorts the intervals by their start and begins a new part where an interval starts beyond
// the largest end met so far. Two intervals that overlap or touch cannot be separated: every interval
// sorted between them starts no later than the second one, which starts no later than the first one
// ends. Parts are also separated from each other entirely: whatever lies in a later part starts beyond
// every end of an earlier part. So each coordinate only needs an interval per record that overlaps the
// interval of every record it can relate to, and any sequence of such splits stays conservative.
//
// Lines (e = comparison tolerance). A reference A that grew still lies on its own carrier, keeps its
// direction and only gets longer; every point of it lies within 2 e of A or of a line it absorbed by
// a merge (its ends are projections of absorbed ends; between them the absorbed pieces overlap or leave
// gaps of at most e). Call those lines A's pieces: each is parallel to A within e. A line X that A (grown
// or not) can relate to has a point within sqrt(2) e of A: within e for a duplicate, and for a merge X
// lies within e of A's carrier with the projections overlapping or at most e apart. So X comes within
// (2 + sqrt(2)) e < 4 e of some piece N, and X is parallel to A within e (merge) or, as a duplicate
// whose direction vector differs by at most 2 e, within sin t <= 2 e / min(length X, length of grown A).
// The grown A is at least as long as N's projection on it, and N is parallel to A within e, so the
// sines of the angles between X and N stay below 2 e + 2.31 e / min(length X, length N) (for e < 0.5).
//
// Lines of a reasonable length are split by sort and sweep: directions through u u^T (u the unit
// direction), the same for both senses of a line, where two directions at angle t differ by at most
// sqrt(2) sin t in every component; a radius of 1.5 e + 3.3 e / length per line covers that. Positions along
// any orthogonal axes with a reach of 4 e (X is within that of the piece N), and thickness and linetype scale
// with a reach of 2 e (both X and N are within e of A). So in every coordinate X overlaps a line of N's
// group, N included, and no sweep can separate them.
//
// Short lines have no usable direction intervals: theirs would cover most directions and stop every
// direction sweep. They take no part in the sweeps; instead each is joined with every line of its
// property class that passes the pair test below (near enough in angle for the pair's shorter length,
// within 4 e in space), which covers every pair above in which X or N is short. The groups are the
// connected parts of the sweep groups and these joins. Where "short" ends (1024 e) only changes the
// speed, never the groups' safety.
//
// Arcs keep centre, radius and normal when they absorb others, and only equal centres (each coordinate
// within e) and radii within e relate. Circles within one index list relate the same way.
//
// Every reach carries a small allowance for rounding, scaled by the largest coordinate, so that a pair
// the rules accept after rounding is never split by a sweep computed with different rounding.

namespace qvtd::overkill {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Interval everything() {
    return {-kInfinity, kInfinity};
}

// A sweep's sort key: an interval's start and its position in the group, small so the sort moves little.
struct SweepStart {
    double lo;
    std::uint32_t position;
};

// Splits one group along one coordinate; returns false when it stays whole.
bool sweep(const CandidateGroup& group, const SweepCoordinate& coordinate, std::vector<Interval>& intervals,
           std::vector<SweepStart>& starts, std::vector<CandidateGroup>& parts) {
    intervals.resize(group.size());
    coordinate(group, intervals);
    // Intervals that all share a point stay whole, which spares the sort in most sweeps of small groups.
    double latestStart = -kInfinity;
    double earliestEnd = kInfinity;
    for (Interval& interval : intervals) {
        if (std::isnan(interval.lo) || std::isnan(interval.hi)) interval = everything();
        latestStart = std::max(latestStart, interval.lo);
        earliestEnd = std::min(earliestEnd, interval.hi);
    }
    if (latestStart <= earliestEnd) return false;
    starts.resize(group.size());
    for (std::size_t k = 0; k < group.size(); ++k)
        starts[k] = {intervals[k].lo, static_cast<std::uint32_t>(k)};
    std::sort(starts.begin(), starts.end(),
              [](const SweepStart& a, const SweepStart& b) { return a.lo < b.lo; });
    std::size_t partCount = 1;
    double reach = intervals[starts[0].position].hi;
    for (std::size_t k = 1; k < starts.size(); ++k) {
        if (starts[k].lo > reach) ++partCount;
        reach = std::max(reach, intervals[starts[k].position].hi);
    }
    if (partCount == 1) return false;
    CandidateGroup current{group[starts[0].position]};
    reach = intervals[starts[0].position].hi;
    for (std::size_t k = 1; k < starts.size(); ++k) {
        if (starts[k].lo > reach) {
            if (current.size() > 1) parts.push_back(std::move(current));
            current.clear();
        }
        current.push_back(group[starts[k].position]);
        reach = std::max(reach, intervals[starts[k].position].hi);
    }
    if (current.size() > 1) parts.push_back(std::move(current));
    return true;
}

// Records with numbers that are not finite never relate to anything: they only slow the sweeps down.
template <typename Sound>
std::vector<CandidateGroup> withoutUnsound(std::vector<CandidateGroup> groups, Sound sound) {
    std::vector<CandidateGroup> kept;
    for (CandidateGroup& group : groups) {
        std::erase_if(group, [&sound](std::size_t k) { return !sound(k); });
        if (group.size() > 1) kept.push_back(std::move(group));
    }
    return kept;
}

// Allowance for rounding in coordinates of the given magnitude.
double roundingAllowance(double largestCoordinate) {
    return 1e-12 * (1.0 + largestCoordinate);
}

double largestMagnitude(const OdGePoint3d& p) {
    return std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)});
}

// A coordinate that is a single value per record.
template <typename Records, typename Value>
SweepCoordinate valueCoordinate(const Records& records, double reach, Value value) {
    return [&records, reach, value](std::span<const std::size_t> group, std::span<Interval> out) {
        for (std::size_t k = 0; k < group.size(); ++k) {
            const double v = value(records[group[k]]);
            out[k] = widened(v, v, reach);
        }
    };
}

double component(const OdGePoint3d& p, int axis) {
    return axis == 0 ? p.x : (axis == 1 ? p.y : p.z);
}

double component(const OdGeVector3d& v, int axis) {
    return axis == 0 ? v.x : (axis == 1 ? v.y : v.z);
}

// Axes along and across the direction of the group's first line that has one.
struct LineFrame {
    OdGeVector3d along{1, 0, 0};
    OdGeVector3d across{0, 1, 0};
    OdGeVector3d up{0, 0, 1};
};

LineFrame frameOf(const std::vector<LineRecord>& lines, std::span<const std::size_t> group) {
    LineFrame frame;
    for (std::size_t index : group) {
        const OdGeVector3d d = lines[index].end - lines[index].start;
        const double length = d.length();
        if (!(length > 0.0) || !std::isfinite(length)) continue;
        frame.along = d / length;
        const OdGeVector3d& u = frame.along;
        // Cross with the world axis least aligned with the direction, so the result is never short.
        OdGeVector3d helper = OdGeVector3d::kXAxis;
        if (std::abs(u.y) <= std::abs(u.x) && std::abs(u.y) <= std::abs(u.z))
            helper = OdGeVector3d::kYAxis;
        else if (std::abs(u.z) <= std::abs(u.x) && std::abs(u.z) <= std::abs(u.y))
            helper = OdGeVector3d::kZAxis;
        frame.across = u.crossProduct(helper);
        frame.across /= frame.across.length();
        frame.up = u.crossProduct(frame.across);
        break;
    }
    return frame;
}

enum class FrameAxis { Along, Across, Up };

// Connected parts of some records of a list, joined pair by pair. The parent links are kept per list
// index in storage the caller reuses for one property class after another.
class DisjointSets {
public:
    DisjointSets(const CandidateGroup& members, std::vector<std::size_t>& parents)
        : m_members(members), m_parent(parents) {
        for (std::size_t index : members) m_parent[index] = index;
    }
    void join(std::size_t a, std::size_t b) {
        a = root(a);
        b = root(b);
        if (a != b) m_parent[std::max(a, b)] = std::min(a, b);
    }
    // The parts with two or more members, each in list order.
    std::vector<CandidateGroup> groups() {
        std::vector<std::pair<std::size_t, std::size_t>> byRoot;
        for (std::size_t index : m_members) byRoot.emplace_back(root(index), index);
        std::sort(byRoot.begin(), byRoot.end());
        std::vector<CandidateGroup> result;
        for (std::size_t k = 0; k < byRoot.size();) {
            std::size_t end = k;
            while (end < byRoot.size() && byRoot[end].first == byRoot[k].first) ++end;
            if (end - k > 1) {
                CandidateGroup group;
                for (std::size_t m = k; m < end; ++m) group.push_back(byRoot[m].second);
                result.push_back(std::move(group));
            }
            k = end;
        }
        return result;
    }

private:
    std::size_t root(std::size_t k) {
        while (m_parent[k] != k) k = m_parent[k] = m_parent[m_parent[k]];
        return k;
    }

    const CandidateGroup& m_members;
    std::vector<std::size_t>& m_parent;
};

// A lower bound of the distance between segment x and segment n that stays sound when they are
// nearly parallel: the gap along x's direction combined with the distance of n from x's line.
double segmentDistanceLowerBound(const LineRecord& x, const OdGeVector3d& u, double lengthX,
                                 const LineRecord& n) {
    const OdGeVector3d a = n.start - x.start;
    const OdGeVector3d b = n.end - x.start;
    const double ta = a.dotProduct(u);
    const double tb = b.dotProduct(u);
    const double along = std::max({0.0, std::min(ta, tb) - lengthX, -std::max(ta, tb)});
    const OdGeVector3d wa = a - u * ta;
    const OdGeVector3d wb = b - u * tb;
    // Distance of the origin from the segment wa-wb, in the plane across x.
    const OdGeVector3d span = wb - wa;
    const double spanSquared = span.lengthSqrd();
    double s = spanSquared > 0.0 ? -wa.dotProduct(span) / spanSquared : 0.0;
    s = std::clamp(s, 0.0, 1.0);
    const double across = std::sqrt((wa + span * s).lengthSqrd());
    return std::sqrt(along * along + across * across);
}

// The pair test of the comment at the top: whether x may ever be compared with a reference whose piece
// is n. Broken numbers answer yes, which is always safe.
struct LineNearness {
    const std::vector<LineRecord>& lines;
    const std::vector<OdGeVector3d>& units;
    const std::vector<double>& lengths;
    double e;
    double reach;
    double rounding;

    bool mayMeet(std::size_t i, std::size_t j) const {
        const std::size_t longer = lengths[i] >= lengths[j] ? i : j;
        const std::size_t other = longer == i ? j : i;
        const double shorter = lengths[other];
        if (e < 0.5) {
            const double sine = std::sqrt(units[i].crossProduct(units[j]).lengthSqrd());
            if (sine > 2.5 * e + (2.5 * e + rounding) / shorter + 1e-12) return false;
        }
        if (std::abs(lines[i].thickness - lines[j].thickness) > 2.0 * e + rounding) return false;
        const double gap =
            lengths[longer] > 0.0
                ? segmentDistanceLowerBound(lines[longer], units[longer], lengths[longer], lines[other])
                : lines[longer].start.distanceTo(lines[other].start) - shorter;
        return !(gap > reach);
    }
};

// An axis-aligned box around a line, widened by the reach on its low side only: two boxes overlap
// exactly when the lines' boxes are at most the reach apart.
struct LineBox {
    double lo[3];
    double hi[3];
    std::size_t index;
};

LineBox boxOf(const LineRecord& line, std::size_t index, double reach) {
    LineBox box{{}, {}, index};
    for (int axis = 0; axis < 3; ++axis) {
        const double a = component(line.start, axis);
        const double b = component(line.end, axis);
        box.lo[axis] = std::min(a, b) - reach;
        box.hi[axis] = std::max(a, b);
    }
    return box;
}

bool overlapOn(const LineBox& a, const LineBox& b, int axis) {
    return !(a.lo[axis] > b.hi[axis] || b.lo[axis] > a.hi[axis]);
}

// Joins each short line with every line of its class the pair test lets it meet. The short lines'
// boxes, sorted along x, find the candidates of each line.
void joinShortLines(const LineNearness& nearness, const CandidateGroup& propertyClass,
                    const CandidateGroup& shortOnes, DisjointSets& parts) {
    std::vector<LineBox> boxes;
    double widest = 0.0;
    for (std::size_t index : shortOnes) {
        boxes.push_back(boxOf(nearness.lines[index], index, nearness.reach));
        const double width = boxes.back().hi[0] - boxes.back().lo[0];
        if (!std::isfinite(width)) {
            // Broken geometry: joined with the whole class, which is always safe.
            for (std::size_t other : propertyClass) parts.join(index, other);
            boxes.pop_back();
            continue;
        }
        widest = std::max(widest, width);
    }
    std::sort(boxes.begin(), boxes.end(),
              [](const LineBox& a, const LineBox& b) { return a.lo[0] < b.lo[0]; });
    for (std::size_t index : propertyClass) {
        const LineBox line = boxOf(nearness.lines[index], index, nearness.reach);
        if (!(line.lo[0] <= line.hi[0])) {
            for (const LineBox& box : boxes) parts.join(index, box.index);
            continue;
        }
        auto candidate = std::lower_bound(boxes.begin(), boxes.end(), line.lo[0] - widest,
                                          [](const LineBox& box, double x) { return box.lo[0] < x; });
        for (; candidate != boxes.end() && candidate->lo[0] <= line.hi[0]; ++candidate) {
            if (candidate->index == index || !overlapOn(*candidate, line, 0) ||
                !overlapOn(*candidate, line, 1) || !overlapOn(*candidate, line, 2))
                continue;
            if (nearness.mayMeet(index, candidate->index)) parts.join(index, candidate->index);
        }
    }
}

// Sweeps cannot split a crowd of lines that chain in every coordinate on their own (many lines in many
// directions, densely packed). Such a group is split by its pairs instead: a line X can only ever be
// compared with a reference whose piece N (see above) is near it, where X and N are at most
// 2.5 e + 2.5 e / (the shorter length) apart in sine of angle and at most 4 e apart in space. Joining
// exactly those pairs, found by a sweep along the group's widest axis, keeps every such X with its N.
constexpr std::size_t kSmallGroup = 48;

void joinNearLines(const LineNearness& nearness, const CandidateGroup& group, DisjointSets& parts) {
    std::vector<LineBox> boxes;
    double least[3] = {kInfinity, kInfinity, kInfinity};
    double most[3] = {-kInfinity, -kInfinity, -kInfinity};
    for (std::size_t index : group) {
        boxes.push_back(boxOf(nearness.lines[index], index, nearness.reach));
        for (int axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], boxes.back().lo[axis]);
            most[axis] = std::max(most[axis], boxes.back().hi[axis]);
        }
    }
    int axis = 0;
    for (int candidate = 1; candidate < 3; ++candidate)
        if (most[candidate] - least[candidate] > most[axis] - least[axis]) axis = candidate;
    std::sort(boxes.begin(), boxes.end(),
              [axis](const LineBox& a, const LineBox& b) { return a.lo[axis] < b.lo[axis]; });
    for (std::size_t i = 0; i < boxes.size(); ++i)
        for (std::size_t j = i + 1; j < boxes.size() && boxes[j].lo[axis] <= boxes[i].hi[axis]; ++j)
            if (overlapOn(boxes[i], boxes[j], (axis + 1) % 3) &&
                overlapOn(boxes[i], boxes[j], (axis + 2) % 3) &&
                nearness.mayMeet(boxes[i].index, boxes[j].index))
                parts.join(boxes[i].index, boxes[j].index);
}

} // namespace

Interval widened(double lo, double hi, double reach) {
    return {lo - reach / 2.0, hi + reach / 2.0};
}

std::vector<CandidateGroup>
groupByExactProperties(const OverkillSettings& settings, std::size_t count,
                       const std::function<const Properties&(std::size_t)>& props) {
    using Key = std::tuple<int, long long, std::string_view, qvad::Handle, qvad::Handle, int, qvad::Handle>;
    const auto key = [&settings](const Properties& p) {
        // Properties the settings do not compare take one neutral value.
        return Key(settings.compareColor ? p.colorIndex : 0, settings.compareColor ? p.trueColor : 0LL,
                   settings.compareColor ? std::string_view(p.colorName) : std::string_view(),
                   settings.compareLayer ? p.layer : qvad::Handle{0},
                   settings.compareLinetype ? p.linetype : qvad::Handle{0},
                   settings.compareLineweight ? p.lineWeight : 0,
                   settings.comparePlotStyle ? p.plotStyle : qvad::Handle{0});
    };
    // Drawings use few distinct combinations: number them once, then bucket by number.
    std::map<Key, std::size_t> numbers;
    std::vector<std::size_t> numberOf(count);
    for (std::size_t k = 0; k < count; ++k)
        numberOf[k] = numbers.try_emplace(key(props(k)), numbers.size()).first->second;
    std::vector<CandidateGroup> buckets(numbers.size());
    for (std::size_t k = 0; k < count; ++k) buckets[numberOf[k]].push_back(k);
    std::vector<CandidateGroup> groups;
    for (CandidateGroup& bucket : buckets)
        if (bucket.size() > 1) groups.push_back(std::move(bucket));
    return groups;
}

std::vector<CandidateGroup> refineCandidateGroups(std::vector<CandidateGroup> groups,
                                                  const std::vector<SweepCoordinate>& coordinates) {
    std::vector<CandidateGroup> finished;
    std::vector<CandidateGroup> pending = std::move(groups);
    std::vector<CandidateGroup> parts;
    std::vector<Interval> intervals;
    std::vector<SweepStart> starts;
    while (!pending.empty()) {
        CandidateGroup group = std::move(pending.back());
        pending.pop_back();
        if (group.size() < 2) continue;
        bool split = false;
        for (const SweepCoordinate& coordinate : coordinates) {
            parts.clear();
            if (sweep(group, coordinate, intervals, starts, parts)) {
                for (CandidateGroup& part : parts) pending.push_back(std::move(part));
                split = true;
                break;
            }
        }
        if (split) continue;
        std::sort(group.begin(), group.end());
        finished.push_back(std::move(group));
    }
    return finished;
}

std::vector<CandidateGroup> lineCandidateGroups(const OverkillSettings& settings,
                                                const std::vector<LineRecord>& lines) {
    const double e = comparisonTolerance(settings);
    double largest = 0.0;
    for (const LineRecord& line : lines)
        largest = std::max({largest, largestMagnitude(line.start), largestMagnitude(line.end)});
    const double rounding = roundingAllowance(std::isfinite(largest) ? largest : 0.0);
    const double reach = 4.0 * e + rounding;
    // Unit directions and lengths, worked out once for all the sweeps.
    std::vector<OdGeVector3d> units(lines.size());
    std::vector<double> lengths(lines.size());
    for (std::size_t k = 0; k < lines.size(); ++k) {
        const OdGeVector3d d = lines[k].end - lines[k].start;
        lengths[k] = std::sqrt(d.lengthSqrd());
        units[k] = d / lengths[k];
    }
    // Up to this length a line's direction interval is too wide to split a crowd of lines.
    const double shortLength = 1024.0 * e + 1e3 * rounding;

    std::vector<SweepCoordinate> coordinates;
    coordinates.push_back(
        valueCoordinate(lines, 2.0 * e + rounding, [](const LineRecord& line) { return line.thickness; }));
    if (settings.compareLinetype)
        coordinates.push_back(valueCoordinate(
            lines, 2.0 * e + rounding, [](const LineRecord& line) { return line.props.linetypeScale; }));
    // The six components of u u^T; from e = 0.5 on, every direction is near enough to every other.
    if (e < 0.5)
        for (int i = 0; i < 3; ++i)
            for (int j = i; j < 3; ++j)
                coordinates.push_back([&units, &lengths, e, rounding, i,
                                       j](std::span<const std::size_t> group, std::span<Interval> out) {
                    for (std::size_t k = 0; k < group.size(); ++k) {
                        const double length = lengths[group[k]];
                        const double radius = 1.5 * e + (3.3 * e + rounding) / length + 1e-12;
                        if (!(length > 0.0) || !(radius < 2.0)) {
                            out[k] = everything();
                            continue;
                        }
                        const double v = component(units[group[k]], i) * component(units[group[k]], j);
                        out[k] = {v - radius, v + radius};
                    }
                });
    for (FrameAxis axis : {FrameAxis::Across, FrameAxis::Up, FrameAxis::Along})
        coordinates.push_back(
            [&lines, reach, axis](std::span<const std::size_t> group, std::span<Interval> out) {
                const LineFrame frame = frameOf(lines, group);
                const OdGeVector3d& direction = axis == FrameAxis::Along
                                                    ? frame.along
                                                    : (axis == FrameAxis::Across ? frame.across : frame.up);
                for (std::size_t k = 0; k < group.size(); ++k) {
                    const double a = lines[group[k]].start.asVector().dotProduct(direction);
                    const double b = lines[group[k]].end.asVector().dotProduct(direction);
                    out[k] = widened(std::min(a, b), std::max(a, b), reach);
                }
            });
    for (int axis = 0; axis < 3; ++axis)
        coordinates.push_back(
            [&lines, reach, axis](std::span<const std::size_t> group, std::span<Interval> out) {
                for (std::size_t k = 0; k < group.size(); ++k) {
                    const double a = component(lines[group[k]].start, axis);
                    const double b = component(lines[group[k]].end, axis);
                    out[k] = widened(std::min(a, b), std::max(a, b), reach);
                }
            });

    const LineNearness nearness{lines, units, lengths, e, reach, rounding};
    std::vector<CandidateGroup> result;
    std::vector<std::size_t> parents;
    const auto classes = withoutUnsound(
        groupByExactProperties(settings, lines.size(),
                               [&lines](std::size_t k) -> const Properties& { return lines[k].props; }),
        [&lines](std::size_t k) { return isSoundLine(lines[k]); });
    for (const CandidateGroup& propertyClass : classes) {
        CandidateGroup regular;
        CandidateGroup shortOnes;
        for (std::size_t index : propertyClass)
            (lengths[index] > shortLength ? regular : shortOnes).push_back(index);
        if (parents.empty()) parents.resize(lines.size());
        DisjointSets parts(propertyClass, parents);
        for (const CandidateGroup& group : refineCandidateGroups({regular}, coordinates)) {
            if (group.size() <= kSmallGroup)
                for (std::size_t index : group) parts.join(group.front(), index);
            else
                joinNearLines(nearness, group, parts);
        }
        if (!shortOnes.empty()) joinShortLines(nearness, propertyClass, shortOnes, parts);
        for (CandidateGroup& group : parts.groups()) result.push_back(std::move(group));
    }
    return result;
}

std::vector<CandidateGroup> arcCandidateGroups(const OverkillSettings& settings,
                                               const std::vector<ArcRecord>& arcs) {
    const double e = comparisonTolerance(settings);
    double largest = 0.0;
    for (const ArcRecord& arc : arcs) largest = std::max({largest, largestMagnitude(arc.center), arc.radius});
    const double rounding = roundingAllowance(std::isfinite(largest) ? largest : 0.0);
    const double reach = e + rounding;

    std::vector<SweepCoordinate> coordinates;
    for (int axis = 0; axis < 3; ++axis)
        coordinates.push_back(valueCoordinate(
            arcs, reach, [axis](const ArcRecord& arc) { return component(arc.center, axis); }));
    coordinates.push_back(valueCoordinate(arcs, reach, [](const ArcRecord& arc) { return arc.radius; }));
    coordinates.push_back(valueCoordinate(arcs, reach, [](const ArcRecord& arc) { return arc.thickness; }));
    if (settings.compareLinetype)
        coordinates.push_back(
            valueCoordinate(arcs, reach, [](const ArcRecord& arc) { return arc.props.linetypeScale; }));

    auto groups = withoutUnsound(
        groupByExactProperties(settings, arcs.size(),
                               [&arcs](std::size_t k) -> const Properties& { return arcs[k].props; }),
        [&arcs](std::size_t k) { return isSoundArc(arcs[k]); });
    return refineCandidateGroups(std::move(groups), coordinates);
}

std::vector<CandidateGroup> circleCandidateGroups(const OverkillSettings& settings,
                                                  const std::vector<CircleRecord>& circles,
                                                  const std::vector<CircleEntry>& entries) {
    const double e = comparisonTolerance(settings);
    double largest = 0.0;
    for (const CircleEntry& entry : entries) {
        const CircleRecord& circle = circles[entry.record];
        largest = std::max({largest, largestMagnitude(circle.center), circle.radius});
    }
    const double rounding = roundingAllowance(std::isfinite(largest) ? largest : 0.0);
    const double reach = e + rounding;
    const auto circleOf = [&circles, &entries](std::size_t k) -> const CircleRecord& {
        return circles[entries[k].record];
    };

    std::vector<SweepCoordinate> coordinates;
    for (int axis = 0; axis < 4; ++axis)
        coordinates.push_back(
            [circleOf, reach, axis](std::span<const std::size_t> group, std::span<Interval> out) {
                for (std::size_t k = 0; k < group.size(); ++k) {
                    const CircleRecord& circle = circleOf(group[k]);
                    const double v = axis < 3 ? component(circle.center, axis) : circle.radius;
                    out[k] = widened(v, v, reach);
                }
            });

    auto groups = withoutUnsound(
        groupByExactProperties(settings, entries.size(),
                               [&circleOf](std::size_t k) -> const Properties& { return circleOf(k).props; }),
        [&circleOf](std::size_t k) { return isSoundCircle(circleOf(k).center, circleOf(k).radius); });
    return refineCandidateGroups(std::move(groups), coordinates);
}

} // namespace qvtd::overkill
