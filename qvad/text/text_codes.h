#pragma once

#include <string>
#include <string_view>

namespace qvad::text {

// Code points of UTF-8 text; a byte that starts no valid sequence stands for itself (Latin-1), so text
// from older drawings still measures.
std::u32string decodeUtf8(std::string_view text);
std::string encodeUtf8(std::u32string_view text);

// The characters a single-line text shows: the control codes %%d (degree), %%p (plus-minus),
// %%c (diameter), %%% and %%nnn are replaced, the underline and overline toggles %%u and %%o vanish,
// and \U+XXXX becomes its character.
std::u32string displayedText(std::string_view textString);

} // namespace qvad::text
