#pragma once

#include "qvad/ge/vector2d.h"

// Angles are radians, measured counter-clockwise from the x axis.

// The same direction as angle, brought into [0, 2pi).
double normalizeAngle(double angle);

// Direction of v in [0, 2pi); the zero vector has angle 0.
double angleOf(const OdGeVector2d& v);

// How far an arc turns going counter-clockwise from startAngle to endAngle, in [0, 2pi). Equal angles
// give 0: a full turn cannot be told apart from no turn by two angles alone.
double arcIncludedAngle(double startAngle, double endAngle);
