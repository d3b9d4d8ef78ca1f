// An R12 drawing loads as an R2000 drawing: handles, owners, subclass markers, the block record table,
// layouts and the OBJECTS section, all of which survive a save and a second load.

#include "qvad/db/dictionary_entries.h"
#include "structure_support.h"

#include <gtest/gtest.h>
#include <set>

using namespace structure_test;

namespace {

// An R12 file as old programs wrote it: no handles, no markers, tables with only what they used,
// layers that entities name but no table lists.
constexpr std::string_view kR12 = R"(
0 SECTION
2 HEADER
9 $ACADVER
1 AC1009
9 $CLAYER
8 WALLS
0 ENDSEC
0 SECTION
2 TABLES
0 TABLE
2 LTYPE
70 1
0 LTYPE
2 DASHED
70 0
3 __ __
72 65
73 2
40 0.75
49 0.5
49 -0.25
0 ENDTAB
0 TABLE
2 LAYER
70 1
0 LAYER
2 WALLS
70 0
62 1
6 DASHED
0 ENDTAB
0 TABLE
2 DIMSTYLE
70 1
0 DIMSTYLE
2 ARCHITECTURAL
70 0
3 
4 
5 TICK
6 
7 
40 1.0
0 ENDTAB
0 ENDSEC
0 SECTION
2 BLOCKS
0 BLOCK
8 0
2 TICK
70 0
10 0.0
20 0.0
30 0.0
3 TICK
0 LINE
8 0
10 -1.0
20 -1.0
11 1.0
21 1.0
0 ENDBLK
8 0
0 BLOCK
8 0
2 DOOR
70 2
10 0.0
20 0.0
30 0.0
3 DOOR
0 ATTDEF
8 0
10 0.0
20 0.0
40 2.5
1 D1
3 Door number
2 NUMBER
70 0
72 1
11 0.0
21 0.0
74 2
73 0
0 ENDBLK
8 0
0 ENDSEC
0 SECTION
2 ENTITIES
0 LINE
8 WALLS
62 3
10 0.0
20 0.0
11 100.0
21 0.0
0 TEXT
8 NOTES
10 5.0
20 5.0
40 2.5
1 Hello
72 1
73 2
11 10.0
21 5.0
0 ARC
8 WALLS
38 12.5
10 50.0
20 50.0
40 10.0
50 0.0
51 90.0
0 INSERT
8 DOORS
66 1
2 DOOR
10 20.0
20 0.0
0 ATTRIB
8 DOORS
10 20.0
20 0.0
40 2.5
1 D7
2 NUMBER
70 0
72 1
11 20.0
21 0.0
74 2
0 SEQEND
8 DOORS
0 POLYLINE
8 0
66 1
10 0.0
20 0.0
30 0.0
70 8
0 VERTEX
8 0
10 0.0
20 0.0
30 0.0
70 32
0 VERTEX
8 0
10 1.0
20 1.0
30 1.0
70 32
0 SEQEND
8 0
0 POLYLINE
8 0
66 1
10 0.0
20 0.0
30 0.0
70 64
71 3
72 1
0 VERTEX
8 0
10 0.0
20 0.0
30 0.0
70 192
0 VERTEX
8 0
10 1.0
20 0.0
30 0.0
70 192
0 VERTEX
8 0
10 0.0
20 1.0
30 0.0
70 192
0 VERTEX
8 0
10 0.0
20 0.0
30 0.0
70 128
71 1
72 2
73 3
0 SEQEND
8 0
0 DIMENSION
8 DIMS
2 *D1
3 ARCHITECTURAL
10 0.0
20 5.0
11 50.0
21 6.0
70 0
13 0.0
23 0.0
14 100.0
24 7.5
50 0.0
0 DIMENSION
8 DIMS
2 *D2
10 50.0
20 50.0
11 55.0
21 55.0
70 4
15 60.0
25 50.0
40 0.0
0 ENDSEC
0 EOF
)";

