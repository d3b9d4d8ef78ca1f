#include "qvad/win32/dialog_resources.h"

#include <gtest/gtest.h>

TEST(DialogResources, ALibraryOfStringsOnlyHasNoTemplates) {
    HMODULE strings = LoadLibraryA("qv_test_strings.dll");
    ASSERT_NE(strings, nullptr);
    EXPECT_FALSE(qvad::win32::findDialogTemplate(strings, 101).has_value());
    // A null module with no current resource module looks through the program, which holds none.
    qvad::win32::setDialogResourceModule(nullptr);
    EXPECT_FALSE(qvad::win32::findDialogTemplate(nullptr, 2001).has_value());
    // The current resource module is what a null module means.
    qvad::win32::setDialogResourceModule(strings);
    EXPECT_EQ(qvad::win32::dialogResourceModule(), strings);
    EXPECT_FALSE(qvad::win32::findDialogTemplate(nullptr, 101).has_value());
    qvad::win32::setDialogResourceModule(nullptr);
    FreeLibrary(strings);
}
