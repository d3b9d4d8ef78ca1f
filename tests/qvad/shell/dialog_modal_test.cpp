#include "dialog_test_console.h"
#include "qvad/shell/CQvUiDialog.h"
#include "qvad/win32/dialog_resources.h"

#include <gtest/gtest.h>

namespace {

HMODULE testResources() {
    static HMODULE module = LoadLibraryA("qv_test_dialogs.dll");
    return module;
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t n = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

// The duplicate-removal options with members exchanged, refusing a negative tolerance as the real one does.
class OptionsDialog : public CQvUiDialog {
public:
    OptionsDialog() : CQvUiDialog(2001, nullptr, testResources()) {}
    double tolerance = 0.25;
    bool ignoreLayer = true;
    int layer = 2;
    int cancels = 0;
    int refusals = 0;

protected:
    void DoDataExchange(CQvDataExchange* exchange) override {
        DDX_Text(exchange, 1001, tolerance);
        DDX_Check(exchange, 1002, ignoreLayer);
        DDX_CBIndex(exchange, 1010, layer);
    }
    void OnOK() override {
        double typed = 0.0;
        CQvDataExchange peek(this, true);
        DDX_Text(&peek, 1001, typed);
        if (!peek.failed() && typed < 0) {
            ++refusals;
            qvad::api::console().write("\nThe tolerance cannot be negative.");
            return;
        }
        CQvUiDialog::OnOK();
    }
    void OnCancel() override {
        ++cancels;
        CQvUiDialog::OnCancel();
    }
};

} // namespace

TEST(DialogModal, AsksEachControlInOrderAndTakesTheAnswers) {
    ASSERT_NE(testResources(), nullptr);
    DialogTestConsole console({"0.5", "No", "Yes", "Doors", "OK"});
    CQvUiDialog dialog(2001, nullptr, testResources());
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(console.unanswered(), 0u);
    ASSERT_EQ(console.prompts.size(), 5u);
    EXPECT_EQ(console.prompts[0], "Tolerance <0.000001>: ");
    EXPECT_EQ(console.prompts[1], "Ignore layer [Yes/No] <No>: ");
    EXPECT_EQ(console.prompts[2], "Ignore linetype [Yes/No] <Yes>: ");
    EXPECT_EQ(console.prompts[3], "Layer <Walls>: ");
    EXPECT_EQ(console.prompts[4], "OK or Cancel? [OK/Cancel] <OK>: ");
    // The heading: caption and static text, once, before the first question.
    EXPECT_EQ(count(console.transcript, "Objects to compare"), 1u);
    EXPECT_LT(console.transcript.find("Overkill"), console.transcript.find("Tolerance"));
    EXPECT_NE(console.transcript.find("  3  Doors"), std::string::npos);

    EXPECT_EQ(dialog.GetDlgItemText(1001), "0.5");
    EXPECT_EQ(dialog.IsDlgButtonChecked(1002), BST_UNCHECKED);
    EXPECT_EQ(dialog.IsDlgButtonChecked(1003), BST_CHECKED);
    EXPECT_EQ(dialog.GetCurSel(1010), 2);
    EXPECT_EQ(dialog.GetDlgItemText(1010), "Doors");
}

TEST(DialogModal, EmptyAnswersKeepEveryValue) {
    DialogTestConsole console({"", "", "", "", ""});
    CQvUiDialog dialog(2001, nullptr, testResources());
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetDlgItemText(1001), "0.000001");
    EXPECT_EQ(dialog.IsDlgButtonChecked(1002), BST_UNCHECKED);
    EXPECT_EQ(dialog.IsDlgButtonChecked(1003), BST_CHECKED);
    EXPECT_EQ(dialog.GetCurSel(1010), 1);
}

TEST(DialogModal, RadioGroupsAreOneQuestionAndHiddenOrDisabledControlsAreSkipped) {
    DialogTestConsole console({"Minus", "Yes", "2", ""});
    CQvUiDialog dialog(2002, nullptr, testResources());
    EXPECT_EQ(dialog.DoModal(), IDOK);
    ASSERT_EQ(console.prompts.size(), 4u);
    EXPECT_EQ(console.prompts[0], "Operation [Union/Intersection/Minus] <Union>: ");
    EXPECT_EQ(console.prompts[2], "Style: ");
    EXPECT_EQ(dialog.GetCheckedRadioButton(1101, 1103), 1103);
    EXPECT_EQ(dialog.IsDlgButtonChecked(1101), BST_UNCHECKED);
    EXPECT_EQ(dialog.IsDlgButtonChecked(1104), BST_CHECKED);
    EXPECT_EQ(dialog.GetDlgItemText(1105), "ISO-25");
    EXPECT_EQ(console.transcript.find("Note"), std::string::npos);
    EXPECT_EQ(console.transcript.find("Secret"), std::string::npos);
}