class LegacyUpgrade : public ::testing::Test {
protected:
    void SetUp() override {
        loaded = load(kR12);
        db = saveAndLoad(*loaded);
    }
    std::unique_ptr<OdDbDatabase> loaded, db;
};

TEST_F(LegacyUpgrade, BecomesAnR2000DrawingAndSaysSo) {
    EXPECT_EQ(db->version(), "AC1015");
    EXPECT_EQ(db->codePage(), "ANSI_1252");
    EXPECT_TRUE(db->header().find("$DWGCODEPAGE"));
    // One line says it all: layers that R12 entities create by naming them are no mend.
    EXPECT_EQ(repairs(*loaded), "upgraded an R12 drawing to R2000\n");
    // The written drawing is already R2000: loading it again upgrades nothing.
    EXPECT_FALSE(hasRepair(*db, "upgraded")) << repairs(*db);
}

TEST_F(LegacyUpgrade, EveryObjectHasAUniqueHandleBelowTheSeed) {
    std::set<qvad::Handle> seen;
    for (const auto& o : db->allObjects()) {
        if (o->isErased()) continue;
        ASSERT_NE(o->handle(), 0u) << o->typeName();
        EXPECT_TRUE(seen.insert(o->handle()).second) << "duplicate handle in " << o->typeName();
        EXPECT_LT(o->handle(), db->handseed());
    }
}

TEST_F(LegacyUpgrade, EntitiesAreOwnedByTheirBlockRecordsAndSubEntitiesByTheirParents) {
    const OdDbBlockTableRecord* model = db->modelSpace();
    ASSERT_TRUE(model);
    ASSERT_FALSE(model->entities().empty());
    for (const OdDbEntity* e : model->entities()) {
        EXPECT_EQ(e->ownerHandle(), model->handle()) << e->typeName();
        // The owner comes right after the handle, before any subclass.
        EXPECT_EQ(indexOf(*e, 330), 1) << e->typeName();
        if (!e->isComplex()) continue;
        for (const OdDbEntity* sub : static_cast<const OdDbComplexEntity*>(e)->subEntities())
            EXPECT_EQ(sub->ownerHandle(), e->handle()) << sub->typeName();
    }
    const OdDbBlockTableRecord* door = db->findBlock("DOOR");
    ASSERT_TRUE(door && door->blockBegin() && door->blockEnd());
    EXPECT_EQ(door->blockBegin()->ownerHandle(), door->handle());
    EXPECT_EQ(door->blockEnd()->ownerHandle(), door->handle());
}

TEST_F(LegacyUpgrade, EntitiesGetTheirSubclassMarkersWithCommonGroupsFirst) {
    using Markers = std::vector<std::string>;
    const OdDbEntity* line = db->modelSpace()->entities().front();
    ASSERT_EQ(line->typeName(), "LINE");
    EXPECT_EQ(markers(*line), (Markers{"AcDbEntity", "AcDbLine"}));
    // Layer and colour belong to AcDbEntity even where R12 wrote them after the geometry.
    EXPECT_LT(indexOf(*line, 62), indexOf(*line, 100, "AcDbLine"));
    EXPECT_EQ(line->getString(8, {}, "AcDbEntity"), "WALLS");

    const OdDbEntity* text = firstEntity(*db, "TEXT");
    EXPECT_EQ(markers(*text), (Markers{"AcDbEntity", "AcDbText", "AcDbText"}));
    // Horizontal alignment stays in the first part, vertical alignment opens the second.
    int second = indexOf(*text, 100, "AcDbText");
    for (int i = second + 1; i < static_cast<int>(text->tags().size()); ++i)
        if (text->tags()[i].code == 100) second = i;
    EXPECT_LT(indexOf(*text, 72), second);
    EXPECT_EQ(indexOf(*text, 73), second + 1);

    const OdDbEntity* arc = firstEntity(*db, "ARC");
    EXPECT_EQ(markers(*arc), (Markers{"AcDbEntity", "AcDbCircle", "AcDbArc"}));
    EXPECT_GT(indexOf(*arc, 50), indexOf(*arc, 100, "AcDbArc"));
    // R12's elevation (38) becomes the Z of the centre.
    EXPECT_EQ(arc->getPoint(10, {}, "AcDbCircle").z, 12.5);
    EXPECT_EQ(indexOf(*arc, 38), -1);

    EXPECT_EQ(markers(*firstEntity(*db, "INSERT")), (Markers{"AcDbEntity", "AcDbBlockReference"}));
    EXPECT_EQ(markers(*firstEntity(*db, "ATTRIB")), (Markers{"AcDbEntity", "AcDbText", "AcDbAttribute"}));
    EXPECT_EQ(firstEntity(*db, "ATTRIB")->getString(2, {}, "AcDbAttribute"), "NUMBER");
    EXPECT_EQ(markers(*firstEntity(*db, "ATTDEF")),
              (Markers{"AcDbEntity", "AcDbText", "AcDbAttributeDefinition"}));
    EXPECT_EQ(firstEntity(*db, "ATTDEF")->getString(3, {}, "AcDbAttributeDefinition"), "Door number");
    EXPECT_EQ(markers(*firstEntity(*db, "SEQEND")), (Markers{"AcDbEntity"}));
    EXPECT_EQ(markers(*firstEntity(*db, "BLOCK")), (Markers{"AcDbEntity", "AcDbBlockBegin"}));
    EXPECT_EQ(markers(*firstEntity(*db, "ENDBLK")), (Markers{"AcDbEntity", "AcDbBlockEnd"}));
}

