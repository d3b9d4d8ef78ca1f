#include "tooldeck/commands/text/CTxt2mtxtDialog.h"

#include "tooldeck/module/resource_library.h"
#include "tooldeck/module/settings.h"

namespace qvtd {

CTxt2mtxtDialog::CTxt2mtxtDialog(HWND parent)
    : CQvUiDialog(kTxt2mtxtDialogId, parent, openResourceLibrary()) {}

BOOL CTxt2mtxtDialog::OnInitDialog() {
    // Unlike the command, the dialog treats a missing key as checked.
    m_selectOrder = readSettingBool("TXT2MTXT_SELECTTYPE", true);
    m_wordWrap = readSettingBool("TXT2MTXT_WORDWARD", true);
    return CQvUiDialog::OnInitDialog();
}

void CTxt2mtxtDialog::DoDataExchange(CQvDataExchange* exchange) {
    DDX_Check(exchange, kTxt2mtxtSelectOrderCheck, m_selectOrder);
    DDX_Check(exchange, kTxt2mtxtWordWrapCheck, m_wordWrap);
}

void CTxt2mtxtDialog::OnOK() {
    if (!UpdateData(true)) return;
    writeSettingBool("TXT2MTXT_SELECTTYPE", m_selectOrder);
    writeSettingBool("TXT2MTXT_WORDWARD", m_wordWrap);
    EndDialog(IDOK);
}

} // namespace qvtd
