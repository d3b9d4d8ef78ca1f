// Distances to text and back: every unit mode at several precisions, negative numbers and zero, the
// zero suppression DIMZIN asks for, and the feet-and-inch forms people type.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using qvad::api::HostSession;

class DistanceText : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        HostSession::current().setDrawing(db.get());
        setDimzin(0);
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
    static void setDimzin(short value) { setShort("DIMZIN", value); }
    static std::string rtos(double value, int unit, int precision) {
        char text[128] = "unchanged";
        EXPECT_EQ(qvdbRToS(value, unit, precision, text, sizeof text), QV_NORM) << value;
        return text;
    }
    static double distof(const std::string& text, int unit = 2) {
        double value = -999.0;
        EXPECT_EQ(qvdbDisToF(text.c_str(), unit, &value), QV_NORM) << text;
        return value;
    }

    std::unique_ptr<OdDbDatabase> db;
};

TEST_F(DistanceText, EachModePrintsAsDrafterReadsIt) {
    EXPECT_EQ(rtos(12.3456, 1, 4), "1.2346E+01");
    EXPECT_EQ(rtos(12.3456, 2, 2), "12.35");
    EXPECT_EQ(rtos(17.5, 3, 2), "1'-5.50\"");
    EXPECT_EQ(rtos(17.5, 4, 2), "1'-5 1/2\"");
    EXPECT_EQ(rtos(17.5, 5, 2), "17 1/2");
    EXPECT_EQ(rtos(-17.5, 4, 3), "-1'-5 1/2\"");
    EXPECT_EQ(rtos(0.25, 5, 4), "1/4");
    EXPECT_EQ(rtos(12.0625, 4, 4), "1'-0 1/16\"");
}

TEST_F(DistanceText, DimzinSuppressesZerosAsDimensionsDo) {
    EXPECT_EQ(rtos(0.5, 2, 3), "0.500");
    setDimzin(4);
    EXPECT_EQ(rtos(0.5, 2, 3), ".500");
    EXPECT_EQ(rtos(-0.5, 2, 3), "-.500");
    setDimzin(8);
    EXPECT_EQ(rtos(1.5, 2, 4), "1.5");
    EXPECT_EQ(rtos(2.0, 2, 4), "2");
    EXPECT_EQ(rtos(1.5, 1, 4), "1.5E+00");
    setDimzin(12);
    EXPECT_EQ(rtos(0.0, 2, 4), "0");

    // Feet and inches: bits 0-1 choose which zero feet and zero inches are shown.
    setDimzin(0);
    EXPECT_EQ(rtos(24.0, 4, 2), "2'");
    EXPECT_EQ(rtos(5.5, 4, 2), "5 1/2\"");
    EXPECT_EQ(rtos(0.0, 4, 2), "0\"");
    setDimzin(1);
    EXPECT_EQ(rtos(24.0, 4, 2), "2'-0\"");
    EXPECT_EQ(rtos(5.5, 4, 2), "0'-5 1/2\"");
    setDimzin(2);
    EXPECT_EQ(rtos(24.0, 3, 1), "2'");
    EXPECT_EQ(rtos(5.5, 3, 1), "0'-5.5\"");
    setDimzin(3);
    EXPECT_EQ(rtos(24.0, 3, 1), "2'-0.0\"");
    EXPECT_EQ(rtos(5.5, 3, 1), "5.5\"");
}

TEST_F(DistanceText, RoundingCarriesIntoTheNextFootAndLosesTheSignOfZero) {
    EXPECT_EQ(rtos(23.999, 4, 2), "2'");
    EXPECT_EQ(rtos(23.999, 3, 2), "2'");
    EXPECT_EQ(rtos(-0.0001, 2, 2), "0.00");
    EXPECT_EQ(rtos(-0.01, 4, 2), "0\"");
}

