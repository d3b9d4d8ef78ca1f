#pragma once
// The host's one-line answers to a bad answer at a prompt.

namespace qvad::api::messages {

inline constexpr const char* kPointRequired = "Point or option keyword required.";
inline constexpr const char* kDistanceRequired =
    "Requires numeric distance, second point, or option keyword.";
inline constexpr const char* kDistanceOrTwoPoints =
    "Requires numeric distance, two points, or option keyword.";
inline constexpr const char* kAngleRequired =
    "Requires valid numeric angle, second point, or option keyword.";
inline constexpr const char* kAngleOrTwoPoints =
    "Requires valid numeric angle, two points, or option keyword.";
inline constexpr const char* kRealRequired = "Requires numeric value or option keyword.";
inline constexpr const char* kIntegerRequired = "Requires an integer value or option keyword.";
inline constexpr const char* kNonzero = "Value must be nonzero.";
inline constexpr const char* kPositive = "Value must be positive.";
inline constexpr const char* kInvalidKeyword = "Invalid option keyword.";
inline constexpr const char* kTooLong = "Answer is too long.";
inline constexpr const char* kSecondPoint = "\nSpecify second point: ";

} // namespace qvad::api::messages
