// Angles to text and back in the five angular modes, with ANGBASE and ANGDIR set, and unit conversion
// between named units.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <numbers>
#include <string>

namespace {

using qvad::api::HostSession;
constexpr double kDegree = std::numbers::pi / 180.0;

class AngleText : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        HostSession::current().setDrawing(db.get());
        setShort("DIMZIN", 0);
    }
    void TearDown() override {
        HostSession::current().setDrawing(nullptr);
        qvad::api::SysVarSession::current().reset();
    }
    static void setShort(const char* name, short value) {
        qv_resbuf rb{};
        rb.restype = QV_RTSHORT;
        rb.resval.rint = value;
        ASSERT_EQ(qvedSetVar(name, &rb), QV_NORM);
    }
    static void setReal(const char* name, double value) {
        qv_resbuf rb{};
        rb.restype = QV_RTREAL;
        rb.resval.rreal = value;
        ASSERT_EQ(qvedSetVar(name, &rb), QV_NORM);
    }
    static std::string angtos(double radians, int unit, int precision) {
        char text[64] = "unchanged";
        EXPECT_EQ(qvdbAngToS(radians, unit, precision, text, sizeof text), QV_NORM) << radians;
        return text;
    }
    static double angtof(const std::string& text, int unit) {
        double value = -999.0;
        EXPECT_EQ(qvdbAngToF(text.c_str(), unit, &value), QV_NORM) << text;
        return value;
    }

    std::unique_ptr<OdDbDatabase> db;
};

TEST_F(AngleText, EachModePrintsAsDrafterReadsIt) {
    double angle = 45.50430556 * kDegree; // 45d30'15.5"
    EXPECT_EQ(angtos(angle, 0, 2), "45.50");
    EXPECT_EQ(angtos(angle, 1, 0), "46d"); // rounds to the nearest degree
    EXPECT_EQ(angtos(angle, 1, 2), "45d30'");
    EXPECT_EQ(angtos(angle, 1, 4), "45d30'16\"");
    EXPECT_EQ(angtos(angle, 1, 5), "45d30'15.5\"");
    EXPECT_EQ(angtos(angle, 2, 3), "50.560g");
    EXPECT_EQ(angtos(std::numbers::pi / 4, 3, 4), "0.7854r");
    EXPECT_EQ(angtos(60 * kDegree, 4, 2), "N 30d0' E");
    EXPECT_EQ(angtos(135 * kDegree, 4, 0), "N 45d W");
    EXPECT_EQ(angtos(200 * kDegree, 4, 2), "S 70d0' W");
    EXPECT_EQ(angtos(300 * kDegree, 4, 2), "S 30d0' E");
    EXPECT_EQ(angtos(90 * kDegree, 4, 2), "N");
    EXPECT_EQ(angtos(std::numbers::pi, 4, 2), "W");
    EXPECT_EQ(angtos(0.0, 4, 2), "E");
    EXPECT_EQ(angtos(270 * kDegree, 4, 2), "S");
}

TEST_F(AngleText, AnglesAreBroughtIntoOneTurn) {
    EXPECT_EQ(angtos(-90 * kDegree, 0, 0), "270");
    EXPECT_EQ(angtos(450 * kDegree, 0, 1), "90.0");
    EXPECT_EQ(angtos(359.9999 * kDegree, 0, 2), "0.00");
    EXPECT_EQ(angtos(359.9999 * kDegree, 1, 4), "0d0'0\"");
    EXPECT_NEAR(angtof("-45", 0), 315 * kDegree, 1e-12);
}

TEST_F(AngleText, DimzinTrimsDecimalAngles) {
    setShort("DIMZIN", 8);
    EXPECT_EQ(angtos(45 * kDegree, 0, 4), "45");
    EXPECT_EQ(angtos(22.5 * kDegree, 0, 4), "22.5");
}

TEST_F(AngleText, EveryModeReadsBackWhatItPrints) {
    for (double degrees :
         {0.0, 1.0, 30.0, 45.504, 89.99, 90.0, 135.25, 180.0, 200.0, 270.0, 300.125, 359.5}) {
        for (int unit = 0; unit <= 4; ++unit) {
            for (int precision : {0, 2, 4, 6, 8}) {
                std::string text = angtos(degrees * kDegree, unit, precision);
                double resolution =
                    unit == 1 || unit == 4
                        ? (precision == 0   ? 1.0
                           : precision <= 2 ? 1.0 / 60
                                            : 1.0 / 3600 / std::pow(10, std::max(0, precision - 4)))
                    : unit == 2 ? std::pow(10.0, -precision) * 0.9
                    : unit == 3 ? std::pow(10.0, -precision) / kDegree
                                : std::pow(10.0, -precision);
                double back = angtof(text, unit) / kDegree;
                double difference = std::fabs(back - degrees);
                EXPECT_LE(std::min(difference, 360.0 - difference), resolution / 2 + 1e-9)
                    << text << " unit " << unit << " precision " << precision;
            }
        }
    }
}

TEST_F(AngleText, TextInAnyAngleFormatIsReadWhateverTheMode) {
    EXPECT_NEAR(angtof("45d30'", 0), 45.5 * kDegree, 1e-12);
    EXPECT_NEAR(angtof("45d30'36\"", 3), 45.51 * kDegree, 1e-12);
    EXPECT_NEAR(angtof("100g", 0), 90 * kDegree, 1e-12);
    EXPECT_NEAR(angtof("1.5r", 1), 1.5, 1e-12);
    EXPECT_NEAR(angtof("n45de", 0), 45 * kDegree, 1e-12);
    EXPECT_NEAR(angtof("S 10d W", 0), 260 * kDegree, 1e-12);
    EXPECT_NEAR(angtof("100", 2), 90 * kDegree, 1e-12); // plain numbers count in the mode's unit
    EXPECT_NEAR(angtof("2", 3), 2.0, 1e-12);
    EXPECT_NEAR(angtof("30", 4), 30 * kDegree, 1e-12);
}

