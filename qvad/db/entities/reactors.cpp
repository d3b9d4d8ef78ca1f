#include "qvad/db/entities/reactors.h"

#include "qvad/db/entities/tag_access.h"

namespace qvad::db {
namespace {

constexpr std::string_view kOpen = "{ACAD_REACTORS";

// [open, close] indices of the reactor group, both at the object's head; none when close == 0.
std::pair<std::size_t, std::size_t> reactorGroup(std::span<const Tag> tags) {
    for (std::size_t i = 0; i < tags.size(); ++i) {
        if (tags[i].code == 100 || tags[i].code == 1001) break;
        if (tags[i].code != 102 || tags[i].value() != kOpen) continue;
        for (std::size_t j = i + 1; j < tags.size(); ++j)
            if (tags[j].code == 102)
                return tags[j].value() == "}" ? std::pair{i, j} : std::pair{i, std::size_t{0}};
        break;
    }
    return {0, 0};
}

} // namespace

std::vector<Handle> reactors(const OdDbObject& object) {
    std::vector<Handle> out;
    auto tags = object.tags();
    const auto open_close = reactorGroup(tags);
    [[maybe_unused]] const auto open = open_close.first;
    [[maybe_unused]] const auto close = open_close.second;
    for (std::size_t i = open + 1; i < close; ++i)
        if (tags[i].code == 330) out.push_back(parseHandle(tags[i].value()));
    return out;
}

void addReactor(OdDbObject& object, Handle reactor) {
    for (Handle h : reactors(object))
        if (h == reactor) return;
    const Tag value(330, object.keep(formatHandle(reactor)));
    const auto open_close = reactorGroup(object.tags());
    [[maybe_unused]] const auto open = open_close.first;
    [[maybe_unused]] const auto close = open_close.second;
    editTags(object, [&](std::vector<Tag>& tags) {
        if (close != 0) {
            tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(close), value);
            return;
        }
        // The group follows the handle and comes before any other application group and the owner.
        std::size_t at = 0;
        while (at < tags.size() && (tags[at].code == 5 || tags[at].code == 105)) ++at;
        const Tag group[] = {Tag(102, kOpen), value, Tag(102, "}")};
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), std::begin(group), std::end(group));
    });
}

void removeReactor(OdDbObject& object, Handle reactor) {
    const auto open_close = reactorGroup(object.tags());
    [[maybe_unused]] const auto open = open_close.first;
    [[maybe_unused]] const auto close = open_close.second;
    if (close == 0) return;
    editTags(object, [&](std::vector<Tag>& tags) {
        std::size_t end = close;
        for (std::size_t i = close; i-- > open + 1;)
            if (tags[i].code == 330 && parseHandle(tags[i].value()) == reactor) {
                tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(i));
                --end;
            }
        if (end == open + 1)
            tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(open),
                       tags.begin() + static_cast<std::ptrdiff_t>(end + 1));
    });
}

} // namespace qvad::db
