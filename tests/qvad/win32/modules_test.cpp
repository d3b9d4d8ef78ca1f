#include "qvad/win32/resource_library.h"
#include "qvad/win32/windows_calls.h"

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

std::string selfPath() {
    char buffer[4096];
    ssize_t n = readlink("/proc/self/exe", buffer, sizeof buffer);
    return n > 0 ? std::string(buffer, static_cast<std::size_t>(n)) : std::string();
}

TEST(ModulesTest, DllNameLoadsTheSharedObjectBesideTheCaller) {
    HMODULE module = LoadLibraryA("qv_test_strings.dll");
    ASSERT_NE(module, nullptr);
    EXPECT_NE(GetProcAddress(module, QV_RESOURCE_STRINGS_SYMBOL), nullptr);
    EXPECT_EQ(GetProcAddress(module, "noSuchFunction"), nullptr);
    EXPECT_EQ(GetProcAddress(module, reinterpret_cast<LPCSTR>(static_cast<std::uintptr_t>(7))), nullptr);
    EXPECT_EQ(GetModuleHandleA("qv_test_strings.dll"), module);

    char path[4096];
    DWORD length = GetModuleFileNameA(module, path, sizeof path);
    std::string expected = selfPath();
    expected = expected.substr(0, expected.rfind('/') + 1) + "qv_test_strings.so";
    EXPECT_EQ(std::string(path), expected);
    EXPECT_EQ(length, expected.size());

    // A Windows path with backslashes names the same file.
    std::string windowsPath = expected.substr(0, expected.size() - 3) + ".DLL";
    for (char& c : windowsPath) c = c == '/' ? '\\' : c;
    EXPECT_EQ(LoadLibraryA(windowsPath.c_str()), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(FreeLibrary(module));
}

TEST(ModulesTest, MissingModulesGiveNull) {
    EXPECT_EQ(LoadLibraryA("qv_no_such_library.dll"), nullptr);
    EXPECT_EQ(LoadLibraryA(""), nullptr);
    EXPECT_EQ(LoadLibraryA(nullptr), nullptr);
    EXPECT_EQ(GetModuleHandleA("qv_no_such_library.dll"), nullptr);
    EXPECT_EQ(GetProcAddress(nullptr, "LoadLibraryA"), nullptr);
}

TEST(ModulesTest, NullModuleIsTheExecutable) {
    HMODULE self = GetModuleHandleA(nullptr);
    ASSERT_NE(self, nullptr);
    // The host's own exports are reachable through the executable's handle, as they are on Windows.
    EXPECT_EQ(GetProcAddress(self, "LoadStringA"), reinterpret_cast<FARPROC>(&LoadStringA));

    char path[4096];
    DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    EXPECT_EQ(std::string(path), selfPath());
    EXPECT_EQ(length, selfPath().size());

    // Too small: cut to size - 1 characters, ended by a zero, and the answer is the size.
    char shortBuffer[6];
    EXPECT_EQ(GetModuleFileNameA(nullptr, shortBuffer, sizeof shortBuffer), sizeof shortBuffer);
    EXPECT_EQ(std::string(shortBuffer), selfPath().substr(0, 5));
    EXPECT_EQ(GetModuleFileNameA(nullptr, shortBuffer, 0), 0u);
}

} // namespace
