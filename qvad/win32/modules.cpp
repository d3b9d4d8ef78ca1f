// LoadLibraryA, GetModuleHandleA, GetProcAddress, GetModuleFileNameA, FreeLibrary over the dynamic loader.

#include "qvad/win32/module_paths.h"
#include "qvad/win32/windows_calls.h"

#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <string>
#include <strings.h>
#include <unistd.h>

namespace {

using qvad::win32::linuxModuleName;

bool hasFolder(const std::string& name) {
    return name.find('/') != std::string::npos;
}

// Tries the search folders, then the system loader's own search; flags may ask only for loaded modules.
void* openModule(const char* windowsName, const void* caller, int flags) {
    if (!windowsName || !*windowsName) return nullptr;
    std::string name = linuxModuleName(windowsName);
    if (hasFolder(name)) return dlopen(name.c_str(), flags);
    for (const std::string& folder : qvad::win32::moduleSearchFolders(caller)) {
        std::string path = folder + name;
        if (access(path.c_str(), F_OK) != 0) continue;
        if (void* handle = dlopen(path.c_str(), flags)) return handle;
    }
    return dlopen(name.c_str(), flags);
}

} // namespace

extern "C" {

QV_WIN32_API HMODULE LoadLibraryA(LPCSTR fileName) {
    return openModule(fileName, __builtin_extract_return_addr(__builtin_return_address(0)),
                      RTLD_NOW | RTLD_LOCAL);
}

QV_WIN32_API BOOL FreeLibrary(HMODULE module) {
    return module && dlclose(module) == 0 ? TRUE : FALSE;
}

QV_WIN32_API HMODULE GetModuleHandleA(LPCSTR moduleName) {
    // The host program's own name stands for the program with the libraries it started with, so that
    // the host's exports (libqvad's) are found through it.
    if (!moduleName || strcasecmp(moduleName, "qvad.exe") == 0) return dlopen(nullptr, RTLD_NOW);
    void* handle = openModule(moduleName, __builtin_extract_return_addr(__builtin_return_address(0)),
                              RTLD_NOW | RTLD_NOLOAD);
    // A module handle is borrowed on Windows: give back the reference RTLD_NOLOAD took.
    if (handle) dlclose(handle);
    return handle;
}

QV_WIN32_API FARPROC GetProcAddress(HMODULE module, LPCSTR procName) {
    // Names below 0x10000 are ordinals, which shared objects do not have.
    if (!module || reinterpret_cast<std::uintptr_t>(procName) < 0x10000) return nullptr;
    return dlsym(module, procName);
}

QV_WIN32_API DWORD GetModuleFileNameA(HMODULE module, LPSTR fileName, DWORD size) {
    if (!fileName || size == 0) return 0;
    std::string path;
    link_map* map = nullptr;
    if (module && dlinfo(module, RTLD_DI_LINKMAP, &map) == 0 && map && map->l_name && *map->l_name)
        path = map->l_name;
    else if (!module || map)
        path = qvad::win32::executablePath(); // the main program's link map has no name
    if (path.empty()) return 0;
    if (path.size() >= size) {
        std::memcpy(fileName, path.data(), size - 1);
        fileName[size - 1] = '\0';
        return size;
    }
    std::memcpy(fileName, path.c_str(), path.size() + 1);
    return static_cast<DWORD>(path.size());
}

} // extern "C"
