#include "qvad/win32/windows_calls.h"
#include "tooldeck/module/ResourceText.h"
#include "tooldeck/module/resource_library.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

// The library handle is module-wide: each test says which library it reads and puts none back after.
class ResourceTextTest : public ::testing::Test {
protected:
    void TearDown() override { qvtd::useResourceLibrary(nullptr); }
};

} // namespace

TEST_F(ResourceTextTest, TextsAtTheBufferEdgeAreWholeOrCut) {
    HMODULE texts = LoadLibraryA(QVTD_TEST_TEXTS);
    ASSERT_NE(texts, nullptr);
    qvtd::useResourceLibrary(texts);

    qvtd::ResourceText fits(1, "error");
    EXPECT_EQ(std::string(fits.fetch()), std::string(999, 'a'));
    qvtd::ResourceText tooLong(2, "error");
    EXPECT_EQ(std::string(tooLong.fetch()), std::string(999, 'b'));
    qvtd::ResourceText plain(3, nullptr);
    EXPECT_STREQ(plain, "short");
}

TEST_F(ResourceTextTest, MissingTextsFallBack) {
    HMODULE texts = LoadLibraryA(QVTD_TEST_TEXTS);
    ASSERT_NE(texts, nullptr);
    qvtd::useResourceLibrary(texts);

    qvtd::ResourceText withFallback(4242, "error");
    EXPECT_STREQ(withFallback.fetch(), "error");
    qvtd::ResourceText withoutFallback(4242, nullptr);
    const char* text = withoutFallback.fetch();
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text, "");

    // A fallback longer than the buffer is cut to it rather than overrunning it.
    std::string huge(1500, 'z');
    qvtd::ResourceText longFallback(4242, huge.c_str());
    EXPECT_EQ(std::strlen(longFallback.fetch()), 999u);
}

TEST_F(ResourceTextTest, TheModuleTableHoldsTheNamedTexts) {
    HMODULE texts = LoadLibraryA(QVTD_MODULE_DIR "QvTooldeckRes.dll");
    ASSERT_NE(texts, nullptr);
    qvtd::useResourceLibrary(texts);
    // Ids the commands name; each must have a text of its own rather than the fallback.
    for (unsigned id : {625u,  2040u, 2041u, 2042u, 2043u, 2044u, 2046u, 2095u, 2096u, 2097u,
                        2098u, 2099u, 2396u, 2397u, 2408u, 2409u, 2414u, 6293u, 6294u, 6295u}) {
        qvtd::ResourceText text(id, nullptr);
        EXPECT_STRNE(text.fetch(), "") << id;
    }
    EXPECT_STREQ(qvtd::ResourceText(625, nullptr).fetch(), "error");
    // C escapes in the table become the characters.
    EXPECT_EQ(qvtd::ResourceText(2042, nullptr).fetch()[0], '\n');
}
