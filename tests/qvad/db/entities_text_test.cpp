// Single-line text, multiline text, attribute definitions, block references with their attributes,
// and block arrays.

#include "entities_drawing.h"
#include "qvad/db/entities/OdDbBlockReference.h"
#include "qvad/db/entities/OdDbMText.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numbers>

using namespace entities_test;
using std::numbers::pi;

namespace {

const OdGeTol kTight(1e-12);

std::string centredText(const char* handle) {
    return dxf({{0, "TEXT"},       {5, handle}, {330, "2"},  {100, "AcDbEntity"}, {8, "Notes"},
                {100, "AcDbText"}, {10, "1"},   {20, "2"},   {30, "0"},           {40, "2.5"},
                {1, "Hello"},      {50, "30"},  {41, "0.8"}, {51, "15"},          {7, "Romans"},
                {71, "2"},         {72, "1"},   {11, "5"},   {21, "2"},           {31, "0"},
                {210, "0"},        {220, "0"},  {230, "-1"}, {100, "AcDbText"},   {73, "2"},
                {1001, "ACME"},    {1070, "4"}});
}

TEST(TextEntity, ReadsEveryProperty) {
    auto db = drawing(centredText("A0"));
    auto* text = object<OdDbText>(*db, "A0");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->textString(), "Hello");
    EXPECT_EQ(text->position(), OdGePoint3d(1, 2, 0));
    EXPECT_EQ(text->alignmentPoint(), OdGePoint3d(5, 2, 0));
    EXPECT_TRUE(text->alignmentPointWcs().isEqualTo(OdGePoint3d(-5, 2, 0), kTight));
    EXPECT_DOUBLE_EQ(text->height(), 2.5);
    EXPECT_NEAR(text->rotation(), pi / 6, 1e-15);
    EXPECT_NEAR(text->oblique(), pi / 12, 1e-15);
    EXPECT_DOUBLE_EQ(text->widthFactor(), 0.8);
    EXPECT_EQ(text->textStyle(), "Romans");
    EXPECT_TRUE(text->isMirroredInX());
    EXPECT_FALSE(text->isMirroredInY());
    EXPECT_EQ(text->horizontalMode(), OdDbText::kTextCenter);
    EXPECT_EQ(text->verticalMode(), OdDbText::kTextVertMid); // after the second marker
    EXPECT_FALSE(text->isDefaultAlignment());
    expectRoundTrips(*db, *text);
}

TEST(TextEntity, SettersChangeTheirOwnGroups) {
    auto db = drawing(centredText("A0"));
    auto* text = object<OdDbText>(*db, "A0");
    ASSERT_NE(text, nullptr);
    Lines before = snapshot(*text);
    text->setTextString("Bye");
    text->setRotation(pi / 2);
    text->setVerticalMode(OdDbText::kTextTop);
    text->setMirroredInX(false);
    EXPECT_EQ(changes(before, snapshot(*text)),
              (Lines{"-1 Hello", "+1 Bye", "-50 30", "+50 90.0", "-71 2", "+71 0", "-73 2", "+73 3"}));
    EXPECT_THROW(text->setTextString("two\nlines"), std::invalid_argument);
    EXPECT_EQ(text->textString(), "Bye");
    expectRoundTrips(*db, *text);
}

TEST(TextEntity, VerticalModeGetsItsOwnMarkerWhenMissing) {
    auto db = drawing(dxf({{0, "TEXT"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbText"},
                           {10, "0"},
                           {20, "0"},
                           {30, "0"},
                           {40, "1"},
                           {1, "x"}}));
    auto* text = object<OdDbText>(*db, "A0");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->verticalMode(), OdDbText::kTextBase);
    EXPECT_EQ(text->alignmentPoint(), text->position());
    Lines before = snapshot(*text);
    text->setVerticalMode(OdDbText::kTextBottom);
    EXPECT_EQ(changes(before, snapshot(*text)), (Lines{"+100 AcDbText", "+73 1"}));
    EXPECT_EQ(text->verticalMode(), OdDbText::kTextBottom);
    text->setVerticalMode(OdDbText::kTextTop);
    EXPECT_EQ(changes(before, snapshot(*text)), (Lines{"+100 AcDbText", "+73 3"}));
    expectRoundTrips(*db, *text);
}

std::string longMText() {
    std::string first(250, 'a'), second(250, 'b');
    return dxf({{0, "MTEXT"},       {5, "A0"},       {330, "2"}, {100, "AcDbEntity"}, {8, "0"},
                {100, "AcDbMText"}, {10, "1"},       {20, "2"},  {30, "3"},           {40, "2.5"},
                {41, "40"},         {71, "5"},       {72, "1"},  {3, first},          {3, second},
                {1, "end\\Pnext"},  {7, "Standard"}, {210, "0"}, {220, "0"},          {230, "1"},
                {11, "0"},          {21, "1"},       {31, "0"},  {44, "1.5"}});
}

