#include "tooldeck/commands/cleanup/COverKillDlg.h"

#include "tooldeck/module/ResourceText.h"
#include "tooldeck/module/resource_library.h"

#include <cstdio>
#include <cstdlib>

namespace qvtd {

COverKillDlg::COverKillDlg(overkill::OverkillSettings& settings, HWND parent)
    : CQvUiDialog(kOverkillDialogId, parent, openResourceLibrary()), m_settings(settings) {}

BOOL COverKillDlg::OnInitDialog() {
    CQvUiDialog::OnInitDialog();
    char tolerance[64];
    std::snprintf(tolerance, sizeof tolerance, "%f", m_settings.tolerance);
    SetDlgItemText(kOverkillTolerance, tolerance);
    // The property boxes ask what to ignore, so they show the compare flags inverted.
    CheckDlgButton(kOverkillIgnoreLayer, m_settings.compareLayer ? 0 : 1);
    CheckDlgButton(kOverkillIgnoreLinetype, m_settings.compareLinetype ? 0 : 1);
    CheckDlgButton(kOverkillIgnoreColor, m_settings.compareColor ? 0 : 1);
    CheckDlgButton(kOverkillIgnoreLineweight, m_settings.compareLineweight ? 0 : 1);
    CheckDlgButton(kOverkillIgnorePlotStyle, m_settings.comparePlotStyle ? 0 : 1);
    CheckDlgButton(kOverkillPolylines, m_settings.processPolylines ? 1 : 0);
    CheckDlgButton(kOverkillCombineOverlapping, m_settings.combineOverlapping ? 1 : 0);
    CheckDlgButton(kOverkillCombineEndToEnd, m_settings.combineEndToEnd ? 1 : 0);
    return TRUE;
}

void COverKillDlg::OnOK() {
    // atof on purpose: text that is no number reads as 0, which is a valid tolerance.
    const double tolerance = std::atof(GetDlgItemText(kOverkillTolerance).c_str());
    if (tolerance < 0.0) {
        ResourceText message(kOverkillNegativeTolerance, "The tolerance must not be negative.");
        MessageBoxA(nullptr, message, "Overkill", MB_OK | MB_ICONERROR);
        return;
    }
    m_settings.tolerance = tolerance;
    m_settings.compareLayer = IsDlgButtonChecked(kOverkillIgnoreLayer) == 0;
    m_settings.compareLinetype = IsDlgButtonChecked(kOverkillIgnoreLinetype) == 0;
    m_settings.compareColor = IsDlgButtonChecked(kOverkillIgnoreColor) == 0;
    m_settings.compareLineweight = IsDlgButtonChecked(kOverkillIgnoreLineweight) == 0;
    m_settings.comparePlotStyle = IsDlgButtonChecked(kOverkillIgnorePlotStyle) == 0;
    m_settings.processPolylines = IsDlgButtonChecked(kOverkillPolylines) != 0;
    m_settings.combineOverlapping = IsDlgButtonChecked(kOverkillCombineOverlapping) != 0;
    m_settings.combineEndToEnd = IsDlgButtonChecked(kOverkillCombineEndToEnd) != 0;
    CQvUiDialog::OnOK();
}

} // namespace qvtd
