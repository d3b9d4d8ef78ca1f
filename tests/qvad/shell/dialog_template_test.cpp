#include "qvad/shell/dialog_template.h"

#include <gtest/gtest.h>

using qvad::shell::ControlKind;
using qvad::shell::parseDialogTemplate;

TEST(DialogTemplate, ReadsEveryKindOfControl) {
    auto parsed = parseDialogTemplate(R"(
# options
DIALOG 2001 "Text \"joining\" options"
STATIC IDC_STATIC "Order and layout"
  CHECK 1001 "Word wrap" 1
EDIT 1002 "Tolerance" "0.000001" disabled
RADIO 1003 "Selection order" 1 group="Join order"
RADIO 1004 "Top to bottom" group="Join order" key=Position
LIST 1005 "Layer" 2 items="A|B b|C"
COMBO 1006 "Style" items="" hidden
BUTTON IDOK "OK"
BUTTON IDCANCEL "Cancel"
)");
    ASSERT_TRUE(parsed.ok()) << parsed.error;
    const auto& d = parsed.dialog;
    EXPECT_EQ(d.id, 2001);
    EXPECT_EQ(d.caption, "Text \"joining\" options");
    ASSERT_EQ(d.controls.size(), 9u);
    EXPECT_EQ(d.controls[0].kind, ControlKind::Static);
    EXPECT_EQ(d.controls[0].id, -1);
    EXPECT_TRUE(d.controls[1].checked);
    EXPECT_EQ(d.controls[2].value, "0.000001");
    EXPECT_FALSE(d.controls[2].enabled);
    EXPECT_EQ(d.controls[3].group, "Join order");
    EXPECT_EQ(d.controls[3].keyword, "Selectionorder");
    EXPECT_TRUE(d.controls[3].checked);
    EXPECT_EQ(d.controls[4].keyword, "Position");
    EXPECT_FALSE(d.controls[4].checked);
    EXPECT_EQ(d.controls[5].items, (std::vector<std::string>{"A", "B b", "C"}));
    EXPECT_EQ(d.controls[5].selected, 2);
    EXPECT_TRUE(d.controls[6].items.empty());
    EXPECT_EQ(d.controls[6].selected, -1);
    EXPECT_FALSE(d.controls[6].visible);
    EXPECT_EQ(d.controls[7].id, 1);
    EXPECT_EQ(d.controls[8].id, 2);
    EXPECT_EQ(d.controls[8].kind, ControlKind::Button);
}

TEST(DialogTemplate, RefusesEachKindOfBadLineNamingIt) {
    struct Case {
        const char* text;
        const char* error;
    };
    const Case cases[] = {
        {"", "no DIALOG statement"},
        {"# only a comment\n", "no DIALOG statement"},
        {"CHECK 1 \"x\"\n", "line 1: the first statement must be DIALOG"},
        {"DIALOG 1 \"a\"\nDIALOG 2 \"b\"\n", "line 2: a second DIALOG statement"},
        {"DIALOG 1\n", "line 1: DIALOG takes an id and a caption"},
        {"DIALOG 1 \"a\"\nCHEK 5 \"x\"\n", "line 2: unknown statement \"CHEK\""},
        {"DIALOG 1 \"a\"\nCHECK 5\n", "line 2: CHECK needs an id and a text"},
        {"DIALOG 1 \"a\"\nCHECK abc \"x\"\n", "line 2: \"abc\" is not a control id"},
        {"DIALOG 1 \"a\"\nCHECK -7 \"x\"\n", "is not a control id"},
        {"DIALOG 1 \"a\"\nCHECK 5 \"x\" 2\n", "line 2: expected 0 or 1, found \"2\""},
        {"DIALOG 1 \"a\"\nCHECK 5 \"x\" 1 0\n", "line 2: unexpected \"0\""},
        {"DIALOG 1 \"a\"\nEDIT 5 \"open\n", "line 2: a quoted text is not closed"},
        {"DIALOG 1 \"a\"\nCHECK 5 \"x\"\nEDIT 5 \"y\"\n", "line 3: control id 5 is used twice"},
        {"DIALOG 1 \"a\"\nRADIO 5 \"x\"\n", "line 2: RADIO needs group"},
        {"DIALOG 1 \"a\"\nRADIO 5 \"--\" group=g\n", "line 2: RADIO \"--\" needs key=<Word>"},
        {"DIALOG 1 \"a\"\nRADIO 5 \"x\" group=g key=\"two words\"\n", "is not one word"},
        {"DIALOG 1 \"a\"\nRADIO 5 \"Aa\" group=g\nRADIO 6 \"AA\" group=g\n", "has the key \"Aa\" twice"},
        {"DIALOG 1 \"a\"\nLIST 5 \"x\" 3 items=\"a|b\"\n", "line 2: selected item 3 does not exist"},
        {"DIALOG 1 \"a\"\nLIST 5 \"x\" two\n", "line 2: \"two\" is not an item index"},
        {"DIALOG 1 \"a\"\nCHECK 5 \"x\" items=\"a\"\n", "line 2: unexpected \"items=a\""},
        {"DIALOG 1 \"a\"\nSTATIC 5 \"x\" 1\n", "line 2: unexpected \"1\""},
        {"DIALOG 1 \"a\"\nEDIT IDC_STATIC \"x\"\n", "line 2: EDIT needs an id of its own"},
    };
    for (const Case& c : cases) {
        auto parsed = parseDialogTemplate(c.text);
        EXPECT_FALSE(parsed.ok()) << c.text;
        EXPECT_NE(parsed.error.find(c.error), std::string::npos) << c.text << " -> " << parsed.error;
        EXPECT_TRUE(parsed.dialog.controls.empty()) << c.text;
    }
}

TEST(DialogTemplate, KeepsBlanksAndBackslashesInsideQuotes) {
    auto parsed = parseDialogTemplate("DIALOG 7 \"a\"\r\nEDIT 3 \"Path\" \"C:\\\\dir\\\\ x\"\r\n");
    ASSERT_TRUE(parsed.ok()) << parsed.error;
    EXPECT_EQ(parsed.dialog.controls.at(0).value, "C:\\dir\\ x");
}

TEST(DialogTemplate, LinesOfFormFeedsAndVerticalTabsAreBlank) {
    auto parsed = parseDialogTemplate("DIALOG 7 \"a\"\n\f\n\v \t\nCHECK 3 \"On\"\n");
    ASSERT_TRUE(parsed.ok()) << parsed.error;
    EXPECT_EQ(parsed.dialog.controls.size(), 1u);
}
