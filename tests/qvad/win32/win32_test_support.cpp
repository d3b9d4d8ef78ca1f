#include "win32_test_support.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace win32_test {

TempFolder::TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "qvad-win32-XXXXXX").string();
    if (mkdtemp(pattern.data())) m_path = pattern;
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    if (!m_path.empty()) std::filesystem::remove_all(m_path, ignored);
}

int inChildProcess(const std::function<int()>& body) {
    std::fflush(nullptr);
    pid_t child = fork();
    if (child == 0) _exit(body());
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void writeFile(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::string runPython(const std::string& script) {
    TempFolder folder;
    std::string scriptPath = folder.file("check.py");
    writeFile(scriptPath, script);
    FILE* pipe = popen(("/usr/bin/python3 " + scriptPath).c_str(), "r");
    if (!pipe) return {};
    std::string out;
    char buffer[256];
    while (fgets(buffer, sizeof buffer, pipe)) out += buffer;
    pclose(pipe);
    return out;
}

} // namespace win32_test
