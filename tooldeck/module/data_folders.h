#pragma once
// Files the commands read from the host's data folder (EXEDIR), under "extendCmd" and "Fzdata".

#include <string>

namespace qvtd {

// EXEDIR, ending in '/'.
std::string executableFolder();
// relative: a path below the data folder, written with '/' or '\'; returned with '/' only.
std::string dataFilePath(const std::string& relative);

// The fixed files.
std::string helpFilePath();           // Help/QVAD.chm
std::string standardsCheckFilePath(); // extendCmd/Chkcksys.chk
std::string textToolsFilePath();      // extendCmd/ITools.Kdp
std::string ordinateBlockFilePath();  // extendCmd/$Ordinate_Block_Dont_Modify$.dwg

} // namespace qvtd
