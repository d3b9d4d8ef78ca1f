// Has no entry point: the host must refuse it.

#include "test_module_exports.h"

TEST_MODULE_EXPORT OdRxModule* odrxCreateModuleObject(HINSTANCE& instance) {
    return testModuleObject(instance);
}

TEST_MODULE_EXPORT void odrxGetAPIVersion(int& major, int& minor, int& build, int& patch) {
    major = 2;
    minor = 4;
    build = 2;
    patch = 0;
}
