#include "tooldeck/commands/cleanup/overkill_compare_tools.h"

#include <cctype>
#include <cmath>
#include <numbers>

namespace qvtd::overkill::compare {
namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

// Into [0, 2pi).
double reduced(double angle) {
    double r = std::fmod(angle, kTurn);
    if (r < 0.0) r += kTurn;
    return r;
}

} // namespace

bool Within::angle(double a, double b) const {
    if (!std::isfinite(a) || !std::isfinite(b)) return false;
    const double d = reduced(a - b);
    return d < e || kTurn - d < e;
}

bool Within::range(double startA, double endA, double startB, double endB) const {
    if (!angle(startA, startB)) return false;
    // The sweep counter-clockwise from start to end, in (0, 2pi] when the two ends meet.
    auto sweep = [this](double start, double end) {
        const double s = reduced(end - start);
        return s < e ? s + kTurn : s;
    };
    return scalar(sweep(startA, endA), sweep(startB, endB));
}

bool Within::codirectional(const OdGeVector3d& a, const OdGeVector3d& b) const {
    return a.isCodirectionalTo(b, OdGeTol(e, e));
}

bool Within::parallel(const OdGeVector3d& a, const OdGeVector3d& b) const {
    return a.isParallelTo(b, OdGeTol(e, e));
}

bool Within::points(const std::vector<OdGePoint3d>& a, const std::vector<OdGePoint3d>& b) const {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!point(a[i], b[i])) return false;
    return true;
}

bool Within::points(const std::vector<OdGePoint2d>& a, const std::vector<OdGePoint2d>& b) const {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!point(a[i], b[i])) return false;
    return true;
}

bool Within::scalars(const std::vector<double>& a, const std::vector<double>& b) const {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!scalar(a[i], b[i])) return false;
    return true;
}

bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::toupper(static_cast<unsigned char>(a[i])) != std::toupper(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

KeyHasher& KeyHasher::add(std::string_view text) {
    for (char c : text) byte(static_cast<unsigned char>(c));
    // A separator, so that "ab" + "c" and "a" + "bc" differ.
    byte(0xff);
    byte(0x00);
    return *this;
}

KeyHasher& KeyHasher::add(long long value) {
    for (int i = 0; i < 8; ++i)
        byte(static_cast<unsigned char>((static_cast<unsigned long long>(value) >> (8 * i)) & 0xff));
    return *this;
}

KeyHasher& KeyHasher::addName(std::string_view name) {
    for (char c : name) byte(static_cast<unsigned char>(std::toupper(static_cast<unsigned char>(c))));
    byte(0xff);
    byte(0x00);
    return *this;
}

} // namespace qvtd::overkill::compare
