// rtcur, rtcur0, rtcur45, rtcur1: orthogonal mode and the angle it locks to.
//   rtcur    toggles ORTHOMODE, keeping the angle
//   rtcur0   ortho on at 0 degrees
//   rtcur45  ortho on at 45 degrees
//   rtcur1   ortho off, angle back to 0 degrees

#include "qvad/api/qvad_api.h"
#include "tooldeck/host/host_variables.h"
#include "tooldeck/module/command_handlers.h"

#include <numbers>

namespace qvtd::cmd {

namespace {

void setSnapAngle(double radians) {
    if (qv_resbuf* angle = qvutNewRb(QV_RTREAL)) {
        angle->resval.rreal = radians;
        qvedSetVar("SNAPANG", angle);
        qvutRelRb(angle);
    }
}

void setOrtho(bool on, double degrees) {
    setShortVar("ORTHOMODE", on ? 1 : 0);
    setSnapAngle(degrees * std::numbers::pi / 180.0);
    if (on)
        qvutPrintf("\nOrtho on at %g degrees.\n", degrees);
    else
        qvutPrintf("\nOrtho off.\n");
    qvedRetVoid();
}

} // namespace

void cmd_rtcur() {
    bool on = getShortVar("ORTHOMODE") == 0;
    setShortVar("ORTHOMODE", on ? 1 : 0);
    qvutPrintf(on ? "\nOrtho on.\n" : "\nOrtho off.\n");
    qvedRetVoid();
}

void cmd_rtcur0() {
    setOrtho(true, 0.0);
}

void cmd_rtcur45() {
    setOrtho(true, 45.0);
}

void cmd_rtcur1() {
    setOrtho(false, 0.0);
}

} // namespace qvtd::cmd
