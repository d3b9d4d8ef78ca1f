// Dimensions: the low bits of group 70 choose one of seven classes, whatever flags sit above them,
// and each kind reads its points from its own part.

#include "entities_drawing.h"
#include "qvad/db/entities/OdDbDimensionKinds.h"

#include <gtest/gtest.h>
#include <numbers>
#include <typeinfo>

using namespace entities_test;

namespace {

std::string dimension(const char* handle, const char* flags, const char* subclass, TagText own) {
    std::string text = dxf({{0, "DIMENSION"},
                            {5, handle},
                            {330, "2"},
                            {100, "AcDbEntity"},
                            {8, "0"},
                            {100, "AcDbDimension"},
                            {2, "*D1"},
                            {3, "Standard"},
                            {10, "1"},
                            {20, "2"},
                            {30, "0"},
                            {11, "5"},
                            {21, "6"},
                            {31, "0"},
                            {70, flags},
                            {71, "5"},
                            {42, "12.5"},
                            {1, "<> mm"}});
    if (std::string_view(subclass) == "AcDbRotatedDimension")
        text += dxf({{100, "AcDbAlignedDimension"}}) + dxf(own) + dxf({{100, "AcDbRotatedDimension"}});
    else
        text += dxf({{100, subclass}}) + dxf(own);
    return text;
}

TEST(DimensionKinds, LowBitsOfGroup70ChooseTheClass) {
    struct Case {
        const char* flags;
        const std::type_info& type;
    };
    // 32 (block used by this dimension only), 64 (ordinate x) and 128 (moved text) are flags.
    const Case cases[] = {{"32", typeid(OdDbRotatedDimension)},
                          {"33", typeid(OdDbAlignedDimension)},
                          {"162", typeid(OdDb2LineAngularDimension)},
                          {"3", typeid(OdDbDiametricDimension)},
                          {"36", typeid(OdDbRadialDimension)},
                          {"37", typeid(OdDb3PointAngularDimension)},
                          {"102", typeid(OdDbOrdinateDimension)},
                          {"6", typeid(OdDbOrdinateDimension)},
                          {"39", typeid(OdDbDimension)}};
    std::string text;
    int n = 0;
    std::vector<std::string> handles;
    for (const Case& c : cases) {
        handles.push_back(std::to_string(0xA0 + n++));
        text += dimension(handles.back().c_str(), c.flags, "AcDbAlignedDimension", {});
    }
    auto db = drawing(text);
    for (std::size_t i = 0; i < handles.size(); ++i) {
        SCOPED_TRACE(cases[i].flags);
        const OdDbObject* dim = object<OdDbDimension>(*db, handles[i]);
        ASSERT_NE(dim, nullptr);
        EXPECT_EQ(typeid(*dim), cases[i].type);
    }
    EXPECT_EQ(object<OdDbDimension>(*db, handles.back())->dimensionKind(), -1);
    EXPECT_TRUE(object<OdDbOrdinateDimension>(*db, handles[6])->isUsingXAxis());
    EXPECT_FALSE(object<OdDbOrdinateDimension>(*db, handles[7])->isUsingXAxis());
    EXPECT_FALSE(object<OdDbDimension>(*db, handles[2])->isUsingDefaultTextPosition());
}

TEST(DimensionKinds, CommonPropertiesAndTheRotatedKind) {
    auto db =
        drawing(dimension("A0", "32", "AcDbRotatedDimension",
                          {{13, "0"}, {23, "0"}, {33, "0"}, {14, "10"}, {24, "0"}, {34, "0"}, {50, "90"}}));
    auto* dim = object<OdDbRotatedDimension>(*db, "A0");
    ASSERT_NE(dim, nullptr);
    EXPECT_EQ(dim->dimensionKind(), OdDbDimension::kRotated);
    EXPECT_EQ(dim->blockName(), "*D1");
    EXPECT_EQ(dim->dimensionStyle(), "Standard");
    EXPECT_EQ(dim->dimensionText(), "<> mm");
    EXPECT_DOUBLE_EQ(dim->measurement(), 12.5);
    EXPECT_EQ(dim->textPosition(), OdGePoint3d(5, 6, 0));
    EXPECT_EQ(dim->dimLinePoint(), OdGePoint3d(1, 2, 0));
    EXPECT_EQ(dim->xLine2Point(), OdGePoint3d(10, 0, 0));
    EXPECT_NEAR(dim->rotation(), std::numbers::pi / 2, 1e-15);
    EXPECT_TRUE(dim->isUsingDefaultTextPosition());

    Lines before = snapshot(*dim);
    dim->setDimensionText("");
    dim->setXLine1Point(OdGePoint3d(-1, 0, 0));
    EXPECT_EQ(changes(before, snapshot(*dim)),
              (Lines{"-1 <> mm", "+1 ", "-13 0", "+13 -1.0", "-23 0", "+23 0.0", "-33 0", "+33 0.0"}));
    EXPECT_THROW(dim->setDimensionText("a\nb"), std::invalid_argument);
    expectRoundTrips(*db, *dim);
}

TEST(DimensionKinds, EachKindReadsItsOwnPoints) {
    std::string text = dimension("A0", "34", "AcDb2LineAngularDimension",
                                 {{13, "0"},
                                  {23, "0"},
                                  {33, "0"},
                                  {14, "3"},
                                  {24, "0"},
                                  {34, "0"},
                                  {15, "0"},
                                  {25, "0"},
                                  {35, "0"},
                                  {16, "0"},
                                  {26, "2"},
                                  {36, "0"}});
    text += dimension("A1", "35", "AcDbDiametricDimension", {{15, "-2"}, {25, "0"}, {35, "0"}, {40, "0.5"}});
    text += dimension("A2", "36", "AcDbRadialDimension", {{15, "3"}, {25, "0"}, {35, "0"}, {40, "0.25"}});
    text += dimension(
        "A3", "37", "AcDb3PointAngularDimension",
        {{13, "3"}, {23, "0"}, {33, "0"}, {14, "0"}, {24, "3"}, {34, "0"}, {15, "7"}, {25, "8"}, {35, "0"}});
    text += dimension("A4", "102", "AcDbOrdinateDimension",
                      {{13, "3"}, {23, "2"}, {33, "0"}, {14, "4"}, {24, "3"}, {34, "0"}});
    auto db = drawing(text);

    auto* twoLine = object<OdDb2LineAngularDimension>(*db, "A0");
    ASSERT_NE(twoLine, nullptr);
    EXPECT_EQ(twoLine->xLine1End(), OdGePoint3d(3, 0, 0));
    EXPECT_EQ(twoLine->xLine2Start(), OdGePoint3d(1, 2, 0));
    EXPECT_EQ(twoLine->arcPoint(), OdGePoint3d(0, 2, 0));
    auto* diameter = object<OdDbDiametricDimension>(*db, "A1");
    ASSERT_NE(diameter, nullptr);
    EXPECT_EQ(diameter->chordPoint(), OdGePoint3d(-2, 0, 0));
    EXPECT_EQ(diameter->farChordPoint(), OdGePoint3d(1, 2, 0));
    EXPECT_DOUBLE_EQ(diameter->leaderLength(), 0.5);
    auto* radius = object<OdDbRadialDimension>(*db, "A2");
    ASSERT_NE(radius, nullptr);
    EXPECT_EQ(radius->center(), OdGePoint3d(1, 2, 0));
    EXPECT_EQ(radius->chordPoint(), OdGePoint3d(3, 0, 0));
    auto* threePoint = object<OdDb3PointAngularDimension>(*db, "A3");
    ASSERT_NE(threePoint, nullptr);
    EXPECT_EQ(threePoint->centerPoint(), OdGePoint3d(7, 8, 0));
    EXPECT_EQ(threePoint->arcPoint(), OdGePoint3d(1, 2, 0));
    auto* ordinate = object<OdDbOrdinateDimension>(*db, "A4");
    ASSERT_NE(ordinate, nullptr);
    EXPECT_EQ(ordinate->definingPoint(), OdGePoint3d(3, 2, 0));
    EXPECT_EQ(ordinate->leaderEndPoint(), OdGePoint3d(4, 3, 0));
    EXPECT_EQ(ordinate->origin(), OdGePoint3d(1, 2, 0));

    Lines before = snapshot(*radius);
    radius->setChordPoint(OdGePoint3d(0, 3, 0));
    EXPECT_EQ(changes(before, snapshot(*radius)),
              (Lines{"-15 3", "+15 0.0", "-25 0", "+25 3.0", "-35 0", "+35 0.0"}));
    for (const char* h : {"A0", "A1", "A2", "A3", "A4"})
        expectRoundTrips(*db, *object<OdDbDimension>(*db, h));
}

} // namespace
