// Says it was built for interface 2.3: the host must refuse it before sending any message.

#include "qvad/shell/OdEdCommandStack.h"
#include "test_module_exports.h"

namespace {
void staleCommand() {}
} // namespace

TEST_MODULE_EXPORT OdRxModule* odrxCreateModuleObject(HINSTANCE& instance) {
    return testModuleObject(instance);
}

TEST_MODULE_EXPORT void odrxGetAPIVersion(int& major, int& minor, int& build, int& patch) {
    major = 2;
    minor = 3;
    build = 0;
    patch = 0;
}

TEST_MODULE_EXPORT int omrxEntryPoint(int message) {
    if (message == QV_MODULE_LOAD)
        odedRegCmds()->addCommand("LoaderStale", "stalecmd", "stalecmd", 0x10000000, staleCommand);
    return 0;
}
