#include "qvad/text/host_print.h"
#include "qvad/win32/windows_calls.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

TEST(MessagesTest, MessageBoxPrintsCaptionAndTextAndAnswersOk) {
    std::vector<std::string> printed;
    qvad::setHostPrintHook([&printed](std::string_view line) { printed.emplace_back(line); });
    EXPECT_EQ(MessageBoxA(nullptr, "Can't load QvTooldeckRes.dll", "QVAD", MB_ICONERROR | MB_OK), IDOK);
    EXPECT_EQ(MessageBoxA(nullptr, nullptr, nullptr, MB_OK), IDOK);
    qvad::setHostPrintHook({});
    ASSERT_EQ(printed.size(), 2u);
    EXPECT_EQ(printed[0], "QVAD: Can't load QvTooldeckRes.dll");
    EXPECT_EQ(printed[1], "");
    EXPECT_TRUE(Beep(200, 200));
}

TEST(RegistryTest, EveryKeyIsMissing) {
    HKEY key = reinterpret_cast<HKEY>(1);
    EXPECT_EQ(RegOpenKeyExA(HKEY_CLASSES_ROOT, "Edgecam.Part\\shell\\open\\command", 0, KEY_READ, &key),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(key, nullptr);
    char data[16];
    DWORD size = sizeof data;
    EXPECT_EQ(
        RegQueryValueExA(HKEY_CURRENT_USER, "", nullptr, nullptr, reinterpret_cast<LPBYTE>(data), &size),
        ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegCloseKey(nullptr), ERROR_INVALID_HANDLE);
}

TEST(GlobalMemoryTest, BlocksKnowTheirSizeLocksAndOwner) {
    HGLOBAL block = GlobalAlloc(GMEM_DDESHARE | GMEM_MOVEABLE | GMEM_ZEROINIT, 12);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalSize(block), 12u);
    auto* bytes = static_cast<char*>(GlobalLock(block));
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(bytes[11], '\0');
    EXPECT_NE(GlobalLock(block), nullptr);
    EXPECT_TRUE(GlobalUnlock(block));  // still locked once
    EXPECT_FALSE(GlobalUnlock(block)); // now unlocked
    EXPECT_FALSE(GlobalUnlock(block)); // not locked at all
    EXPECT_EQ(GlobalFree(block), nullptr);
    // A freed or foreign handle is refused, not read through.
    int local = 0;
    EXPECT_EQ(GlobalSize(block), 0u);
    EXPECT_EQ(GlobalLock(&local), nullptr);
    EXPECT_EQ(GlobalFree(&local), &local);
}

} // namespace
