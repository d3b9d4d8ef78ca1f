#include "qvad/db/entities/OdDbLeader.h"

#include <stdexcept>
#include <string>

std::size_t OdDbLeader::vertexIndex(int index) const {
    auto tags = this->tags();
    auto [b, e] = qvad::db::partRange(*this, kSubclass);
    int seen = 0;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code == 10 && seen++ == index) return i;
    throw std::out_of_range("the leader has no vertex " + std::to_string(index) + " (it has " +
                            std::to_string(seen) + ")");
}

int OdDbLeader::numVertices() const {
    return static_cast<int>(qvad::db::repeatedPoints(*this, 10, part()).size());
}

OdGePoint3d OdDbLeader::vertexAt(int index) const {
    std::size_t i = vertexIndex(index);
    return qvad::db::pointAt(tags().subspan(0, subclassRange(part()).second), i);
}

void OdDbLeader::setVertexAt(int index, const OdGePoint3d& p) {
    std::size_t i = vertexIndex(index);
    std::vector<Tag> xyz = qvad::db::pointTags(*this, 10, p);
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        std::size_t n = 1;
        while (n < 3 && i + n < tags.size() && tags[i + n].code == 10 + 10 * static_cast<int>(n)) ++n;
        tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(i),
                   tags.begin() + static_cast<std::ptrdiff_t>(i + n));
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(i), xyz.begin(), xyz.end());
    });
}

void OdDbLeader::appendVertex(const OdGePoint3d& p) {
    const int count = numVertices();
    std::vector<Tag> xyz = qvad::db::pointTags(*this, 10, p);
    std::size_t at;
    if (count > 0) {
        at = vertexIndex(count - 1) + 1;
        while (at < tags().size() && (tags()[at].code == 20 || tags()[at].code == 30)) ++at;
    } else {
        at = subclassRange(part()).second;
    }
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), xyz.begin(), xyz.end());
    });
    writeCount(count + 1);
}

void OdDbLeader::removeVertexAt(int index) {
    const int count = numVertices();
    std::size_t i = vertexIndex(index);
    if (count <= 2) throw std::invalid_argument("a leader needs at least two vertices");
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        std::size_t n = 1;
        while (n < 3 && i + n < tags.size() && tags[i + n].code == 10 + 10 * static_cast<int>(n)) ++n;
        tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(i),
                   tags.begin() + static_cast<std::ptrdiff_t>(i + n));
    });
    writeCount(count - 1);
}

void OdDbLeader::writeCount(int count) {
    if (findTag(76, part())) {
        setInt(76, count, part());
        return;
    }
    const Tag tag = qvad::db::integerTag(*this, 76, count);
    qvad::db::replaceTagRun(*this, kSubclass, {76}, std::span<const Tag>(&tag, 1), {10});
}
