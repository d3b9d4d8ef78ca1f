#pragma once
// What a loadable module is to the host, and the names the host binds to in its shared object.

#include "qvad/shell/OdRxObject.h"
#include "qvad/win32/windows_calls.h"

class OdRxModule : public OdRxObject {
public:
    // The shared object the module was loaded from.
    virtual HINSTANCE moduleHandle() const = 0;
    virtual OdString moduleName() const = 0;
};

// The module classes' usual shape: a module class T built from the instance handle, completed with
// the handle bookkeeping. Base is accepted for the two-parameter form modules are written against.
template <class T, class Base = T> class OdRxWin32Module : public T {
public:
    explicit OdRxWin32Module(HINSTANCE instance) : m_instance(instance) {}
    HINSTANCE moduleHandle() const override { return m_instance; }

private:
    HINSTANCE m_instance;
};

// The module protocol. A module exports these with C linkage:
//   OdRxModule* odrxCreateModuleObject(HINSTANCE& instance);
//   void odrxGetAPIVersion(int& major, int& minor, int& build, int& patch);
//   int omrxEntryPoint(int message);   // 1 load, 2 unload; returns 0
// The host refuses a module whose version is not 2.4.x.
extern "C" {
typedef OdRxModule* (*OdrxCreateModuleObjectFunction)(HINSTANCE& instance);
typedef void (*OdrxGetAPIVersionFunction)(int& major, int& minor, int& build, int& patch);
typedef int (*OmrxEntryPointFunction)(int message);
}
#define QV_MODULE_LOAD 1
#define QV_MODULE_UNLOAD 2

// The host's load gate, exported by the host with C linkage under the name "CheckCmdLoadAsName": nonzero
// when the command group may be registered.
extern "C" typedef int (*CheckCmdLoadAsNameFunction)(const char* group);
