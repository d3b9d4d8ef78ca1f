#pragma once
// Decimal numbers as the host prints them: fixed digits after the point, with the zero suppression
// that DIMZIN asks for, independent of the C locale.

#include <string>

namespace qvad::api {

// DIMZIN bits that apply to decimal numbers.
constexpr int kSuppressLeadingZero = 4;   // "0.5" -> ".5"
constexpr int kSuppressTrailingZeros = 8; // "1.500" -> "1.5", "2.000" -> "2"

// |value| would be printed the same way; a value that rounds to zero loses its minus sign.
std::string formatFixed(double value, int precision, int dimzin);

// Mantissa and exponent, "1.2346E+01", with trailing zeros of the mantissa suppressed as above.
std::string formatScientific(double value, int precision, int dimzin);

} // namespace qvad::api
