// Every entity type of a drawing read from a file survives the C interface: an unchanged list written
// back leaves the file byte for byte as it was, and a list handed to qvdbEntMake recreates the entity
// tag for tag, apart from the handle and owner the drawing gives it.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"

#include <charconv>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using qvad::api::HostSession;
using Tags = std::vector<std::pair<int, std::string>>;

std::string text(const Tags& tags) {
    std::string out;
    for (const auto& [code, value] : tags) out += std::to_string(code) + "\n" + value + "\n";
    return out;
}

// One entity: handle, owner and the data after the common head.
std::string entity(const char* type, const char* handle, const char* owner, const Tags& data) {
    Tags tags = {{0, type}, {5, handle}, {330, owner}, {100, "AcDbEntity"}, {8, "0"}};
    tags.insert(tags.end(), data.begin(), data.end());
    return text(tags);
}

Tags point(int code, const char* x, const char* y, const char* z = nullptr) {
    Tags p = {{code, x}, {code + 10, y}};
    if (z) p.emplace_back(code + 20, z);
    return p;
}

Tags join(std::initializer_list<Tags> parts) {
    Tags all;
    for (const Tags& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

// "1F" is the model space record of the new-drawing template.
const char* kModel = "1F";

std::string modelEntities() {
    std::string s;
    s += entity("LINE", "100", kModel,
                join({{{100, "AcDbLine"}}, point(10, "1.5", "2", "0"), point(11, "4", "6.25", "0")}));
    s += entity("POINT", "101", kModel, join({{{100, "AcDbPoint"}}, point(10, "3", "3", "0.5")}));
    s += entity("CIRCLE", "102", kModel,
                join({{{100, "AcDbCircle"}}, point(10, "5", "5", "0"), {{40, "2.75"}}}));
    s += entity("ARC", "103", kModel,
                join({{{100, "AcDbCircle"}},
                      point(10, "1", "1", "0"),
                      {{40, "2"}, {100, "AcDbArc"}, {50, "30.0"}, {51, "120.5"}}}));
    s += entity("ELLIPSE", "104", kModel,
                join({{{100, "AcDbEllipse"}},
                      point(10, "0", "0", "0"),
                      point(11, "4", "0", "0"),
                      point(210, "0", "0", "1"),
                      {{40, "0.5"}, {41, "0.0"}, {42, "6.283185307179586"}}}));
    s += entity("LWPOLYLINE", "105", kModel,
                join({{{100, "AcDbPolyline"}, {90, "3"}, {70, "1"}, {43, "0.0"}},
                      point(10, "0", "0"),
                      {{42, "0.5"}},
                      point(10, "5", "0"),
                      point(10, "5", "5"),
                      {{42, "-1.0"}}}));
    s += entity("POLYLINE", "106", kModel,
                join({{{100, "AcDb2dPolyline"}, {66, "1"}}, point(10, "0", "0", "0"), {{70, "1"}}}));
    s += entity("VERTEX", "107", "106",
                join({{{100, "AcDbVertex"}, {100, "AcDb2dVertex"}},
                      point(10, "1", "1", "0"),
                      {{42, "0.25"}, {70, "0"}}}));
    s += entity("VERTEX", "108", "106",
                join({{{100, "AcDbVertex"}, {100, "AcDb2dVertex"}}, point(10, "4", "1", "0"), {{70, "0"}}}));
    s += entity("SEQEND", "109", "106", {});
    s += entity("POLYLINE", "10A", kModel,
                join({{{100, "AcDb3dPolyline"}, {66, "1"}}, point(10, "0", "0", "0"), {{70, "8"}}}));
    s += entity(
        "VERTEX", "10B", "10A",
        join({{{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}}, point(10, "1", "2", "3"), {{70, "32"}}}));
    s += entity(
        "VERTEX", "10C", "10A",
        join({{{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}}, point(10, "4", "5", "6"), {{70, "32"}}}));
    s += entity("SEQEND", "10D", "10A", {});
    s += entity("TEXT", "10E", kModel,
                join({{{100, "AcDbText"}},
                      point(10, "2", "3", "0"),
                      {{40, "2.5"}, {1, "Hello"}, {50, "15.0"}, {100, "AcDbText"}}}));
    s += entity(
        "MTEXT", "10F", kModel,
        join({{{100, "AcDbMText"}},
              point(10, "2", "8", "0"),
              {{40, "2.5"}, {41, "10.0"}, {71, "1"}, {72, "5"}, {1, "Two\\Plines"}, {7, "Standard"}}}));
    s += entity("ATTDEF", "110", kModel,
                join({{{100, "AcDbText"}},
                      point(10, "0", "-3", "0"),
                      {{40, "1.0"},
                       {1, "default"},
                       {100, "AcDbAttributeDefinition"},
                       {3, "Prompt"},
                       {2, "LOOSE"},
                       {70, "0"}}}));
    s += entity("INSERT", "111", kModel,
                join({{{100, "AcDbBlockReference"}, {66, "1"}, {2, "BLK"}}, point(10, "10", "10", "0")}));
    s += entity("ATTRIB", "112", "111",
                join({{{100, "AcDbText"}},
                      point(10, "10", "10", "0"),
                      {{40, "1.0"}, {1, "first"}, {100, "AcDbAttribute"}, {2, "TAG"}, {70, "0"}}}));
    s += entity("ATTRIB", "113", "111",
                join({{{100, "AcDbText"}},
                      point(10, "10", "12", "0"),
                      {{40, "1.0"}, {1, "second"}, {100, "AcDbAttribute"}, {2, "TAG2"}, {70, "0"}}}));
    s += entity("SEQEND", "114", "111", {});
    for (const auto& [type, handle] : {std::pair{"SOLID", "115"}, std::pair{"TRACE", "116"}})
        s += entity(type, handle, kModel,
                    join({{{100, "AcDbTrace"}},
                          point(10, "0", "0", "0"),
                          point(11, "1", "0", "0"),
                          point(12, "0", "1", "0"),
                          point(13, "1", "1", "0")}));
    s += entity("3DFACE", "117", kModel,
                join({{{100, "AcDbFace"}},
                      point(10, "0", "0", "0"),
                      point(11, "1", "0", "1"),
                      point(12, "1", "1", "2"),
                      point(13, "0", "1", "1"),
                      {{70, "0"}}}));
    s += entity("WIPEOUT", "118", kModel,
                join({{{100, "AcDbWipeout"}, {90, "0"}},
                      point(10, "0", "0", "0"),
                      point(11, "1", "0", "0"),
                      point(12, "0", "1", "0"),
                      point(13, "1", "1"),
                      {{340, "0"}, {70, "7"}, {280, "1"}, {281, "50"}, {282, "50"}, {283, "0"}, {71, "1"}},
                      {{91, "2"}},
                      point(14, "-0.5", "-0.5"),
                      point(14, "0.5", "0.5")}));
    s += entity(
        "HATCH", "119", kModel,
        join({{{100, "AcDbHatch"}},
              point(10, "0", "0", "0"),
              point(210, "0", "0", "1"),
              {{2, "SOLID"}, {70, "1"}, {71, "0"}, {91, "1"}, {92, "2"}, {72, "0"}, {73, "1"}, {93, "3"}},
              point(10, "0", "0"),
              point(10, "4", "0"),
              point(10, "4", "3"),
              {{97, "0"}, {75, "1"}, {76, "1"}, {98, "1"}},
              point(10, "1", "1")}));
    s +=
        entity("SPLINE", "11A", kModel,
               join({{{100, "AcDbSpline"}},
                     point(210, "0", "0", "1"),
                     {{70, "8"}, {71, "3"}, {72, "8"}, {73, "4"}, {74, "0"}},
                     {{40, "0"}, {40, "0"}, {40, "0"}, {40, "0"}, {40, "1"}, {40, "1"}, {40, "1"}, {40, "1"}},
                     point(10, "0", "0", "0"),
                     point(10, "1", "2", "0"),
                     point(10, "3", "2", "0"),
                     point(10, "4", "0", "0")}));
    s += entity("LEADER", "11B", kModel,
                join({{{100, "AcDbLeader"}, {3, "Standard"}, {71, "1"}, {72, "0"}, {73, "3"}, {74, "1"}},
                      {{75, "0"}, {40, "0.0"}, {41, "0.0"}, {76, "2"}},
                      point(10, "0", "0", "0"),
                      point(10, "5", "5", "0"),
                      {{340, "0"}}}));
    s += entity("DIMENSION", "11C", kModel,
                join({{{100, "AcDbDimension"}, {2, "*D1"}},
                      point(10, "10", "2", "0"),
                      point(11, "5", "2", "0"),
                      {{70, "32"}, {71, "5"}, {3, "Standard"}, {100, "AcDbAlignedDimension"}},
                      point(13, "0", "0", "0"),
                      point(14, "10", "0", "0"),
                      {{100, "AcDbRotatedDimension"}}}));
    s += entity("IMAGE", "11D", kModel,
                join({{{100, "AcDbRasterImage"}, {90, "0"}},
                      point(10, "1", "1", "0"),
                      point(11, "0.1", "0", "0"),
                      point(12, "0", "0.1", "0"),
                      point(13, "100", "50"),
                      {{340, "0"}, {70, "7"}, {280, "0"}, {281, "60"}, {282, "50"}, {283, "0"}, {71, "1"}},
                      {{91, "2"}},
                      point(14, "-0.5", "-0.5"),
                      point(14, "99.5", "49.5")}));
    return s;
}

std::string blockRecord() {
    return text({{0, "BLOCK_RECORD"},
                 {5, "120"},
                 {330, "1"},
                 {100, "AcDbSymbolTableRecord"},
                 {100, "AcDbBlockTableRecord"},
                 {2, "BLK"},
                 {70, "0"},
                 {280, "1"},
                 {281, "0"}});
}

std::string block() {
    std::string s = text({{0, "BLOCK"},
                          {5, "121"},
                          {330, "120"},
                          {100, "AcDbEntity"},
                          {8, "0"},
                          {100, "AcDbBlockBegin"},
                          {2, "BLK"},
                          {70, "2"},
                          {10, "0"},
                          {20, "0"},
                          {30, "0"},
                          {3, "BLK"},
                          {1, ""}});
    s += entity("ATTDEF", "122", "120",
                join({{{100, "AcDbText"}},
                      point(10, "0", "0", "0"),
                      {{40, "1.0"},
                       {1, "def"},
                       {100, "AcDbAttributeDefinition"},
                       {3, "Tag?"},
                       {2, "TAG"},
                       {70, "0"}}}));
    s += entity("ENDBLK", "123", "120", {{100, "AcDbBlockEnd"}});
    return s;
}

void insertAt(std::string& file, const std::string& anchor, const std::string& what, bool after) {
    const std::size_t at = file.find(anchor);
    ASSERT_NE(at, std::string::npos) << anchor;
    file.insert(after ? at + anchor.size() : at, what);
}

// The new-drawing template with the entities above spliced into its file text.
std::unique_ptr<OdDbDatabase> allEntityTypes() {
    std::string file = qvad::dxf::writeDxf(*qvad::db::newDrawing());
    const std::string seed = "$HANDSEED\n  5\n";
    std::size_t at = file.find(seed);
    if (at == std::string::npos) return nullptr;
    at += seed.size();
    file.replace(at, file.find('\n', at) - at, "5000");
    std::size_t paper = file.find("*Paper_Space\n");
    if (paper == std::string::npos) return nullptr;
    std::size_t tableEnd = file.find("  0\nENDTAB\n", paper);
    if (tableEnd == std::string::npos) return nullptr;
    file.insert(tableEnd, blockRecord());
    insertAt(file, "  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n", block(), false);
    insertAt(file, "  2\nENTITIES\n", modelEntities(), true);
    return qvad::dxf::readDxfBuffer(std::move(file));
}

const std::vector<std::string> kTopLevel = {"100", "101", "102", "103", "104", "105", "106",
                                            "10A", "10E", "10F", "110", "111", "115", "116",
                                            "117", "118", "119", "11A", "11B", "11C", "11D"};

// Numbers by value: a made entity writes "1.0" where a file may have said "1".
std::string canonical(std::string_view value) {
    double number = 0;
    auto [end, status] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (value.empty() || status != std::errc() || end != value.data() + value.size())
        return std::string(value);
    char text[64];
    auto written = std::to_chars(text, text + sizeof text, number);
    return std::string(text, written.ptr);
}

std::vector<std::string> tagLines(const OdDbObject& object, bool withoutHandleAndOwner) {
    std::vector<std::string> lines;
    bool ownerSeen = false;
    for (const Tag& t : object.tags()) {
        if (withoutHandleAndOwner && t.code == 5) continue;
        if (withoutHandleAndOwner && t.code == 330 && !ownerSeen) {
            ownerSeen = true;
            continue;
        }
        lines.push_back(std::to_string(t.code) + " " + canonical(t.value()));
    }
    return lines;
}

// The list qvdbEntGet gives, without the groups that name the object itself or its owner.
qv_resbuf* listToMake(const qv_name entity) {
    qv_resbuf* list = nullptr;
    if (qvdbEntGet(entity, &list) != QV_NORM) return nullptr;
    qv_resbuf head{};
    head.rbnext = list;
    for (qv_resbuf* at = &head; at->rbnext;) {
        qv_resbuf* next = at->rbnext;
        if (next->restype == -1 || next->restype == 5 || next->restype == 330) {
            at->rbnext = next->rbnext;
            next->rbnext = nullptr;
            qvutRelRb(next);
        } else {
            at = next;
        }
    }
    return head.rbnext;
}

class EntityRoundTrip : public ::testing::Test {
protected:
    void SetUp() override {
        db = allEntityTypes();
        ASSERT_NE(db, nullptr);
        HostSession::current().setDrawing(db.get());
    }
    void TearDown() override { HostSession::current().setDrawing(nullptr); }

    std::vector<OdDbEntity*> piecesOf(const OdDbObject& object) {
        auto* complex = dynamic_cast<const OdDbComplexEntity*>(&object);
        return complex ? complex->subEntities() : std::vector<OdDbEntity*>{};
    }

    std::unique_ptr<OdDbDatabase> db;
};

TEST_F(EntityRoundTrip, EveryTypeIsInTheDrawing) {
    const char* types[] = {"LINE",     "POINT",   "CIRCLE", "ARC",    "ELLIPSE", "LWPOLYLINE", "POLYLINE",
                           "POLYLINE", "TEXT",    "MTEXT",  "ATTDEF", "INSERT",  "SOLID",      "TRACE",
                           "3DFACE",   "WIPEOUT", "HATCH",  "SPLINE", "LEADER",  "DIMENSION",  "IMAGE"};
    for (std::size_t i = 0; i < kTopLevel.size(); ++i) {
        const OdDbObject* object = db->getObject(qvad::parseHandle(kTopLevel[i]));
        ASSERT_NE(object, nullptr) << kTopLevel[i];
        EXPECT_EQ(object->typeName(), types[i]);
    }
    EXPECT_EQ(piecesOf(*db->getObject(0x111)).size(), 3u);
    EXPECT_EQ(piecesOf(*db->getObject(0x10A)).size(), 3u);
}

TEST_F(EntityRoundTrip, UnchangedListsLeaveTheFileByteForByte) {
    const std::string before = qvad::dxf::writeDxf(*db);
    for (const std::string& handle : kTopLevel) {
        std::vector<std::string> names = {handle};
        for (const OdDbEntity* piece : piecesOf(*db->getObject(qvad::parseHandle(handle))))
            names.push_back(qvad::formatHandle(piece->handle()));
        for (const std::string& h : names) {
            SCOPED_TRACE(h);
            qv_name name;
            ASSERT_EQ(qvdbHandEnt(h.c_str(), name), QV_NORM);
            qv_resbuf* list = nullptr;
            ASSERT_EQ(qvdbEntGet(name, &list), QV_NORM);
            EXPECT_EQ(qvdbEntMod(list), QV_NORM);
            qvutRelRb(list);
            EXPECT_EQ(qvad::dxf::writeDxf(*db), before);
        }
    }
}

TEST_F(EntityRoundTrip, MadeFromItsOwnListEveryEntityComesBackTagForTag) {
    for (const std::string& handle : kTopLevel) {
        SCOPED_TRACE(handle);
        const OdDbObject* original = db->getObject(qvad::parseHandle(handle));
        std::vector<const OdDbObject*> parts = {original};
        for (const OdDbEntity* piece : piecesOf(*original)) parts.push_back(piece);

        qv_name made;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            qv_name name;
            ASSERT_EQ(qvdbHandEnt(qvad::formatHandle(parts[i]->handle()).c_str(), name), QV_NORM);
            qv_resbuf* list = listToMake(name);
            ASSERT_NE(list, nullptr);
            EXPECT_EQ(qvdbEntMakeX(list, made), QV_NORM) << parts[i]->typeName();
            qvutRelRb(list);
        }
        const OdDbObject* copy =
            qvad::api::HostSession::current().drawing()->getObject(static_cast<qvad::Handle>(made[1]));
        ASSERT_NE(copy, nullptr);
        EXPECT_NE(copy->handle(), original->handle());
        EXPECT_EQ(copy->ownerHandle(), original->ownerHandle());
        EXPECT_EQ(tagLines(*copy, true), tagLines(*original, true));
        const auto copies = piecesOf(*copy);
        ASSERT_EQ(copies.size(), parts.size() - 1);
        for (std::size_t i = 0; i < copies.size(); ++i) {
            EXPECT_EQ(copies[i]->ownerHandle(), copy->handle());
            EXPECT_EQ(tagLines(*copies[i], true), tagLines(*parts[i + 1], true)) << copies[i]->typeName();
        }
    }
}

} // namespace
