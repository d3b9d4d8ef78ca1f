#include "qvad/shell/module_loader.h"

#include "qvad/win32/module_paths.h"

#include <algorithm>
#include <dlfcn.h>
#include <exception>
#include <filesystem>

namespace qvad::shell {
namespace {

constexpr int kRequiredMajor = 2;
constexpr int kRequiredMinor = 4;

template <class Function> Function lookUp(void* handle, const char* name) {
    return reinterpret_cast<Function>(dlsym(handle, name));
}

} // namespace

ModuleLoader::ModuleLoader(std::ostream& errors) : m_errors(errors) {}

ModuleLoader::~ModuleLoader() {
    unloadAll();
}

std::string ModuleLoader::defaultFolder() {
    return qvad::win32::executableFolder() + "../lib/qvad/modules/";
}

bool ModuleLoader::refuse(const std::string& path, const std::string& reason) {
    m_errors << "qvad: cannot load module " << path << ": " << reason << "\n";
    m_errors.flush();
    return false;
}

bool ModuleLoader::load(const std::string& path) {
    for (const Loaded& loaded : m_loaded)
        if (loaded.path == path) return refuse(path, "it is already loaded");
    // A bare name would send dlopen searching the library path; a module is always a file named as given.
    std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const char* reason = dlerror();
        return refuse(path, reason ? reason : "the shared object cannot be opened");
    }
    auto createObject = lookUp<OdrxCreateModuleObjectFunction>(handle, "odrxCreateModuleObject");
    auto getVersion = lookUp<OdrxGetAPIVersionFunction>(handle, "odrxGetAPIVersion");
    auto entryPoint = lookUp<OmrxEntryPointFunction>(handle, "omrxEntryPoint");
    const char* missing = !createObject ? "odrxCreateModuleObject"
                          : !getVersion ? "odrxGetAPIVersion"
                          : !entryPoint ? "omrxEntryPoint"
                                        : nullptr;
    if (missing) {
        dlclose(handle);
        return refuse(path, std::string("it does not export ") + missing);
    }
    OdRxModule* module = nullptr;
    try {
        int major = 0, minor = 0, build = 0, patch = 0;
        getVersion(major, minor, build, patch);
        if (major != kRequiredMajor || minor != kRequiredMinor) {
            dlclose(handle);
            return refuse(path, "interface version " + std::to_string(major) + "." + std::to_string(minor) +
                                    "." + std::to_string(build) + "." + std::to_string(patch) +
                                    " is not 2.4.x");
        }
        HINSTANCE instance = handle;
        module = createObject(instance);
        if (!module) {
            dlclose(handle);
            return refuse(path, "it made no module object");
        }
        module->addRef();
        entryPoint(QV_MODULE_LOAD);
    } catch (const std::exception& e) {
        // Whatever it registered before failing stays: removing it would need the module's own word.
        if (module) m_loaded.push_back({path, handle, module, nullptr});
        return refuse(path, std::string("its load message failed: ") + e.what());
    } catch (...) {
        if (module) m_loaded.push_back({path, handle, module, nullptr});
        return refuse(path, "its load message failed");
    }
    m_loaded.push_back({path, handle, module, entryPoint});
    return true;
}

int ModuleLoader::loadFolder(const std::string& folder) {
    std::error_code error;
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == ".omx" && entry.is_regular_file(error)) paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    int count = 0;
    for (const std::string& path : paths) count += load(path) ? 1 : 0;
    return count;
}

void ModuleLoader::unloadAll() {
    while (!m_loaded.empty()) {
        Loaded loaded = m_loaded.back();
        m_loaded.pop_back();
        try {
            if (loaded.entryPoint) loaded.entryPoint(QV_MODULE_UNLOAD);
        } catch (...) {
            m_errors << "qvad: module " << loaded.path << " failed while unloading\n";
        }
        try {
            loaded.module->release();
        } catch (...) {
        }
    }
}

std::vector<std::string> ModuleLoader::loadedPaths() const {
    std::vector<std::string> paths;
    for (const Loaded& loaded : m_loaded) paths.push_back(loaded.path);
    return paths;
}

} // namespace qvad::shell
