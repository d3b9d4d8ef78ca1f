// Entity data lists: what a command sees of an object, and how a list, changed or not, becomes the
// object's tags again.

#include "entities_drawing.h"
#include "qvad/db/entities/OdDbPolyline.h"
#include "qvad/db/entities/OdDbText.h"
#include "qvad/db/entity_data_list.h"
#include "qvad/db/object_factory.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace entities_test;
using namespace qvad::db;
using std::numbers::pi;

namespace {

std::string textWithExtendedData() {
    return dxf({{0, "TEXT"},         {5, "A0"},      {102, "{ACAD_REACTORS"},
                {330, "E0"},         {102, "}"},     {330, "2"},
                {100, "AcDbEntity"}, {8, "Notes"},   {62, "  3"},
                {100, "AcDbText"},   {10, "1.50"},   {20, "+2"},
                {30, "1e3"},         {40, "2.5"},    {1, "Hi"},
                {50, "30"},          {1001, "ACME"}, {1000, "x"},
                {1002, "{"},         {1010, "1"},    {1020, "2"},
                {1030, "3"},         {1040, "45"},   {1070, "4"},
                {1005, "A0"},        {1002, "}"},    {1001, "OTHER"},
                {1071, "70000"}});
}

TEST(DataListFromObject, TypedItemsInFileOrder) {
    auto db = drawing(textWithExtendedData());
    const OdDbObject* text = db->getObject(0xA0);
    ASSERT_NE(text, nullptr);
    const DataList list = entityToDataList(*text);
    ASSERT_EQ(list.size(), 26u);

    EXPECT_EQ(list[0].code, -1);
    EXPECT_EQ(*list[0].reference(), ObjectRef{0xA0});
    EXPECT_EQ(*list[1].text(), "TEXT");
    EXPECT_EQ(*list[2].text(), "A0"); // the own handle is text, not a reference
    EXPECT_EQ(*list[3].text(), "{ACAD_REACTORS");
    EXPECT_EQ(*list[4].reference(), ObjectRef{0xE0});
    EXPECT_EQ(*list[6].reference(), ObjectRef{2});
    EXPECT_EQ(*list[8].text(), "Notes");
    EXPECT_EQ(*list[9].integer(), 3);

    ASSERT_NE(list[11].point(), nullptr);
    EXPECT_EQ(list[11].code, 10);
    EXPECT_FALSE(list[11].is2d);
    EXPECT_EQ(*list[11].point(), OdGePoint3d(1.5, 2, 1000));
    EXPECT_EQ(*list[12].real(), 2.5);
    EXPECT_EQ(*list[13].text(), "Hi");
    EXPECT_NEAR(*list[14].real(), pi / 6, 1e-15); // radians in the list

    EXPECT_EQ(list[15].code, -3);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(list[15].value));
    EXPECT_EQ(*list[16].text(), "ACME");
    EXPECT_EQ(*list[19].point(), OdGePoint3d(1, 2, 3));
    EXPECT_EQ(*list[20].real(), 45.0); // extended data keeps its numbers as they are
    EXPECT_EQ(*list[21].integer(), 4);
    EXPECT_EQ(*list[22].text(), "A0");
    EXPECT_EQ(*list[25].integer(), 70000);
}

TEST(DataListFromObject, PointsStay2DWhereTheFileIs2D) {
    auto db = drawing(dxf({{0, "LWPOLYLINE"}, {5, "A0"},
                           {330, "2"},        {100, "AcDbEntity"},
                           {8, "0"},          {100, "AcDbPolyline"},
                           {90, "2"},         {70, "0"},
                           {10, "1"},         {20, "2"},
                           {42, "0.5"},       {10, "3"},
                           {20, "4"},         {210, "0"},
                           {220, "0"},        {230, "1"},
                           {0, "LINE"},       {5, "A1"},
                           {330, "2"},        {100, "AcDbEntity"},
                           {8, "0"},          {100, "AcDbLine"},
                           {10, "7"},         {11, "1"},
                           {21, "2"}}));
    const DataList pline = entityToDataList(*db->getObject(0xA0));
    ASSERT_EQ(pline.size(), 13u);
    EXPECT_TRUE(pline[9].is2d);
    EXPECT_EQ(*pline[9].point(), OdGePoint3d(1, 2, 0));
    EXPECT_EQ(*pline[10].real(), 0.5);
    EXPECT_TRUE(pline[11].is2d);
    EXPECT_FALSE(pline[12].is2d);
    EXPECT_EQ(pline[12].code, 210);

    // A lone x stays a number; a following y makes a 2D point.
    const DataList line = entityToDataList(*db->getObject(0xA1));
    ASSERT_EQ(line.size(), 9u);
    EXPECT_EQ(*line[7].real(), 7.0);
    EXPECT_TRUE(line[8].is2d);
    for (const char* h : {"A0", "A1"}) expectRoundTrips(*db, *db->getObject(qvad::parseHandle(h)));
}