TEST_F(DistanceText, EveryModeReadsBackWhatItPrints) {
    for (short dimzin : {0, 1, 3, 12}) {
        setDimzin(dimzin);
        for (double value : {0.0, 1.0, -1.0, 0.5, 17.5, -17.5, 144.0, 1234.5625, -0.0625, 100000.125}) {
            for (int unit = 1; unit <= 5; ++unit) {
                for (int precision : {0, 2, 4, 8}) {
                    std::string text = rtos(value, unit, precision);
                    double step = unit >= 4 ? 1.0 / (1 << precision) : std::pow(10.0, -precision);
                    // Scientific precision counts digits of the mantissa, not of the value.
                    if (unit == 1)
                        step *= std::pow(10.0, std::floor(std::log10(std::max(std::fabs(value), 1.0))));
                    EXPECT_NEAR(distof(text, unit), value, step / 2 + 1e-9)
                        << text << " unit " << unit << " precision " << precision << " dimzin " << dimzin;
                }
            }
        }
    }
}

TEST_F(DistanceText, FeetAndInchesAreReadInEveryUsualSpelling) {
    EXPECT_DOUBLE_EQ(distof("1'-5 1/2\""), 17.5);
    EXPECT_DOUBLE_EQ(distof("1'5-1/2\""), 17.5);
    EXPECT_DOUBLE_EQ(distof("1' 5.5\""), 17.5);
    EXPECT_DOUBLE_EQ(distof("1'5.5"), 17.5);
    EXPECT_DOUBLE_EQ(distof("2'"), 24.0);
    EXPECT_DOUBLE_EQ(distof("1.5'"), 18.0);
    EXPECT_DOUBLE_EQ(distof("7\""), 7.0);
    EXPECT_DOUBLE_EQ(distof("3/4\""), 0.75);
    EXPECT_DOUBLE_EQ(distof("-2'-6\""), -30.0);
    EXPECT_DOUBLE_EQ(distof(" 17 1/2 "), 17.5);
    EXPECT_DOUBLE_EQ(distof("-.25"), -0.25);
    EXPECT_DOUBLE_EQ(distof("2.5e3"), 2500.0);
}

TEST_F(DistanceText, BadTextAndBadArgumentsAreRefused) {
    double value = 42.0;
    for (const char* bad : {"", " ", "abc", "1.2.3", "1/0", "1'-2'", "5\"6", "--3", "1 /2", "3'x", "1e999"})
        EXPECT_EQ(qvdbDisToF(bad, 2, &value), QV_ERROR) << bad;
    EXPECT_EQ(qvdbDisToF(nullptr, 2, &value), QV_ERROR);
    EXPECT_EQ(qvdbDisToF("1", 6, &value), QV_ERROR);
    EXPECT_EQ(value, 42.0);

    char text[8] = "keep";
    EXPECT_EQ(qvdbRToS(1.0, 0, 2, text, sizeof text), QV_ERROR);
    EXPECT_EQ(qvdbRToS(1.0, 2, 9, text, sizeof text), QV_ERROR);
    EXPECT_EQ(qvdbRToS(std::nan(""), 2, 2, text, sizeof text), QV_ERROR);
    EXPECT_EQ(qvdbRToS(123456.0, 2, 4, text, sizeof text), QV_ERROR); // does not fit
    EXPECT_EQ(qvdbRToS(1e300, 4, 8, text, sizeof text), QV_ERROR);
    EXPECT_STREQ(text, "keep");
}

TEST_F(DistanceText, MinusOneTakesTheDrawingsUnitsAndPrecision) {
    setShort("LUNITS", 4);
    setShort("LUPREC", 1);
    EXPECT_EQ(rtos(17.5, -1, -1), "1'-5 1/2\"");
    setShort("LUNITS", 2);
    setShort("LUPREC", 3);
    EXPECT_EQ(rtos(17.5, -1, -1), "17.500");
    EXPECT_DOUBLE_EQ(distof("1'-5 1/2\"", -1), 17.5);
}

} // namespace
