// Number prompts: reals, integers, distances and angles, typed or given by points, with the NOZERO,
// NONEG and 2D bits, the drawing's angle units and direction, and their messages.

#include "input_fixture.h"

#include <cmath>
#include <numbers>

namespace {

using qvad::test::InputTest;
using InputNumbers = InputTest;
constexpr double kDegree = std::numbers::pi / 180.0;

TEST_F(InputNumbers, RealsAndTheirRefusals) {
    auto& console = answers({"abc", "1,2", "-2.5", "0", "-1", "0.25", "1e3"});
    double value = 0.0;
    ASSERT_EQ(qvedGetReal("\nScale: ", &value), QV_NORM);
    EXPECT_DOUBLE_EQ(value, -2.5);
    qvedInitGet(QV_INP_NOZERO | QV_INP_NONEG, nullptr);
    ASSERT_EQ(qvedGetReal("\nScale: ", &value), QV_NORM);
    EXPECT_DOUBLE_EQ(value, 0.25);
    EXPECT_EQ(console.transcript(), "Scale: abc\n"
                                    "Requires numeric value or option keyword.\n"
                                    "Scale: 1,2\n"
                                    "Requires numeric value or option keyword.\n"
                                    "Scale: -2.5\n"
                                    "Scale: 0\n"
                                    "Value must be nonzero.\n"
                                    "Scale: -1\n"
                                    "Value must be positive.\n"
                                    "Scale: 0.25\n");
    ASSERT_EQ(qvedGetReal("\nScale: ", &value), QV_NORM);
    EXPECT_DOUBLE_EQ(value, 1000.0);
}

TEST_F(InputNumbers, IntegersRefuseFractionsAndOverflow) {
    auto& console = answers({"1.5", "99999999999", "x", "-7", "", "0", "12"});
    int value = 0;
    ASSERT_EQ(qvedGetInt("\nCount: ", &value), QV_NORM);
    EXPECT_EQ(value, -7);
    EXPECT_EQ(console.transcript(), "Count: 1.5\n"
                                    "Requires an integer value or option keyword.\n"
                                    "Count: 99999999999\n"
                                    "Requires an integer value or option keyword.\n"
                                    "Count: x\n"
                                    "Requires an integer value or option keyword.\n"
                                    "Count: -7\n");
    value = 42;
    EXPECT_EQ(qvedGetInt("\nCount: ", &value), QV_RTNONE);
    EXPECT_EQ(value, 42);
    qvedInitGet(QV_INP_NOZERO, nullptr);
    ASSERT_EQ(qvedGetInt("\nCount: ", &value), QV_NORM);
    EXPECT_EQ(value, 12);
}

TEST_F(InputNumbers, DistancesTypedOrFromPoints) {
    answers({"2.5", "3,4", "x", "1,1,1", "4,5,13", "1,1,0", "4,5,12"});
    qv_point base{0, 0, 0};
    double value = 0.0;
    ASSERT_EQ(qvedGetDist(base, "\nDistance: ", &value), QV_NORM);
    EXPECT_DOUBLE_EQ(value, 2.5);
    ASSERT_EQ(qvedGetDist(base, "\nDistance: ", &value), QV_NORM);
    EXPECT_DOUBLE_EQ(value, 5.0);
    // Without a base, a point asks for the second one.
    auto& console = *con;
    console.clearTranscript();
    ASSERT_EQ(qvedGetDist(nullptr, "\nDistance: ", &value), QV_NORM);
    EXPECT_DOUBLE_EQ(value, 13.0);
    EXPECT_EQ(console.transcript(), "Distance: x\n"
                                    "Requires numeric distance, two points, or option keyword.\n"
                                    "Distance: 1,1,1\n"
                                    "Specify second point: 4,5,13\n");
    qvedInitGet(QV_INP_2D, nullptr);
    ASSERT_EQ(qvedGetDist(nullptr, "\nDistance: ", &value), QV_NORM);
    EXPECT_DOUBLE_EQ(value, 5.0); // the height difference does not count
}

TEST_F(InputNumbers, DistanceBitsAndBaseMessage) {
    auto& console = answers({"0,0", "-3", "q", "2"});
    qv_point base{0, 0, 0};
    double value = 0.0;
    qvedInitGet(QV_INP_NOZERO | QV_INP_NONEG, nullptr);
    ASSERT_EQ(qvedGetDist(base, "\nD: ", &value), QV_NORM);
    EXPECT_DOUBLE_EQ(value, 2.0);
    EXPECT_EQ(console.transcript(), "D: 0,0\n"
                                    "Value must be nonzero.\n"
                                    "D: -3\n"
                                    "Value must be positive.\n"
                                    "D: q\n"
                                    "Requires numeric distance, second point, or option keyword.\n"
                                    "D: 2\n");
}

TEST_F(InputNumbers, AnglesInTheDrawingsUnitsAndDirection) {
    answers({"90", "100", "90", "0,10", "-90"});
    qv_point base{0, 0, 0};
    double angle = 0.0;
    ASSERT_EQ(qvedGetAngle(nullptr, "\nAngle: ", &angle), QV_NORM);
    EXPECT_NEAR(angle, 90 * kDegree, 1e-12);
    setShort("AUNITS", 2); // grads
    ASSERT_EQ(qvedGetAngle(nullptr, "\nAngle: ", &angle), QV_NORM);
    EXPECT_NEAR(angle, 90 * kDegree, 1e-12);
    setShort("AUNITS", 0);
    // Zero to the north, clockwise: the result still counts counterclockwise from ANGBASE.
    setReal("ANGBASE", 90 * kDegree);
    setShort("ANGDIR", 1);
    ASSERT_EQ(qvedGetAngle(nullptr, "\nAngle: ", &angle), QV_NORM);
    EXPECT_NEAR(angle, 270 * kDegree, 1e-12);
    ASSERT_EQ(qvedGetAngle(base, "\nAngle: ", &angle), QV_NORM); // due north is ANGBASE itself
    EXPECT_NEAR(angle, 0.0, 1e-12);
    ASSERT_EQ(qvedGetAngle(base, "\nAngle: ", &angle), QV_NORM);
    EXPECT_NEAR(angle, 90 * kDegree, 1e-12);
}

TEST_F(InputNumbers, AngleFromTwoPointsAndRefusals) {
    auto& console = answers({"left", "0,0", "-1,0"});
    double angle = 0.0;
    ASSERT_EQ(qvedGetAngle(nullptr, "\nAngle: ", &angle), QV_NORM);
    EXPECT_NEAR(angle, std::numbers::pi, 1e-12);
    EXPECT_EQ(console.transcript(), "Angle: left\n"
                                    "Requires valid numeric angle, two points, or option keyword.\n"
                                    "Angle: 0,0\n"
                                    "Specify second point: -1,0\n");
    qvedInitGet(QV_INP_NOZERO, nullptr);
    answers({"0", "45"});
    ASSERT_EQ(qvedGetAngle(nullptr, "\nAngle: ", &angle), QV_NORM);
    EXPECT_NEAR(angle, 45 * kDegree, 1e-12);
    EXPECT_EQ(con->transcript(), "Angle: 0\nValue must be nonzero.\nAngle: 45\n");
}

} // namespace
