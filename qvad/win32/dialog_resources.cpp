#include "qvad/win32/dialog_resources.h"

#include "qvad/win32/resource_library.h"

#include <dlfcn.h>

namespace qvad::win32 {
namespace {

HMODULE g_dialogModule = nullptr;

} // namespace

void setDialogResourceModule(HMODULE module) {
    g_dialogModule = module;
}

HMODULE dialogResourceModule() {
    return g_dialogModule;
}

std::optional<std::string> findDialogTemplate(HMODULE module, unsigned id) {
    if (!module) module = g_dialogModule;
    void* handle = module ? module : dlopen(nullptr, RTLD_NOW);
    auto table = reinterpret_cast<QvResourceDialogsFunction>(dlsym(handle, QV_RESOURCE_DIALOGS_SYMBOL));
    if (!module) dlclose(handle);
    if (!table) return std::nullopt;
    unsigned count = 0;
    const QvResourceDialog* dialogs = table(&count);
    for (unsigned i = 0; dialogs && i < count; ++i)
        if (dialogs[i].id == id && dialogs[i].templateText) return std::string(dialogs[i].templateText);
    return std::nullopt;
}

} // namespace qvad::win32
