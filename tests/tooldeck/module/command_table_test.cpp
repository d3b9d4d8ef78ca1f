#include "tooldeck/module/command_table.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

} // namespace

TEST(CommandTable, GroupsHoldTheirCommandsInRegistrationOrder) {
    auto table = qvtd::commandTable();
    ASSERT_EQ(table.size(), 175u);
    std::map<std::string, int> counts;
    for (const auto& row : table) ++counts[row.group];
    EXPECT_EQ(counts["QvTooldeck"], 143);
    EXPECT_EQ(counts["quantitiestool"], 12);
    EXPECT_EQ(counts["OrmelCADtools"], 20);
    EXPECT_EQ(counts.size(), 3u);

    // Groups are contiguous and in the registration order, so the table order is the registration order.
    std::vector<std::string> groupOrder;
    for (const auto& row : table)
        if (groupOrder.empty() || groupOrder.back() != row.group) groupOrder.push_back(row.group);
    EXPECT_EQ(groupOrder, (std::vector<std::string>{"QvTooldeck", "quantitiestool", "OrmelCADtools"}));

    // Rows at the seams and at both ends.
    EXPECT_STREQ(table.front().globalName, "wd_AddTxt");
    EXPECT_STREQ(table[142].globalName, "OM_boolop");
    EXPECT_STREQ(table[143].globalName, "xlen");
    EXPECT_STREQ(table[154].globalName, "xmulti");
    EXPECT_STREQ(table[155].globalName, "sascl");
    EXPECT_STREQ(table.back().globalName, "sahttp");
    auto position = [&](const char* name) {
        return std::find_if(table.begin(), table.end(),
                            [&](const auto& row) { return row.globalName == std::string(name); }) -
               table.begin();
    };
    EXPECT_LT(position("-xlist"), position("xlist"));
    EXPECT_LT(position("ShowWendal"), position("_chgbco"));
    EXPECT_EQ(position("layer_closeex"), position("layoffex") + 1);
}

TEST(CommandTable, LocalNamesDifferOnlyWhereTheCommandsAreTypedOtherwise) {
    const std::map<std::string, std::string> renamed = {{"getBlkSel", "blkss"},
                                                        {"getEntSel", "entss"},
                                                        {"getLaySel", "layss"},
                                                        {"getColSel", "colss"},
                                                        {"getEntLaySel", "entlayss"},
                                                        {"getEntColSel", "entcolss"},
                                                        {"getLayColSel", "laycolss"},
                                                        {"layv", "wdlayv"},
                                                        {"linv", "wdlinv"},
                                                        {"tjnum", "wdtjnum"},
                                                        {"ddsty", "wdddsty"},
                                                        {"formtxt", "wdformtxt"},
                                                        {"bge", "wdbge"},
                                                        {"bgh", "wdbgh"},
                                                        {"bgfg", "wdbgf"},
                                                        {"bgx", "wdbgx"},
                                                        {"bgmt", "wdbgmt"},
                                                        {"bgst", "wdbgst"},
                                                        {"bgjt", "wdbgjt"},
                                                        {"bgsf", "wdbgsf"},
                                                        {"bgzh", "wdbgzh"},
                                                        {"bgsh", "wdbgsh"},
                                                        {"bgzl", "wdbgzl"},
                                                        {"bgsl", "wdbgsl"},
                                                        {"bgsc", "wdbgsc"},
                                                        {"bgjs", "wdbgjs"}};
    std::map<std::string, std::string> found;
    for (const auto& row : qvtd::commandTable())
        if (std::string(row.globalName) != row.localName) found[row.globalName] = row.localName;
    EXPECT_EQ(found, renamed);
}

TEST(CommandTable, EveryRowHasAHandlerAndOnlyTwoPairsShareOne) {
    std::map<OdEdCommandFunction, std::vector<std::string>> byHandler;
    for (const auto& row : qvtd::commandTable()) {
        ASSERT_NE(row.handler, nullptr) << row.globalName;
        byHandler[row.handler].push_back(row.globalName);
    }
    std::set<std::vector<std::string>> shared;
    for (const auto& [handler, names] : byHandler)
        if (names.size() > 1) shared.insert(names);
    EXPECT_EQ(shared, (std::set<std::vector<std::string>>{{"layoffex", "layer_closeex"},
                                                          {"layer_unlocka", "layulcka"}}));
    EXPECT_EQ(byHandler.size(), 173u);
}

TEST(CommandTable, NoNameIsTakenTwiceWhateverItsCase) {
    // The host compares global and local names of all commands in one space, without regard to case.
    std::set<std::string> names;
    for (const auto& row : qvtd::commandTable()) {
        EXPECT_TRUE(names.insert(lower(row.globalName)).second) << row.globalName;
        if (lower(row.localName) != lower(row.globalName)) {
            EXPECT_TRUE(names.insert(lower(row.localName)).second) << row.localName;
        }
    }
}
