// Unit conversion between named units of one kind. Each unit maps to the kind's SI unit by a factor and
// an offset (only temperatures have one); areas and volumes of every length unit come from "sq "/"cu "
// or "square "/"cubic " in front of its name, or "2"/"3" (or "^2"/"^3") behind its symbol.

#include "qvad/api/host_session.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>

namespace qvad::api {

namespace {

enum class Kind { Length, Area, Volume, Angle, Mass, Temperature, Time };

struct Unit {
    std::string_view names; // '|' separated, lower case
    Kind kind;
    double factor;       // SI units per unit
    double offset = 0.0; // SI value of the unit's zero
};

constexpr double kFahrenheitStep = 5.0 / 9.0;

constexpr auto kUnits = std::to_array<Unit>({
    {"meter|meters|metre|metres|m", Kind::Length, 1.0},
    {"millimeter|millimeters|millimetre|millimetres|mm", Kind::Length, 1e-3},
    {"centimeter|centimeters|centimetre|centimetres|cm", Kind::Length, 1e-2},
    {"decimeter|decimeters|decimetre|decimetres|dm", Kind::Length, 1e-1},
    {"kilometer|kilometers|kilometre|kilometres|km", Kind::Length, 1e3},
    {"micron|microns|micrometer|micrometers|um", Kind::Length, 1e-6},
    {"inch|inches|in", Kind::Length, 0.0254},
    {"foot|feet|ft", Kind::Length, 0.3048},
    {"survey foot|survey feet", Kind::Length, 1200.0 / 3937.0},
    {"yard|yards|yd", Kind::Length, 0.9144},
    {"mile|miles|mi", Kind::Length, 1609.344},
    {"nautical mile|nautical miles|nmi", Kind::Length, 1852.0},
    {"mil|mils|thou", Kind::Length, 2.54e-5},
    {"acre|acres", Kind::Area, 4046.8564224},
    {"hectare|hectares|ha", Kind::Area, 1e4},
    {"are|ares", Kind::Area, 100.0},
    {"liter|liters|litre|litres|l", Kind::Volume, 1e-3},
    {"milliliter|milliliters|millilitre|millilitres|ml", Kind::Volume, 1e-6},
    {"gallon|gallons|gal", Kind::Volume, 3.785411784e-3},
    {"quart|quarts|qt", Kind::Volume, 9.46352946e-4},
    {"pint|pints|pt", Kind::Volume, 4.73176473e-4},
    {"radian|radians|rad", Kind::Angle, 1.0},
    {"degree|degrees|deg", Kind::Angle, std::numbers::pi / 180.0},
    {"grad|grads|gon|grade|grades", Kind::Angle, std::numbers::pi / 200.0},
    {"arcminute|arcminutes|arcmin", Kind::Angle, std::numbers::pi / 10800.0},
    {"arcsecond|arcseconds|arcsec", Kind::Angle, std::numbers::pi / 648000.0},
    {"circle|circles|revolution|revolutions|turn|turns", Kind::Angle, 2.0 * std::numbers::pi},
    {"kilogram|kilograms|kg", Kind::Mass, 1.0},
    {"gram|grams|g", Kind::Mass, 1e-3},
    {"milligram|milligrams|mg", Kind::Mass, 1e-6},
    {"tonne|tonnes|metric ton|metric tons|t", Kind::Mass, 1e3},
    {"pound|pounds|lb|lbs", Kind::Mass, 0.45359237},
    {"ounce|ounces|oz", Kind::Mass, 0.028349523125},
    {"ton|tons|short ton|short tons", Kind::Mass, 907.18474},
    {"long ton|long tons", Kind::Mass, 1016.0469088},
    {"kelvin|k", Kind::Temperature, 1.0},
    {"celsius|centigrade|c|degc", Kind::Temperature, 1.0, 273.15},
    {"fahrenheit|f|degf", Kind::Temperature, kFahrenheitStep, 459.67 * kFahrenheitStep},
    {"rankine|r|degr", Kind::Temperature, kFahrenheitStep},
    {"second|seconds|sec|s", Kind::Time, 1.0},
    {"minute|minutes|min", Kind::Time, 60.0},
    {"hour|hours|hr|h", Kind::Time, 3600.0},
    {"day|days", Kind::Time, 86400.0},
    {"week|weeks", Kind::Time, 604800.0},
});

// Lower case, single spaces, no spaces at the ends.
std::string normalized(std::string_view name) {
    std::string text;
    for (char c : name) {
        if (c == ' ' || c == '\t') {
            if (!text.empty() && text.back() != ' ') text.push_back(' ');
        } else {
            text.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
        }
    }
    if (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

const Unit* findNamed(std::string_view name) {
    for (const Unit& unit : kUnits) {
        std::string_view names = unit.names;
        while (!names.empty()) {
            std::size_t bar = names.find('|');
            if (names.substr(0, bar) == name) return &unit;
            names = bar == std::string_view::npos ? std::string_view() : names.substr(bar + 1);
        }
    }
    return nullptr;
}

std::optional<Unit> powerOfLength(std::string_view lengthName, int power) {
    const Unit* length = findNamed(lengthName);
    if (!length || length->kind != Kind::Length) return std::nullopt;
    return Unit{{}, power == 2 ? Kind::Area : Kind::Volume, std::pow(length->factor, power)};
}

std::optional<Unit> findUnit(std::string_view given) {
    std::string name = normalized(given);
    if (const Unit* unit = findNamed(name)) return *unit;
    for (auto [prefix, power] :
         {std::pair<std::string_view, int>{"sq ", 2}, {"square ", 2}, {"cu ", 3}, {"cubic ", 3}})
        if (name.starts_with(prefix))
            return powerOfLength(std::string_view(name).substr(prefix.size()), power);
    for (auto [suffix, power] : {std::pair<std::string_view, int>{"^2", 2}, {"^3", 3}, {"2", 2}, {"3", 3}})
        if (name.ends_with(suffix))
            return powerOfLength(std::string_view(name).substr(0, name.size() - suffix.size()), power);
    return std::nullopt;
}

} // namespace

} // namespace qvad::api

extern "C" QV_API int qvutCvUnit(qv_real value, const char* fromUnit, const char* toUnit, qv_real* result) {
    using namespace qvad::api;
    return guarded([&] {
        if (!fromUnit || !toUnit || !result || !std::isfinite(value)) return refuse(HostError::BadArgument);
        std::optional<Unit> from = findUnit(fromUnit), to = findUnit(toUnit);
        if (!from || !to || from->kind != to->kind) return refuse(HostError::BadArgument);
        double converted = (value * from->factor + from->offset - to->offset) / to->factor;
        if (!std::isfinite(converted)) return refuse(HostError::BadArgument);
        *result = converted;
        return QV_NORM;
    });
}
