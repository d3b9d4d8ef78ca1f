#pragma once
// A temporary folder of the running test's own: ctest runs tests of one fixture side by side, so a
// fixed name would be shared and one test would delete another's files.

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <unistd.h>

inline std::filesystem::path testTempFolder(std::string_view stem) {
    std::string name(stem);
    if (const auto* info = ::testing::UnitTest::GetInstance()->current_test_info()) {
        name += '-';
        name += info->name();
    }
    name += '-' + std::to_string(::getpid());
    return std::filesystem::temp_directory_path() / name;
}
