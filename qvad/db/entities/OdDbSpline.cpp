#include "qvad/db/entities/OdDbSpline.h"

#include <stdexcept>
#include <string>

void OdDbSpline::setNthPoint(int code, int index, const OdGePoint3d& p) {
    auto tags = this->tags();
    const auto b_e = qvad::db::partRange(*this, kSubclass);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    int seen = 0;
    for (std::size_t i = b; i < e; ++i) {
        if (tags[i].code != code || seen++ != index) continue;
        std::vector<Tag> xyz = qvad::db::pointTags(*this, code, p);
        qvad::db::editTags(*this, [&](std::vector<Tag>& all) {
            std::size_t n = 1;
            while (n < 3 && i + n < e && all[i + n].code == code + 10 * static_cast<int>(n)) ++n;
            all.erase(all.begin() + static_cast<std::ptrdiff_t>(i),
                      all.begin() + static_cast<std::ptrdiff_t>(i + n));
            all.insert(all.begin() + static_cast<std::ptrdiff_t>(i), xyz.begin(), xyz.end());
        });
        return;
    }
    throw std::out_of_range("the spline has no point " + std::to_string(index) + " of group " +
                            std::to_string(code));
}