TEST_F(LegacyUpgrade, PolylinesAndVerticesAreMarkedByTheirKind) {
    using Markers = std::vector<std::string>;
    std::vector<const OdDbComplexEntity*> polylines;
    for (const OdDbEntity* e : db->modelSpace()->entities())
        if (e->typeName() == "POLYLINE") polylines.push_back(static_cast<const OdDbComplexEntity*>(e));
    ASSERT_EQ(polylines.size(), 2u);

    EXPECT_EQ(markers(*polylines[0]), (Markers{"AcDbEntity", "AcDb3dPolyline"}));
    EXPECT_EQ(markers(*polylines[0]->subEntities()[0]),
              (Markers{"AcDbEntity", "AcDbVertex", "AcDb3dPolylineVertex"}));

    EXPECT_EQ(markers(*polylines[1]), (Markers{"AcDbEntity", "AcDbPolyFaceMesh"}));
    const auto& mesh = polylines[1]->subEntities();
    ASSERT_EQ(mesh.size(), 5u);
    EXPECT_EQ(markers(*mesh[0]), (Markers{"AcDbEntity", "AcDbVertex", "AcDbPolyFaceMeshVertex"}));
    EXPECT_EQ(markers(*mesh[3]), (Markers{"AcDbEntity", "AcDbFaceRecord"}));
    EXPECT_EQ(mesh[3]->getInt(73, 0, "AcDbFaceRecord"), 3);
    EXPECT_EQ(mesh[4]->typeName(), "SEQEND");
}

TEST_F(LegacyUpgrade, DimensionsAreMarkedByTheirType) {
    using Markers = std::vector<std::string>;
    std::vector<const OdDbEntity*> dims;
    for (const OdDbEntity* e : db->modelSpace()->entities())
        if (e->typeName() == "DIMENSION") dims.push_back(e);
    ASSERT_EQ(dims.size(), 2u);
    EXPECT_EQ(markers(*dims[0]),
              (Markers{"AcDbEntity", "AcDbDimension", "AcDbAlignedDimension", "AcDbRotatedDimension"}));
    // Each point keeps its Y and Z in the subclass that holds its X.
    EXPECT_EQ(dims[0]->getPoint(14, {}, "AcDbAlignedDimension").x, 100.0);
    EXPECT_EQ(dims[0]->getPoint(14, {}, "AcDbAlignedDimension").y, 7.5);
    EXPECT_EQ(dims[0]->findTag(24, "AcDbDimension"), nullptr);
    EXPECT_EQ(dims[0]->getString(3, {}, "AcDbDimension"), "ARCHITECTURAL");
    EXPECT_EQ(markers(*dims[1]), (Markers{"AcDbEntity", "AcDbDimension", "AcDbRadialDimension"}));
    EXPECT_EQ(dims[1]->getPoint(15, {}, "AcDbRadialDimension").x, 60.0);
    EXPECT_EQ(dims[1]->getPoint(15, {}, "AcDbRadialDimension").y, 50.0);
    // The type keeps its kind and gains the bit every R13 and later dimension carries.
    EXPECT_EQ(dims[1]->getInt(70, 0, "AcDbDimension"), 4 | 32);
}

