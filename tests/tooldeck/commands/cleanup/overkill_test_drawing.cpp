#include "overkill_test_drawing.h"

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace qvtd::overkill::testing {

LineRecord makeLine(ObjectKey key, OdGePoint3d start, OdGePoint3d end) {
    LineRecord line;
    line.key = key;
    line.props.layer = 1;
    line.start = start;
    line.end = end;
    return line;
}

ArcRecord makeArc(ObjectKey key, OdGePoint3d center, double radius, double startAngle, double endAngle) {
    ArcRecord arc;
    arc.key = key;
    arc.props.layer = 1;
    arc.layerName = "L1";
    arc.center = center;
    arc.radius = radius;
    arc.startAngle = startAngle;
    arc.endAngle = endAngle;
    return arc;
}

CircleRecord makeCircle(ObjectKey key, OdGePoint3d center, double radius) {
    CircleRecord circle;
    circle.key = key;
    circle.props.layer = 1;
    circle.layerName = "L1";
    circle.center = center;
    circle.radius = radius;
    return circle;
}

namespace {

class Dice {
public:
    explicit Dice(std::uint32_t seed) : m_engine(seed) {}
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_engine); }
    double between(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(m_engine); }
    bool chance(double p) { return between(0.0, 1.0) < p; }

private:
    std::mt19937 m_engine;
};

// Properties from a small pool, so that many pairs match and some differ in one property only.
template <typename Record> Record withRandomProperties(Record record, Dice& dice, double e) {
    record = onLayer(record, static_cast<qvad::Handle>(1 + dice.below(2)));
    record.props.colorIndex = dice.chance(0.8) ? 256 : 1;
    if (dice.chance(0.1)) record.props.linetypeScale = 1.0 + (dice.chance(0.5) ? 0.5 * e : 3.0 * e);
    if (dice.chance(0.1)) record.props.lineWeight = 25;
    if (dice.chance(0.05)) record.thickness = dice.chance(0.5) ? 0.5 * e : 1.0;
    const int normal = dice.below(20);
    if (normal == 0)
        record.normal = {0, 0, -1};
    else if (normal == 1)
        record.normal = OdGeVector3d(0.3 * e, 0, 1).normal();
    else if (normal == 2)
        record.normal = {1, 0, 0};
    return record;
}

// A displacement of each coordinate by up to `size`.
OdGeVector3d jitter(Dice& dice, double size) {
    return {dice.between(-size, size), dice.between(-size, size), dice.between(-size, size)};
}

OdGePoint3d flat(OdGePoint3d p) {
    return {p.x, p.y, 0.0};
}

void addLines(OverkillRun& run, Dice& dice, int count, int spread, double e) {
    // Carriers through points of a coarse grid, in a few directions.
    std::vector<std::pair<OdGePoint3d, OdGeVector3d>> carriers;
    const int carrierCount = std::max(4, count / 12);
    const OdGeVector3d directions[] = {{1, 0, 0},  {0, 1, 0}, {1, 1, 0},
                                       {3, -4, 0}, {1, 2, 2}, {-1, 0.001, 0}};
    for (int k = 0; k < carrierCount; ++k)
        carriers.push_back(
            {OdGePoint3d(dice.below(spread), dice.below(spread), dice.chance(0.9) ? 0 : dice.below(3)),
             directions[dice.below(6)].normal()});
    ObjectKey nextKey = 1000;
    for (int k = 0; k < count; ++k) {
        LineRecord line;
        const int kind = run.lines.empty() ? 0 : dice.below(7);
        if (kind == 0 || kind == 1) {
            // A piece of a carrier, overlapping or meeting others end to end at whole numbers.
            const auto& [origin, direction] = carriers[dice.below(carrierCount)];
            const double from = dice.below(8);
            const double to = from + 1 + dice.below(4) + (dice.chance(0.3) ? dice.between(0, 1) : 0.0);
            line = makeLine(0, origin + direction * from, origin + direction * to);
        } else {
            line = run.lines[dice.below(static_cast<int>(run.lines.size()))];
            if (kind == 2 || (kind == 3 && dice.chance(0.5))) std::swap(line.start, line.end);
            if (kind == 3) {
                // Near duplicate: within the tolerance or just beyond it.
                const double size = dice.chance(0.5) ? 0.5 * e : 1.5 * e;
                line.start += jitter(dice, size);
                line.end += jitter(dice, size);
            }
            if (kind == 6) {
                // A scrap a few tolerances long near an end: too short to have a reliable direction.
                // Or a piece just long enough to have a direction, whose near copies turn noticeably.
                line.start = line.end + jitter(dice, 0.5 * e);
                line.end = line.start + jitter(dice, dice.chance(0.5) ? 2.0 * e : 3000.0 * e);
            }
            if (kind == 4) {
                // A piece of the same carrier reaching past one end.
                const OdGeVector3d along = line.end - line.start;
                const double shift = dice.chance(0.5) ? 1.0 : dice.between(-0.5, 1.5);
                line.start += along * shift;
                line.end += along * shift;
            }
        }
        line.key = nextKey++;
        run.lines.push_back(withRandomProperties(line, dice, e));
    }
}

