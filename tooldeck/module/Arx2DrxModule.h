#pragma once
// The module object the host receives from odrxCreateModuleObject.

#include "qvad/shell/OdRxModule.h"

namespace qvtd {

inline constexpr const char* kModuleName = "QvTooldeck";

class Arx2DrxModule : public OdRxModule {
public:
    OdString moduleName() const override { return OdString(kModuleName); }
};

using QvTooldeckModule = OdRxWin32Module<Arx2DrxModule, Arx2DrxModule>;

// The first call builds the object from instance and takes the handle over (instance becomes null);
// later calls return the same object and leave instance alone. The object lives until the process ends.
OdRxModule* moduleObject(HINSTANCE& instance);

} // namespace qvtd
