#include "overkill_polyline_builders.h"
#include "overkill_polyline_pairwise.h"
#include "overkill_test_drawing.h"
#include "tooldeck/commands/cleanup/overkill_curve_passes.h"
#include "tooldeck/commands/cleanup/overkill_point_grid.h"
#include "tooldeck/commands/cleanup/overkill_polyline_segments.h"
#include "tooldeck/commands/cleanup/overkill_polylines.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <gtest/gtest.h>
#include <iostream>
#include <numbers>
#include <random>

namespace qvtd::overkill::testing {
namespace {

// Random drawings on a small lattice, so that copies, reversed copies, pieces of other polylines and
// lines and arcs on their segments are common, with a little noise below the tolerance.
class RandomDrawing {
public:
    RandomDrawing(unsigned seed, double tolerance) : m_random(seed), m_tolerance(tolerance) {}

    OverkillRun make() {
        OverkillRun run;
        run.settings.tolerance = m_tolerance;
        run.settings.combineOverlapping = chance(0.8);
        run.lightweightPolylines = polylines(160, PolylineKind::Lightweight);
        run.twoDPolylines = polylines(80, PolylineKind::TwoD);
        run.threeDPolylines = polylines(80, PolylineKind::ThreeD);
        for (int i = 0; i < 160; ++i) run.lines.push_back(randomLine());
        std::vector<PolylineRecord> curved = run.lightweightPolylines;
        curved.insert(curved.end(), run.twoDPolylines.begin(), run.twoDPolylines.end());
        for (int i = 0; i < 120; ++i) run.arcs.push_back(randomArc(curved));
        return run;
    }

private:
    bool chance(double p) { return std::uniform_real_distribution<double>(0.0, 1.0)(m_random) < p; }
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    double noise() {
        return chance(0.2) ? std::uniform_real_distribution<double>(-0.3, 0.3)(m_random) * m_tolerance : 0.0;
    }
    Properties props() {
        Properties p;
        p.layer = chance(0.85) ? 1 : 2;
        return p;
    }

    PolylineRecord freshPolyline(PolylineKind kind) {
        static const double kBulges[] = {1.0, -1.0, 0.5, -0.5, 0.41421356237309503};
        PolylineRecord record;
        record.kind = kind;
        record.closed = chance(0.15);
        double x = pick(12);
        double y = pick(12);
        double z = kind == PolylineKind::ThreeD ? pick(2) : 0.0;
        const int count = 2 + pick(4);
        for (int i = 0; i < count; ++i) {
            PolylineVertex vertex;
            vertex.point = {x, y, z};
            vertex.bulge = kind != PolylineKind::ThreeD && chance(0.3) ? kBulges[pick(5)] : 0.0;
            record.vertices.push_back(vertex);
            int dx = pick(3) - 1;
            const int dy = pick(3) - 1;
            if (dx == 0 && dy == 0) dx = 1;
            const double step = 1 + pick(3);
            x += step * dx;
            y += step * dy;
            if (kind == PolylineKind::ThreeD && chance(0.2)) z += 1;
        }
        return record;
    }

    PolylineRecord derived(const PolylineRecord& source) {
        PolylineRecord record = source;
        const int how = pick(4);
        if (how == 1) { // drawn backwards
            std::reverse(record.vertices.begin(), record.vertices.end());
            const std::size_t n = record.vertices.size();
            std::vector<double> bulges(n, 0.0);
            for (std::size_t i = 0; i + 1 < n; ++i) bulges[i] = -record.vertices[i + 1].bulge;
            if (record.closed) bulges[n - 1] = -record.vertices[0].bulge;
            for (std::size_t i = 0; i < n; ++i) record.vertices[i].bulge = bulges[i];
            if (record.closed)
                std::rotate(record.vertices.begin(), record.vertices.end() - 1, record.vertices.end());
        } else if (how == 2 && record.vertices.size() > 2) { // a piece of it
            record.closed = false;
            const std::size_t first = pick(static_cast<int>(record.vertices.size()) - 1);
            const std::size_t last = first + 1 + pick(static_cast<int>(record.vertices.size() - first) - 1);
            record.vertices = {record.vertices.begin() + first, record.vertices.begin() + last + 1};
        } else if (how == 3 && !record.closed) { // longer at one end
            PolylineVertex extra = record.vertices.back();
            extra.point.x += 1 + pick(3);
            extra.bulge = 0.0;
            record.vertices.push_back(extra);
        }
        return record;
    }

