#pragma once
// The running total of the quantity tools: the host's user real "USERR5", saved with the drawing.

namespace qvtd::quantity {

// The host's status; total is set only on QV_NORM.
int readRunningTotal(double& total);
int writeRunningTotal(double total);

} // namespace qvtd::quantity
