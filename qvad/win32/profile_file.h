#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvad::win32 {

// One private-profile file as its reader and writer see it. Sections and keys are case-insensitive;
// a rewrite keeps the comments, the order and the spelling of everything it does not change.
class ProfileFile {
public:
    // A missing file reads as empty. False when the file exists but cannot be read.
    bool load(const std::string& path);
    std::optional<std::string> value(const std::string& section, const std::string& key) const;
    std::vector<std::string> sectionNames() const;
    std::vector<std::string> keyNames(const std::string& section) const;

    void setValue(const std::string& section, const std::string& key, const std::string& value);
    void removeKey(const std::string& section, const std::string& key);
    void removeSection(const std::string& section);
    // Writes a temporary file beside the target and renames it over; false (nothing changed) on failure
    // and for a loaded file with lines the rewrite would lose.
    bool save(const std::string& path) const;

private:
    struct Impl;
    std::shared_ptr<Impl> m_impl;
};

// Holds the folder of a settings file so that two processes' read-change-write cycles do not interleave.
class ProfileWriteLock {
public:
    explicit ProfileWriteLock(const std::string& path);
    ~ProfileWriteLock();
    ProfileWriteLock(const ProfileWriteLock&) = delete;
    ProfileWriteLock& operator=(const ProfileWriteLock&) = delete;

private:
    int m_fd = -1;
};

} // namespace qvad::win32