TEST_F(LegacyUpgrade, TablesGetMarkersAndTheStandardEntries) {
    const OdDbSymbolTable* layers = db->table("LAYER");
    ASSERT_TRUE(layers);
    EXPECT_EQ(markers(*layers), (std::vector<std::string>{"AcDbSymbolTable"}));
    const OdDbSymbolTableRecord* walls = layers->find("WALLS");
    ASSERT_TRUE(walls);
    EXPECT_EQ(markers(*walls), (std::vector<std::string>{"AcDbSymbolTableRecord", "AcDbLayerTableRecord"}));
    EXPECT_EQ(walls->ownerHandle(), layers->handle());
    EXPECT_EQ(walls->getString(6, {}, "AcDbLayerTableRecord"), "DASHED");
    // Every R2000 layer names a plot style, and that is the drawing's Normal one.
    OdDbObject* plotStyles = qvad::db::rootDictionaryItem(*db, "ACAD_PLOTSTYLENAME");
    ASSERT_TRUE(plotStyles);
    EXPECT_EQ(walls->getHandle(390), qvad::db::dictionaryItem(*plotStyles, "Normal"));

    // What every drawing has, added where the R12 file had none.
    EXPECT_TRUE(layers->find("0"));
    for (std::string_view lt : {"ByBlock", "ByLayer", "Continuous", "DASHED"})
        EXPECT_TRUE(db->table("LTYPE")->find(lt)) << lt;
    EXPECT_TRUE(db->table("STYLE")->find("Standard"));
    EXPECT_TRUE(db->table("APPID")->find("ACAD"));
    EXPECT_TRUE(db->table("DIMSTYLE")->find("Standard"));
    EXPECT_TRUE(db->table("VPORT")->find("*Active"));
    for (std::string_view t : {"VIEW", "UCS"}) EXPECT_TRUE(db->table(t)) << t;

    // Each dash of an R2000 linetype has its element kind.
    const OdDbSymbolTableRecord* dashed = db->table("LTYPE")->find("DASHED");
    TagList tags = tagList(*dashed);
    for (std::size_t i = 0; i < tags.size(); ++i)
        if (tags[i].first == 49) {
            EXPECT_EQ(tags[i + 1].first, 74);
        }
}

TEST_F(LegacyUpgrade, LayersThatOnlyEntitiesNamedAreCreated) {
    for (std::string_view name : {"NOTES", "DOORS", "DIMS"})
        EXPECT_TRUE(db->table("LAYER")->find(name)) << name;
    EXPECT_EQ(db->table("LAYER")->getInt(70, 0, "AcDbSymbolTable"),
              static_cast<long long>(db->table("LAYER")->records().size()));
}

TEST_F(LegacyUpgrade, DimensionStylesUseHandlesAndPointAtTheirArrowBlocks) {
    const OdDbSymbolTableRecord* style = db->table("DIMSTYLE")->find("ARCHITECTURAL");
    ASSERT_TRUE(style);
    EXPECT_EQ(indexOf(*style, 105), 0);
    EXPECT_EQ(indexOf(*style, 5), -1);
    EXPECT_EQ(style->getHandle(342), db->findBlock("TICK")->handle());
}

