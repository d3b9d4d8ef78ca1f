// The dialog's life (template, modal and modeless runs) and its controls. The questions themselves
// are in dialog_questions.cpp, the member exchange in dialog_exchange.cpp.

#include "qvad/shell/CQvUiDialog.h"

#include "qvad/api/answers.h"
#include "qvad/win32/dialog_resources.h"

#include <algorithm>
#include <cctype>
#include <cstring>

using qvad::shell::ControlKind;
using qvad::shell::ControlTemplate;

namespace {

bool sameText(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::toupper(static_cast<unsigned char>(x)) == std::toupper(static_cast<unsigned char>(y));
    });
}

bool isList(const ControlTemplate& c) {
    return c.kind == ControlKind::List || c.kind == ControlKind::Combo;
}

bool isButton(const ControlTemplate& c) {
    return c.kind == ControlKind::Check || c.kind == ControlKind::Radio;
}

} // namespace

CQvUiDialog::CQvUiDialog(unsigned templateId, HWND parent, HMODULE resources)
    : m_templateId(templateId), m_parent(parent), m_resources(resources) {}

bool CQvUiDialog::loadTemplate() {
    m_dialog = {};
    std::optional<std::string> text = qvad::win32::findDialogTemplate(m_resources, m_templateId);
    std::string problem;
    if (!text) {
        problem = "no template in the resource library";
    } else {
        qvad::shell::DialogTemplateParse parsed = qvad::shell::parseDialogTemplate(*text);
        if (parsed.ok() && parsed.dialog.id != static_cast<int>(m_templateId))
            problem = "the template says it is dialog " + std::to_string(parsed.dialog.id);
        else if (!parsed.ok())
            problem = parsed.error;
        else
            m_dialog = std::move(parsed.dialog);
    }
    if (problem.empty()) return true;
    qvad::api::console().write("\nDialog " + std::to_string(m_templateId) + " cannot be shown: " + problem +
                               ".\n");
    return false;
}

int CQvUiDialog::DoModal() {
    m_ended = false;
    m_result = IDCANCEL;
    if (!loadTemplate()) return IDCANCEL;
    OnInitDialog();
    if (m_ended) return m_result;
    printHeading();
    while (!m_ended) {
        int choice = askControls() ? askOkOrCancel() : -1;
        if (choice == 1) {
            OnOK();
            continue;
        }
        OnCancel();
        return IDCANCEL; // a cancelled prompt ends the dialog even when OnCancel would not
    }
    return m_result;
}

void CQvUiDialog::EndDialog(int result) {
    m_ended = true;
    m_result = result;
}

BOOL CQvUiDialog::Create() {
    m_ended = false;
    m_created = false;
    if (!loadTemplate()) return FALSE;
    OnInitDialog();
    printHeading();
    if (!askControls()) return FALSE;
    m_created = true;
    return TRUE;
}

BOOL CQvUiDialog::DestroyWindow() {
    bool was = m_created;
    m_created = false;
    return was ? TRUE : FALSE;
}

bool CQvUiDialog::UpdateData(bool saveAndValidate) {
    CQvDataExchange exchange(this, saveAndValidate);
    DoDataExchange(&exchange);
    return !exchange.failed();
}

BOOL CQvUiDialog::OnInitDialog() {
    UpdateData(false);
    return TRUE;
}

void CQvUiDialog::OnOK() {
    if (UpdateData(true)) EndDialog(IDOK);
}

void CQvUiDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

void CQvUiDialog::DoDataExchange(CQvDataExchange*) {}

void CQvUiDialog::OnControlChanged(int) {}

ControlTemplate* CQvUiDialog::control(int id) {
    if (id == -1) return nullptr;
    for (ControlTemplate& c : m_dialog.controls)
        if (c.id == id) return &c;
    return nullptr;
}

const ControlTemplate* CQvUiDialog::control(int id) const {
    return const_cast<CQvUiDialog*>(this)->control(id);
}

bool CQvUiDialog::HasDlgItem(int id) const {
    return control(id) != nullptr;
}

std::string CQvUiDialog::GetDlgItemText(int id) const {
    const ControlTemplate* c = control(id);
    if (!c) return {};
    if (c->kind == ControlKind::Edit) return c->value;
    if (isList(*c)) return c->selected >= 0 ? c->items[c->selected] : std::string();
    return c->text;
}

