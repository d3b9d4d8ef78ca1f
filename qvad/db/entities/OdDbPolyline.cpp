#include "qvad/db/entities/OdDbPolyline.h"

#include "qvad/ge/bulge.h"
#include "qvad/ge/ocs.h"

#include <stdexcept>
#include <string>

using qvad::db::parseReal;

namespace {
// Where a vertex's tags stand relative to each other; -1 for codes that end the vertex.
int vertexTagRank(int code) {
    switch (code) {
    case 10:
        return 0;
    case 20:
        return 1;
    case 91:
        return 2;
    case 40:
        return 3;
    case 41:
        return 4;
    case 42:
        return 5;
    default:
        return -1;
    }
}
} // namespace

unsigned OdDbPolyline::numVerts() const {
    auto tags = this->tags();
    const auto b_e = qvad::db::partRange(*this, kSubclass);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    unsigned n = 0;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code == 10) ++n;
    return n;
}

std::pair<std::size_t, std::size_t> OdDbPolyline::vertexRange(unsigned index) const {
    auto tags = this->tags();
    const auto b_e = qvad::db::partRange(*this, kSubclass);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    unsigned seen = 0;
    for (std::size_t i = b; i < e; ++i) {
        if (tags[i].code != 10) continue;
        if (seen++ != index) continue;
        std::size_t j = i + 1;
        while (j < e && vertexTagRank(tags[j].code) > 0) ++j;
        return {i, j};
    }
    throw std::out_of_range("the polyline has no vertex " + std::to_string(index) + " (it has " +
                            std::to_string(seen) + ")");
}

std::vector<OdDbPolyline::Vertex> OdDbPolyline::getVertices() const {
    auto tags = this->tags();
    const auto [b, e] = qvad::db::partRange(*this, kSubclass);
    const double constant = getConstantWidth();
    std::vector<Vertex> out;
    for (std::size_t i = b; i < e; ++i) {
        if (tags[i].code != 10) continue;
        Vertex v;
        const OdGePoint3d p = qvad::db::pointAt(tags.subspan(0, e), i);
        v.point = {p.x, p.y};
        v.startWidth = v.endWidth = constant;
        std::size_t j = i + 1;
        for (; j < e && vertexTagRank(tags[j].code) > 0; ++j) {
            if (tags[j].code == 42) v.bulge = parseReal(tags[j].value());
            if (tags[j].code == 40) v.startWidth = parseReal(tags[j].value());
            if (tags[j].code == 41) v.endWidth = parseReal(tags[j].value());
        }
        out.push_back(v);
        i = j - 1;
    }
    return out;
}

const Tag* OdDbPolyline::vertexTag(unsigned index, int code) const {
    const auto b_e = vertexRange(index);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    for (std::size_t i = b; i < e; ++i)
        if (tags()[i].code == code) return &tags()[i];
    return nullptr;
}

OdGePoint2d OdDbPolyline::getPointAt(unsigned index) const {
    const auto b_e = vertexRange(index);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    OdGePoint3d p = qvad::db::pointAt(tags().subspan(0, e), b);
    return {p.x, p.y};
}

OdGePoint3d OdDbPolyline::getPointAtWcs(unsigned index) const {
    return ocsToWcs(OdGePoint3d(getPointAt(index), elevation()), normal());
}

double OdDbPolyline::getBulgeAt(unsigned index) const {
    const Tag* t = vertexTag(index, 42);
    return t ? parseReal(t->value()) : 0.0;
}

void OdDbPolyline::getWidthsAt(unsigned index, double& startWidth, double& endWidth) const {
    const double constant = getConstantWidth();
    const Tag* s = vertexTag(index, 40);
    const Tag* e = vertexTag(index, 41);
    startWidth = s ? parseReal(s->value()) : constant;
    endWidth = e ? parseReal(e->value()) : constant;
}

std::optional<OdGeArcSegment2d> OdDbPolyline::arcSegmentAt(unsigned index) const {
    const OdGePoint2d start = getPointAt(index); // throws for a vertex that is not there
    const unsigned n = numVerts();
    if (index + 1 == n && !isClosed()) return std::nullopt;
    return arcFromBulge(start, getPointAt((index + 1) % n), getBulgeAt(index));
}

bool OdDbPolyline::anyVertexHas(int code) const {
    return findTag(code, part()) != nullptr;
}

void OdDbPolyline::setVertexValue(unsigned index, int code, std::string_view text) {
    const auto b_e = vertexRange(index);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    std::string_view kept = keep(text);
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        std::size_t at = e;
        for (std::size_t i = b; i < e; ++i) {
            if (tags[i].code == code) {
                tags[i] = Tag(code, kept);
                return;
            }
            if (at == e && vertexTagRank(tags[i].code) > vertexTagRank(code)) at = i;
        }
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), Tag(code, kept));
    });
}

