#pragma once
// The system variables that belong to the running host rather than to a drawing, and the places the
// host tells them from: its data folder, the user's settings folder and the open drawing's file.

#include "qvad/api/sysvars_value.h"

#include <map>
#include <string>

namespace qvad::api {

class SysVarSession {
public:
    static SysVarSession& current();

    // A session variable's value (its default until someone sets it).
    SysVarValue value(const SysVarDef& def);
    void setValue(const SysVarDef& def, SysVarValue value);
    // Every session variable back to its default, and the folders back to where the host finds them.
    void reset();

    // EXEDIR: the host's data folder (holding extendCmd/ and Fzdata/). By default the share/qvad/
    // folder beside the executable's bin/, which is the same place in the build tree and after
    // installation; the app may point it elsewhere. Always ends in '/'.
    std::string exeDir();
    void setExeDir(std::string folder);

    // APPDATADIR: $XDG_CONFIG_HOME/qvad/, else ~/.config/qvad/; made when first asked for, since
    // settings are written there. Always ends in '/'.
    std::string appDataDir();

    // The file the open drawing came from or was last saved to; empty while it has none. DWGNAME and
    // DWGPREFIX are its name and folder.
    const std::string& drawingPath() const { return m_drawingPath; }
    void setDrawingPath(std::string path) { m_drawingPath = std::move(path); }
    std::string drawingName() const;
    std::string drawingFolder() const;

private:
    std::map<std::string, SysVarValue, std::less<>> m_values;
    std::string m_exeDir;
    std::string m_drawingPath;
};

// A folder name with exactly one trailing '/'.
std::string withTrailingSlash(std::string folder);

} // namespace qvad::api