// ANGBASE and ANGDIR shape what a user types at prompts; the conversions read and print the angle
// itself, so neither setting may move it.
TEST_F(AngleText, AngbaseAndAngdirLeaveTheConversionsAlone) {
    std::string plain[5];
    for (int unit = 0; unit <= 4; ++unit) plain[unit] = angtos(30 * kDegree, unit, 4);
    setReal("ANGBASE", 90 * kDegree);
    setShort("ANGDIR", 1);
    for (int unit = 0; unit <= 4; ++unit) {
        EXPECT_EQ(angtos(30 * kDegree, unit, 4), plain[unit]) << unit;
        EXPECT_NEAR(angtof(plain[unit], unit), 30 * kDegree, 1e-4) << unit;
    }
    EXPECT_EQ(angtos(0.0, 4, 0), "E");
}

TEST_F(AngleText, MinusOneTakesTheDrawingsAngleUnitsAndPrecision) {
    setShort("AUNITS", 1);
    setShort("AUPREC", 2);
    EXPECT_EQ(angtos(45.5 * kDegree, -1, -1), "45d30'");
    EXPECT_NEAR(angtof("45d30'", -1), 45.5 * kDegree, 1e-12);
}

TEST_F(AngleText, BadTextAndBadArgumentsAreRefused) {
    double value = 42.0;
    for (const char* bad : {"", "d", "45x", "N 45d", "N 45d Q", "45d30'x", "--5", "EW", "1/2"})
        EXPECT_EQ(qvdbAngToF(bad, 0, &value), QV_ERROR) << bad;
    EXPECT_EQ(qvdbAngToF("45", 5, &value), QV_ERROR);
    EXPECT_EQ(qvdbAngToF(nullptr, 0, &value), QV_ERROR);
    EXPECT_EQ(value, 42.0);
    char text[4] = "abc";
    EXPECT_EQ(qvdbAngToS(1.0, 5, 2, text, sizeof text), QV_ERROR);
    EXPECT_EQ(qvdbAngToS(1.0, 0, -2, text, sizeof text), QV_ERROR);
    EXPECT_EQ(qvdbAngToS(INFINITY, 0, 2, text, sizeof text), QV_ERROR);
    EXPECT_EQ(qvdbAngToS(1.0, 0, 4, text, sizeof text), QV_ERROR); // "57.2958" does not fit
    EXPECT_STREQ(text, "abc");
}

TEST(UnitConversion, ConvertsWithinAKindIncludingOffsets) {
    double result = 0.0;
    ASSERT_EQ(qvutCvUnit(1.0, "inch", "mm", &result), QV_NORM);
    EXPECT_DOUBLE_EQ(result, 25.4);
    ASSERT_EQ(qvutCvUnit(2.0, "sq ft", "square inches", &result), QV_NORM);
    EXPECT_NEAR(result, 288.0, 1e-9);
    ASSERT_EQ(qvutCvUnit(1.0, "cu m", "Liters", &result), QV_NORM);
    EXPECT_NEAR(result, 1000.0, 1e-9);
    ASSERT_EQ(qvutCvUnit(1.0, "m2", "cm^2", &result), QV_NORM);
    EXPECT_NEAR(result, 10000.0, 1e-9);
    ASSERT_EQ(qvutCvUnit(180.0, "degree", "radian", &result), QV_NORM);
    EXPECT_DOUBLE_EQ(result, std::numbers::pi);
    ASSERT_EQ(qvutCvUnit(1.0, "pound", "gram", &result), QV_NORM);
    EXPECT_NEAR(result, 453.59237, 1e-9);
    ASSERT_EQ(qvutCvUnit(100.0, "celsius", "fahrenheit", &result), QV_NORM);
    EXPECT_NEAR(result, 212.0, 1e-9);
    ASSERT_EQ(qvutCvUnit(-40.0, "fahrenheit", "celsius", &result), QV_NORM);
    EXPECT_NEAR(result, -40.0, 1e-9);
    ASSERT_EQ(qvutCvUnit(0.0, "kelvin", "celsius", &result), QV_NORM);
    EXPECT_NEAR(result, -273.15, 1e-9);
    ASSERT_EQ(qvutCvUnit(491.67, "rankine", "fahrenheit", &result), QV_NORM);
    EXPECT_NEAR(result, 32.0, 1e-9);
}

TEST(UnitConversion, UnknownUnitsAndMixedKindsAreRefused) {
    double result = 7.0;
    EXPECT_EQ(qvutCvUnit(1.0, "furlongish", "m", &result), QV_ERROR);
    EXPECT_EQ(qvutCvUnit(1.0, "m", "kg", &result), QV_ERROR);
    EXPECT_EQ(qvutCvUnit(1.0, "sq kg", "m2", &result), QV_ERROR);
    EXPECT_EQ(qvutCvUnit(1.0, "celsius", "degree", &result), QV_ERROR);
    EXPECT_EQ(qvutCvUnit(1.0, nullptr, "m", &result), QV_ERROR);
    EXPECT_EQ(qvutCvUnit(NAN, "m", "mm", &result), QV_ERROR);
    EXPECT_EQ(result, 7.0);
}

} // namespace
