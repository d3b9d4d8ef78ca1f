// The object-level calls modules use: ids from entity names, exact classes, erasing with undo, the
// fields stream two copies share, entity references and adding a new entity to a space.

#include "entities_drawing.h"
#include "qvad/api/drawing_objects.h"
#include "qvad/db/OdDbMemoryFiler.h"
#include "qvad/db/entities/OdDbCircle.h"
#include "qvad/db/entities/OdDbDimensionKinds.h"
#include "qvad/db/entity_creation.h"
#include "qvad/db/table_records.h"
#include "qvad/dxf/dxf_reader.h"
#include "undo_fixture.h"

#include <gtest/gtest.h>

using namespace entities_test;

namespace {

std::string line(const char* handle, const char* layer, const char* x) {
    return dxf({{0, "LINE"}, {5, handle}, {330, "2"}, {100, "AcDbEntity"}, {8, layer}, {100, "AcDbLine"},
                {10, x}, {20, "0"}, {30, "0"}, {11, "5"}, {21, "5"}, {31, "0"}});
}

std::string fields(const OdDbObject& object) {
    OdDbMemoryFiler filer;
    object.dwgOutFields(filer);
    return filer.bytes();
}

} // namespace

TEST(ObjectAccess, ExactClassesKeepTypesAndKindsApart) {
    auto db = drawing(line("A1", "0", "1") + line("A2", "0", "2") +
                      dxf({{0, "CIRCLE"}, {5, "A3"}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"},
                           {100, "AcDbCircle"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "1"}}) +
                      dxf({{0, "DIMENSION"}, {5, "A4"}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"},
                           {100, "AcDbDimension"}, {70, "0"}, {100, "AcDbAlignedDimension"},
                           {100, "AcDbRotatedDimension"}}) +
                      dxf({{0, "DIMENSION"}, {5, "A5"}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"},
                           {100, "AcDbDimension"}, {70, "1"}, {100, "AcDbAlignedDimension"}}) +
                      dxf({{0, "MYSHAPE"}, {5, "A6"}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"}}) +
                      dxf({{0, "OTHERSHAPE"}, {5, "A7"}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"}}));
    auto at = [&](const char* h) { return db->getObject(qvad::parseHandle(h)); };
    EXPECT_EQ(at("A1")->isA(), at("A2")->isA());
    EXPECT_NE(at("A1")->isA(), at("A3")->isA());
    EXPECT_NE(at("A4")->isA(), at("A5")->isA()) << "rotated and aligned dimensions are two classes";
    EXPECT_NE(at("A6")->isA(), at("A7")->isA()) << "untyped objects keep their own type";
    EXPECT_EQ(at("A3")->isA()->name(), "CIRCLE");
}

TEST(ObjectAccess, FieldsStreamLeavesOutIdentityAndCommonProperties) {
    auto db = drawing(line("A1", "0", "1") + line("A2", "WALLS", "1") + line("A3", "0", "1.5") +
                      dxf({{0, "LINE"}, {5, "A4"}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"}, {62, "1"},
                           {100, "AcDbLine"}, {10, "1"}, {20, "0"}, {30, "0"}, {11, "5"}, {21, "5"},
                           {31, "0"}, {1001, "APP"}, {1000, "note"}}));
    auto at = [&](const char* h) -> const OdDbObject& { return *db->getObject(qvad::parseHandle(h)); };
    EXPECT_FALSE(fields(at("A1")).empty());
    EXPECT_EQ(fields(at("A1")), fields(at("A2"))) << "handle and layer differ only";
    EXPECT_EQ(fields(at("A1")), fields(at("A4"))) << "colour and extended data are not fields";
    EXPECT_NE(fields(at("A1")), fields(at("A3")));
}

TEST_F(UndoTest, ErasingThroughAnIdIsUndoneExactly) {
    ASSERT_TRUE(makeLine(1.0));
    qv_name last = {0, 0};
    ASSERT_EQ(qvdbEntLast(last), QV_NORM);
    OdDbObjectId id;
    ASSERT_EQ(oddbGetObjectId(id, last), eOk);
    const std::string before = bytes();
    OdDbEntity* entity = nullptr;
    ASSERT_EQ(oddbOpenOdDbEntity(entity, id), eOk);
    command([&] {
        ASSERT_EQ(entity->upgradeOpen(), eOk);
        EXPECT_EQ(entity->erase(true), eOk);
    });
    EXPECT_EQ(oddbOpenOdDbEntity(entity, id), eWasErased);
    EXPECT_EQ(oddbOpenOdDbEntity(entity, id, OdDb::kForRead, true), eOk);
    journal->undo(1);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(oddbOpenOdDbEntity(entity, id), eOk);
}

TEST_F(UndoTest, NamesThatAreNoObjectsAreRefused) {
    OdDbObjectId id;
    qv_name stale = {12345, 0x42};
    EXPECT_EQ(oddbGetObjectId(id, stale), eInvalidInput);
    EXPECT_TRUE(id.isNull());
    OdDbObject* object = nullptr;
    EXPECT_EQ(oddbOpenOdDbObject(object, id), eNullObjectId);
    EXPECT_EQ(oddbOpenOdDbObject(object, OdDbObjectId(db.get(), 0xFFFFF)), eKeyNotFound);
    EXPECT_EQ(object, nullptr);
}

TEST_F(UndoTest, EntityReferencesFindTheirRecordsAndLayerStates) {
    OdDbSymbolTable* layers = db->table("LAYER");
    ASSERT_NE(layers, nullptr);
    auto* frozen = qvad::db::addTableRecord(*db, *layers, {Tag(2, "FROZEN"), Tag(70, "1"), Tag(62, "7")});
    auto* off = qvad::db::addTableRecord(*db, *layers, {Tag(2, "OFF"), Tag(70, "0"), Tag(62, "-7")});
    auto* locked = qvad::db::addTableRecord(*db, *layers, {Tag(2, "LOCKED"), Tag(70, "4"), Tag(62, "7")});
    EXPECT_TRUE(isLayerFrozen(*frozen));
    EXPECT_FALSE(isLayerFrozen(*off));
    EXPECT_TRUE(isLayerOff(*off));
    EXPECT_FALSE(isLayerOff(*locked));
    EXPECT_TRUE(isLayerLocked(*locked));

    ASSERT_TRUE(makeLine(1.0, "frozen"));
    qv_name last = {0, 0};
    ASSERT_EQ(qvdbEntLast(last), QV_NORM);
    OdDbObjectId id;
    ASSERT_EQ(oddbGetObjectId(id, last), eOk);
    OdDbEntity* entity = nullptr;
    ASSERT_EQ(oddbOpenOdDbEntity(entity, id), eOk);
    EXPECT_EQ(entity->layerId(), frozen->objectId()) << "layer names are case-insensitive";
    EXPECT_FALSE(entity->linetypeId().isNull()) << "BYLAYER is a linetype record";
    EXPECT_EQ(entity->blockId(), db->modelSpace()->objectId());
    EXPECT_TRUE(entity->color().isByLayer());
    entity->setColor(OdCmColor(1, 0x336699, ""));
    EXPECT_EQ(entity->color(), OdCmColor(1, 0x336699, ""));
    EXPECT_NE(entity->color(), OdCmColor(1, -1, ""));
}

TEST_F(UndoTest, AddedCircleJoinsItsSpaceSavesReadablyAndUndoes) {
    const std::string before = bytes();
    command([&] {
        auto entity = qvad::db::newEntity(*db, "CIRCLE");
        ASSERT_NE(entity, nullptr);
        auto& circle = static_cast<OdDbCircle&>(*entity);
        circle.setCenterWcs(OdGePoint3d(3, 4, 0));
        circle.setRadius(2.5);
        circle.setLayer("0");
        OdDbObjectId id = db->addOdDbObject(std::move(entity), db->modelSpace()->objectId());
        ASSERT_FALSE(id.isNull());
        EXPECT_EQ(db->modelSpace()->entities().back()->objectId(), id);
    });
    const std::string after = bytes();
    auto reread = qvad::dxf::readDxfBuffer(after);
    ASSERT_NE(reread, nullptr);
    const auto& entities = reread->modelSpace()->entities();
    ASSERT_FALSE(entities.empty());
    auto* circle = dynamic_cast<const OdDbCircle*>(entities.back());
    ASSERT_NE(circle, nullptr);
    EXPECT_DOUBLE_EQ(circle->radius(), 2.5);
    EXPECT_TRUE(circle->hasSubclass("AcDbCircle"));
    journal->undo(1);
    EXPECT_EQ(bytes(), before);
    EXPECT_TRUE(db->addOdDbObject(qvad::db::newEntity(*db, "LINE"), OdDbObjectId()).isNull());
}