TEST_F(LegacyUpgrade, EveryBlockHasARecordInTheBlockTable) {
    const OdDbSymbolTable* table = db->table("BLOCK_RECORD");
    ASSERT_TRUE(table);
    EXPECT_EQ(db->tables().back(), table);
    for (std::string_view name : {"*Model_Space", "*Paper_Space", "TICK", "DOOR"}) {
        const auto* record = dynamic_cast<const OdDbBlockTableRecord*>(table->find(name));
        ASSERT_TRUE(record) << name;
        EXPECT_EQ(record->ownerHandle(), table->handle());
        EXPECT_TRUE(record->blockBegin() && record->blockEnd()) << name;
        EXPECT_EQ(markers(*record),
                  (std::vector<std::string>{"AcDbSymbolTableRecord", "AcDbBlockTableRecord"}));
    }
}

TEST_F(LegacyUpgrade, SpacesAndLayoutsPointAtEachOther) {
    const OdDbObject* layouts = qvad::db::rootDictionaryItem(*db, "ACAD_LAYOUT");
    ASSERT_TRUE(layouts);
    for (auto [layoutName, space] : {std::pair{"Model", db->modelSpace()}, {"Layout1", db->paperSpace()}}) {
        ASSERT_TRUE(space);
        const OdDbObject* layout = db->getObject(qvad::db::dictionaryItem(*layouts, layoutName));
        ASSERT_TRUE(layout) << layoutName;
        EXPECT_EQ(layout->typeName(), "LAYOUT");
        EXPECT_EQ(layout->getHandle(330, "AcDbLayout"), space->handle()) << layoutName;
        EXPECT_EQ(space->getHandle(340), layout->handle()) << layoutName;
        EXPECT_EQ(layout->ownerHandle(), layouts->handle());
    }
    // The OBJECTS section came with the classes an R2000 reader needs for it, without R2004's counts.
    std::string classes;
    for (const Tag& t : db->classes())
        classes += std::to_string(t.code) + " " + std::string(t.value()) + "\n";
    EXPECT_NE(classes.find("1 LAYOUT"), std::string::npos) << classes;
    EXPECT_EQ(classes.find("91 "), std::string::npos) << classes;
}