int CQvUiDialog::GetDlgItemText(int id, char* buffer, int bufferMax) const {
    if (!buffer || bufferMax <= 0) return 0;
    std::string text = GetDlgItemText(id);
    std::size_t length = std::min(text.size(), static_cast<std::size_t>(bufferMax - 1));
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

void CQvUiDialog::SetDlgItemText(int id, std::string_view text) {
    ControlTemplate* c = control(id);
    if (!c) return;
    if (c->kind == ControlKind::Edit)
        c->value = text;
    else if (isList(*c))
        c->selected = FindStringExact(id, text);
    else
        c->text = text;
}

UINT CQvUiDialog::IsDlgButtonChecked(int id) const {
    const ControlTemplate* c = control(id);
    return c && isButton(*c) && c->checked ? BST_CHECKED : BST_UNCHECKED;
}

void CQvUiDialog::CheckDlgButton(int id, UINT check) {
    ControlTemplate* c = control(id);
    if (!c || !isButton(*c)) return;
    if (c->kind == ControlKind::Radio && check)
        for (ControlTemplate& other : m_dialog.controls)
            if (other.kind == ControlKind::Radio && other.group == c->group) other.checked = false;
    c->checked = check != BST_UNCHECKED;
}

void CQvUiDialog::CheckRadioButton(int firstId, int lastId, int checkId) {
    for (ControlTemplate& c : m_dialog.controls)
        if (c.kind == ControlKind::Radio && c.id >= firstId && c.id <= lastId) c.checked = c.id == checkId;
}

int CQvUiDialog::GetCheckedRadioButton(int firstId, int lastId) const {
    for (const ControlTemplate& c : m_dialog.controls)
        if (c.kind == ControlKind::Radio && c.id >= firstId && c.id <= lastId && c.checked) return c.id;
    return 0;
}

std::vector<int> CQvUiDialog::RadioGroupOf(int id) const {
    std::vector<int> ids;
    const ControlTemplate* member = control(id);
    if (!member || member->kind != ControlKind::Radio) return ids;
    for (const ControlTemplate& c : m_dialog.controls)
        if (c.kind == ControlKind::Radio && c.group == member->group) ids.push_back(c.id);
    return ids;
}

int CQvUiDialog::GetCount(int id) const {
    const ControlTemplate* c = control(id);
    return c && isList(*c) ? static_cast<int>(c->items.size()) : CB_ERR;
}

int CQvUiDialog::GetCurSel(int id) const {
    const ControlTemplate* c = control(id);
    return c && isList(*c) ? c->selected : CB_ERR;
}

int CQvUiDialog::SetCurSel(int id, int index) {
    ControlTemplate* c = control(id);
    if (!c || !isList(*c)) return CB_ERR;
    bool inRange = index >= 0 && index < static_cast<int>(c->items.size());
    c->selected = inRange ? index : -1;
    return inRange ? index : CB_ERR;
}

int CQvUiDialog::AddString(int id, std::string_view item) {
    ControlTemplate* c = control(id);
    if (!c || !isList(*c)) return CB_ERR;
    c->items.emplace_back(item);
    return static_cast<int>(c->items.size()) - 1;
}

void CQvUiDialog::ResetContent(int id) {
    ControlTemplate* c = control(id);
    if (!c || !isList(*c)) return;
    c->items.clear();
    c->selected = -1;
}

std::string CQvUiDialog::GetLBText(int id, int index) const {
    const ControlTemplate* c = control(id);
    if (!c || !isList(*c) || index < 0 || index >= static_cast<int>(c->items.size())) return {};
    return c->items[index];
}

int CQvUiDialog::FindStringExact(int id, std::string_view item) const {
    const ControlTemplate* c = control(id);
    if (!c || !isList(*c)) return CB_ERR;
    for (std::size_t i = 0; i < c->items.size(); ++i)
        if (sameText(c->items[i], item)) return static_cast<int>(i);
    return CB_ERR;
}

void CQvUiDialog::EnableDlgItem(int id, bool enable) {
    if (ControlTemplate* c = control(id)) c->enabled = enable;
}

bool CQvUiDialog::IsDlgItemEnabled(int id) const {
    const ControlTemplate* c = control(id);
    return c && c->enabled;
}

void CQvUiDialog::ShowDlgItem(int id, bool show) {
    if (ControlTemplate* c = control(id)) c->visible = show;
}

bool CQvUiDialog::IsDlgItemVisible(int id) const {
    const ControlTemplate* c = control(id);
    return c && c->visible;
}
