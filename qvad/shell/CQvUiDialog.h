#pragma once
// The dialog base class modules derive their dialogs from. There is no window: DoModal asks the
// dialog's controls on the command line, through the same input functions as any prompt, so scripts
// answer a dialog exactly as they answer prompts.
//
// DoModal: load the template (dialog_template.h) from the resource module, OnInitDialog, print the
// caption and the static texts, then ask every enabled, visible control in template order with its
// current value as the default (an empty answer keeps it):
//   check box   "<label> [Yes/No] <Yes>: "
//   radio group "<group> [Key1/Key2] <Key1>: "   asked once, where its first option stands
//   list/combo  the items are listed, then "<label> <current>: " takes an item's name or number
//   edit        "<label> <text>: "
// then "OK or Cancel? [OK/Cancel] <OK>: ". OK calls OnOK, which ends the dialog with IDOK unless a
// derived class refuses (does not call the base OnOK); a refused OK asks the controls again. Cancel,
// a cancelled prompt or input that has ended calls OnCancel and DoModal returns IDCANCEL. A missing or
// invalid template prints one line and DoModal returns IDCANCEL.

#include "qvad/shell/dialog_template.h"
#include "qvad/win32/windows_calls.h"

#include <string>
#include <string_view>
#include <vector>

#ifndef IDCANCEL
#define IDCANCEL 2
#endif
#ifndef BST_UNCHECKED
#define BST_UNCHECKED 0u
#define BST_CHECKED 1u
#endif
#ifndef CB_ERR
#define CB_ERR (-1)
#define LB_ERR (-1)
#endif

class CQvUiDialog;

// Direction and outcome of one UpdateData pass.
class CQvDataExchange {
public:
    CQvDataExchange(CQvUiDialog* dialog, bool saveAndValidate)
        : m_pDlgWnd(dialog), m_bSaveAndValidate(saveAndValidate) {}
    // Marks the exchange failed: UpdateData returns false and OK is refused.
    void Fail() { m_failed = true; }
    bool failed() const { return m_failed; }

    CQvUiDialog* m_pDlgWnd;
    bool m_bSaveAndValidate; // true: controls to members; false: members to controls

private:
    bool m_failed = false;
};

class CQvUiDialog {
public:
    // resources null: the current dialog resource module (qvad/win32/dialog_resources.h).
    explicit CQvUiDialog(unsigned templateId, HWND parent = nullptr, HMODULE resources = nullptr);
    virtual ~CQvUiDialog() = default;
    CQvUiDialog(const CQvUiDialog&) = delete;
    CQvUiDialog& operator=(const CQvUiDialog&) = delete;

    // IDOK or IDCANCEL (or what EndDialog was given).
    virtual int DoModal();
    // Ends the running DoModal (also from OnInitDialog) with this result.
    void EndDialog(int result);
    // Runs DoDataExchange; false when a value did not pass (a message has been printed).
    bool UpdateData(bool saveAndValidate = true);

    // Modeless use: loads the controls, OnInitDialog, then asks them once without the OK/Cancel
    // question. FALSE for a bad template or a cancelled prompt.
    BOOL Create();
    BOOL DestroyWindow();
    bool IsWindow() const { return m_created; }

    HWND GetParent() const { return m_parent; }
    unsigned templateId() const { return m_templateId; }
    const std::string& caption() const { return m_dialog.caption; }

    // Controls by id. An id the template lacks reads as empty/unchecked/-1 and ignores writes.
    bool HasDlgItem(int id) const;
    std::string GetDlgItemText(int id) const; // edit: its text; list/combo: the selected item
    int GetDlgItemText(int id, char* buffer, int bufferMax) const;
    void SetDlgItemText(int id, std::string_view text); // list/combo: selects the item so named
    UINT IsDlgButtonChecked(int id) const;
    void CheckDlgButton(int id, UINT check); // checking a radio option clears the rest of its group
    void CheckRadioButton(int firstId, int lastId, int checkId);
    // The checked radio button among ids firstId..lastId, 0 when none.
    int GetCheckedRadioButton(int firstId, int lastId) const;
    // The ids of the radio group that id belongs to, in template order; empty for another control.
    std::vector<int> RadioGroupOf(int id) const;
    int GetCount(int id) const;
    int GetCurSel(int id) const;
    int SetCurSel(int id, int index); // CB_ERR for an index out of range (the selection is cleared)
    int AddString(int id, std::string_view item);
    void ResetContent(int id);
    std::string GetLBText(int id, int index) const;
    int FindStringExact(int id, std::string_view item) const; // case-insensitive; CB_ERR if absent
    void EnableDlgItem(int id, bool enable);
    bool IsDlgItemEnabled(int id) const;
    void ShowDlgItem(int id, bool show);
    bool IsDlgItemVisible(int id) const;

protected:
    // Default: UpdateData(false). Return value kept for symmetry with the usual framework.
    virtual BOOL OnInitDialog();
    // Default: UpdateData(true), and when that passes EndDialog(IDOK).
    virtual void OnOK();
    // Default: EndDialog(IDCANCEL).
    virtual void OnCancel();
    // Member variables to and from controls, with the DDX_ functions below. Default: nothing.
    virtual void DoDataExchange(CQvDataExchange* exchange);
    // After an answer on the command line has changed the control id.
    virtual void OnControlChanged(int id);

private:
    enum class Asked { Kept, Changed, Cancelled };

    bool loadTemplate();
    qvad::shell::ControlTemplate* control(int id);
    const qvad::shell::ControlTemplate* control(int id) const;
    bool askable(const qvad::shell::ControlTemplate& control) const;
    void printHeading() const;
    // False when a prompt was cancelled.
    bool askControls();
    Asked askCheck(qvad::shell::ControlTemplate& control);
    Asked askRadioGroup(const std::string& group);
    Asked askList(qvad::shell::ControlTemplate& control);
    Asked askEdit(qvad::shell::ControlTemplate& control);
    // 1 OK, 0 Cancel, -1 a cancelled prompt.
    int askOkOrCancel();

    unsigned m_templateId;
    HWND m_parent;
    HMODULE m_resources;
    qvad::shell::DialogTemplate m_dialog;
    bool m_ended = false;
    int m_result = IDCANCEL;
    bool m_created = false;
};

// Exchange helpers for DoDataExchange. Saving a text that is not a number prints a message naming the
// control and fails the exchange.
void DDX_Check(CQvDataExchange* exchange, int id, int& value);
void DDX_Check(CQvDataExchange* exchange, int id, bool& value);
void DDX_Text(CQvDataExchange* exchange, int id, std::string& value);
void DDX_Text(CQvDataExchange* exchange, int id, double& value);
void DDX_Text(CQvDataExchange* exchange, int id, int& value);
// value: index of the checked option within the radio group that firstId starts, -1 for none.
void DDX_Radio(CQvDataExchange* exchange, int firstId, int& value);
void DDX_CBIndex(CQvDataExchange* exchange, int id, int& index);
void DDX_LBIndex(CQvDataExchange* exchange, int id, int& index);
void DDX_CBString(CQvDataExchange* exchange, int id, std::string& value);
