#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qvad::win32 {

// The file a module name stands for on Linux: backslashes become slashes and a ".dll" ending (any case)
// becomes ".so".
std::string linuxModuleName(std::string_view windowsName);

// Folder of the loaded object that contains the address (with its trailing slash), empty if none does.
std::string folderOfAddress(const void* address);
std::string executableFolder();
std::string executablePath();

// Where a bare module name is looked for, in order: beside the caller, beside libqvad, beside the
// executable. Duplicates are dropped.
std::vector<std::string> moduleSearchFolders(const void* callerAddress);

} // namespace qvad::win32
