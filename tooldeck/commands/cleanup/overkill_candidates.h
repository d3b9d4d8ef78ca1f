#pragma once
// Candidate groups: the passes compare only records that share a group, so that a drawing of a million
// objects is not compared pair by pair. Every split is conservative: two records that the pair rules
// could relate (even after the reference has grown) always stay in one group, so comparing within the
// groups, in list order, gives exactly what comparing every pair would.

#include "tooldeck/commands/cleanup/overkill_records.h"

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace qvtd::overkill {

// Indices into one pass's list, ascending (list order).
using CandidateGroup = std::vector<std::size_t>;

// A record's reach along one coordinate, already widened: two records that can relate have
// intervals that overlap or touch.
struct Interval {
    double lo = 0.0;
    double hi = 0.0;
};

// Fills out[k] with the interval of group[k]. It sees the whole group, so a coordinate may depend on
// it (an axis taken from the group's first member).
using SweepCoordinate = std::function<void(std::span<const std::size_t> group, std::span<Interval> out)>;

// The interval [lo, hi] widened by reach / 2 on either side.
Interval widened(double lo, double hi, double reach);

// Splits indices 0..count-1 by the properties the settings compare exactly (colour, layer, linetype,
// lineweight, plot style); records of different parts can never pass the property test. Groups of
// one record are dropped: they have nothing to compare.
std::vector<CandidateGroup>
groupByExactProperties(const OverkillSettings& settings, std::size_t count,
                       const std::function<const Properties&(std::size_t)>& props);

// Splits each group again and again by sort and sweep along the coordinates (single linkage: a new
// part starts where an interval begins beyond every earlier one's end) until no coordinate splits it.
// Returned groups hold at least two records, in list order.
std::vector<CandidateGroup> refineCandidateGroups(std::vector<CandidateGroup> groups,
                                                  const std::vector<SweepCoordinate>& coordinates);

// The groups of each pass.
std::vector<CandidateGroup> lineCandidateGroups(const OverkillSettings& settings,
                                                const std::vector<LineRecord>& lines);
std::vector<CandidateGroup> arcCandidateGroups(const OverkillSettings& settings,
                                               const std::vector<ArcRecord>& arcs);
// Groups of one circle index list; the indices are positions in `entries`.
std::vector<CandidateGroup> circleCandidateGroups(const OverkillSettings& settings,
                                                  const std::vector<CircleRecord>& circles,
                                                  const std::vector<CircleEntry>& entries);

} // namespace qvtd::overkill
