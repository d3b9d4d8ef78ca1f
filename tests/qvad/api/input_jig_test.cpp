// Dragging with typed input, and the screen calls that have no screen: highlighting remembered per
// entity, temporary vectors accepted, and keys and points read one answer at a time.

#include "input_fixture.h"
#include "qvad/api/QvEdJig.h"
#include "qvad/api/display_state.h"

#include <vector>

namespace {

using qvad::test::InputTest;
using InputJig = InputTest;

// Builds a polygon from the dragged points, as an area measurement would.
class PolygonJig : public QvEdJig {
public:
    DragStatus sampler() override { return acquirePoint(m_sample, OdGePoint3d(0, 0, 0)); }
    bool update() override {
        vertices.push_back(m_sample);
        return true;
    }
    std::vector<OdGePoint3d> vertices;

private:
    OdGePoint3d m_sample;
};

class NameJig : public QvEdJig {
public:
    DragStatus sampler() override { return acquireString(name); }
    bool update() override { return true; }
    std::string name;
};

TEST_F(InputJig, EachDragTakesOneTypedAnswer) {
    setLastPoint(10, 10, 0);
    auto& console = answers({"1,2", "@1,0", "bad", "u", "", "2,2", "^C"});
    PolygonJig jig;
    jig.setDispPrompt("\nPoint %d: ", 1);
    jig.setKeywordList("Undo Close");
    EXPECT_EQ(jig.drag(), QvEdJig::kNormal);
    EXPECT_EQ(jig.drag(), QvEdJig::kNormal);
    ASSERT_EQ(jig.vertices.size(), 2u);
    EXPECT_EQ(jig.vertices[1], OdGePoint3d(2, 2, 0)); // relative to the point before
    EXPECT_EQ(jig.drag(), QvEdJig::kKeyword);
    EXPECT_EQ(jig.keyword(), "Undo");
    EXPECT_EQ(jig.keywordIndex(), 0);
    // Without kNullResponseAccepted an empty answer asks again; the same point adds nothing.
    EXPECT_EQ(jig.drag(), QvEdJig::kNormal);
    EXPECT_EQ(jig.vertices.size(), 2u);
    EXPECT_EQ(jig.drag(), QvEdJig::kCancel);
    EXPECT_EQ(console.transcript(), "Point 1: 1,2\nPoint 1: @1,0\nPoint 1: bad\n"
                                    "Point or option keyword required.\nPoint 1: u\nPoint 1: \nPoint 1: 2,2\n"
                                    "Point 1: *Cancel*\n");
}

TEST_F(InputJig, ControlsForEmptyAndOtherAnswers) {
    answers({"", "free text", "Bob"});
    NameJig names;
    PolygonJig points;
    points.setDispPrompt("\nPoint: ");
    points.setUserInputControls(QvEdJig::kNullResponseAccepted | QvEdJig::kAcceptOtherInputString);
    EXPECT_EQ(points.drag(), QvEdJig::kNull);
    EXPECT_EQ(points.drag(), QvEdJig::kOther);
    EXPECT_EQ(points.inputString(), "free text");
    names.setDispPrompt("\nName: ");
    EXPECT_EQ(names.drag(), QvEdJig::kNormal);
    EXPECT_EQ(names.name, "Bob");
}

TEST_F(InputJig, RedrawRemembersHighlighting) {
    const qv_real from[3] = {0, 0, 0}, to[3] = {1, 1, 0};
    qv_resbuf* line = qvutBuildList(QV_RTDXF0, "LINE", 10, from, 11, to, 0);
    ASSERT_NE(line, nullptr);
    ASSERT_EQ(qvdbEntMake(line), QV_NORM);
    qvutRelRb(line);
    qv_name entity{};
    ASSERT_EQ(qvdbEntLast(entity), QV_NORM);
    EXPECT_FALSE(qvad::api::isHighlighted(entity));
    EXPECT_EQ(qvedRedraw(entity, 3), QV_NORM);
    EXPECT_TRUE(qvad::api::isHighlighted(entity));
    EXPECT_EQ(qvedRedraw(entity, 2), QV_NORM);
    EXPECT_TRUE(qvad::api::isHidden(entity));
    EXPECT_EQ(qvedRedraw(entity, 4), QV_NORM);
    EXPECT_EQ(qvedRedraw(entity, 1), QV_NORM);
    EXPECT_FALSE(qvad::api::isHighlighted(entity));
    EXPECT_FALSE(qvad::api::isHidden(entity));
    EXPECT_EQ(qvedRedraw(entity, 5), QV_ERROR);
    EXPECT_EQ(qvedRedraw(nullptr, 0), QV_NORM); // the whole screen
    qv_name stale{entity[0] + 1, entity[1]};
    EXPECT_EQ(qvedRedraw(stale, 3), QV_ERROR);
    qv_point a{0, 0, 0}, b{1, 1, 0};
    EXPECT_EQ(qvedGrDraw(a, b, 1, 0), QV_NORM);
    EXPECT_EQ(qvedGrDraw(a, nullptr, 1, 0), QV_ERROR);
    qvad::api::clearDisplayState();
}

TEST_F(InputJig, GrReadGivesPointsAndKeys) {
    answers({"1,2,3", "", "yes", "^C"});
    int type = 0;
    qv_resbuf result{};
    ASSERT_EQ(qvedGrRead(0, &type, &result), QV_NORM);
    EXPECT_EQ(type, 3);
    EXPECT_EQ(result.restype, QV_RT3DPOINT);
    EXPECT_EQ(result.resval.rpoint[2], 3.0);
    ASSERT_EQ(qvedGrRead(0, &type, &result), QV_NORM);
    EXPECT_EQ(type, 2);
    EXPECT_EQ(result.resval.rint, 13);
    ASSERT_EQ(qvedGrRead(0, &type, &result), QV_NORM);
    EXPECT_EQ(result.resval.rint, 'y');
    EXPECT_EQ(qvedGrRead(0, &type, &result), QV_CANCEL);
}

} // namespace
