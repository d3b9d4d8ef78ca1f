// The module's face to the host: the three exports of the module protocol and the command group.

#include "probe_commands.h"
#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/OdRxModule.h"

#define HOSTPROBE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

const char* const kGroup = "HOSTPROBE";
// The flags every module command is registered with.
const std::int32_t kCommandFlags = 0x10000000;

struct ProbeCommand {
    const char* name;
    OdEdCommandFunction handler;
};

const ProbeCommand kCommands[] = {
    {"PROBEPOINT", hostprobe::probePoint}, {"PROBESELECT", hostprobe::probeSelect},
    {"PROBEPICK", hostprobe::probePick},   {"PROBECMD", hostprobe::probeCmd},
    {"PROBEEDIT", hostprobe::probeEdit},
};

class HostProbeModule : public OdRxModule {
public:
    OdString moduleName() const override { return "hostprobe"; }
};

OdRxModule* g_module = nullptr;

} // namespace

HOSTPROBE_EXPORT OdRxModule* odrxCreateModuleObject(HINSTANCE& instance) {
    if (!g_module) {
        g_module = new OdRxWin32Module<HostProbeModule>(instance);
        g_module->addRef(); // the module object lives until the process ends
        instance = nullptr;
    }
    return g_module;
}

HOSTPROBE_EXPORT void odrxGetAPIVersion(int& major, int& minor, int& build, int& patch) {
    major = 2;
    minor = 4;
    build = 2;
    patch = 0;
}

HOSTPROBE_EXPORT int omrxEntryPoint(int message) {
    try {
        OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
        if (!stack) return 0;
        if (message == QV_MODULE_LOAD) {
            for (const ProbeCommand& command : kCommands) {
                stack->addCommand(kGroup, command.name, command.name, kCommandFlags, command.handler);
            }
        } else if (message == QV_MODULE_UNLOAD) {
            stack->removeGroup(kGroup);
        }
    } catch (...) {
        // Nothing may cross the module boundary; a probe that did not register shows in --commands.
    }
    return 0;
}
