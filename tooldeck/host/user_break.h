#pragma once
// A loop that runs host commands step by step stops when the user cancels a step or presses break.

namespace qvtd {

// status: what the step's host call returned. True when the loop must stop.
bool stepCancelled(int status);

// The status to leave with: QV_CANCEL for a cancelled step, otherwise status unchanged.
int stepStatus(int status);

} // namespace qvtd
