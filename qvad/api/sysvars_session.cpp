#include "qvad/api/sysvars_session.h"

#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace qvad::api {

namespace {

std::string defaultExeDir() {
    std::error_code error;
    fs::path executable = fs::read_symlink("/proc/self/exe", error);
    if (error) return withTrailingSlash(fs::current_path(error).string());
    fs::path data = (executable.parent_path().parent_path() / "share" / "qvad").lexically_normal();
    return withTrailingSlash(data.string());
}

std::string homeFolder() {
    if (const char* home = std::getenv("HOME"); home && *home) return home;
    if (const passwd* entry = getpwuid(getuid()); entry && entry->pw_dir) return entry->pw_dir;
    return "/tmp";
}

} // namespace

std::string withTrailingSlash(std::string folder) {
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    if (folder.empty() || folder.back() != '/') folder.push_back('/');
    return folder;
}

SysVarSession& SysVarSession::current() {
    static SysVarSession session;
    return session;
}

SysVarValue SysVarSession::value(const SysVarDef& def) {
    auto it = m_values.find(def.name);
    return it != m_values.end() ? it->second : parseInitialValue(def);
}

void SysVarSession::setValue(const SysVarDef& def, SysVarValue value) {
    m_values.insert_or_assign(std::string(def.name), std::move(value));
}

void SysVarSession::reset() {
    m_values.clear();
    m_exeDir.clear();
    m_drawingPath.clear();
}

std::string SysVarSession::exeDir() {
    if (m_exeDir.empty()) m_exeDir = defaultExeDir();
    return m_exeDir;
}

void SysVarSession::setExeDir(std::string folder) {
    m_exeDir = folder.empty() ? std::string() : withTrailingSlash(std::move(folder));
}

std::string SysVarSession::appDataDir() {
    // Relative values of XDG_CONFIG_HOME are to be ignored, as the base-directory rules say.
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    fs::path base = xdg && *xdg == '/' ? fs::path(xdg) : fs::path(homeFolder()) / ".config";
    fs::path folder = base / "qvad";
    std::error_code ignored; // an unwritable home shows when the settings are saved, not here
    fs::create_directories(folder, ignored);
    return withTrailingSlash(folder.string());
}

std::string SysVarSession::drawingName() const {
    if (m_drawingPath.empty()) return "Drawing1.dxf";
    return fs::path(m_drawingPath).filename().string();
}

std::string SysVarSession::drawingFolder() const {
    std::error_code error;
    fs::path folder = m_drawingPath.empty() ? fs::current_path(error)
                                            : fs::absolute(fs::path(m_drawingPath), error).parent_path();
    return withTrailingSlash(folder.string());
}

} // namespace qvad::api
