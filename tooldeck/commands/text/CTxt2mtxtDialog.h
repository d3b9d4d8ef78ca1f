#pragma once
// The options dialog of txt2mtxt: its two settings as check boxes, written back only on OK.

#include "qvad/shell/CQvUiDialog.h"

namespace qvtd {

inline constexpr unsigned kTxt2mtxtDialogId = 2047;
inline constexpr int kTxt2mtxtSelectOrderCheck = 1001;
inline constexpr int kTxt2mtxtWordWrapCheck = 1002;

class CTxt2mtxtDialog : public CQvUiDialog {
public:
    explicit CTxt2mtxtDialog(HWND parent = nullptr);

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void DoDataExchange(CQvDataExchange* exchange) override;

private:
    bool m_selectOrder = true;
    bool m_wordWrap = true;
};

} // namespace qvtd
