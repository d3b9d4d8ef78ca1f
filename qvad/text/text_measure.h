#pragma once

#include <string_view>

namespace qvad::text {

class FontFace;

// Extents of a run of text along its baseline, in units of the text height (cap height).
struct RunExtent {
    double width = 0.0;     // sum of advances
    double inkBottom = 0.0; // lowest ink, negative below the baseline; 0 when there is no ink
    double inkTop = 0.0;    // highest ink; 0 when there is no ink
    bool hasInk = false;
};

// Measures characters with the main font; a character it lacks is taken from the big font, then from
// the fallback font, and one nothing draws counts as a square of the text height (East Asian text).
RunExtent measureRun(std::u32string_view text, const FontFace* mainFont, const FontFace* bigFont);

} // namespace qvad::text
