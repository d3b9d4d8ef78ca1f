#include "qvad/api/sysvars_table.h"
#include "qvad/api/sysvars_table_rows.h"

#include <array>

namespace qvad::api {

namespace {

using namespace sysvar_rows;

// Every dimension variable a drawing header carries, with the metric template's values (ISO-style
// sizes for 2.5 mm text) as defaults for drawings that lack one.
constexpr auto kDimension = std::to_array<SysVarDef>({
    hShort("DIMADEC", 70, "0", -1, 8),
    hShort("DIMALT", 70, "0", 0, 1),
    hShort("DIMALTD", 70, "3", 0, 8),
    hReal("DIMALTF", 40, "0.03937007874016", true),
    hReal("DIMALTMZF", 40, "100.0"),
    hText("DIMALTMZS", 6, ""),
    hReal("DIMALTRND", 40, "0.0", true),
    hShort("DIMALTTD", 70, "3", 0, 8),
    hShort("DIMALTTZ", 70, "0", 0, 15),
    hShort("DIMALTU", 70, "2", 1, 8),
    hShort("DIMALTZ", 70, "0", 0, 15),
    hText("DIMAPOST", 1, ""),
    hShort("DIMARCSYM", 70, "0", 0, 2),
    hShort("DIMASO", 70, "1", 0, 1),
    hShort("DIMASSOC", 280, "2", 0, 2),
    hReal("DIMASZ", 40, "2.5", true),
    hShort("DIMATFIT", 70, "3", 0, 3),
    hShort("DIMAUNIT", 70, "0", 0, 4),
    hShort("DIMAZIN", 70, "0", 0, 3),
    hText("DIMBLK", 1, ""),
    hText("DIMBLK1", 1, ""),
    hText("DIMBLK2", 1, ""),
    hReal("DIMCEN", 40, "2.5"),
    hShort("DIMCLRD", 70, "0", 0, 256),
    hShort("DIMCLRE", 70, "0", 0, 256),
    hShort("DIMCLRT", 70, "0", 0, 256),
    hShort("DIMDEC", 70, "2", 0, 8),
    hReal("DIMDLE", 40, "0.0", true),
    hReal("DIMDLI", 40, "3.75", true),
    characterVar(hText("DIMDSEP", 70, ".")),
    hReal("DIMEXE", 40, "1.25", true),
    hReal("DIMEXO", 40, "0.625", true),
    hReal("DIMFAC", 40, "1.0", true),
    hShort("DIMFIT", 70, "3", 0, 5),
    hShort("DIMFRAC", 70, "0", 0, 2),
    hReal("DIMFXL", 40, "1.0", true),
    hShort("DIMFXLON", 290, "0", 0, 1),
    hReal("DIMGAP", 40, "0.625"),
    hReal("DIMJOGANG", 40, "0.785398163397448", true),
    hShort("DIMJUST", 70, "0", 0, 4),
    hText("DIMLDRBLK", 1, ""),
    hReal("DIMLFAC", 40, "1.0"),
    hShort("DIMLIM", 70, "0", 0, 1),
    hText("DIMLTEX1", 6, ""),
    hText("DIMLTEX2", 6, ""),
    hText("DIMLTYPE", 6, ""),
    hShort("DIMLUNIT", 70, "2", 1, 6),
    hShort("DIMLWD", 70, "-2", -3, 211),
    hShort("DIMLWE", 70, "-2", -3, 211),
    hReal("DIMMZF", 40, "100.0"),
    hText("DIMMZS", 6, ""),
    hText("DIMPOST", 1, ""),
    hReal("DIMRND", 40, "0.0", true),
    hShort("DIMSAH", 70, "0", 0, 1),
    hReal("DIMSCALE", 40, "1.0", true),
    hShort("DIMSD1", 70, "0", 0, 1),
    hShort("DIMSD2", 70, "0", 0, 1),
    hShort("DIMSE1", 70, "0", 0, 1),
    hShort("DIMSE2", 70, "0", 0, 1),
    hShort("DIMSHO", 70, "1", 0, 1),
    hShort("DIMSOXD", 70, "0", 0, 1),
    hText("DIMSTYLE", 2, "Standard", "DIMSTYLE"),
    hShort("DIMTAD", 70, "1", 0, 4),
    hShort("DIMTDEC", 70, "2", 0, 8),
    hReal("DIMTFAC", 40, "1.0", true),
    hShort("DIMTFILL", 70, "0", 0, 2),
    hShort("DIMTFILLCLR", 62, "0", 0, 256),
    hShort("DIMTIH", 70, "0", 0, 1),
    hShort("DIMTIX", 70, "0", 0, 1),
    hReal("DIMTM", 40, "0.0"),
    hShort("DIMTMOVE", 70, "0", 0, 2),
    hShort("DIMTOFL", 70, "1", 0, 1),
    hShort("DIMTOH", 70, "0", 0, 1),
    hShort("DIMTOL", 70, "0", 0, 1),
    hShort("DIMTOLJ", 70, "0", 0, 2),
    hReal("DIMTP", 40, "0.0"),
    hReal("DIMTSZ", 40, "0.0", true),
    hReal("DIMTVP", 40, "0.0"),
    hText("DIMTXSTY", 7, "Standard", "STYLE"),
    hReal("DIMTXT", 40, "2.5", true),
    hShort("DIMTXTDIRECTION", 290, "0", 0, 1),
    hShort("DIMTZIN", 70, "8", 0, 15),
    hShort("DIMUNIT", 70, "2", 1, 8),
    hShort("DIMUPT", 70, "0", 0, 1),
    hShort("DIMZIN", 70, "8", 0, 15),
});

} // namespace

std::span<const SysVarDef> dimensionSysVars() {
    return kDimension;
}

} // namespace qvad::api
