#include "tooldeck/commands/cleanup/quantity_settings.h"

#include "qvad/win32/windows_calls.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace qvtd::quantity {

namespace {

constexpr DWORD kReadBuffer = 256;

std::string readValue(const char* section, const char* defaultText, const std::string& path) {
    char buffer[kReadBuffer] = {};
    GetPrivateProfileStringA(section, "value", defaultText, buffer, kReadBuffer, path.c_str());
    return buffer;
}

double readReal(const char* section, const char* defaultText, const std::string& path) {
    return std::strtod(readValue(section, defaultText, path).c_str(), nullptr);
}

std::vector<std::string> splitList(const std::string& list) {
    std::vector<std::string> items;
    size_t start = 0;
    while (start <= list.size()) {
        size_t end = list.find(';', start);
        if (end == std::string::npos) end = list.size();
        items.push_back(list.substr(start, end - start));
        start = end + 1;
    }
    return items;
}

} // namespace

double QuantitySettings::scale() const {
    return drawingLength == 0.0 ? 1.0 : realWorldLength / drawingLength;
}

int QuantitySettings::decimals() const {
    size_t point = precision.find('.');
    return point == std::string::npos ? 0 : static_cast<int>(precision.size() - point - 1);
}

std::string QuantitySettings::numberFormat() const {
    int n = decimals();
    if (n == 0) return "%.f";
    char format[32];
    std::snprintf(format, sizeof format, "%%0.%df", n);
    return format;
}

std::string QuantitySettings::format(double value) const {
    char text[512];
    std::snprintf(text, sizeof text, numberFormat().c_str(), value);
    return text;
}

std::string QuantitySettings::areaUnits() const {
    std::vector<std::string> lengths = splitList(unitsList);
    std::vector<std::string> areas = splitList(areaUnitsList);
    for (size_t i = 0; i < lengths.size() && i < areas.size(); ++i)
        if (lengths[i] == units && !areas[i].empty()) return areas[i];
    return units + "^2";
}

std::string quantitySettingsPath() {
    char file[1024] = {};
    GetModuleFileNameA(GetModuleHandleA("QvTooldeck.omx"), file, sizeof file);
    std::string path = file;
    size_t separator = path.find_last_of("/\\");
    path = separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
    return path + "XQuery.ini";
}

QuantitySettings loadQuantitySettings(const std::string& path) {
    QuantitySettings settings;
    settings.drawingLength = readReal("Length in drawing units", "1.0", path);
    settings.realWorldLength = readReal("Equivalent length in real world units", "1.0", path);
    settings.toClipboard = static_cast<int>(GetPrivateProfileIntA("To clipboard", "value", 1, path.c_str()));
    settings.units = readValue("Units", "mm", path);
    settings.precision = readValue("Precision", "0.00", path);
    settings.unitsList = readValue("Units list", "mm;cm;m;km", path);
    settings.precisionList =
        readValue("Precision list", "0;0.0;0.00;0.000;0.0000;0.00000;0.000000;0.0000000", path);
    settings.areaUnitsList = readValue("Area units list", "mm^2;cm^2;m^2;km^2", path);
    settings.markerRadius = readReal("radio of circle which is drawed by selecting ent", "2.0", path);
    return settings;
}

QuantitySettings loadQuantitySettings() {
    return loadQuantitySettings(quantitySettingsPath());
}

} // namespace qvtd::quantity