    std::vector<PolylineRecord> polylines(int count, PolylineKind kind) {
        std::vector<PolylineRecord> list;
        for (int i = 0; i < count; ++i) {
            PolylineRecord record = !list.empty() && chance(0.45)
                                        ? derived(list[pick(static_cast<int>(list.size()))])
                                        : freshPolyline(kind);
            record.key = m_nextKey++;
            record.props = props();
            if (chance(0.05)) record.vertices.insert(record.vertices.begin() + 1, record.vertices.front());
            if (chance(0.03)) record.thickness = 1.0;
            for (PolylineVertex& vertex : record.vertices) {
                vertex.point.x += noise();
                vertex.point.y += noise();
            }
            list.push_back(record);
        }
        return list;
    }

    LineRecord randomLine() {
        const double x = pick(14);
        const double y = pick(14);
        const bool across = chance(0.5);
        const double from = pick(4);
        const double to = from + 1 + pick(4);
        LineRecord record =
            across ? line(m_nextKey++, x + from, y, x + to, y) : line(m_nextKey++, x, y + from, x, y + to);
        if (chance(0.4)) std::swap(record.start, record.end);
        record.start.x += noise();
        record.end.y += noise();
        record.props = props();
        return record;
    }

    ArcRecord randomArc(const std::vector<PolylineRecord>& curved) {
        constexpr double kPi = std::numbers::pi;
        for (int attempt = 0; attempt < 20; ++attempt) {
            const PolylineRecord& source = curved[pick(static_cast<int>(curved.size()))];
            for (const PolylineSegment& segment : polylineSegments(source, comparisonTolerance({}))) {
                if (!segment.isArc || chance(0.3)) continue;
                static const double kParts[] = {0.0, 0.25, 0.5, 1.0, 1.3};
                const double a = kParts[pick(5)];
                const double b = kParts[pick(5)];
                ArcRecord record = arc(m_nextKey++, segment.center.x + noise(), segment.center.y,
                                       segment.radius, segment.spanStart + std::min(a, b) * segment.span,
                                       segment.spanStart + (a == b ? 1.0 : std::max(a, b)) * segment.span);
                record.props = props();
                return record;
            }
        }
        ArcRecord record =
            arc(m_nextKey++, pick(12) + 0.5, pick(12), 0.5 * (1 + pick(3)), 0.0, kPi * pick(3));
        record.props = props();
        return record;
    }

