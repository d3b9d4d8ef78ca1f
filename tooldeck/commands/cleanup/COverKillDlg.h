#pragma once
// The options dialog of Overkill. It edits a copy of the options and writes them back only on OK,
// after refusing a negative tolerance with a message (the dialog then asks again).

#include "qvad/shell/CQvUiDialog.h"
#include "tooldeck/commands/cleanup/overkill_settings.h"

namespace qvtd {

inline constexpr unsigned kOverkillDialogId = 2290;
inline constexpr int kOverkillTolerance = 1001;
inline constexpr int kOverkillIgnoreLayer = 1002;
inline constexpr int kOverkillIgnoreLinetype = 1003;
inline constexpr int kOverkillIgnoreColor = 1004;
inline constexpr int kOverkillIgnoreLineweight = 1005;
inline constexpr int kOverkillIgnorePlotStyle = 1006;
inline constexpr int kOverkillPolylines = 1007;
inline constexpr int kOverkillCombineOverlapping = 1008;
inline constexpr int kOverkillCombineEndToEnd = 1009;
inline constexpr unsigned kOverkillNegativeTolerance = 6293;

class COverKillDlg : public CQvUiDialog {
public:
    explicit COverKillDlg(overkill::OverkillSettings& settings, HWND parent = nullptr);

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;

private:
    overkill::OverkillSettings& m_settings;
};

} // namespace qvtd
