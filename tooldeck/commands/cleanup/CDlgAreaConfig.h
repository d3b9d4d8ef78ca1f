#pragma once
// The quantity settings dialog of xcarf: the choices come from the lists in XQuery.ini, and the file is
// written only on OK.

#include "qvad/shell/CQvUiDialog.h"
#include "tooldeck/commands/cleanup/quantity_settings.h"

#include <string>

namespace qvtd {

inline constexpr unsigned kAreaConfigDialogId = 2420;
inline constexpr int kAreaConfigDrawingLength = 1001;
inline constexpr int kAreaConfigRealLength = 1002;
inline constexpr int kAreaConfigUnits = 1003;
inline constexpr int kAreaConfigPrecision = 1004;
inline constexpr int kAreaConfigToClipboard = 1005;
inline constexpr int kAreaConfigMarkerRadius = 1006;

class CDlgAreaConfig : public CQvUiDialog {
public:
    // settingsPath: the XQuery.ini read and written.
    explicit CDlgAreaConfig(std::string settingsPath, HWND parent = nullptr);

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void DoDataExchange(CQvDataExchange* exchange) override;

private:
    std::string m_path;
    quantity::QuantitySettings m_settings;
    bool m_toClipboard = true;
};

} // namespace qvtd
