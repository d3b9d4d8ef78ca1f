#include "qvad/win32/module_paths.h"

#include <algorithm>
#include <cctype>
#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

namespace qvad::win32 {
namespace {

std::string folderOf(std::string_view path) {
    auto slash = path.find_last_of('/');
    return slash == std::string_view::npos ? std::string() : std::string(path.substr(0, slash + 1));
}

} // namespace

std::string linuxModuleName(std::string_view windowsName) {
    std::string name(windowsName);
    std::replace(name.begin(), name.end(), '\\', '/');
    if (name.size() >= 4) {
        std::string ending = name.substr(name.size() - 4);
        std::transform(ending.begin(), ending.end(), ending.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        if (ending == ".dll") name.replace(name.size() - 4, 4, ".so");
    }
    return name;
}

std::string folderOfAddress(const void* address) {
    Dl_info info{};
    if (!address || dladdr(address, &info) == 0 || !info.dli_fname || !*info.dli_fname) return {};
    std::string path = info.dli_fname;
    // The main program may be reported by the name it was started with; its real folder is surer.
    if (path.find('/') == std::string::npos) return {};
    char resolved[PATH_MAX];
    if (realpath(path.c_str(), resolved)) path = resolved;
    return folderOf(path);
}

std::string executablePath() {
    char buffer[PATH_MAX];
    ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (length <= 0) return {};
    return std::string(buffer, static_cast<std::size_t>(length));
}

std::string executableFolder() {
    return folderOf(executablePath());
}

std::vector<std::string> moduleSearchFolders(const void* callerAddress) {
    std::vector<std::string> folders;
    for (std::string folder :
         {folderOfAddress(callerAddress),
          folderOfAddress(reinterpret_cast<const void*>(&moduleSearchFolders)), executableFolder()}) {
        if (!folder.empty() && std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(std::move(folder));
    }
    return folders;
}

} // namespace qvad::win32
