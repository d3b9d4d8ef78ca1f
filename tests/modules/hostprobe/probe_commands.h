#pragma once
// The probe's commands, one file each. Every one reaches the host only through its exported interface.

namespace hostprobe {

void probePoint();
void probeSelect();
void probePick();
void probeCmd();
void probeEdit();

} // namespace hostprobe
