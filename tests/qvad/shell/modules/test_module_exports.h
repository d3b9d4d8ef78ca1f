#pragma once
// What the loader's test modules share: the export macro and a module class.

#include "qvad/shell/OdRxModule.h"

#define TEST_MODULE_EXPORT extern "C" __attribute__((visibility("default")))

class TestModule : public OdRxModule {
public:
    OdString moduleName() const override { return "test module"; }
};

// The one module object, holding a reference of its own so that the host's release never deletes it.
inline OdRxModule* testModuleObject(HINSTANCE& instance) {
    static OdRxModule* module = nullptr;
    if (!module) {
        module = new OdRxWin32Module<TestModule>(instance);
        module->addRef();
        instance = nullptr;
    }
    return module;
}
