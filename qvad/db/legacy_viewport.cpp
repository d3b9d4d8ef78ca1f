#include "qvad/db/legacy_viewport.h"

#include "qvad/db/OdDbDatabase.h"

#include <array>
#include <string>

namespace qvad::db {
namespace {

struct MviewData {
    std::vector<std::string_view> ints, reals, layers;
    std::vector<std::array<std::string_view, 3>> points;
};

// The MVIEW values in the order R12 wrote them, split by kind; false when there are none.
bool readMview(const OdDbEntity& viewport, MviewData& data) {
    std::span<const Tag> tags = viewport.tags();
    std::size_t i = viewport.xdataStart();
    bool acad = false, found = false;
    for (; i < tags.size(); ++i) {
        if (tags[i].code == 1001) acad = tags[i].value() == "ACAD";
        if (acad && tags[i].is(1000, "MVIEW")) {
            found = true;
            ++i;
            break;
        }
    }
    if (!found) return false;
    for (; i < tags.size() && tags[i].code != 1001; ++i) {
        const Tag& t = tags[i];
        if (t.code == 1070)
            data.ints.push_back(t.value());
        else if (t.code == 1040)
            data.reals.push_back(t.value());
        else if (t.code == 1003)
            data.layers.push_back(t.value());
        else if (t.code == 1010) {
            std::array<std::string_view, 3> p = {t.value(), "0.0", "0.0"};
            if (i + 1 < tags.size() && tags[i + 1].code == 1020) p[1] = tags[++i].value();
            if (i + 1 < tags.size() && tags[i + 1].code == 1030) p[2] = tags[++i].value();
            data.points.push_back(p);
        }
    }
    return data.ints.size() >= 10 && data.reals.size() >= 14 && data.points.size() >= 2;
}

int flag(std::string_view value) {
    return value.empty() || value == "0" || value.find_first_not_of(" 0") == std::string_view::npos ? 0 : 1;
}

} // namespace

void addViewportFields(OdDbEntity& viewport) {
    MviewData m;
    if (!readMview(viewport, m)) return;
    // R12 VIEWMODE bits (perspective, clipping, UCS follow) are the low bits of the R2000 status.
    int viewMode = 0;
    for (char c : m.ints[1])
        if (c >= '0' && c <= '9') viewMode = viewMode * 10 + (c - '0');
    int icon = 0;
    for (char c : m.ints[4])
        if (c >= '0' && c <= '9') icon = icon * 10 + (c - '0');
    int status = (viewMode & 31) | ((icon & 1) ? 32 : 0) | ((icon & 2) ? 64 : 0) |
                 (flag(m.ints[3]) ? 128 : 0) | (flag(m.ints[5]) ? 256 : 0) | (flag(m.ints[6]) ? 512 : 0) |
                 (flag(m.ints[7]) ? 1024 : 0) | (flag(m.ints[9]) ? 2048 : 0);
    std::vector<Tag> fields = {Tag(12, m.reals[2]),     Tag(22, m.reals[3]),     Tag(13, m.reals[8]),
                               Tag(23, m.reals[9]),     Tag(14, m.reals[10]),    Tag(24, m.reals[11]),
                               Tag(15, m.reals[12]),    Tag(25, m.reals[13]),    Tag(16, m.points[1][0]),
                               Tag(26, m.points[1][1]), Tag(36, m.points[1][2]), Tag(17, m.points[0][0]),
                               Tag(27, m.points[0][1]), Tag(37, m.points[0][2]), Tag(42, m.reals[4]),
                               Tag(43, m.reals[5]),     Tag(44, m.reals[6]),     Tag(45, m.reals[1]),
                               Tag(50, m.reals[7]),     Tag(51, m.reals[0]),     Tag(72, m.ints[2])};
    OdDbDatabase* db = viewport.database();
    OdDbSymbolTable* layers = db ? db->table("LAYER") : nullptr;
    for (std::string_view name : m.layers)
        if (OdDbSymbolTableRecord* layer = layers ? layers->find(name) : nullptr)
            fields.emplace_back(331, viewport.keep(formatHandle(layer->handle())));
    fields.emplace_back(90, viewport.keep(std::to_string(status)));
    fields.emplace_back(1, "");
    fields.emplace_back(281, "0");
    std::size_t at = viewport.xdataStart();
    auto& tags = viewport.mutableTags();
    tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), fields.begin(), fields.end());
    viewport.mutableTags();
}

} // namespace qvad::db
