#include "tooldeck/module/Arx2DrxModule.h"

namespace qvtd {

OdRxModule* moduleObject(HINSTANCE& instance) {
    static QvTooldeckModule* module = nullptr;
    if (!module) {
        module = new QvTooldeckModule(instance);
        // The module's own reference: a host that releases its smart pointers never deletes the object.
        module->addRef();
        instance = nullptr;
    }
    return module;
}

} // namespace qvtd
