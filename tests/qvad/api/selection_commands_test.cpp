// The built-in SELECT, ERASE and LIST commands working on the pick-first set.

#include "qvad/shell/builtin_commands.h"
#include "selection_fixture.h"

namespace {

using selection_test::SelectionTest;
using Found = std::set<long long>;

TEST_F(SelectionTest, SelectThenEraseAndList) {
    setViewHeight(100);
    const long long a = line(0, 0, 2, 0, "WALL"), b = line(10, 0, 12, 0);
    console.answers = {"1,0", ""};
    qvad::shell::cmdSelect();
    qv_name ss = {0, 0};
    ASSERT_EQ(qvedSSGet("I", nullptr, nullptr, nullptr, ss), QV_NORM);
    EXPECT_EQ(members(ss), Found{a});

    console.shown.clear();
    qvad::shell::cmdList();
    EXPECT_NE(console.shown.find("LINE  Layer: \"WALL\""), std::string::npos) << console.shown;
    EXPECT_NE(console.shown.find("Model space"), std::string::npos);
    EXPECT_EQ(console.shown.find("Select objects"), std::string::npos) << "the pick-first set was used";

    qvad::shell::cmdErase();
    EXPECT_NE(console.shown.find("1 erased."), std::string::npos);
    EXPECT_EQ(everything(nullptr), Found{b});
    EXPECT_EQ(qvedSSGet("I", nullptr, nullptr, nullptr, ss), QV_ERROR) << "nothing stays picked";

    // Without a pick-first set ERASE asks.
    console.answers = {"11,0", ""};
    qvad::shell::cmdErase();
    EXPECT_EQ(everything(nullptr), Found{});
}

} // namespace
