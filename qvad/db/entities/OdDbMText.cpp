#include "qvad/db/entities/OdDbMText.h"

#include "qvad/ge/angle.h"
#include "qvad/ge/ocs.h"

#include <cmath>
#include <stdexcept>

namespace {
// A chunk boundary inside a UTF-8 sequence would leave both chunks invalid text.
std::size_t chunkEnd(std::string_view text, std::size_t from, std::size_t size) {
    std::size_t end = from + size;
    if (end >= text.size()) return text.size();
    while (end > from && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return end > from ? end : from + size;
}
} // namespace

std::string OdDbMText::contents() const {
    auto tags = this->tags();
    auto [b, e] = qvad::db::partRange(*this, kSubclass);
    std::string chunks;
    std::string_view last;
    for (std::size_t i = b; i < e; ++i) {
        // An embedded object (columns) follows; its groups are no part of the text.
        if (tags[i].code == 101) break;
        if (tags[i].code == 3)
            chunks += tags[i].value();
        else if (tags[i].code == 1)
            last = tags[i].value();
    }
    return chunks + std::string(last);
}

void OdDbMText::setContents(std::string_view text) {
    if (text.find_first_of("\r\n") != std::string_view::npos)
        throw std::invalid_argument("multiline text cannot hold line breaks; paragraphs are written \\P");
    std::vector<Tag> chunks;
    std::size_t at = 0;
    while (text.size() - at > kChunkSize) {
        std::size_t end = chunkEnd(text, at, kChunkSize);
        chunks.emplace_back(3, keep(text.substr(at, end - at)));
        at = end;
    }
    chunks.emplace_back(1, keep(text.substr(at)));
    qvad::db::replaceTagRun(*this, kSubclass, {1, 3}, chunks, {7, 210, 11, 42, 43, 50, 73, 44, 101});
}

void OdDbMText::setAttachment(int attachment) {
    if (attachment < kTopLeft || attachment > kBottomRight)
        throw std::invalid_argument("an attachment point is 1 to 9, not " + std::to_string(attachment));
    setInt(71, attachment, part());
}

void OdDbMText::setTextStyle(std::string_view name) {
    qvad::db::requireSingleLine(name, "a text style name");
    setString(7, name, part());
}

OdGeVector3d OdDbMText::direction() const {
    if (findTag(11, part())) return getPoint(11, {}, part()).asVector();
    // Files store this angle in degrees like every other angle group.
    double angle = qvad::db::degreesToRadians(getDouble(50, 0.0, part()));
    return ocsToWcs(OdGeVector3d(std::cos(angle), std::sin(angle), 0.0), normal());
}

void OdDbMText::setDirection(const OdGeVector3d& direction) {
    setPoint(11, OdGePoint3d(direction.x, direction.y, direction.z), part());
    removeTags(50, part());
}

double OdDbMText::rotation() const {
    OdGeVector3d inPlane = wcsToOcs(direction(), normal());
    return angleOf(OdGeVector2d(inPlane.x, inPlane.y));
}

void OdDbMText::setRotation(double angle) {
    setDirection(ocsToWcs(OdGeVector3d(std::cos(angle), std::sin(angle), 0.0), normal()));
}