TEST(DialogModal, AListRefusesAnUnknownItemAndAsksAgain) {
    DialogTestConsole console({"", "", "", "Roof", "4", "walls", ""});
    CQvUiDialog dialog(2001, nullptr, testResources());
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(count(console.transcript, "No item"), 2u);
    EXPECT_EQ(dialog.GetCurSel(1010), 1);
    EXPECT_EQ(console.unanswered(), 0u);
}

TEST(DialogModal, CancelPathsAllEndWithIdCancel) {
    // Cancel chosen, Ctrl-C at a control, Ctrl-C at the last question, input ending half-way.
    const std::deque<std::string> scripts[] = {
        {"", "", "", "", "Cancel"},
        {"7", "^C"},
        {"", "", "", "", "^C"},
        {"0.1", "Yes"},
    };
    for (const auto& script : scripts) {
        DialogTestConsole console(script);
        OptionsDialog dialog;
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        EXPECT_EQ(dialog.cancels, 1);
        EXPECT_EQ(dialog.tolerance, 0.25) << "Cancel must not exchange the members";
        EXPECT_EQ(console.unanswered(), 0u);
    }
}

TEST(DialogModal, MembersGoInOnInitAndComeBackOnOk) {
    DialogTestConsole console({"", "No", "", "1", "OK"});
    OptionsDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(console.prompts[0], "Tolerance <0.25>: ");
    EXPECT_EQ(console.prompts[1], "Ignore layer [Yes/No] <Yes>: ");
    EXPECT_EQ(console.prompts[3], "Layer <Doors>: ");
    EXPECT_EQ(dialog.tolerance, 0.25);
    EXPECT_FALSE(dialog.ignoreLayer);
    EXPECT_EQ(dialog.layer, 0);
}

TEST(DialogModal, ARefusedOkKeepsTheDialogOpen) {
    DialogTestConsole console({"-1", "", "", "", "OK", "0.5", "", "", "", "OK"});
    OptionsDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.refusals, 1);
    EXPECT_EQ(dialog.tolerance, 0.5);
    EXPECT_EQ(count(console.transcript, "cannot be negative"), 1u);
    // Asked again with what was typed before as the default.
    EXPECT_EQ(console.prompts.at(5), "Tolerance <-1>: ");
}

TEST(DialogModal, ANonNumberFailsTheExchangeAndIsAskedAgain) {
    DialogTestConsole console({"abc", "", "", "", "OK", "2", "", "", "", ""});
    OptionsDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.tolerance, 2.0);
    EXPECT_NE(console.transcript.find("needs a number"), std::string::npos);
}

TEST(DialogModal, ABadOrMissingTemplateCancelsWithOneLine) {
    for (unsigned id : {2003u, 2004u, 2005u, 4242u}) {
        DialogTestConsole console({"OK"});
        CQvUiDialog plain(id, nullptr, testResources());
        EXPECT_EQ(plain.DoModal(), IDCANCEL) << id;
        EXPECT_TRUE(console.prompts.empty()) << id;
        // One line: the console may or may not keep the fresh-line break before it.
        EXPECT_EQ(count(console.transcript, "cannot be shown"), 1u) << console.transcript;
        EXPECT_LE(count(console.transcript, "\n"), 2u) << console.transcript;
        EXPECT_NE(console.transcript.find("Dialog " + std::to_string(id)), std::string::npos);
    }
    DialogTestConsole console({});
    CQvUiDialog broken(2003, nullptr, testResources());
    broken.DoModal();
    EXPECT_NE(console.transcript.find("line 2: unknown statement \"CHEK\""), std::string::npos);
}

TEST(DialogModal, ANullModuleUsesTheCurrentResourceModule) {
    qvad::win32::setDialogResourceModule(testResources());
    DialogTestConsole console({"", "", "", "", ""});
    CQvUiDialog dialog(2002);
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.caption(), "Boolean");
    qvad::win32::setDialogResourceModule(nullptr);
}

namespace {

// Disables the edit box in OnInitDialog and ends at once when told to.
class InitDialog : public CQvUiDialog {
public:
    explicit InitDialog(bool endAtOnce)
        : CQvUiDialog(2001, nullptr, testResources()), m_endAtOnce(endAtOnce) {}
    std::vector<int> changed;

protected:
    BOOL OnInitDialog() override {
        EnableDlgItem(1001, false);
        ShowDlgItem(1010, false);
        if (m_endAtOnce) EndDialog(7);
        return TRUE;
    }
    void OnControlChanged(int id) override {
        changed.push_back(id);
        if (id == 1002) ShowDlgItem(1010, true); // a check box that reveals the list
    }

private:
    bool m_endAtOnce;
};

} // namespace

