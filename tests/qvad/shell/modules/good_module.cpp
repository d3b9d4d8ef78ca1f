// Registers "alphacmd" in group "LoaderAlpha" and "betacmd" in "LoaderBeta", asking the host gate about
// each group as a real module does, and removes both groups on unload.

#include "qvad/shell/OdEdCommandStack.h"
#include "test_module_exports.h"

namespace {

void alphaCommand() {}
void betaCommand() {}

bool groupPermitted(const char* group) {
    auto gate = reinterpret_cast<CheckCmdLoadAsNameFunction>(
        GetProcAddress(GetModuleHandleA("qvad.exe"), "CheckCmdLoadAsName"));
    return !gate || gate(group) != 0;
}

} // namespace

TEST_MODULE_EXPORT OdRxModule* odrxCreateModuleObject(HINSTANCE& instance) {
    return testModuleObject(instance);
}

TEST_MODULE_EXPORT void odrxGetAPIVersion(int& major, int& minor, int& build, int& patch) {
    major = 2;
    minor = 4;
    build = 2;
    patch = 0;
}

TEST_MODULE_EXPORT int omrxEntryPoint(int message) {
    if (message == QV_MODULE_LOAD) {
        if (groupPermitted("LoaderAlpha"))
            odedRegCmds()->addCommand("LoaderAlpha", "alphacmd", "alphacmd", 0x10000000, alphaCommand);
        if (groupPermitted("LoaderBeta"))
            odedRegCmds()->addCommand("LoaderBeta", "betacmd", "betalocal", 0x10000000, betaCommand);
    } else if (message == QV_MODULE_UNLOAD) {
        odedRegCmds()->removeGroup("LoaderAlpha");
        odedRegCmds()->removeGroup("LoaderBeta");
    }
    return 0;
}
