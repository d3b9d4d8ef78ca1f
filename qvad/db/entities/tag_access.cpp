#include "qvad/db/entities/tag_access.h"

#include <charconv>
#include <numbers>
#include <stdexcept>

namespace qvad::db {

namespace {
std::string_view numberText(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    if (!s.empty() && s.front() == '+') s.remove_prefix(1);
    return s;
}
} // namespace

double parseReal(std::string_view text, double fallback) {
    std::string_view s = numberText(text);
    double v = fallback;
    auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    return r.ec == std::errc() ? v : fallback;
}

long long parseInteger(std::string_view text, long long fallback) {
    std::string_view s = numberText(text);
    long long v = fallback;
    auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    return r.ec == std::errc() ? v : fallback;
}

void requireSingleLine(std::string_view text, std::string_view what) {
    if (text.find_first_of("\r\n") != std::string_view::npos)
        throw std::invalid_argument(std::string(what) + " cannot hold a line break");
}

double degreesToRadians(double degrees) {
    return degrees * (std::numbers::pi / 180.0);
}
double radiansToDegrees(double radians) {
    return radians * (180.0 / std::numbers::pi);
}

std::string_view dataPart(const OdDbObject& object, std::string_view subclass) {
    return object.hasSubclass(subclass) ? subclass : std::string_view{};
}

std::pair<std::size_t, std::size_t> partRange(const OdDbObject& object, std::string_view subclass) {
    return object.subclassRange(dataPart(object, subclass));
}

std::pair<std::size_t, std::size_t> lastSubclassRange(const OdDbObject& object, std::string_view subclass) {
    auto tags = object.tags();
    std::size_t end = object.xdataStart();
    std::size_t found = 0; // one past the marker; 0 while none is seen
    for (std::size_t i = 0; i < end; ++i)
        if (tags[i].code == 100 && tags[i].value() == subclass) found = i + 1;
    if (found == 0) return {end, end};
    std::size_t stop = found;
    while (stop < end && tags[stop].code != 100) ++stop;
    return {found, stop};
}

long long firstInteger(std::span<const Tag> tags, int code, long long fallback) {
    for (const Tag& t : tags) {
        if (t.code == 1001) break;
        if (t.code == code) return parseInteger(t.value(), fallback);
    }
    return fallback;
}

bool hasMarker(std::span<const Tag> tags, std::string_view subclass) {
    for (const Tag& t : tags) {
        if (t.code == 1001) break;
        if (t.code == 100 && t.value() == subclass) return true;
    }
    return false;
}

OdGePoint3d pointAt(std::span<const Tag> tags, std::size_t i) {
    OdGePoint3d p;
    int code = tags[i].code;
    p.x = parseReal(tags[i].value());
    if (i + 1 < tags.size() && tags[i + 1].code == code + 10) {
        p.y = parseReal(tags[i + 1].value());
        if (i + 2 < tags.size() && tags[i + 2].code == code + 20) p.z = parseReal(tags[i + 2].value());
    }
    return p;
}

std::vector<double> repeatedReals(const OdDbObject& object, int code, std::string_view subclass) {
    auto tags = object.tags();
    const auto b_e = partRange(object, subclass);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    std::vector<double> out;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code == code) out.push_back(parseReal(tags[i].value()));
    return out;
}

std::vector<OdGePoint3d> repeatedPoints(const OdDbObject& object, int code, std::string_view subclass) {
    auto tags = object.tags();
    const auto b_e = partRange(object, subclass);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    std::vector<OdGePoint3d> out;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code == code) out.push_back(pointAt(tags.subspan(0, e), i));
    return out;
}

std::vector<Handle> repeatedHandles(const OdDbObject& object, int code, std::string_view subclass) {
    auto tags = object.tags();
    const auto b_e = partRange(object, subclass);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    std::vector<Handle> out;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code == code) out.push_back(parseHandle(tags[i].value()));
    return out;
}

void setPointCoordinate(OdDbObject& object, int code, int axis, double value, std::string_view subclass) {
    std::string_view part = dataPart(object, subclass);
    const auto b_e = object.subclassRange(part);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    auto tags = object.tags();
    std::size_t at = e;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code == code) {
            at = i;
            break;
        }
    if (at == e || at + 1 >= e || tags[at + 1].code != code + 10) {
        OdGePoint3d p = at == e ? OdGePoint3d() : pointAt(tags.subspan(0, e), at);
        (axis == 0 ? p.x : axis == 1 ? p.y : p.z) = value;
        object.setPoint(code, p, part);
        return;
    }
    const Tag tag(code + 10 * axis, object.keep(formatReal(value)));
    editTags(object, [&](std::vector<Tag>& all) {
        std::size_t i = at + static_cast<std::size_t>(axis);
        if (axis < 2 || (i < e && all[i].code == code + 20))
            all[i] = tag;
        else
            all.insert(all.begin() + static_cast<std::ptrdiff_t>(at + 2), tag);
    });
}

std::vector<Tag> pointTags(OdDbObject& object, int code, const OdGePoint3d& p, bool twoD) {
    std::vector<Tag> out = {Tag(code, object.keep(formatReal(p.x))),
                            Tag(code + 10, object.keep(formatReal(p.y)))};
    if (!twoD) out.emplace_back(code + 20, object.keep(formatReal(p.z)));
    return out;
}

Tag realTag(OdDbObject& object, int code, double value) {
    return Tag(code, object.keep(formatReal(value)));
}

Tag integerTag(OdDbObject& object, int code, long long value) {
    return Tag(code, object.keep(std::to_string(value)));
}

void replaceTagRun(OdDbObject& object, std::string_view subclass, std::initializer_list<int> codes,
                   std::span<const Tag> replacement, std::initializer_list<int> before) {
    auto in = [](int code, std::initializer_list<int> set) {
        for (int c : set)
            if (c == code) return true;
        return false;
    };
    std::string_view part = dataPart(object, subclass);
    editTags(object, [&](std::vector<Tag>& tags) {
        const auto b_e = object.subclassRange(part);
        [[maybe_unused]] const auto b = b_e.first;
        [[maybe_unused]] const auto e = b_e.second;
        std::size_t at = e;
        for (std::size_t i = b; i < e; ++i)
            if (in(tags[i].code, codes)) {
                at = i;
                break;
            }
        if (at == e) {
            for (std::size_t i = b; i < e; ++i)
                if (in(tags[i].code, before)) {
                    at = i;
                    break;
                }
        }
        std::vector<Tag> kept(tags.begin(), tags.begin() + static_cast<std::ptrdiff_t>(b));
        for (std::size_t i = b; i < e; ++i) {
            if (i == at) kept.insert(kept.end(), replacement.begin(), replacement.end());
            if (!in(tags[i].code, codes)) kept.push_back(tags[i]);
        }
        if (at == e) kept.insert(kept.end(), replacement.begin(), replacement.end());
        kept.insert(kept.end(), tags.begin() + static_cast<std::ptrdiff_t>(e), tags.end());
        tags = std::move(kept);
    });
}

} // namespace qvad::db
