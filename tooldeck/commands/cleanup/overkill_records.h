#pragma once
// What the clean-up passes know of each picked object: its properties and its geometry, read once from
// the drawing. The passes work on these records alone and hand back what must change (OverkillEdits),
// so they can be checked against a plain pairwise comparison without a drawing.

#include "qvad/db/handle.h"
#include "qvad/ge/point3d.h"
#include "qvad/ge/vector3d.h"
#include "tooldeck/commands/cleanup/overkill_settings.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qvtd::overkill {

// The object a record stands for (its handle); never 0 for a record read from the drawing.
using ObjectKey = qvad::Handle;

// What the property test compares. Colour equality is the colour's full value: index, true colour and
// colour book name together.
struct Properties {
    int colorIndex = 256;     // 256 BYLAYER, 0 BYBLOCK
    long long trueColor = -1; // -1 when none
    std::string colorName;    // colour book name, "" when none
    qvad::Handle layer = 0;
    qvad::Handle linetype = 0; // the linetype record (BYLAYER and BYBLOCK have records of their own)
    double linetypeScale = 1.0;
    int lineWeight = -1;
    qvad::Handle plotStyle = 0;
};

// The property test, in its fixed order; e is comparisonTolerance(settings).
bool propertiesMatch(const OverkillSettings& settings, const Properties& a, const Properties& b);

struct LineRecord {
    ObjectKey key = 0;
    Properties props;
    OdGePoint3d start;
    OdGePoint3d end;
    OdGeVector3d normal{0, 0, 1};
    double thickness = 0.0;
};

// Arcs and circles carry the centre in world coordinates; the angles of an arc are measured in the
// plane of its normal (the object coordinate system the drawing stores them in).
struct ArcRecord {
    ObjectKey key = 0;
    Properties props;
    std::string layerName;
    OdGePoint3d center; // world coordinates
    double radius = 0.0;
    double startAngle = 0.0;
    double endAngle = 0.0;
    OdGeVector3d normal{0, 0, 1};
    double thickness = 0.0;
};

struct CircleRecord {
    ObjectKey key = 0;
    Properties props;
    std::string layerName;
    OdGePoint3d center; // world coordinates
    double radius = 0.0;
    OdGeVector3d normal{0, 0, 1};
    double thickness = 0.0;
};

enum class PolylineKind { Lightweight, TwoD, ThreeD };

struct PolylineVertex {
    OdGePoint3d point; // world coordinates
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
};

struct PolylineRecord {
    ObjectKey key = 0;
    Properties props;
    PolylineKind kind = PolylineKind::Lightweight;
    std::vector<PolylineVertex> vertices;
    bool closed = false;
    OdGeVector3d normal{0, 0, 1};
    double thickness = 0.0;
    double constantWidth = 0.0;
};

// Radius key of the circle index: whole multiples of the tolerance, as a 64-bit integer.
long long radiusKey(double radius, double tolerance);

// Circles by radius key, then by layer name, in the order they were met.
struct CircleEntry {
    OdGePoint3d center;
    ObjectKey key = 0;
    std::size_t record = 0; // index into OverkillRun::circles
};
using CircleIndex = std::map<long long, std::map<std::string, std::vector<CircleEntry>>>;

// A circle the arc pass makes from two arcs that together close it: centre, normal and radius of
// the first arc, and its layer, linetype, colour and lineweight.
struct NewCircle {
    CircleRecord circle; // key is 0 until the drawing gives it a handle
    ObjectKey madeFrom = 0;
};

// What a run changes, and its two tallies.
struct OverkillEdits {
    std::vector<ObjectKey> erased;                        // in the order the passes erased them
    std::map<ObjectKey, LineRecord> changedLines;         // final geometry of lines that absorbed others
    std::map<ObjectKey, ArcRecord> changedArcs;           // final angles of arcs that absorbed others
    std::map<ObjectKey, PolylineRecord> changedPolylines; // rebuilt polylines
    std::vector<NewCircle> newCircles;
    int erasedTally = 0;
    int coveredArcsTally = 0;
};

// Appends the edits of a pass that came later; the changed geometry of the two never overlaps.
void appendEdits(OverkillEdits& into, OverkillEdits&& later);

// One run's working collections (the class buckets are kept by the command, as they need the
// objects themselves). A pass removes what it erases from its lists; changed geometry is written
// back into the surviving records as well as into edits.
struct OverkillRun {
    OverkillSettings settings;
    std::vector<LineRecord> lines;
    std::vector<ArcRecord> arcs;
    std::vector<CircleRecord> circles; // every circle in selection order, then the ones the arc pass made
    CircleIndex circleIndex;           // filled as the collection step does; the arc pass adds to it
    std::vector<PolylineRecord> lightweightPolylines;
    std::vector<PolylineRecord> twoDPolylines;
    std::vector<PolylineRecord> threeDPolylines;
    OverkillEdits edits;
};

// The collection step's circle index insertion: appends the circle to run.circles and enters it in
// the index under its radius key and layer name.
void addCircle(OverkillRun& run, const CircleRecord& circle);
// The circle index of every circle in run.circles, as adding them one by one in order would make it.
void buildCircleIndex(OverkillRun& run);

} // namespace qvtd::overkill