void addArcsAndCircles(OverkillRun& run, Dice& dice, int count, int circles, double e) {
    const int centreCount = std::max(3, count / 10);
    std::vector<OdGePoint3d> centres;
    for (int k = 0; k < centreCount; ++k) centres.push_back(OdGePoint3d(dice.below(10), dice.below(10), 0));
    const double radii[] = {1.0, 2.0, 2.5};
    const double step = std::numbers::pi / 4;
    ObjectKey nextKey = 500000;
    for (int k = 0; k < count; ++k) {
        ArcRecord arc;
        const int kind = run.arcs.empty() ? 0 : dice.below(5);
        if (kind <= 1) {
            const double start = dice.below(8) * step + (dice.chance(0.2) ? dice.between(0, 1) : 0.0);
            const double span = (1 + dice.below(7)) * step;
            arc = makeArc(0, centres[dice.below(centreCount)], radii[dice.below(3)], start,
                          std::fmod(start + span, 2 * std::numbers::pi));
        } else {
            arc = run.arcs[dice.below(static_cast<int>(run.arcs.size()))];
            if (kind == 2) std::swap(arc.startAngle, arc.endAngle); // the rest of the circle
            if (kind == 3) {
                arc.center += jitter(dice, dice.chance(0.5) ? 0.4 * e : 1.5 * e);
                arc.radius += dice.between(-1.5 * e, 1.5 * e);
                arc.center = dice.chance(0.5) ? flat(arc.center) : arc.center;
            }
            if (kind == 4) {
                const double shift = dice.below(5) * step;
                arc.startAngle += shift;
                arc.endAngle += shift + (dice.chance(0.3) ? 2 * std::numbers::pi : 0.0);
            }
        }
        arc.key = nextKey++;
        arc = withRandomProperties(arc, dice, e);
        arc.normal = dice.chance(0.9) ? OdGeVector3d(0, 0, 1) : arc.normal;
        run.arcs.push_back(arc);
    }
    // Circles on the same centres, some covering arcs.
    ObjectKey circleKey = 900000;
    for (int k = 0; k < circles; ++k) {
        CircleRecord circle = makeCircle(0, centres[dice.below(centreCount)], radii[dice.below(3)]);
        if (dice.chance(0.3)) circle.center += jitter(dice, e);
        circle.key = circleKey++;
        addCircle(run, withRandomProperties(circle, dice, e));
    }
}

} // namespace

void fillRandomDrawing(OverkillRun& run, const RandomDrawingShape& shape) {
    Dice dice(shape.seed);
    const double e = comparisonTolerance(run.settings);
    addLines(run, dice, shape.lines, shape.spread, e);
    addArcsAndCircles(run, dice, shape.arcs, shape.circles, e);
    if (shape.offset.isZeroLength(OdGeTol(0.0))) return;
    for (LineRecord& line : run.lines) {
        line.start += shape.offset;
        line.end += shape.offset;
    }
    for (ArcRecord& arc : run.arcs) arc.center += shape.offset;
    const std::vector<CircleRecord> circles = run.circles;
    run.circles.clear();
    run.circleIndex.clear();
    for (CircleRecord circle : circles) {
        circle.center += shape.offset;
        addCircle(run, circle);
    }
}

} // namespace qvtd::overkill::testing