TEST(DialogModal, OnInitDialogShapesWhatIsAsked) {
    {
        DialogTestConsole console({"Yes", "", "Doors", ""});
        InitDialog dialog(false);
        EXPECT_EQ(dialog.DoModal(), IDOK);
        ASSERT_EQ(console.prompts.size(), 4u);
        EXPECT_EQ(console.prompts[0], "Ignore layer [Yes/No] <No>: ");
        EXPECT_EQ(console.prompts[2], "Layer <Walls>: ");
        EXPECT_EQ(dialog.changed, (std::vector<int>{1002, 1010}));
    }
    {
        DialogTestConsole console({"OK"});
        InitDialog dialog(true);
        EXPECT_EQ(dialog.DoModal(), 7);
        EXPECT_TRUE(console.prompts.empty());
    }
}

TEST(DialogModal, ModelessCreateAsksWithoutTheLastQuestion) {
    DialogTestConsole console({"Intersection", "", ""});
    CQvUiDialog dialog(2002, nullptr, testResources());
    EXPECT_TRUE(dialog.Create());
    EXPECT_TRUE(dialog.IsWindow());
    EXPECT_EQ(console.prompts.size(), 3u);
    EXPECT_EQ(dialog.GetCheckedRadioButton(1101, 1103), 1102);
    EXPECT_TRUE(dialog.DestroyWindow());
    EXPECT_FALSE(dialog.IsWindow());
}

TEST(DialogModal, ControlsCanBeFilledAndReadByCode) {
    DialogTestConsole console({"", "", "", ""});
    class Filled : public CQvUiDialog {
    public:
        Filled() : CQvUiDialog(2002, nullptr, testResources()) {}

    protected:
        BOOL OnInitDialog() override {
            ResetContent(1105);
            AddString(1105, "Alpha");
            AddString(1105, "Beta");
            SetDlgItemText(1105, "beta");
            CheckRadioButton(1101, 1103, 1102);
            return TRUE;
        }
    } dialog;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(console.prompts.at(0), "Operation [Union/Intersection/Minus] <Intersection>: ");
    EXPECT_EQ(console.prompts.at(2), "Style <Beta>: ");
    EXPECT_EQ(dialog.GetCount(1105), 2);
    EXPECT_EQ(dialog.FindStringExact(1105, "ALPHA"), 0);
    EXPECT_EQ(dialog.SetCurSel(1105, 5), CB_ERR);
    EXPECT_EQ(dialog.GetCurSel(1105), -1);
    char small[4];
    EXPECT_EQ(dialog.GetDlgItemText(1104, small, sizeof small), 3);
    EXPECT_STREQ(small, "Era");
    // Unknown ids read as empty and ignore writes.
    dialog.SetDlgItemText(9999, "x");
    EXPECT_EQ(dialog.GetDlgItemText(9999), "");
    EXPECT_EQ(dialog.GetCurSel(9999), CB_ERR);
}

namespace {

class ExchangeDialog : public CQvUiDialog {
public:
    ExchangeDialog() : CQvUiDialog(2002, nullptr, testResources()) {}
    int operation = 2;
    bool erase = true;
    std::string style = "ISO-25";
    int count = 3;

protected:
    void DoDataExchange(CQvDataExchange* exchange) override {
        DDX_Radio(exchange, 1101, operation);
        DDX_Check(exchange, 1104, erase);
        DDX_CBString(exchange, 1105, style);
        DDX_Text(exchange, 1106, count); // disabled: never asked, still exchanged
    }
};

} // namespace

TEST(DialogModal, RadioIndexAndWholeNumbersExchange) {
    DialogTestConsole console({"", "", "", ""});
    ExchangeDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(console.prompts.at(0), "Operation [Union/Intersection/Minus] <Minus>: ");
    EXPECT_EQ(console.prompts.at(1), "Erase second profiles [Yes/No] <Yes>: ");
    EXPECT_EQ(console.prompts.at(2), "Style <ISO-25>: ");
    EXPECT_EQ(dialog.GetDlgItemText(1106), "3");

    DialogTestConsole again({"Union", "No", "Standard", ""});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.operation, 0);
    EXPECT_FALSE(dialog.erase);
    EXPECT_EQ(dialog.style, "Standard");

    dialog.SetDlgItemText(1106, "2.5");
    EXPECT_FALSE(dialog.UpdateData(true)) << "2.5 is not a whole number";
    dialog.SetDlgItemText(1106, "12");
    EXPECT_TRUE(dialog.UpdateData(true));
    EXPECT_EQ(dialog.count, 12);
}