    std::mt19937 m_random;
    double m_tolerance;
    ObjectKey m_nextKey = 1;
};

void expectSameEdits(const OverkillEdits& grouped, const OverkillEdits& pairwise) {
    EXPECT_EQ(grouped.erased, pairwise.erased);
    EXPECT_EQ(grouped.erasedTally, pairwise.erasedTally);
    ASSERT_EQ(grouped.changedPolylines.size(), pairwise.changedPolylines.size());
    for (const auto& [key, record] : pairwise.changedPolylines) {
        ASSERT_TRUE(grouped.changedPolylines.count(key)) << "polyline " << key;
        EXPECT_EQ(cornersOf(grouped.changedPolylines.at(key)), cornersOf(record)) << "polyline " << key;
    }
}

TEST(OverkillPolyEquivalence, GroupedPassesMatchEveryPairOnRandomDrawings) {
    int erasedOverall = 0;
    int changedOverall = 0;
    for (unsigned seed = 1; seed <= 24; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const double tolerance = seed % 3 == 0 ? 0.01 : (seed % 3 == 1 ? 1e-6 : 0.0);
        OverkillRun grouped = RandomDrawing(seed, tolerance).make();
        OverkillRun pairwise = grouped;
        runPolylinePasses(grouped);
        runPolylinePassesPairwise(pairwise);
        expectSameEdits(grouped.edits, pairwise.edits);
        erasedOverall += pairwise.edits.erasedTally;
        changedOverall += static_cast<int>(pairwise.edits.changedPolylines.size());
    }
    // The drawings must actually exercise the rules, or the comparison proves nothing.
    EXPECT_GT(erasedOverall, 24 * 40);
    EXPECT_GT(changedOverall, 24 * 3);
}

TEST(OverkillPolyEquivalence, PassesSideBySideMatchPassesOneAfterAnother) {
    int erasedOverall = 0;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const double tolerance = seed % 3 == 0 ? 0.01 : (seed % 3 == 1 ? 1e-6 : 0.0);
        OverkillRun together = RandomDrawing(seed, tolerance).make();
        // Circles on some arcs (covering them) and copies of some lines, so every curve pass has work.
        for (std::size_t k = 0; k < together.arcs.size(); k += 3) {
            CircleRecord circle = makeCircle(100000 + k, together.arcs[k].center, together.arcs[k].radius);
            circle.layerName = together.arcs[k].layerName;
            circle.props = together.arcs[k].props;
            addCircle(together, circle);
            if (k % 2 == 0) addCircle(together, circle);
        }
        for (std::size_t k = 0, count = together.lines.size(); k < count; k += 4) {
            LineRecord copy = together.lines[k];
            copy.key = 200000 + k;
            together.lines.push_back(copy);
        }
        OverkillRun oneAfterAnother = together;
        runCurveAndPolylinePasses(together);
        runCurvePasses(oneAfterAnother);
        const std::vector<ObjectKey> curvesErased = oneAfterAnother.edits.erased;
        runPolylinePasses(oneAfterAnother);
        // The curve passes come first, whatever thread did what.
        ASSERT_GE(together.edits.erased.size(), curvesErased.size());
        EXPECT_TRUE(std::equal(curvesErased.begin(), curvesErased.end(), together.edits.erased.begin()));
        expectSameEdits(together.edits, oneAfterAnother.edits);
        EXPECT_EQ(together.edits.coveredArcsTally, oneAfterAnother.edits.coveredArcsTally);
        EXPECT_EQ(together.edits.changedLines.size(), oneAfterAnother.edits.changedLines.size());
        EXPECT_EQ(together.edits.changedArcs.size(), oneAfterAnother.edits.changedArcs.size());
        EXPECT_EQ(together.edits.newCircles.size(), oneAfterAnother.edits.newCircles.size());
        EXPECT_EQ(together.circles.size(), oneAfterAnother.circles.size());
        EXPECT_TRUE(together.lines.empty() && together.arcs.empty() && together.lightweightPolylines.empty());
        erasedOverall += oneAfterAnother.edits.erasedTally;
    }
    EXPECT_GT(erasedOverall, 12 * 40);
}

TEST(OverkillPolyEquivalence, GridFindsEveryPointNearASegment) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-50.0, 50.0);
    PointGrid grid(3.0);
    std::vector<OdGePoint3d> points;
    for (std::uint32_t i = 0; i < 5000; ++i) {
        points.push_back({coordinate(random), coordinate(random), std::round(coordinate(random) / 25.0)});
        grid.add(points.back(), i);
    }
    points.push_back({1e18, -1e18, 0});
    grid.add(points.back(), 5000);
    const auto distanceToSegment = [](const OdGePoint3d& p, const OdGePoint3d& a, const OdGePoint3d& b) {
        const OdGeVector3d ab = b - a;
        const double t = std::clamp((p - a).dotProduct(ab) / ab.lengthSqrd(), 0.0, 1.0);
        return p.distanceTo(a + ab * t);
    };
    std::size_t nearOverall = 0;
    for (int trial = 0; trial < 300; ++trial) {
        OdGePoint3d a(coordinate(random), coordinate(random), 0.0);
        OdGePoint3d b(coordinate(random), coordinate(random), trial % 5 == 0 ? 1.0 : 0.0);
        if (trial == 0) b = {2e4, 3e4, 0.0}; // more cubes than a search visits one by one
        if (trial == 1) a = {1e18, -1e18, 0.0};
        const double reach = trial % 2 == 0 ? 2.5 : 0.4;
        std::vector<std::uint32_t> found;
        grid.findNearSegment(a, b, reach, found);
        std::sort(found.begin(), found.end());
        for (std::uint32_t i = 0; i < points.size(); ++i) {
            if (distanceToSegment(points[i], a, b) > reach) continue;
            ++nearOverall;
            EXPECT_TRUE(std::binary_search(found.begin(), found.end(), i))
                << "trial " << trial << " point " << i;
        }
        found.clear();
        grid.findNearPoint(a, reach, found);
        std::sort(found.begin(), found.end());
        for (std::uint32_t i = 0; i < points.size(); ++i) {
            if (points[i].distanceTo(a) <= reach) {
                EXPECT_TRUE(std::binary_search(found.begin(), found.end(), i));
            }
        }
    }
    EXPECT_GT(nearOverall, 1000u);
}

