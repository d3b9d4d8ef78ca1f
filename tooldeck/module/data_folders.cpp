#include "tooldeck/module/data_folders.h"

#include "tooldeck/host/host_variables.h"

#include <algorithm>

namespace qvtd {

std::string executableFolder() {
    std::string folder = getStringVar("EXEDIR");
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\') folder += '/';
    return folder;
}

std::string dataFilePath(const std::string& relative) {
    std::string path = executableFolder() + relative;
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string helpFilePath() {
    return dataFilePath("Help/QVAD.chm");
}

std::string standardsCheckFilePath() {
    return dataFilePath("extendCmd/Chkcksys.chk");
}

std::string textToolsFilePath() {
    return dataFilePath("extendCmd/ITools.Kdp");
}

std::string ordinateBlockFilePath() {
    return dataFilePath("extendCmd/$Ordinate_Block_Dont_Modify$.dwg");
}

} // namespace qvtd
