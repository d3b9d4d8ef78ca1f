// The only names the host binds to in the module file.

#include "qvad/shell/OdRxModule.h"
#include "tooldeck/module/Arx2DrxModule.h"
#include "tooldeck/module/nester_frame.h"
#include "tooldeck/module/registration.h"

#define QVTD_EXPORT __attribute__((visibility("default")))

extern "C" {

QVTD_EXPORT int omrxEntryPoint(int message) {
    // Nothing may escape into the host; a failure half-way leaves what was registered so far.
    try {
        if (message == QV_MODULE_LOAD)
            qvtd::loadModule();
        else if (message == QV_MODULE_UNLOAD)
            qvtd::removeCommandGroups();
    } catch (...) {
    }
    return 0;
}

QVTD_EXPORT OdRxModule* odrxCreateModuleObject(HINSTANCE& instance) {
    try {
        return qvtd::moduleObject(instance);
    } catch (...) {
        return nullptr;
    }
}

QVTD_EXPORT void odrxGetAPIVersion(int& major, int& minor, int& build, int& patch) {
    major = 2;
    minor = 4;
    build = 2;
    patch = 0;
}

// Forwards unchanged; what it computes is described with qvtd::nestingFrame.
QVTD_EXPORT int NesterFrame(int pointCount, int dimension, double* coordinates, int* extremes) {
    return qvtd::nestingFrame(pointCount, dimension, coordinates, extremes);
}

} // extern "C"
