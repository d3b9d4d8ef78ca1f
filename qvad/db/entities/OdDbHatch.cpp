#include "qvad/db/entities/OdDbHatch.h"

#include <cmath>

using qvad::db::degreesToRadians;
using qvad::db::parseInteger;
using qvad::db::parseReal;

namespace {

// Walks the boundary tags in order; every read checks the code it expects, so damaged data ends the
// walk instead of being misread.
class LoopReader {
public:
    explicit LoopReader(std::span<const Tag> tags) : m_tags(tags) {}

    bool at(int code) const { return m_i < m_tags.size() && m_tags[m_i].code == code; }
    bool done() const { return m_i >= m_tags.size(); }
    long long integer(int code, long long fallback = 0) {
        return at(code) ? parseInteger(m_tags[m_i++].value()) : fallback;
    }
    double real(int code, double fallback = 0.0) {
        return at(code) ? parseReal(m_tags[m_i++].value()) : fallback;
    }
    OdGePoint2d point(int code) {
        OdGePoint2d p;
        p.x = real(code);
        p.y = real(code + 10);
        return p;
    }
    std::size_t index() const { return m_i; }

    bool readLoop(HatchLoop& loop) {
        if (!at(92)) return false;
        loop.flags = static_cast<int>(integer(92));
        bool ok = loop.isPolyline() ? readPolyline(loop) : readEdges(loop);
        if (!ok) return false;
        long long sources = integer(97);
        for (long long s = 0; s < sources && at(330); ++s)
            loop.sourceObjects.push_back(qvad::parseHandle(m_tags[m_i++].value()));
        return true;
    }

private:
    bool readPolyline(HatchLoop& loop) {
        bool hasBulge = integer(72) != 0;
        loop.closed = integer(73, 1) != 0;
        long long count = integer(93);
        for (long long v = 0; v < count; ++v) {
            if (!at(10)) return false;
            loop.vertices.push_back(point(10));
            loop.bulges.push_back(hasBulge || at(42) ? real(42) : 0.0);
        }
        return true;
    }

    bool readEdges(HatchLoop& loop) {
        long long count = integer(93);
        for (long long k = 0; k < count; ++k) {
            if (!at(72)) return false;
            HatchEdge edge;
            edge.type = static_cast<HatchEdge::Type>(integer(72));
            switch (edge.type) {
            case HatchEdge::kLine:
                edge.start = point(10);
                edge.end = point(11);
                break;
            case HatchEdge::kCircArc:
                edge.center = point(10);
                edge.radius = real(40);
                edge.startAngle = degreesToRadians(real(50));
                edge.endAngle = degreesToRadians(real(51));
                edge.counterClockwise = integer(73, 1) != 0;
                break;
            case HatchEdge::kEllipArc: {
                edge.center = point(10);
                OdGePoint2d axis = point(11);
                edge.majorAxis = OdGeVector2d(axis.x, axis.y);
                edge.minorRatio = real(40, 1.0);
                edge.startAngle = degreesToRadians(real(50));
                edge.endAngle = degreesToRadians(real(51));
                edge.counterClockwise = integer(73, 1) != 0;
                break;
            }
            case HatchEdge::kSpline:
                if (!readSpline(edge)) return false;
                break;
            default:
                return false;
            }
            loop.edges.push_back(std::move(edge));
        }
        return true;
    }

    bool readSpline(HatchEdge& edge) {
        edge.degree = static_cast<int>(integer(94));
        edge.rational = integer(73) != 0;
        edge.periodic = integer(74) != 0;
        long long knots = integer(95), controls = integer(96);
        for (long long k = 0; k < knots; ++k) {
            if (!at(40)) return false;
            edge.knots.push_back(real(40));
        }
        for (long long c = 0; c < controls; ++c) {
            if (!at(10)) return false;
            edge.controlPoints.push_back(point(10));
            if (at(42)) edge.weights.push_back(real(42));
        }
        while (at(42)) edge.weights.push_back(real(42));
        if (at(97)) {
            long long fits = integer(97);
            for (long long f = 0; f < fits && at(11); ++f) edge.fitPoints.push_back(point(11));
            if (at(12)) point(12);
            if (at(13)) point(13);
        }
        return true;
    }

    std::span<const Tag> m_tags;
    std::size_t m_i = 0;
};

} // namespace

std::vector<HatchLoop> OdDbHatch::loops() const {
    std::vector<HatchLoop> out;
    auto tags = this->tags();
    auto [b, e] = qvad::db::partRange(*this, kSubclass);
    std::size_t start = e;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code == 91) {
            start = i + 1;
            break;
        }
    if (start >= e) return out;
    const long long count = parseInteger(tags[start - 1].value());
    LoopReader reader(tags.subspan(start, e - start));
    for (long long n = 0; n < count; ++n) {
        HatchLoop loop;
        if (!reader.readLoop(loop)) break;
        out.push_back(std::move(loop));
    }
    return out;
}
