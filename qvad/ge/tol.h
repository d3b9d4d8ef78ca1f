#pragma once

// How close two points or two directions must be to count as the same. Geometry from drawings carries
// rounding from every editing step, so exact comparisons would split what the drafter sees as one point.
class OdGeTol {
public:
    static constexpr double kDefault = 1e-10;

    constexpr OdGeTol(double tolerance = kDefault) : m_equalPoint(tolerance), m_equalVector(tolerance) {}
    constexpr OdGeTol(double equalPoint, double equalVector)
        : m_equalPoint(equalPoint), m_equalVector(equalVector) {}

    // Largest distance at which two points are still equal.
    constexpr double equalPoint() const { return m_equalPoint; }
    // Largest difference of two vectors (or of two unit directions) at which they are still equal.
    constexpr double equalVector() const { return m_equalVector; }

    constexpr void setEqualPoint(double tolerance) { m_equalPoint = tolerance; }
    constexpr void setEqualVector(double tolerance) { m_equalVector = tolerance; }

private:
    double m_equalPoint;
    double m_equalVector;
};

// The tolerance every comparison uses when the caller names none. It is constant on purpose: a setting
// that any caller could change would silently alter comparisons made elsewhere.
inline constexpr OdGeTol kGeDefaultTol{};
