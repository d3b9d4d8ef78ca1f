#pragma once
// The quantity tools' own settings: "XQuery.ini" beside the module file, one section per setting with
// the single key "value". Read afresh by every command.

#include <string>

namespace qvtd::quantity {

struct QuantitySettings {
    double drawingLength = 1.0;   // "Length in drawing units"
    double realWorldLength = 1.0; // "Equivalent length in real world units"
    int toClipboard = 1;
    std::string units = "mm";
    std::string precision = "0.00";
    std::string unitsList = "mm;cm;m;km";
    std::string precisionList = "0;0.0;0.00;0.000;0.0000;0.00000;0.000000;0.0000000";
    std::string areaUnitsList = "mm^2;cm^2;m^2;km^2";
    double markerRadius = 2.0;

    // Real-world units per drawing unit; 1 when the drawing-units length is 0.
    double scale() const;
    // Digits after the first '.' of the precision pattern.
    int decimals() const;
    // "%.f" or "%0.<n>f".
    std::string numberFormat() const;
    std::string format(double value) const;
    // The area unit standing at the length unit's place in the lists, else the unit with "^2".
    std::string areaUnits() const;
};

// The folder of the loaded module followed by "XQuery.ini".
std::string quantitySettingsPath();
// Missing file or section: the defaults.
QuantitySettings loadQuantitySettings(const std::string& path);
QuantitySettings loadQuantitySettings();

} // namespace qvtd::quantity
