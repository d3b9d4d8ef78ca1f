// The interactive "Select objects:" prompt answered line by line: picks, implied windows, keywords,
// remove and undo, handles, bad answers, single selection and a module's own prompts.

#include "qvad/api/answers.h"
#include "selection_fixture.h"

#include <cstdio>

namespace {

using Found = std::set<long long>;

class SelectionPrompt : public selection_test::SelectionTest {
protected:
    void SetUp() override {
        SelectionTest::SetUp();
        setViewHeight(100); // PICKBOX 3: the aperture is 0.3 units
        a = line(0, 0, 2, 0);
        b = line(10, 0, 12, 0);
    }
    Found ask(std::initializer_list<const char*> answers, const char* mode = nullptr,
              const void* point1 = nullptr, int* status = nullptr, const qv_resbuf* filter = nullptr) {
        console.answers.assign(answers.begin(), answers.end());
        qv_name ss = {0, 0};
        const int s = qvedSSGet(mode, point1, nullptr, filter, ss);
        if (status) *status = s;
        return s == QV_NORM ? members(ss) : Found{};
    }
    bool shows(const std::string& text) const { return console.shown.find(text) != std::string::npos; }
    long long a = 0, b = 0;
};

TEST_F(SelectionPrompt, PicksAndImpliedWindows) {
    EXPECT_EQ(ask({"1,0.2", ""}), Found{a});
    EXPECT_TRUE(shows("1,0.2") && shows("1 found")) << console.shown;
    // Misses open a window: to the right a window, to the left a crossing.
    console.shown.clear();
    EXPECT_EQ(ask({"-1,-1", "3,1", "13,1", "11,-1", ""}), (Found{a, b}));
    EXPECT_TRUE(shows("Specify opposite corner: 3,1"));
    EXPECT_EQ(ask({"-1,-1", "11,1", ""}), Found{a}) << "a window takes only what lies wholly inside";
    EXPECT_EQ(ask({"1,0.5", "1,0.6", ""}, nullptr, nullptr), Found{}) << "outside the aperture";
}

TEST_F(SelectionPrompt, KeywordsRemoveUndoAndDuplicates) {
    EXPECT_EQ(ask({"W", "-1,-1", "20,1", "R", "1,0", ""}), Found{b});
    EXPECT_TRUE(shows("2 found"));
    EXPECT_TRUE(shows("Remove objects: ") && shows("1 removed, 1 total"));
    console.shown.clear();
    EXPECT_EQ(ask({"1,0", "c", "-1,-1", "20,1", ""}), (Found{a, b}));
    EXPECT_TRUE(shows("2 found (1 duplicate), 2 total"));
    EXPECT_EQ(ask({"1,0", "11,0", "U", ""}), Found{a});
    EXPECT_EQ(ask({"ALL", "R", "11,0", "A", "U", "U", "11,0", ""}), Found{b});
    EXPECT_EQ(ask({"BOX", "20,1", "11,-1", ""}), Found{b}) << "dragged left, the box crosses";
    EXPECT_EQ(ask({"F", "1,-1", "1,1", "", ""}), Found{a});
    EXPECT_EQ(ask({"CP", "9,-1", "20,-1", "20,1", "9,1", "", ""}), Found{b});
    EXPECT_EQ(ask({"L", ""}), Found{b});
    EXPECT_EQ(ask({"P", ""}), Found{b}) << "the previous prompt ended with b";
}

TEST_F(SelectionPrompt, HandlesBadAnswersAndCancelling) {
    char handle[32];
    std::snprintf(handle, sizeof handle, "#%llX", b);
    EXPECT_EQ(ask({handle, ""}), Found{b});
    EXPECT_EQ(ask({"#FFFFFF", "nonsense", "1,0", ""}), Found{a});
    EXPECT_TRUE(shows("No object with handle #FFFFFF"));
    EXPECT_TRUE(shows("*Invalid selection*"));
    EXPECT_TRUE(shows("Window/Crossing"));
    EXPECT_EQ(ask({"WP", "0,0", "4,4", "4,0", "0,4", "", ""}), Found{}) << "a crossed polygon is refused";
    int status = 0;
    ask({"1,0"}, nullptr, nullptr, &status);
    EXPECT_EQ(status, QV_CANCEL) << "input ran out before Enter";
    ask({""}, nullptr, nullptr, &status);
    EXPECT_EQ(status, QV_ERROR) << "nothing selected";
}

TEST_F(SelectionPrompt, SingleSelectionOwnPromptsFiltersAndFeeds) {
    int status = 0;
    EXPECT_EQ(ask({"11,0"}, ":S", nullptr, &status), Found{b});
    EXPECT_EQ(status, QV_NORM) << "no Enter is needed";
    const char* prompts[2] = {"\nPick walls: ", "\nUnpick walls: "};
    EXPECT_EQ(ask({"W", "-1,-1", "20,1", "R", "1,0", ""}, "_:$", prompts), Found{b});
    EXPECT_TRUE(shows("Pick walls: "));
    EXPECT_TRUE(shows("Unpick walls: "));
    qv_resbuf* circles = qvutBuildList(QV_RTDXF0, "CIRCLE", 0);
    EXPECT_EQ(ask({"W", "-1,-1", "20,1", ""}, nullptr, nullptr, nullptr, circles), Found{});
    EXPECT_TRUE(shows("0 found"));
    qvutRelRb(circles);

    std::deque<qvad::api::Answer> fed(1);
    fed[0].kind = qvad::api::Answer::Kind::Entity;
    qvdbEntLast(fed[0].name);
    qvad::api::AnswerFeed feed(std::move(fed), true);
    EXPECT_EQ(ask({""}), Found{b});
}

} // namespace