void OdDbPolyline::setPointAt(unsigned index, const OdGePoint2d& p) {
    const auto b_e = vertexRange(index);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    std::string_view x = keep(formatReal(p.x)), y = keep(formatReal(p.y));
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        tags[b] = Tag(10, x);
        if (b + 1 < e && tags[b + 1].code == 20)
            tags[b + 1] = Tag(20, y);
        else
            tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(b + 1), Tag(20, y));
    });
}

void OdDbPolyline::setBulgeAt(unsigned index, double bulge) {
    if (!vertexTag(index, 42) && bulge == 0.0) return;
    setVertexValue(index, 42, formatReal(bulge));
}

void OdDbPolyline::setWidthsAt(unsigned index, double startWidth, double endWidth) {
    double s = 0.0, e = 0.0;
    getWidthsAt(index, s, e);
    if (s != startWidth || vertexTag(index, 40)) setVertexValue(index, 40, formatReal(startWidth));
    if (e != endWidth || vertexTag(index, 41)) setVertexValue(index, 41, formatReal(endWidth));
}

void OdDbPolyline::addVertexAt(unsigned index, const OdGePoint2d& p, double bulge, double startWidth,
                               double endWidth) {
    const unsigned n = numVerts();
    if (index > n)
        throw std::out_of_range("cannot insert vertex " + std::to_string(index) + " into a polyline of " +
                                std::to_string(n));
    const double constant = getConstantWidth();
    if (startWidth < 0.0) startWidth = constant;
    if (endWidth < 0.0) endWidth = constant;
    std::vector<Tag> vertex = qvad::db::pointTags(*this, 10, OdGePoint3d(p, 0.0), true);
    // A vertex written like its neighbours keeps the polyline uniform for other readers.
    if (startWidth != constant || endWidth != constant || anyVertexHas(40)) {
        vertex.push_back(qvad::db::realTag(*this, 40, startWidth));
        vertex.push_back(qvad::db::realTag(*this, 41, endWidth));
    }
    if (bulge != 0.0 || anyVertexHas(42)) vertex.push_back(qvad::db::realTag(*this, 42, bulge));

    std::size_t at;
    if (index < n) {
        at = vertexRange(index).first;
    } else if (n > 0) {
        at = vertexRange(n - 1).second;
    } else {
        const auto b_e = qvad::db::partRange(*this, kSubclass);
        [[maybe_unused]] const auto b = b_e.first;
        [[maybe_unused]] const auto e = b_e.second;
        at = e;
        for (std::size_t i = b; i < e; ++i)
            if (tags()[i].code == 210) {
                at = i;
                break;
            }
    }
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), vertex.begin(), vertex.end());
    });
    writeCount(n + 1);
}

void OdDbPolyline::removeVertexAt(unsigned index) {
    const auto b_e = vertexRange(index);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    const unsigned n = numVerts();
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(b),
                   tags.begin() + static_cast<std::ptrdiff_t>(e));
    });
    writeCount(n - 1);
}

void OdDbPolyline::writeCount(unsigned count) {
    setHeadValue(90, std::to_string(count));
}

void OdDbPolyline::setHeadValue(int code, std::string_view text) {
    if (findTag(code, part())) {
        setString(code, text, part());
        return;
    }
    // Properties of the whole polyline go before the vertices, in the order every writer uses.
    const Tag tag(code, keep(text));
    switch (code) {
    case 90:
        qvad::db::replaceTagRun(*this, kSubclass, {code}, {&tag, 1}, {70, 43, 38, 39, 10, 210});
        break;
    case 70:
        qvad::db::replaceTagRun(*this, kSubclass, {code}, {&tag, 1}, {43, 38, 39, 10, 210});
        break;
    case 43:
        qvad::db::replaceTagRun(*this, kSubclass, {code}, {&tag, 1}, {38, 39, 10, 210});
        break;
    case 38:
        qvad::db::replaceTagRun(*this, kSubclass, {code}, {&tag, 1}, {39, 10, 210});
        break;
    default:
        qvad::db::replaceTagRun(*this, kSubclass, {code}, {&tag, 1}, {10, 210});
        break;
    }
}

void OdDbPolyline::setClosed(bool closed) {
    int f = flags();
    int wanted = closed ? (f | 1) : (f & ~1);
    if (wanted != f) setHeadValue(70, std::to_string(wanted));
}

bool OdDbPolyline::isOnlyLines() const {
    for (double b : qvad::db::repeatedReals(*this, 42, kSubclass))
        if (b != 0.0) return false;
    return true;
}

void OdDbPolyline::setConstantWidth(double width) {
    removeTags(40, part());
    removeTags(41, part());
    setHeadValue(43, formatReal(width));
}
