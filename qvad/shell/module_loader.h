#pragma once
// Loads modules into the host: opens the shared object, checks its exports and interface version,
// creates its module object and sends it the load message; at the end sends the unload message and
// lets the module object go. A module that cannot be loaded is reported and left out.

#include "qvad/shell/OdRxModule.h"

#include <ostream>
#include <string>
#include <vector>

namespace qvad::shell {

class ModuleLoader {
public:
    explicit ModuleLoader(std::ostream& errors);
    ~ModuleLoader(); // unloads whatever is still loaded
    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;

    // False (and "qvad: cannot load module PATH: reason" written to errors) when the module is refused.
    bool load(const std::string& path);
    // Every *.omx of the folder, in name order; how many loaded.
    int loadFolder(const std::string& folder);
    // Unload messages in the reverse order of loading; the shared objects stay mapped, since the
    // command stack or the resource libraries may still hold their addresses.
    void unloadAll();

    std::vector<std::string> loadedPaths() const;

    // Where modules are found by default: lib/qvad/modules/ beside the executable's bin/ folder, which
    // is the same place in the build tree (build/bin, build/lib) and after installation (prefix/bin,
    // prefix/lib).
    static std::string defaultFolder();

private:
    struct Loaded {
        std::string path;
        void* handle = nullptr;
        OdRxModule* module = nullptr;
        OmrxEntryPointFunction entryPoint = nullptr;
    };
    bool refuse(const std::string& path, const std::string& reason);

    std::ostream& m_errors;
    std::vector<Loaded> m_loaded;
};

} // namespace qvad::shell
