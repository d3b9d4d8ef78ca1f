#pragma once
// Options of the duplicate and overlap clean-up. They live as long as the module stays loaded: the
// dialog's OK changes them, nothing writes them to a file, and every load starts from the defaults.

namespace qvtd::overkill {

struct OverkillSettings {
    double tolerance = 0.000001;
    bool compareLayer = true;
    bool compareLinetype = true;
    bool compareColor = true;
    bool compareLineweight = true;
    bool comparePlotStyle = true;
    bool processPolylines = true;
    bool combineOverlapping = true;
    bool combineEndToEnd = true;
};

// The module-wide options.
OverkillSettings& moduleSettings();
// Back to the defaults (the module calls it when it is loaded).
void resetModuleSettings();

// The tolerance every comparison uses: a tolerance of 0 still allows for rounding.
inline double comparisonTolerance(const OverkillSettings& settings) {
    return settings.tolerance > 1e-10 ? settings.tolerance : 1e-10;
}

} // namespace qvtd::overkill