TEST(DataListToTags, UnchangedNumbersKeepTheirText) {
    auto db = drawing(textWithExtendedData() + dxf({{0, "CIRCLE"},
                                                    {5, "A1"},
                                                    {330, "2"},
                                                    {100, "AcDbEntity"},
                                                    {8, "0"},
                                                    {100, "AcDbCircle"},
                                                    {10, "0.1000000000000000055511"},
                                                    {20, "-0.0"},
                                                    {30, "1E+2"},
                                                    {40, "007"},
                                                    {62, "-0"}}));
    for (const char* h : {"A0", "A1"}) expectRoundTrips(*db, *db->getObject(qvad::parseHandle(h)));
}

TEST(DataListToTags, ChangedValuesAreWrittenInFileUnits) {
    auto db = drawing(textWithExtendedData());
    const OdDbObject* text = db->getObject(0xA0);
    DataList list = entityToDataList(*text);
    list[12].value = 3.0;                                         // height
    list[14].value = pi / 2;                                      // rotation, radians
    std::get<OdGePoint3d>(list[11].value).y = 5;                  // only y of the position
    list[6].value = ObjectRef{0x1F};                              // owner
    list[9].value = std::int64_t{3};                              // same colour: text kept
    std::get<OdGePoint3d>(list[19].value) = OdGePoint3d(1, 2, 4); // extended point: z only

    qvad::dxf::StringPool pool;
    EXPECT_EQ(changes(snapshot(*text), snapshot(dataListToTags(list, "TEXT", pool))),
              (Lines{"-330 2", "+330 1F", "-20 +2", "+20 5.0", "-40 2.5", "+40 3.0", "-50 30", "+50 90.0",
                     "-1030 3", "+1030 4.0"}));
}

TEST(DataListToTags, ListsBuiltByCommandsNeedNoSourceText) {
    const DataList list = {DataItem(0, std::string("LINE")),
                           DataItem(100, std::string("AcDbEntity")),
                           DataItem(8, std::string("Walls")),
                           DataItem(62, std::int64_t{1}),
                           DataItem(100, std::string("AcDbLine")),
                           DataItem(10, OdGePoint3d(0, 0, 0)),
                           DataItem(11, OdGePoint3d(3, 4, 0), true),
                           DataItem(39, std::int64_t{2}), // a whole number where a real is due
                           DataItem(-3, std::monostate{}),
                           DataItem(1001, std::string("ACME")),
                           DataItem(1002, std::string("{")),
                           DataItem(1041, 2.5),
                           DataItem(1002, std::string("}"))};
    qvad::dxf::StringPool pool;
    EXPECT_EQ(snapshot(dataListToTags(list, "line", pool)),
              (Lines{"100 AcDbEntity", "8 Walls", "62 1", "100 AcDbLine", "10 0.0", "20 0.0", "30 0.0",
                     "11 3.0", "21 4.0", "39 2.0", "1001 ACME", "1002 {", "1041 2.5", "1002 }"}));
}

TEST(DataListToTags, ObjectsMadeFromListsWithoutMarkersReadThroughTheirClasses) {
    // Commands often leave out the subclass markers; the typed classes then read the whole data.
    const DataList list = {DataItem(0, std::string("LWPOLYLINE")),
                           DataItem(8, std::string("0")),
                           DataItem(90, std::int64_t{2}),
                           DataItem(70, std::int64_t{1}),
                           DataItem(10, OdGePoint3d(1, 2, 0), true),
                           DataItem(42, 1.0),
                           DataItem(10, OdGePoint3d(5, 2, 0), true)};
    qvad::dxf::StringPool pool;
    std::vector<Tag> tags = dataListToTags(list, "LWPOLYLINE", pool);
    auto made = createObject("LWPOLYLINE", ObjectContext::Entity, tags);
    made->assignTags(tags);
    auto* pline = dynamic_cast<OdDbPolyline*>(made.get());
    ASSERT_NE(pline, nullptr);
    EXPECT_EQ(pline->numVerts(), 2u);
    EXPECT_TRUE(pline->isClosed());
    EXPECT_DOUBLE_EQ(pline->getBulgeAt(0), 1.0);
    pline->setBulgeAt(1, -1.0);
    EXPECT_EQ(snapshot(*pline).back(), "42 -1.0");

    const DataList text = {DataItem(0, std::string("TEXT")), DataItem(10, OdGePoint3d(0, 0, 0)),
                           DataItem(1, std::string("x")), DataItem(50, pi / 2),
                           DataItem(73, std::int64_t{3})};
    tags = dataListToTags(text, "TEXT", pool);
    made = createObject("TEXT", ObjectContext::Entity, tags);
    made->assignTags(tags);
    auto* typed = dynamic_cast<OdDbText*>(made.get());
    ASSERT_NE(typed, nullptr);
    EXPECT_EQ(typed->verticalMode(), OdDbText::kTextTop);
    EXPECT_NEAR(typed->rotation(), pi / 2, 1e-15);
    EXPECT_EQ(snapshot(*typed)[4], "50 90.0");
}

