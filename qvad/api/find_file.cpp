// Finds a file the way the host looks for support files: the name as given (absolute, or from the
// working folder), then the open drawing's folder, each folder of SRCHPATH (';' separated) in order,
// and last the host's data folder EXEDIR. Both '/' and '\' separate folders in names and paths.

#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_access.h"
#include "qvad/api/sysvars_session.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace qvad::api {

namespace {

std::string withForwardSlashes(std::string text) {
    std::ranges::replace(text, '\\', '/');
    return text;
}

bool isFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

std::vector<fs::path> searchFolders() {
    std::vector<fs::path> folders;
    SysVarSession& session = SysVarSession::current();
    if (!session.drawingPath().empty()) folders.emplace_back(session.drawingFolder());
    std::string searchPath = withForwardSlashes(stringSysVar("SRCHPATH"));
    for (std::size_t start = 0; start <= searchPath.size();) {
        std::size_t end = std::min(searchPath.find(';', start), searchPath.size());
        std::string folder = searchPath.substr(start, end - start);
        folder.erase(0, folder.find_first_not_of(' '));
        folder.erase(folder.find_last_not_of(' ') + 1);
        if (!folder.empty()) folders.emplace_back(folder);
        start = end + 1;
    }
    folders.emplace_back(session.exeDir());
    return folders;
}

std::optional<fs::path> findFile(const std::string& given) {
    fs::path name(withForwardSlashes(given));
    std::error_code error;
    if (isFile(name)) return fs::absolute(name, error).lexically_normal();
    if (name.is_absolute()) return std::nullopt;
    for (const fs::path& folder : searchFolders())
        if (fs::path candidate = folder / name; isFile(candidate))
            return fs::absolute(candidate, error).lexically_normal();
    return std::nullopt;
}

} // namespace

} // namespace qvad::api

extern "C" QV_API int qvedFindFile(const char* name, char* result, size_t resultSize) {
    using namespace qvad::api;
    return guarded([&] {
        if (!name || !*name || !result) return refuse(HostError::BadArgument);
        std::optional<fs::path> found = findFile(name);
        if (!found || copyTextOut(found->string(), result, resultSize) != QV_NORM)
            return refuse(HostError::BadArgument);
        return QV_NORM;
    });
}