TEST(MTextEntity, ContentsJoinTheChunks) {
    auto db = drawing(longMText());
    auto* mtext = object<OdDbMText>(*db, "A0");
    ASSERT_NE(mtext, nullptr);
    EXPECT_EQ(mtext->contents(), std::string(250, 'a') + std::string(250, 'b') + "end\\Pnext");
    EXPECT_EQ(mtext->location(), OdGePoint3d(1, 2, 3));
    EXPECT_DOUBLE_EQ(mtext->textHeight(), 2.5);
    EXPECT_DOUBLE_EQ(mtext->width(), 40);
    EXPECT_EQ(mtext->attachment(), OdDbMText::kMiddleCenter);
    EXPECT_EQ(mtext->flowDirection(), OdDbMText::kLtoR);
    EXPECT_EQ(mtext->textStyle(), "Standard");
    EXPECT_DOUBLE_EQ(mtext->lineSpacingFactor(), 1.5);
    EXPECT_NEAR(mtext->rotation(), pi / 2, 1e-15);
    expectRoundTrips(*db, *mtext);
}

TEST(MTextEntity, SettingContentsRechunksInPlace) {
    auto db = drawing(longMText());
    auto* mtext = object<OdDbMText>(*db, "A0");
    ASSERT_NE(mtext, nullptr);
    mtext->setContents("short");
    Lines tags = snapshot(*mtext);
    EXPECT_EQ(
        std::count_if(tags.begin(), tags.end(), [](const std::string& t) { return t.starts_with("3 "); }), 0);
    EXPECT_EQ(tags[12], "1 short"); // where the chunks stood, before the style
    EXPECT_EQ(tags[13], "7 Standard");

    // 251 two-byte characters: no chunk may end inside one.
    std::string wide;
    for (int i = 0; i < 251; ++i) wide += "\xC3\xA4";
    mtext->setContents(wide);
    EXPECT_EQ(mtext->contents(), wide);
    for (const Tag& t : mtext->tags())
        if (t.code == 3) {
            EXPECT_LE(t.value().size(), OdDbMText::kChunkSize);
            EXPECT_EQ(t.value().size() % 2, 0u);
        }
    EXPECT_THROW(mtext->setContents("a\nb"), std::invalid_argument);
    EXPECT_EQ(mtext->contents(), wide);
    expectRoundTrips(*db, *mtext);
}

