#include "qvad/db/entities/OdDbXrecord.h"

#include <stdexcept>
#include <string>

std::pair<std::size_t, std::size_t> OdDbXrecord::dataRange() const {
    const auto b_e = qvad::db::partRange(*this, kSubclass);
    [[maybe_unused]] auto b = b_e.first;
    [[maybe_unused]] auto e = b_e.second;
    if (b < e && tags()[b].code == 280) ++b;
    return {b, e};
}

int OdDbXrecord::mergeStyle() const {
    const auto b_e = qvad::db::partRange(*this, kSubclass);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    return b < e && tags()[b].code == 280 ? static_cast<int>(qvad::db::parseInteger(tags()[b].value())) : 1;
}

std::span<const Tag> OdDbXrecord::dataTags() const {
    const auto b_e = dataRange();
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    return tags().subspan(b, e - b);
}

void OdDbXrecord::setDataTags(std::span<const Tag> data) {
    std::vector<Tag> kept;
    for (const Tag& t : data) {
        // 100 and 0 would be read as structure; 1001 and up as extended data.
        if (t.code < 1 || t.code == 100 || t.code >= 1000)
            throw std::invalid_argument("group " + std::to_string(t.code) +
                                        " cannot be stored in an xrecord");
        qvad::db::requireSingleLine(t.value(), "an xrecord value");
        kept.emplace_back(t.code, keep(t.value()));
    }
    const auto b_e = dataRange();
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(b),
                   tags.begin() + static_cast<std::ptrdiff_t>(e));
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(b), kept.begin(), kept.end());
    });
}