TEST(OverkillPolyEquivalence, LargeDrawingKeepsOnlyWhatIsNotRepeated) {
    // 100,000 polylines, each alone in a square of its own, one in ten followed later by a copy (every
    // other one reversed), and 100,000 lines, half of them on a segment of some polyline.
    std::mt19937 random(11);
    const int polylineCount = 100000;
    const int side = 400;
    OverkillRun run;
    std::vector<PolylineRecord> originals;
    ObjectKey nextKey = 1;
    int copies = 0;
    for (int i = 0; originals.size() + copies < static_cast<std::size_t>(polylineCount); ++i) {
        const double x0 = (i % side) * 100.0;
        const double y0 = (i / side) * 100.0;
        PolylineRecord record;
        record.key = nextKey++;
        double x = x0 + 10, y = y0 + 10;
        const int count = 3 + static_cast<int>(random() % 4);
        for (int v = 0; v < count; ++v) {
            record.vertices.push_back({{x, y, 0.0}, random() % 4 == 0 ? 0.5 : 0.0});
            x += 5 + random() % 10;
            y += random() % 2 == 0 ? 7 : -3;
        }
        originals.push_back(record);
        run.lightweightPolylines.push_back(record);
        if (i % 10 == 9) {
            PolylineRecord copy = originals[originals.size() - 5];
            copy.key = nextKey++;
            if (copies % 2 == 1) {
                std::reverse(copy.vertices.begin(), copy.vertices.end());
                for (std::size_t v = 0; v + 1 < copy.vertices.size(); ++v)
                    copy.vertices[v].bulge = -copy.vertices[v + 1].bulge;
                copy.vertices.back().bulge = 0.0;
            }
            run.lightweightPolylines.push_back(copy);
            ++copies;
        }
    }
    int linesOnSegments = 0;
    for (int i = 0; i < 100000; ++i) {
        const PolylineRecord& source = originals[random() % originals.size()];
        const std::size_t v = random() % (source.vertices.size() - 1);
        const OdGePoint3d a = source.vertices[v].point;
        const OdGePoint3d b = source.vertices[v + 1].point;
        if (i % 2 == 0 && source.vertices[v].bulge == 0.0) {
            run.lines.push_back({nextKey++, {}, a + (b - a) * 0.25, a + (b - a) * 0.75});
            ++linesOnSegments;
        } else {
            run.lines.push_back({nextKey++, {}, a + OdGeVector3d(0, 1, 0), b + OdGeVector3d(0, 1, 0)});
        }
    }
    // Wall time, and processor time, which other work on the machine does not inflate.
    const auto started = std::chrono::steady_clock::now();
    const std::clock_t startedCpu = std::clock();
    runPolylinePasses(run);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - started;
    const double tookCpu = static_cast<double>(std::clock() - startedCpu) / CLOCKS_PER_SEC;
    std::cout << "[ polylines ] " << polylineCount << " polylines and 100000 lines: " << took.count()
              << " s wall, " << tookCpu << " s processor\n";
    EXPECT_EQ(run.edits.erasedTally, copies + linesOnSegments);
    EXPECT_EQ(run.edits.erased.size(), static_cast<std::size_t>(copies + linesOnSegments));
    EXPECT_TRUE(run.edits.changedPolylines.empty());
}

} // namespace
} // namespace qvtd::overkill::testing
