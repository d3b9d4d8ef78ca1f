#include "tooldeck/commands/cleanup/quantity_settings.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace qvtd::quantity {
namespace {

std::string writeSettings(const std::string& name, const std::string& text) {
    auto path = std::filesystem::temp_directory_path() / name;
    std::ofstream(path) << text;
    return path.string();
}

TEST(QuantitySettings, MissingFileGivesTheDefaults) {
    QuantitySettings settings = loadQuantitySettings("/nonexistent-folder/XQuery.ini");
    EXPECT_DOUBLE_EQ(settings.scale(), 1.0);
    EXPECT_EQ(settings.toClipboard, 1);
    EXPECT_EQ(settings.units, "mm");
    EXPECT_EQ(settings.numberFormat(), "%0.2f");
    EXPECT_EQ(settings.format(2.0 / 3.0), "0.67");
    EXPECT_DOUBLE_EQ(settings.markerRadius, 2.0);
    EXPECT_EQ(settings.areaUnits(), "mm^2");
}

TEST(QuantitySettings, ScalePrecisionAndUnitsFromTheFile) {
    std::string path =
        writeSettings("qvtd_xquery_test.ini", "[Length in drawing units]\nvalue=4\n"
                                              "[Equivalent length in real world units]\nvalue=10\n"
                                              "[Precision]\nvalue=0.000\n"
                                              "[Units]\nvalue=m\n"
                                              "[To clipboard]\nvalue=0\n");
    QuantitySettings settings = loadQuantitySettings(path);
    EXPECT_DOUBLE_EQ(settings.scale(), 2.5);
    EXPECT_EQ(settings.decimals(), 3);
    EXPECT_EQ(settings.format(1.23456), "1.235");
    EXPECT_EQ(settings.toClipboard, 0);
    EXPECT_EQ(settings.areaUnits(), "m^2");
    std::filesystem::remove(path);
}

TEST(QuantitySettings, ZeroDrawingLengthAndWholeNumberPrecision) {
    QuantitySettings settings;
    settings.drawingLength = 0.0;
    settings.realWorldLength = 7.0;
    EXPECT_DOUBLE_EQ(settings.scale(), 1.0);
    settings.precision = "0";
    EXPECT_EQ(settings.decimals(), 0);
    EXPECT_EQ(settings.numberFormat(), "%.f");
    EXPECT_EQ(settings.format(12.6), "13");
    // Only the first point counts.
    settings.precision = "0.0.0";
    EXPECT_EQ(settings.decimals(), 3);
    // A unit missing from the list gets its square.
    settings.units = "ft";
    EXPECT_EQ(settings.areaUnits(), "ft^2");
}

} // namespace
} // namespace qvtd::quantity