TEST(DataListToTags, EveryMisfitIsRefusedWithItsGroup) {
    struct Case {
        DataList list;
        const char* message;
    };
    auto item = [](int code, DataValue v) { return DataItem(code, std::move(v)); };
    const Case cases[] = {
        {{item(62, std::string("red"))}, "group 62 takes a whole number"},
        {{item(8, std::int64_t{1})}, "group 8 takes text"},
        {{item(40, OdGePoint3d())}, "group 40 takes no point"},
        {{item(8, ObjectRef{1})}, "group 8 takes text"},
        {{item(330, std::string("1F"))}, "group 330 takes an object reference"},
        {{item(62, std::int64_t{40000})}, "group 62 value 40000 is outside -32768 to 32767"},
        {{item(290, std::int64_t{2})}, "group 290 value 2 is outside 0 to 1"},
        {{item(1, std::string("a\nb"))}, "group 1 cannot hold a line break"},
        {{item(40, std::nan(""))}, "group 40 takes a finite number"},
        {{item(5, std::string("XYZ"))}, "group 5 takes a hexadecimal handle"},
        {{item(310, std::string("ABC"))}, "group 310 takes hexadecimal bytes"},
        {{item(1000, std::string("x"))}, "group 1000 is extended data and must follow the -3 marker"},
        {{item(-3, {}), item(8, std::string("0"))}, "group 8 cannot stand in extended data"},
        {{item(-3, {}), item(1000, std::string("x"))}, "group 1000 must follow an application name (1001)"},
        {{item(-3, {}), item(1001, std::string(""))}, "group 1001 needs an application name"},
        {{item(-3, {}), item(1001, std::string("A")), item(1002, std::string("{"))},
         "group 1002 braces of the last application do not close"},
        {{item(-3, {}), item(1001, std::string("A")), item(1002, std::string("}"))},
         "group 1002 closes a brace that was never opened"},
        {{item(-3, {}), item(-3, {})}, "group -3 may stand only once"},
        {{item(0, std::string("CIRCLE"))}, "the list describes a CIRCLE, not a LINE"},
        {{item(-5, std::string("x"))}, "group -5 cannot be stored in a drawing"},
        {{item(8, {})}, "group 8 has no value"},
    };
    qvad::dxf::StringPool pool;
    for (const Case& c : cases) {
        try {
            dataListToTags(c.list, "LINE", pool);
            ADD_FAILURE() << "accepted: " << c.message;
        } catch (const DataListError& e) {
            EXPECT_TRUE(std::string_view(e.what()).starts_with(c.message)) << e.what();
        }
    }
}

TEST(ExtendedDataFilter, KeepsTheApplicationsAsked) {
    auto db = drawing(textWithExtendedData());
    const DataList all = entityToDataList(*db->getObject(0xA0));
    auto apps = [](const DataList& list) {
        std::vector<std::string> out;
        for (const DataItem& i : list)
            if (i.code == 1001) out.push_back(*i.text());
        return out;
    };
    auto filtered = [&](std::vector<std::string> patterns) {
        DataList list = all;
        filterExtendedData(list, patterns);
        return list;
    };
    EXPECT_EQ(apps(filtered({"*"})), (std::vector<std::string>{"ACME", "OTHER"}));
    EXPECT_EQ(apps(filtered({"acme"})), (std::vector<std::string>{"ACME"}));
    EXPECT_EQ(filtered({"acme"}).size(), 24u); // OTHER's two items gone
    EXPECT_EQ(apps(filtered({"NOPE", "OTH?R"})), (std::vector<std::string>{"OTHER"}));
    const DataList none = filtered({});
    EXPECT_EQ(none.size(), 15u);
    EXPECT_EQ(none.back().code, 50); // the -3 marker went with the data
    EXPECT_EQ(filtered({"X*"}).size(), 15u);
}

TEST(ExtendedDataFilter, ApplicationPatterns) {
    EXPECT_TRUE(matchesApplication("ACAD", "acad"));
    EXPECT_TRUE(matchesApplication("ACAD_PSEXT", "ACAD*"));
    EXPECT_TRUE(matchesApplication("ACAD_PSEXT", "*PS*"));
    EXPECT_TRUE(matchesApplication("", "*"));
    EXPECT_FALSE(matchesApplication("ACAD", "ACA"));
    EXPECT_FALSE(matchesApplication("ACAD", "?ACAD"));
    EXPECT_TRUE(matchesApplication("QV1", "QV?"));
    EXPECT_FALSE(matchesApplication("MYAPP", "*X*"));
}

} // namespace
