#pragma once
// The computation behind the NesterFrame export: the frame a nesting layout starts from.

namespace qvtd {

// coordinates holds pointCount points of dimension (2 or 3) reals each. Writes into extremes[0..3] the
// indices of the points with the smallest x, smallest y, largest x and largest y (the first such point
// on ties), so that the caller can read the frame and the points that span it. Returns 4, or 0 and
// writes nothing when the arguments cannot describe points.
int nestingFrame(int pointCount, int dimension, const double* coordinates, int* extremes);

} // namespace qvtd
