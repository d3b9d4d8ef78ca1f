#pragma once
// Pass 2 of the clean-up: arcs against arcs, then arcs against the circle index.
//
// Normals: the angles of an arc are measured in the plane of its own normal. Before two arcs are
// compared, the later arc's ends are carried into the reference's plane through their world
// directions; an arc whose normal points the other way runs clockwise there, so its ends swap. Only the
// reference's angles are ever written, and they stay in its own plane. Arcs with exactly the same
// normal are compared on their stored angles as they are.

#include "tooldeck/commands/cleanup/overkill_records.h"

namespace qvtd::overkill {

// The value the arc rules reduce angles by.
inline constexpr double kFullTurn = 6.2831853071796;

enum class ArcResult { None = 0, Absorbed = 1, Circle = 2 };

struct ArcComparison {
    ArcResult result = ArcResult::None;
    double startAngle = 0.0; // the reference's angles after Absorbed
    double endAngle = 0.0;
};

struct AngleSpan {
    double start = 0.0;
    double end = 0.0;
};

// Every number of the arc is finite; other arcs never relate to anything, nor are they covered.
bool isSoundArc(const ArcRecord& arc);

// The other arc's start and end angle as seen in the plane of reference (counter-clockwise about the
// reference's normal).
AngleSpan anglesInPlaneOf(const ArcRecord& reference, const ArcRecord& other);

// What becomes of the later arc b against the reference a, the property test included.
ArcComparison compareArcs(const OverkillSettings& settings, const ArcRecord& a, const ArcRecord& b);

// The circle two arcs close into: centre, normal, radius, layer, linetype, colour and lineweight of a.
CircleRecord circleFromArc(const ArcRecord& a);

// Pass 2 over run.arcs. Absorbed and replaced arcs leave run.arcs and count in the erased tally; arcs
// a circle of the index covers leave it too and count in the covered-arcs tally. New circles go to
// run.edits.newCircles and into the circle index.
void runArcPass(OverkillRun& run);

} // namespace qvtd::overkill
