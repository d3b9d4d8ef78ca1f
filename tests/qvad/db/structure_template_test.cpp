// The empty drawing built into the host: complete, consistent, and stable through a save.

#include "qvad/db/dictionary_entries.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_writer.h"
#include "structure_support.h"

#include <gtest/gtest.h>
#include <set>

using namespace structure_test;

namespace {

TEST(NewDrawing, IsAnEmptyR2018DrawingThatNeededNoMending) {
    auto db = qvad::db::newDrawing();
    EXPECT_EQ(db->version(), "AC1032");
    EXPECT_EQ(db->codePage(), "ANSI_1252");
    EXPECT_TRUE(db->repairs().empty()) << repairs(*db);
    ASSERT_TRUE(db->modelSpace() && db->paperSpace());
    EXPECT_TRUE(db->modelSpace()->entities().empty());
    EXPECT_EQ(db->blocks().size(), 2u);
    for (std::string_view var : {"$INSUNITS", "$MEASUREMENT", "$CLAYER", "$TEXTSTYLE", "$DIMSTYLE",
                                 "$LTSCALE", "$EXTMIN", "$EXTMAX", "$HANDSEED"})
        EXPECT_TRUE(db->header().find(var)) << var;
}

TEST(NewDrawing, HasTheStandardTablesAndEntriesInReaderOrder) {
    auto db = qvad::db::newDrawing();
    std::vector<std::string> order;
    for (const OdDbSymbolTable* t : db->tables()) order.emplace_back(t->name());
    EXPECT_EQ(order, (std::vector<std::string>{"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID",
                                               "DIMSTYLE", "BLOCK_RECORD"}));
    for (auto [table, name] : {std::pair{"VPORT", "*Active"},
                               {"LTYPE", "ByBlock"},
                               {"LTYPE", "ByLayer"},
                               {"LTYPE", "Continuous"},
                               {"LAYER", "0"},
                               {"STYLE", "Standard"},
                               {"APPID", "ACAD"},
                               {"DIMSTYLE", "Standard"},
                               {"BLOCK_RECORD", "*Model_Space"},
                               {"BLOCK_RECORD", "*Paper_Space"}}) {
        const OdDbSymbolTableRecord* r = db->table(table)->find(name);
        ASSERT_TRUE(r) << table << " " << name;
        EXPECT_EQ(r->ownerHandle(), db->table(table)->handle());
    }
    // The header names what the tables hold.
    EXPECT_TRUE(db->table("LAYER")->find(db->header().value("$CLAYER")));
    EXPECT_TRUE(db->table("STYLE")->find(db->header().value("$TEXTSTYLE")));
    EXPECT_TRUE(db->table("DIMSTYLE")->find(db->header().value("$DIMSTYLE")));
}

TEST(NewDrawing, HandlesAreUniqueOwnersExistAndTheSeedIsAboveThem) {
    auto db = qvad::db::newDrawing();
    std::set<qvad::Handle> handles;
    for (const auto& o : db->allObjects()) {
        ASSERT_NE(o->handle(), 0u) << o->typeName();
        EXPECT_TRUE(handles.insert(o->handle()).second) << o->typeName();
        if (o->ownerHandle() != 0) {
            EXPECT_TRUE(db->getObject(o->ownerHandle())) << o->typeName();
        }
    }
    EXPECT_GT(db->handseed(), *handles.rbegin());
    // Every handle a tag refers to exists.
    for (const auto& o : db->allObjects())
        for (const Tag& t : o->tags())
            if (qvad::dxf::isHandleReference(t.code) && t.value() != "0") {
                EXPECT_TRUE(db->getObject(qvad::parseHandle(t.value()))) << o->typeName() << " " << t.code;
            }
}

TEST(NewDrawing, LayoutsAndPlotStylesAreInPlace) {
    auto db = qvad::db::newDrawing();
    using qvad::db::dictionaryItem;
    const OdDbObject* layouts = qvad::db::rootDictionaryItem(*db, "ACAD_LAYOUT");
    ASSERT_TRUE(layouts);
    for (auto [name, space] : {std::pair{"Model", db->modelSpace()}, {"Layout1", db->paperSpace()}}) {
        const OdDbObject* layout = db->getObject(dictionaryItem(*layouts, name));
        ASSERT_TRUE(layout) << name;
        EXPECT_EQ(layout->getHandle(330, "AcDbLayout"), space->handle());
        EXPECT_EQ(space->getHandle(340), layout->handle());
    }
    const OdDbObject* plotStyles = qvad::db::rootDictionaryItem(*db, "ACAD_PLOTSTYLENAME");
    ASSERT_TRUE(plotStyles);
    EXPECT_EQ(plotStyles->typeName(), "ACDBDICTIONARYWDFLT");
    qvad::Handle normal = dictionaryItem(*plotStyles, "Normal");
    EXPECT_EQ(db->getObject(normal)->typeName(), "ACDBPLACEHOLDER");
    EXPECT_EQ(db->table("LAYER")->find("0")->getHandle(390), normal);
    EXPECT_TRUE(qvad::db::rootDictionaryItem(*db, "ACAD_GROUP"));
    EXPECT_TRUE(
        db->getObject(dictionaryItem(*qvad::db::rootDictionaryItem(*db, "ACAD_MLINESTYLE"), "Standard")));
    // Each object class outside the built-in set has its CLASS entry.
    std::string classes;
    for (const Tag& t : db->classes())
        classes += std::to_string(t.code) + " " + std::string(t.value()) + "\n";
    for (std::string_view name : {"ACDBDICTIONARYWDFLT", "ACDBPLACEHOLDER", "LAYOUT"})
        EXPECT_NE(classes.find("1 " + std::string(name) + "\n"), std::string::npos) << name;
}

TEST(NewDrawing, SavesAndLoadsUnchanged) {
    auto db = qvad::db::newDrawing();
    std::string written = qvad::dxf::writeDxf(*db);
    auto again = saveAndLoad(*db);
    EXPECT_TRUE(again->repairs().empty()) << repairs(*again);
    EXPECT_EQ(qvad::dxf::writeDxf(*again), written);
    EXPECT_EQ(written, qvad::db::templateDxf()) << "the template is written exactly as it is stored";
}

} // namespace
