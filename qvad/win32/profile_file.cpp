#include "qvad/win32/profile_file.h"

#include "qvad/dxf/file_save.h"
#include "qvad/win32/profile_syntax.h"

// Text stays in the host code page, byte for byte; no wide-character conversion is wanted.
#define SI_NO_CONVERSION
// Debian ships the template bodies behind this switch; instantiating them here needs no library.
#define SI_IMPLEMENTATION
#include <SimpleIni.h>
#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/file.h>
#include <unistd.h>

namespace qvad::win32 {

struct ProfileFile::Impl {
    CSimpleIniA ini;
    bool rewritable = true;
    std::string trailingComments;
    Impl() : ini(false, false, false) {
        // Windows writes "key=value" and reads quotes as part of the text it strips itself.
        ini.SetSpaces(false);
        ini.SetQuotes(false);
    }
};

bool ProfileFile::load(const std::string& path) {
    m_impl = std::make_shared<Impl>();
    std::ifstream in(path, std::ios::binary);
    if (!in) return access(path.c_str(), F_OK) != 0; // missing is empty; unreadable is an error
    std::ostringstream bytes;
    bytes << in.rdbuf();
    std::string data = bytes.str();
    m_impl->rewritable = isPlainProfileText(data);
    m_impl->trailingComments = trailingComments(data);
    return m_impl->ini.LoadData(data.data(), data.size()) >= 0;
}

std::optional<std::string> ProfileFile::value(const std::string& section, const std::string& key) const {
    const char* found = m_impl->ini.GetValue(section.c_str(), key.c_str(), nullptr);
    if (!found) return std::nullopt;
    return std::string(found);
}

namespace {

std::vector<std::string> inFileOrder(CSimpleIniA::TNamesDepend names) {
    names.sort(CSimpleIniA::Entry::LoadOrder());
    std::vector<std::string> out;
    for (const auto& entry : names) out.emplace_back(entry.pItem);
    return out;
}

} // namespace

std::vector<std::string> ProfileFile::sectionNames() const {
    CSimpleIniA::TNamesDepend names;
    m_impl->ini.GetAllSections(names);
    std::vector<std::string> out = inFileOrder(names);
    std::erase(out, std::string()); // keys before any section are not a section
    return out;
}

std::vector<std::string> ProfileFile::keyNames(const std::string& section) const {
    CSimpleIniA::TNamesDepend names;
    m_impl->ini.GetAllKeys(section.c_str(), names);
    return inFileOrder(names);
}

void ProfileFile::setValue(const std::string& section, const std::string& key, const std::string& value) {
    m_impl->ini.SetValue(section.c_str(), key.c_str(), value.c_str());
}

void ProfileFile::removeKey(const std::string& section, const std::string& key) {
    m_impl->ini.Delete(section.c_str(), key.c_str(), false);
}

void ProfileFile::removeSection(const std::string& section) {
    m_impl->ini.Delete(section.c_str(), nullptr);
}

bool ProfileFile::save(const std::string& path) const {
    if (!m_impl->rewritable) return false;
    std::string text;
    if (m_impl->ini.Save(text, false) < 0) return false;
    text += m_impl->trailingComments;
    try {
        qvad::dxf::writeFileAtomically(path, text);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

ProfileWriteLock::ProfileWriteLock(const std::string& path) {
    auto slash = path.find_last_of('/');
    std::string folder = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
    m_fd = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_fd < 0) return;
    while (flock(m_fd, LOCK_EX) != 0 && errno == EINTR) {
    }
}

ProfileWriteLock::~ProfileWriteLock() {
    if (m_fd >= 0) close(m_fd);
}

} // namespace qvad::win32