TEST(LegacyUpgradeCoordinates, PointComponentsWrittenOutOfOrderArePaired) {
    // The earliest writers listed all X values before the Y values.
    auto db = saveAndLoad(*load(R"(
        0 SECTION
        2 HEADER
        9 $ACADVER
        1 AC1003
        0 ENDSEC
        0 SECTION
        2 ENTITIES
        0 LINE
        8 0
        10 1.5
        11 2.0
        20 3.0
        21 4.0
        30 0.0
        31 0.0
        0 ENDSEC
        0 EOF)"));
    const OdDbEntity* line = firstEntity(*db, "LINE");
    ASSERT_TRUE(line);
    TagList tags = tagList(*line);
    int start = indexOf(*line, 10);
    ASSERT_GE(start, 0);
    TagList expected = {{10, "1.5"}, {20, "3.0"}, {30, "0.0"}, {11, "2.0"}, {21, "4.0"}, {31, "0.0"}};
    EXPECT_EQ(TagList(tags.begin() + start, tags.begin() + start + 6), expected);
    EXPECT_TRUE(hasRepair(*load(R"(
        0 SECTION
        2 ENTITIES
        0 LINE
        8 0
        0 ENDSEC
        0 EOF)"),
                          "upgraded an R12 drawing to R2000"));
}

TEST(LegacyUpgradeSpaces, R12SpaceBlocksBecomeTheLayoutBlocks) {
    auto db = saveAndLoad(*load(R"(
        0 SECTION
        2 HEADER
        9 $ACADVER
        1 AC1009
        0 ENDSEC
        0 SECTION
        2 BLOCKS
        0 BLOCK
        8 0
        2 $MODEL_SPACE
        70 0
        10 0.0
        20 0.0
        30 0.0
        3 $MODEL_SPACE
        0 ENDBLK
        8 0
        0 BLOCK
        8 0
        2 *PAPER_SPACE
        70 0
        10 0.0
        20 0.0
        30 0.0
        3 *PAPER_SPACE
        0 ENDBLK
        8 0
        0 ENDSEC
        0 SECTION
        2 ENTITIES
        0 CIRCLE
        8 0
        10 0.0
        20 0.0
        40 1.0
        0 ENDSEC
        0 EOF)"));
    EXPECT_FALSE(db->findBlock("$MODEL_SPACE"));
    ASSERT_TRUE(db->modelSpace() && db->paperSpace());
    EXPECT_EQ(db->modelSpace()->entities().size(), 1u);
    EXPECT_EQ(db->modelSpace()->blockBegin()->getString(2), "*Model_Space");
    EXPECT_EQ(db->paperSpace()->name(), "*Paper_Space");
    EXPECT_EQ(db->paperSpace()->blockBegin()->getString(3), "*Paper_Space");
    std::size_t spaces = 0;
    for (const OdDbBlockTableRecord* b : db->blocks()) spaces += b->isLayout();
    EXPECT_EQ(spaces, 2u);
}

TEST(LegacyUpgradeViewports, ViewDataMovesFromExtendedDataIntoGroups) {
    auto db = saveAndLoad(*load(R"(
        0 SECTION
        2 HEADER
        9 $ACADVER
        1 AC1009
        0 ENDSEC
        0 SECTION
        2 TABLES
        0 TABLE
        2 LAYER
        70 1
        0 LAYER
        2 HIDDEN
        70 0
        62 7
        6 CONTINUOUS
        0 ENDTAB
        0 TABLE
        2 APPID
        70 1
        0 APPID
        2 ACAD
        70 0
        0 ENDTAB
        0 ENDSEC
        0 SECTION
        2 ENTITIES
        0 VIEWPORT
        8 0
        67 1
        10 100.0
        20 80.0
        30 0.0
        40 200.0
        41 150.0
        68 2
        69 2
        1001 ACAD
        1000 MVIEW
        1002 {
        1070 16
        1010 5.0
        1020 6.0
        1030 0.0
        1010 0.0
        1020 0.0
        1030 1.0
        1040 0.0
        1040 75.0
        1040 40.0
        1040 30.0
        1040 50.0
        1040 0.0
        1040 0.0
        1070 0
        1070 100
        1070 1
        1070 3
        1070 0
        1070 1
        1070 0
        1070 0
        1040 0.0
        1040 0.0
        1040 0.0
        1040 1.0
        1040 1.0
        1040 10.0
        1040 10.0
        1070 0
        1002 {
        1003 HIDDEN
        1002 }
        1002 }
        0 ENDSEC
        0 EOF)"));
    const OdDbEntity* vp = firstEntity(*db, "VIEWPORT");
    ASSERT_TRUE(vp);
    EXPECT_EQ(markers(*vp), (std::vector<std::string>{"AcDbEntity", "AcDbViewport"}));
    EXPECT_EQ(vp->ownerHandle(), db->paperSpace()->handle());
    EXPECT_EQ(vp->getDouble(45, 0, "AcDbViewport"), 75.0);
    EXPECT_EQ(vp->getPoint(12, {}, "AcDbViewport").x, 40.0);
    EXPECT_EQ(vp->getPoint(17, {}, "AcDbViewport").y, 6.0);
    EXPECT_EQ(vp->getPoint(16, {}, "AcDbViewport").z, 1.0);
    EXPECT_EQ(vp->getPoint(15, {}, "AcDbViewport").x, 10.0);
    // Grid on (512), fast zoom (128), UCS icon on and at origin (32, 64).
    EXPECT_EQ(vp->getInt(90, 0, "AcDbViewport"), 512 | 128 | 32 | 64);
    EXPECT_EQ(vp->getHandle(331, "AcDbViewport"), db->table("LAYER")->find("HIDDEN")->handle());
    // The extended data stays for readers that look there.
    EXPECT_GE(indexOf(*vp, 1000, "MVIEW"), 0);
}

} // namespace
