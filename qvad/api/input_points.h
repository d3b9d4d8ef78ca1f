#pragma once
// Points and angles as a person types them at a prompt, in the drawing's units: "x,y", "x,y,z",
// "@dx,dy[,dz]" and "@" from the last point, "dist<angle" and "@dist<angle". Typed angles count from
// ANGBASE in the ANGDIR sense, in AUNITS; typed coordinates may use any distance form the drawing reads.

#include "qvad/ge/point3d.h"

#include <optional>
#include <string_view>

namespace qvad::api {

std::optional<OdGePoint3d> parseTypedPoint(std::string_view text);
// A distance or an angle typed on its own (angle: radians counted as the user counts them).
std::optional<double> parseTypedDistance(std::string_view text);
std::optional<double> parseTypedAngle(std::string_view text);

// A typed angle (counted from ANGBASE in the ANGDIR sense) as a world angle counted counterclockwise
// from the X axis.
double worldAngleOfTyped(double typed);
// Radians into [0, 2 pi).
double withinTurn(double radians);

OdGePoint3d lastPoint();
// Every point a prompt accepts becomes the last point.
void setLastPoint(const OdGePoint3d& point);

} // namespace qvad::api
