#include "qvad/shell/OdEdCommandStack.h"

#include <gtest/gtest.h>

namespace {

void first() {}
void second() {}

struct GroupCleanup {
    ~GroupCleanup() {
        odedRegCmds()->removeGroup("StackTestA");
        odedRegCmds()->removeGroup("StackTestB");
    }
};

TEST(CommandStack, NamesAreUniqueAcrossGroupsWithoutRegardToCase) {
    GroupCleanup cleanup;
    OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
    const OdEdCommand* made = nullptr;
    ASSERT_EQ(stack->addCommand("StackTestA", "stkGlobal", "stkLocal", 0x10000000, first, nullptr, -1,
                                nullptr, &made),
              eOk);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->flags, 0x10000000);
    EXPECT_EQ(made->group.str(), "StackTestA");

    const std::size_t before = stack->commands().size();
    EXPECT_EQ(stack->addCommand("StackTestB", "STKGLOBAL", "other", 0, second), eDuplicateKey);
    EXPECT_EQ(stack->addCommand("StackTestB", "other", "StkLocal", 0, second), eDuplicateKey);
    EXPECT_EQ(stack->addCommand("StackTestA", "stkGlobal", "stkLocal", 0, second), eDuplicateKey);
    EXPECT_EQ(stack->addCommand("StackTestB", "", "x", 0, second), eInvalidInput);
    EXPECT_EQ(stack->addCommand("StackTestB", "x", "x", 0, nullptr), eInvalidInput);
    EXPECT_EQ(stack->commands().size(), before);
    // The refused registrations left the first one as it was.
    EXPECT_EQ(stack->lookupCmd("stklocal")->handler, &first);
}

TEST(CommandStack, LookupByLocalThenGlobalAndUnderscoreForGlobalOnly) {
    GroupCleanup cleanup;
    OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
    ASSERT_EQ(stack->addCommand("StackTestA", "stkBlocks", "stkBlk", 0, first), eOk);
    ASSERT_EQ(stack->addCommand("StackTestA", "stkOther", "stkBlocksLocal", 0, second), eOk);

    ASSERT_NE(stack->lookupCmd("STKBLK"), nullptr);
    EXPECT_EQ(stack->lookupCmd("STKBLK")->globalName.str(), "stkBlocks");
    EXPECT_EQ(stack->lookupCmd("stkblocks")->handler, &first); // no local name matches: the global one
    EXPECT_EQ(stack->lookupCmd("_stkBlocks")->handler, &first);
    EXPECT_EQ(stack->lookupCmd("_stkBlk"), nullptr); // a local name is not a global one
    EXPECT_EQ(stack->lookupCmd("stkNothing"), nullptr);
    EXPECT_EQ(stack->lookupCmd(""), nullptr);
    EXPECT_EQ(stack->lookupCmd("_"), nullptr);
}

TEST(CommandStack, RemoveGroupTakesAllItsCommandsAndKeepsOrder) {
    GroupCleanup cleanup;
    OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
    ASSERT_EQ(stack->addCommand("StackTestA", "stkA1", "stkA1", 0, first), eOk);
    ASSERT_EQ(stack->addCommand("StackTestB", "stkB1", "stkB1", 0, first), eOk);
    ASSERT_EQ(stack->addCommand("StackTestA", "stkA2", "stkA2", 0, second), eOk);

    std::vector<std::string> order;
    for (const OdEdCommand* cmd : stack->commands())
        if (cmd->group.str().rfind("StackTest", 0) == 0) order.push_back(cmd->globalName.str());
    EXPECT_EQ(order, (std::vector<std::string>{"stkA1", "stkA2", "stkB1"}));

    EXPECT_EQ(stack->removeGroup("stacktesta"), eOk);
    EXPECT_EQ(stack->lookupCmd("stkA1"), nullptr);
    EXPECT_EQ(stack->lookupCmd("stkA2"), nullptr);
    EXPECT_NE(stack->lookupCmd("stkB1"), nullptr);
    EXPECT_EQ(stack->removeGroup("StackTestA"), eKeyNotFound);
    // The freed names can be taken again.
    EXPECT_EQ(stack->addCommand("StackTestB", "stkA1", "stkA1", 0, second), eOk);
}

TEST(CommandStack, OneStackWithTheHostCommandsAndAReferencePerCaller) {
    OdSmartPtr<OdEdCommandStack> a = odedRegCmds();
    const long held = a->numRefs();
    {
        OdSmartPtr<OdEdCommandStack> b = odedRegCmds();
        EXPECT_EQ(a.get(), b.get());
        EXPECT_EQ(a->numRefs(), held + 1);
    }
    EXPECT_EQ(a->numRefs(), held);
    const OdEdCommand* layer = a->lookupCmd("-layer");
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer->group.str(), "QVAD");
    EXPECT_NE(a->lookupCmd("_SETVAR"), nullptr);
}

} // namespace
