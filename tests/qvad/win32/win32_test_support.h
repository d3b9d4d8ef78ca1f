#pragma once
// Temporary folders and child processes for the tests of the files the Windows calls share.

#include <filesystem>
#include <functional>
#include <string>

namespace win32_test {

// A fresh folder under the system's temporary folder, removed when the object goes.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    const std::filesystem::path& path() const { return m_path; }
    std::string file(const std::string& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

// Runs body in a forked child process and returns its exit status (body's result), -1 if it died.
int inChildProcess(const std::function<int()>& body);

std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& text);

// Runs /usr/bin/python3 with the script and returns its standard output.
std::string runPython(const std::string& script);

} // namespace win32_test
