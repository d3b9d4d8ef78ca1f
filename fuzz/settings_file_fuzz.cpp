// Any bytes as a settings file must read as some sections and keys (or as nothing), and a key written
// to it must read back afterwards, or the write must be refused and the file left as it was.

#include "qvad/win32/windows_calls.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

// One folder for the whole run, since the write lock and the rewrite's temporary file go beside the
// file; it is empty between runs and removed at exit.
char settingsFolder[] = "/tmp/qvad-settings-fuzz-XXXXXX";

const std::string& settingsPath() {
    static const std::string path = [] {
        if (!mkdtemp(settingsFolder)) std::abort();
        std::atexit([] { rmdir(settingsFolder); });
        return std::string(settingsFolder) + "/fuzz.ini";
    }();
    return path;
}

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Zero-separated names as the calls hand them out.
std::vector<std::string> names(const char* list, DWORD length) {
    std::vector<std::string> result;
    for (DWORD i = 0; i < length;) {
        std::string name(list + i);
        i += static_cast<DWORD>(name.size()) + 1;
        result.push_back(std::move(name));
    }
    return result;
}

void readEverything(const char* path) {
    std::vector<char> buffer(4096);
    const DWORD sectionLength = GetPrivateProfileStringA(nullptr, nullptr, "", buffer.data(), 4096, path);
    if (sectionLength > 4094) std::abort();
    std::vector<std::string> sections = names(buffer.data(), sectionLength);
    if (sections.size() > 4) sections.resize(4);
    for (const std::string& section : sections) {
        const DWORD keyLength =
            GetPrivateProfileStringA(section.c_str(), nullptr, "", buffer.data(), 4096, path);
        std::vector<std::string> keys = names(buffer.data(), keyLength);
        if (keys.size() > 8) keys.resize(8);
        for (const std::string& key : keys) {
            char small[6];
            if (GetPrivateProfileStringA(section.c_str(), key.c_str(), "x", small, sizeof small, path) >=
                sizeof small)
                std::abort();
            if (std::strlen(small) >= sizeof small) std::abort();
            GetPrivateProfileStringA(section.c_str(), key.c_str(), "", buffer.data(), 4096, path);
            GetPrivateProfileIntA(section.c_str(), key.c_str(), -1, path);
        }
    }
    char tiny[2];
    GetPrivateProfileStringA(nullptr, nullptr, "", tiny, sizeof tiny, path);
    GetPrivateProfileIntA("General", "Count", 7, path);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string& path = settingsPath();
    const std::string written(reinterpret_cast<const char*>(data), size);
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out << written;
    }
    readEverything(path.c_str());

    if (WritePrivateProfileStringA("Fuzz Section", "Fuzz Key", "fuzz value", path.c_str())) {
        char value[32];
        GetPrivateProfileStringA("FUZZ SECTION", "fuzz key", "", value, sizeof value, path.c_str());
        if (std::string(value) != "fuzz value") std::abort();
        readEverything(path.c_str());
    } else if (fileText(path) != written) {
        std::abort(); // a refused write changes nothing
    }
    std::remove(path.c_str());
    return 0;
}
