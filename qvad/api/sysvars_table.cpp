#include "qvad/api/sysvars_table.h"

#include "qvad/api/sysvars_table_rows.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace qvad::api {

namespace {

using namespace sysvar_rows;

// Defaults of drawing variables matter only for drawings that lack them; they follow the host's metric
// template. Variables commands save and restore around their work (CMDECHO, OSMODE, ...) are here too.
constexpr auto kGeneral = std::to_array<SysVarDef>({
    readOnly(hText("ACADVER", 1, "AC1032")),
    hReal("ANGBASE", 50, "0.0"),
    hShort("ANGDIR", 70, "0", 0, 1),
    sFlag("ATTDIA", "0"),
    hShort("ATTMODE", 70, "1", 0, 2),
    sFlag("ATTREQ", "1"),
    hShort("AUNITS", 70, "0", 0, 4),
    hShort("AUPREC", 70, "0", 0, 8),
    sFlag("BLIPMODE", "0"),
    colorVar(hText("CECOLOR", 62, "BYLAYER")),
    hReal("CELTSCALE", 40, "1.0", true),
    hText("CELTYPE", 6, "ByLayer", "LTYPE"),
    hShort("CELWEIGHT", 370, "-1", -3, 211),
    hReal("CHAMFERA", 40, "0.0", true),
    hReal("CHAMFERB", 40, "0.0", true),
    hReal("CHAMFERC", 40, "0.0", true),
    hReal("CHAMFERD", 40, "0.0"),
    hText("CLAYER", 8, "0", "LAYER"),
    hShort("CMLJUST", 70, "0", 0, 2),
    hReal("CMLSCALE", 40, "1.0"),
    hText("CMLSTYLE", 2, "Standard"),
    sFlag("CMDECHO", "1"),
    sShort("CVPORT", "2", 1, 32767),
    sShort("DELOBJ", "1", -3, 3),
    sShort("DRAGMODE", "2", 0, 2),
    readOnly(derived(SysVarType::String, "DWGNAME")),
    readOnly(derived(SysVarType::String, "DWGPREFIX")),
    readOnly(derived(SysVarType::Short, "DWGTITLED")),
    readOnly(hText("DWGCODEPAGE", 3, "ANSI_1252")),
    derived(SysVarType::Short, "ERRNO"),
    hReal("ELEVATION", 40, "0.0"),
    readOnly(derived(SysVarType::String, "APPDATADIR")),
    readOnly(derived(SysVarType::String, "EXEDIR")),
    sShort("EXPERT", "0", 0, 5),
    readOnly(hPoint3("EXTMAX", "-1e+20,-1e+20,-1e+20")),
    readOnly(hPoint3("EXTMIN", "1e+20,1e+20,1e+20")),
    sFlag("FILEDIA", "1"),
    hReal("FILLETRAD", 40, "0.0", true),
    hShort("FILLMODE", 70, "1", 0, 1),
    sFlag("GRIDMODE", "0"),
    sPoint2("GRIDUNIT", "10.0,10.0"),
    readOnly(hText("HANDSEED", 5, "0")),
    sFlag("HIGHLIGHT", "1"),
    hPoint3("INSBASE", "0.0,0.0,0.0"),
    hShort("INSUNITS", 70, "4", 0, 24),
    sPoint3("LASTPOINT", "0.0,0.0,0.0"),
    hShort("LIMCHECK", 70, "0", 0, 1),
    hPoint2("LIMMAX", "420.0,297.0"),
    hPoint2("LIMMIN", "0.0,0.0"),
    hReal("LTSCALE", 40, "1.0", true),
    hShort("LUNITS", 70, "2", 1, 5),
    hShort("LUPREC", 70, "4", 0, 8),
    hShort("LWDISPLAY", 290, "0", 0, 1),
    hShort("MAXACTVP", 70, "64", 2, 64),
    hShort("MEASUREMENT", 70, "1", 0, 1),
    hShort("MIRRTEXT", 70, "0", 0, 1),
    sReal("OFFSETDIST", "-1.0"),
    hShort("ORTHOMODE", 70, "0", 0, 1),
    sShort("OSMODE", "4133", 0, 32767),
    hShort("PDMODE", 70, "0", 0, 100),
    hReal("PDSIZE", 40, "0.0"),
    hReal("PELEVATION", 40, "0.0"),
    sShort("PICKADD", "1", 0, 2),
    sShort("PICKBOX", "3", 0, 50),
    sFlag("PICKFIRST", "1"),
    hPoint2("PLIMMAX", "420.0,297.0"),
    hPoint2("PLIMMIN", "0.0,0.0"),
    hShort("PLINEGEN", 70, "0", 0, 1),
    sShort("PLINETYPE", "2", 0, 2),
    hReal("PLINEWID", 40, "0.0", true),
    hShort("PSLTSCALE", 70, "1", 0, 1),
    hShort("QTEXTMODE", 70, "0", 0, 1),
    hShort("REGENMODE", 70, "1", 0, 1),
    hReal("SKETCHINC", 40, "1.0", true),
    hShort("SKPOLY", 70, "0", 0, 2),
    sReal("SNAPANG", "0.0"),
    sFlag("SNAPMODE", "0"),
    sPoint2("SNAPUNIT", "10.0,10.0"),
    hShort("SPLFRAME", 70, "0", 0, 1),
    hShort("SPLINESEGS", 70, "8", -32768, 32767),
    hShort("SPLINETYPE", 70, "6", 5, 6),
    sText("SRCHPATH", ""),
    hShort("SURFTAB1", 70, "6", 2, 32766),
    hShort("SURFTAB2", 70, "6", 2, 32766),
    hShort("SURFTYPE", 70, "6", 5, 8),
    hShort("SURFU", 70, "6", 0, 200),
    hShort("SURFV", 70, "6", 0, 200),
    sFlag("TEXTEVAL", "0"),
    hReal("TEXTSIZE", 40, "2.5", true),
    hText("TEXTSTYLE", 7, "Standard", "STYLE"),
    hReal("THICKNESS", 40, "0.0"),
    hShort("TILEMODE", 70, "1", 0, 1),
    hReal("TRACEWID", 40, "1.0", true),
    hShort("TREEDEPTH", 70, "3020", -32768, 32767),
    readOnly(hText("UCSNAME", 2, "")),
    readOnly(hPoint3("UCSORG", "0.0,0.0,0.0")),
    readOnly(hPoint3("UCSXDIR", "1.0,0.0,0.0")),
    readOnly(hPoint3("UCSYDIR", "0.0,1.0,0.0")),
    // Enabled with automatic grouping; the undo journal owns the real state.
    readOnly(sShort("UNDOCTL", "5", 0, 63)),
    hShort("UNITMODE", 70, "0", 0, 1),
    hShort("USERI1", 70, "0"),
    hShort("USERI2", 70, "0"),
    hShort("USERI3", 70, "0"),
    hShort("USERI4", 70, "0"),
    hShort("USERI5", 70, "0"),
    hReal("USERR1", 40, "0.0"),
    hReal("USERR2", 40, "0.0"),
    hReal("USERR3", 40, "0.0"),
    hReal("USERR4", 40, "0.0"),
    hReal("USERR5", 40, "0.0"),
    // Drawing files do not carry the user strings, so they last as long as the session.
    sText("USERS1", ""),
    sText("USERS2", ""),
    sText("USERS3", ""),
    sText("USERS4", ""),
    sText("USERS5", ""),
    hShort("VISRETAIN", 70, "1", 0, 1),
    hShort("WORLDVIEW", 70, "1", 0, 1),
    hShort("XEDIT", 290, "1", 0, 1),
});

} // namespace

const SysVarDef* findSysVar(std::string_view name) {
    auto sameName = [name](const SysVarDef& d) {
        return std::ranges::equal(d.name, name, [](char a, char b) {
            return std::toupper(static_cast<unsigned char>(a)) == std::toupper(static_cast<unsigned char>(b));
        });
    };
    for (std::span<const SysVarDef> rows : {std::span<const SysVarDef>(kGeneral), dimensionSysVars()}) {
        auto it = std::ranges::find_if(rows, sameName);
        if (it != rows.end()) return &*it;
    }
    return nullptr;
}

std::span<const SysVarDef> generalSysVars() {
    return kGeneral;
}

} // namespace qvad::api
