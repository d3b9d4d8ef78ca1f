// DDX_ helpers: member variables to controls (UpdateData(false)) and back (UpdateData(true)).

#include "qvad/api/console.h"
#include "qvad/shell/CQvUiDialog.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

void refuse(CQvDataExchange* exchange, int id, const char* what) {
    std::string label = exchange->m_pDlgWnd->caption();
    qvad::api::console().write("\n" + label + ": control " + std::to_string(id) + " needs " + what + ".");
    exchange->Fail();
}

bool readNumber(const std::string& text, double& value) {
    const char* start = text.c_str();
    char* end = nullptr;
    errno = 0;
    double read = std::strtod(start, &end);
    if (end == start || errno == ERANGE) return false;
    while (*end == ' ' || *end == '\t') ++end;
    if (*end) return false;
    value = read;
    return true;
}

} // namespace

void DDX_Check(CQvDataExchange* exchange, int id, int& value) {
    CQvUiDialog* dialog = exchange->m_pDlgWnd;
    if (exchange->m_bSaveAndValidate)
        value = static_cast<int>(dialog->IsDlgButtonChecked(id));
    else
        dialog->CheckDlgButton(id, value ? BST_CHECKED : BST_UNCHECKED);
}

void DDX_Check(CQvDataExchange* exchange, int id, bool& value) {
    int state = value ? 1 : 0;
    DDX_Check(exchange, id, state);
    value = state != 0;
}

void DDX_Text(CQvDataExchange* exchange, int id, std::string& value) {
    if (exchange->m_bSaveAndValidate)
        value = exchange->m_pDlgWnd->GetDlgItemText(id);
    else
        exchange->m_pDlgWnd->SetDlgItemText(id, value);
}

void DDX_Text(CQvDataExchange* exchange, int id, double& value) {
    if (!exchange->m_bSaveAndValidate) {
        char text[64];
        std::snprintf(text, sizeof text, "%.15g", value);
        exchange->m_pDlgWnd->SetDlgItemText(id, text);
        return;
    }
    if (!readNumber(exchange->m_pDlgWnd->GetDlgItemText(id), value)) refuse(exchange, id, "a number");
}

void DDX_Text(CQvDataExchange* exchange, int id, int& value) {
    if (!exchange->m_bSaveAndValidate) {
        exchange->m_pDlgWnd->SetDlgItemText(id, std::to_string(value));
        return;
    }
    double number = 0.0;
    bool whole = readNumber(exchange->m_pDlgWnd->GetDlgItemText(id), number) && number >= -2147483648.0 &&
                 number <= 2147483647.0 && number == static_cast<int>(number);
    if (whole)
        value = static_cast<int>(number);
    else
        refuse(exchange, id, "a whole number");
}

void DDX_Radio(CQvDataExchange* exchange, int firstId, int& value) {
    CQvUiDialog* dialog = exchange->m_pDlgWnd;
    std::vector<int> group = dialog->RadioGroupOf(firstId);
    if (exchange->m_bSaveAndValidate) {
        value = -1;
        for (std::size_t i = 0; i < group.size(); ++i)
            if (dialog->IsDlgButtonChecked(group[i])) value = static_cast<int>(i);
        return;
    }
    for (std::size_t i = 0; i < group.size(); ++i)
        if (static_cast<int>(i) != value) dialog->CheckDlgButton(group[i], BST_UNCHECKED);
    if (value >= 0 && value < static_cast<int>(group.size()))
        dialog->CheckDlgButton(group[value], BST_CHECKED);
}

void DDX_CBIndex(CQvDataExchange* exchange, int id, int& index) {
    if (exchange->m_bSaveAndValidate)
        index = exchange->m_pDlgWnd->GetCurSel(id);
    else
        exchange->m_pDlgWnd->SetCurSel(id, index);
}

void DDX_LBIndex(CQvDataExchange* exchange, int id, int& index) {
    DDX_CBIndex(exchange, id, index);
}

void DDX_CBString(CQvDataExchange* exchange, int id, std::string& value) {
    DDX_Text(exchange, id, value);
}