TEST(MTextEntity, DirectionComesFromRotationWhenAbsent) {
    auto db = drawing(dxf({{0, "MTEXT"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbMText"},
                           {10, "0"},
                           {20, "0"},
                           {30, "0"},
                           {40, "1"},
                           {1, "x"},
                           {50, "90"}}));
    auto* mtext = object<OdDbMText>(*db, "A0");
    ASSERT_NE(mtext, nullptr);
    EXPECT_TRUE(mtext->direction().isEqualTo(OdGeVector3d(0, 1, 0), kTight));
    Lines before = snapshot(*mtext);
    mtext->setRotation(0);
    EXPECT_EQ(changes(before, snapshot(*mtext)), (Lines{"-50 90", "+11 1.0", "+21 0.0", "+31 0.0"}));
    EXPECT_THROW(mtext->setAttachment(10), std::invalid_argument);
    expectRoundTrips(*db, *mtext);
}

std::string blockWithAttribute() {
    return dxf({{0, "BLOCK"},
                {5, "20"},
                {330, "1F"},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbBlockBegin"},
                {2, "DOOR"},
                {70, "2"},
                {10, "1"},
                {20, "1"},
                {30, "0"},
                {3, "DOOR"},
                {0, "ATTDEF"},
                {5, "21"},
                {330, "1F"},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbText"},
                {10, "0"},
                {20, "0"},
                {30, "0"},
                {40, "1"},
                {1, "D1"},
                {100, "AcDbAttributeDefinition"},
                {3, "Door number"},
                {2, "NUMBER"},
                {70, "9"},
                {73, "0"},
                {74, "3"},
                {0, "ENDBLK"},
                {5, "22"},
                {330, "1F"},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbBlockEnd"}});
}

std::string doorReference() {
    return dxf({{0, "INSERT"},
                {5, "A0"},
                {330, "2"},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbBlockReference"},
                {66, "1"},
                {2, "DOOR"},
                {10, "10"},
                {20, "5"},
                {30, "0"},
                {41, "2"},
                {42, "3"},
                {50, "90"},
                {0, "ATTRIB"},
                {5, "A1"},
                {330, "A0"},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbText"},
                {10, "10"},
                {20, "5"},
                {30, "0"},
                {40, "1"},
                {1, "D-101"},
                {72, "1"},
                {100, "AcDbAttribute"},
                {280, "0"},
                {2, "NUMBER"},
                {70, "1"},
                {72, "4"},
                {74, "2"},
                {0, "SEQEND"},
                {5, "A2"},
                {330, "A0"},
                {100, "AcDbEntity"},
                {8, "0"}});
}

TEST(AttributeDefinition, TagPromptFlagsInTheirOwnPart) {
    auto db = drawing({}, blockWithAttribute());
    auto* def = object<OdDbAttributeDefinition>(*db, "21");
    ASSERT_NE(def, nullptr);
    EXPECT_EQ(def->tag(), "NUMBER");
    EXPECT_EQ(def->prompt(), "Door number");
    EXPECT_EQ(def->textString(), "D1");
    EXPECT_TRUE(def->isInvisible());
    EXPECT_TRUE(def->isPreset());
    EXPECT_FALSE(def->isConstant());
    EXPECT_EQ(def->verticalMode(), OdDbText::kTextTop);
    Lines before = snapshot(*def);
    def->setTag("NO");
    def->setInvisible(false);
    EXPECT_EQ(changes(before, snapshot(*def)), (Lines{"-2 NUMBER", "+2 NO", "-70 9", "+70 8"}));
    EXPECT_THROW(def->setTag("two words"), std::invalid_argument);
    expectRoundTrips(*db, *def);
}

TEST(BlockReference, AttributesAndTransform) {
    auto db = drawing(doorReference(), blockWithAttribute());
    auto* door = object<OdDbBlockReference>(*db, "A0");
    ASSERT_NE(door, nullptr);
    EXPECT_EQ(dynamic_cast<OdDbMInsertBlock*>(door), nullptr);
    EXPECT_EQ(door->blockName(), "DOOR");
    ASSERT_NE(door->blockTableRecord(), nullptr);
    EXPECT_TRUE(door->hasAttributes());
    EXPECT_DOUBLE_EQ(door->xScale(), 2);
    EXPECT_DOUBLE_EQ(door->zScale(), 1);
    EXPECT_NEAR(door->rotation(), pi / 2, 1e-15);

    ASSERT_EQ(door->attributes().size(), 1u);
    OdDbAttribute* number = door->attribute("number");
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->textString(), "D-101");
    EXPECT_TRUE(number->isInvisible());
    // 72 of the attribute part is no justification: the text part's 72 is.
    EXPECT_EQ(number->horizontalMode(), OdDbText::kTextCenter);
    EXPECT_EQ(number->verticalMode(), OdDbText::kTextVertMid);

    // Block point (2, 1) is 1 right of the base point (1, 1): scaled by 2, turned a quarter, moved.
    OdGePoint3d p(2, 1, 0);
    p.transformBy(door->blockTransform());
    EXPECT_TRUE(p.isEqualTo(OdGePoint3d(10, 7, 0), kTight));

    Lines before = snapshot(*number);
    number->setTextString("D-102");
    EXPECT_EQ(changes(before, snapshot(*number)), (Lines{"-1 D-101", "+1 D-102"}));
    expectRoundTrips(*db, *door);
}

TEST(BlockReference, ArraysAreTheirOwnKind) {
    auto db = drawing(dxf({{0, "INSERT"}, {5, "A0"},
                           {330, "2"},    {100, "AcDbEntity"},
                           {8, "0"},      {100, "AcDbMInsertBlock"},
                           {2, "DOOR"},   {10, "0"},
                           {20, "0"},     {30, "0"},
                           {70, "3"},     {71, "2"},
                           {44, "6"},     {45, "5"},
                           {0, "INSERT"}, {5, "B0"},
                           {330, "2"},    {100, "AcDbEntity"},
                           {8, "0"},      {100, "AcDbBlockReference"},
                           {2, "DOOR"},   {10, "0"},
                           {20, "0"},     {30, "0"}}),
                      blockWithAttribute());
    auto* array = object<OdDbMInsertBlock>(*db, "A0");
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(array->columns(), 3);
    EXPECT_EQ(array->rows(), 2);
    EXPECT_DOUBLE_EQ(array->columnSpacing(), 6);
    EXPECT_DOUBLE_EQ(array->rowSpacing(), 5);
    EXPECT_EQ(array->blockName(), "DOOR");
    Lines before = snapshot(*array);
    array->setRows(4);
    EXPECT_EQ(changes(before, snapshot(*array)), (Lines{"-71 2", "+71 4"}));
    EXPECT_THROW(array->setColumns(0), std::invalid_argument);
    EXPECT_EQ(object<OdDbMInsertBlock>(*db, "B0"), nullptr);
    EXPECT_NE(object<OdDbBlockReference>(*db, "B0"), nullptr);
    expectRoundTrips(*db, *array);
}

} // namespace
