// Drawings written by an independent DXF library (ezdxf) load into the typed classes with the values
// it wrote, every object survives its data list, and drawings edited through the typed classes read
// back cleanly in that library.

#include "entities_drawing.h"
#include "qvad/db/dictionary.h"
#include "qvad/db/entities/OdDbArc.h"
#include "qvad/db/entities/OdDbBlockReference.h"
#include "qvad/db/entities/OdDbCircle.h"
#include "qvad/db/entities/OdDbDimensionKinds.h"
#include "qvad/db/entities/OdDbEllipse.h"
#include "qvad/db/entities/OdDbGroup.h"
#include "qvad/db/entities/OdDbHatch.h"
#include "qvad/db/entities/OdDbHeavyPolyline.h"
#include "qvad/db/entities/OdDbLeader.h"
#include "qvad/db/entities/OdDbLine.h"
#include "qvad/db/entities/OdDbMText.h"
#include "qvad/db/entities/OdDbModelerGeometry.h"
#include "qvad/db/entities/OdDbPoint.h"
#include "qvad/db/entities/OdDbPolyFaceMesh.h"
#include "qvad/db/entities/OdDbPolyline.h"
#include "qvad/db/entities/OdDbRasterImage.h"
#include "qvad/db/entities/OdDbSolid.h"
#include "qvad/db/entities/OdDbSortentsTable.h"
#include "qvad/db/entities/OdDbSpline.h"
#include "qvad/db/entities/OdDbXrecord.h"
#include "qvad/db/entity_data_list.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <numbers>
#include <unistd.h>

using namespace entities_test;
namespace fs = std::filesystem;

namespace {

constexpr const char* kWriteScript = R"(
import sys, ezdxf
doc = ezdxf.new(sys.argv[2])
msp = doc.modelspace()
made = {}
def keep(name, entity):
    made[name] = entity.dxf.handle
    return entity
blk = doc.blocks.new('B1', base_point=(1, 1))
blk.add_attdef('TAG1', (0, 0), dxfattribs={'prompt': 'Enter'})
keep('line', msp.add_line((0, 0), (1, 1)))
keep('arc', msp.add_arc((1, 1), 2, 10, 200, dxfattribs={'extrusion': (0, 0, -1)}))
keep('circle', msp.add_circle((1, 1), 2))
keep('ellipse', msp.add_ellipse((1, 2), major_axis=(3, 0), ratio=0.5, start_param=0, end_param=3))
keep('point', msp.add_point((1, 2, 3)))
keep('lwpolyline', msp.add_lwpolyline([(0, 0, 0.5, 1, 0.5), (5, 0, 0, 0, 0)], format='xyseb'))
keep('polyline2d', msp.add_polyline2d([(0, 0), (1, 0), (1, 1)], dxfattribs={'closed': True}))
keep('polyline3d', msp.add_polyline3d([(0, 0, 0), (1, 0, 1)]))
pf = keep('polyface', msp.add_polyface())
pf.append_face([(0, 0, 0), (1, 0, 0), (1, 1, 0)])
pm = keep('polymesh', msp.add_polymesh((2, 3)))
for m in range(2):
    for n in range(3):
        pm.set_mesh_vertex((m, n), (m, n, m * n))
keep('text', msp.add_text('Hi', dxfattribs={'rotation': 30, 'height': 2.5})).set_pos((1, 2), (5, 2), align='MIDDLE_CENTER')
keep('mtext', msp.add_mtext('A' * 300))
ins = keep('insert', msp.add_blockref('B1', (3, 4), dxfattribs={'rotation': 45}))
ins.add_attrib('TAG1', 'val', (3, 4))
mi = keep('minsert', msp.add_blockref('B1', (0, 0)))
mi.dxf.row_count = 2
mi.dxf.column_count = 3
mi.dxf.row_spacing = 5
mi.dxf.column_spacing = 6
keep('solid', msp.add_solid([(0, 0), (1, 0), (0, 1), (1, 1)]))
keep('trace', msp.add_trace([(0, 0), (1, 0), (0, 1), (1, 1)]))
keep('face', msp.add_3dface([(0, 0, 0), (1, 0, 0), (1, 1, 1), (0, 1, 1)], dxfattribs={'invisible': 5}))
h = keep('hatch', msp.add_hatch(color=2))
h.paths.add_polyline_path([(0, 0, 0.5), (10, 0), (10, 10)], is_closed=True)
ep = h.paths.add_edge_path()
ep.add_line((0, 0), (1, 0))
ep.add_arc((1, 1), 1, 270, 360)
keep('spline', msp.add_spline([(0, 0), (1, 1), (2, 0), (3, 1)]))
keep('leader', msp.add_leader([(0, 0), (1, 1), (2, 1)]))
keep('dim_rotated', msp.add_linear_dim(base=(0, 5), p1=(0, 0), p2=(10, 0)).render().dimension)
keep('dim_aligned', msp.add_aligned_dim(p1=(0, 0), p2=(3, 3), distance=1).render().dimension)
keep('dim_angular2l', msp.add_angular_dim_2l(base=(0, 2), line1=((0, 0), (3, 0)), line2=((0, 0), (0, 3))).render().dimension)
keep('dim_diameter', msp.add_diameter_dim((0, 0), radius=3, angle=45).render().dimension)
keep('dim_radius', msp.add_radius_dim((0, 0), radius=3, angle=45).render().dimension)
keep('dim_angular3p', msp.add_angular_dim_3p(base=(0, 2), center=(0, 0), p1=(3, 0), p2=(0, 3)).render().dimension)
keep('dim_ordinate', msp.add_ordinate_x_dim(feature_location=(3, 2), offset=(1, 1)).render().dimension)
keep('image', msp.add_image(doc.add_image_def('x.png', (100, 50)), (1, 1), (10, 5)))
keep('wipeout', msp.add_wipeout([(0, 0), (4, 0), (4, 2), (0, 2)]))
keep('region', msp.add_region())
keep('solid3d', msp.add_3dsolid())
keep('body', msp.add_body())
x = keep('xrecord', doc.objects.add_xrecord(doc.rootdict.dxf.handle))
x.extend([(1, 'text'), (40, 1.5)])
g = keep('group', doc.groups.new('G1'))
g.extend([ins])
line = doc.entitydb[made['line']]
line.set_xdata('APP1', [(1000, 'x'), (1010, (1, 2, 3)), (1070, 5)])
msp.set_redraw_order([(made['line'], 'FFFF')])
made['sortents'] = doc.objects.query('SORTENTSTABLE')[0].dxf.handle
doc.saveas(sys.argv[1])
for name, handle in made.items():
    print(f'{name}={handle}')
)";

constexpr const char* kReadScript = R"(
import sys, ezdxf
from ezdxf.audit import Auditor
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
print(f'errors={len(auditor.errors)}')
db = doc.entitydb
def get(h):
    return db[h]
print(f'text={get(sys.argv[2]).dxf.text}')
lw = get(sys.argv[3])
print(f'lwcount={len(lw)}')
print(f'lwbulge={lw.get_points("b")[1][0]}')
print(f'mtext={len(get(sys.argv[4]).text)}')
w = get(sys.argv[5])
print(f'wipeout={len(w.boundary_path)}')
print(f'group={len(get(sys.argv[6]))}')
print(f'attrib={get(sys.argv[7]).attribs[0].dxf.text}')
print(f'entities={len(doc.modelspace())}')
)";

struct Python {
    static bool hasEzdxf() {
        static const bool ok = std::system("/usr/bin/python3 -c 'import ezdxf' >/dev/null 2>&1") == 0;
        return ok;
    }
    // Runs a script and returns its "key=value" lines.
    static std::map<std::string, std::string> run(const fs::path& script, const std::string& args) {
        std::map<std::string, std::string> out;
        std::string command = "/usr/bin/python3 " + script.string() + " " + args + " 2>&1";
        FILE* pipe = popen(command.c_str(), "r");
        if (!pipe) return out;
        char buffer[4096];
        std::string text;
        while (fgets(buffer, sizeof buffer, pipe)) text += buffer;
        int status = pclose(pipe);
        if (status != 0) {
            ADD_FAILURE() << command << " failed:\n" << text;
            return out;
        }
        std::size_t at = 0;
        while (at < text.size()) {
            std::size_t end = text.find('\n', at);
            std::string lineText = text.substr(at, end - at);
            std::size_t eq = lineText.find('=');
            if (eq != std::string::npos) out[lineText.substr(0, eq)] = lineText.substr(eq + 1);
            at = end == std::string::npos ? text.size() : end + 1;
        }
        return out;
    }
};

class EzdxfDrawing : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!Python::hasEzdxf()) GTEST_SKIP() << "python3 with ezdxf is not installed";
        m_dir = fs::temp_directory_path() / ("qv_entities_" + std::to_string(::getpid()) + "_" + GetParam());
        fs::create_directories(m_dir);
        writeFile(m_dir / "write.py", kWriteScript);
        writeFile(m_dir / "read.py", kReadScript);
        m_handles = Python::run(m_dir / "write.py", (m_dir / "in.dxf").string() + " " + GetParam());
        ASSERT_FALSE(m_handles.empty());
        m_db = qvad::dxf::readDxfFile((m_dir / "in.dxf").string());
    }
    void TearDown() override {
        std::error_code ignored;
        if (!m_dir.empty()) fs::remove_all(m_dir, ignored);
    }
    static void writeFile(const fs::path& path, const char* text) { std::ofstream(path) << text; }

    template <class T> T* made(const std::string& name) {
        auto it = m_handles.find(name);
        if (it == m_handles.end()) return nullptr;
        return object<T>(*m_db, it->second);
    }

    fs::path m_dir;
    std::map<std::string, std::string> m_handles;
    std::unique_ptr<OdDbDatabase> m_db;
};

TEST_P(EzdxfDrawing, EntitiesLoadIntoTheirClassesWithTheWrittenValues) {
    using std::numbers::pi;
    ASSERT_NE(made<OdDbLine>("line"), nullptr);
    EXPECT_EQ(made<OdDbLine>("line")->endPoint(), OdGePoint3d(1, 1, 0));
    auto* arc = made<OdDbArc>("arc");
    ASSERT_NE(arc, nullptr);
    EXPECT_NEAR(arc->endAngle(), 200 * pi / 180, 1e-12);
    EXPECT_TRUE(arc->centerWcs().isEqualTo(OdGePoint3d(-1, 1, 0), 1e-12));
    EXPECT_NE(made<OdDbCircle>("circle"), nullptr);
    ASSERT_NE(made<OdDbEllipse>("ellipse"), nullptr);
    EXPECT_DOUBLE_EQ(made<OdDbEllipse>("ellipse")->endParam(), 3);
    EXPECT_NE(made<OdDbPoint>("point"), nullptr);
    auto* lw = made<OdDbPolyline>("lwpolyline");
    ASSERT_NE(lw, nullptr);
    EXPECT_EQ(lw->numVerts(), 2u);
    EXPECT_DOUBLE_EQ(lw->getBulgeAt(0), 0.5);
    ASSERT_NE(made<OdDb2dPolyline>("polyline2d"), nullptr);
    EXPECT_TRUE(made<OdDb2dPolyline>("polyline2d")->isClosed());
    EXPECT_EQ(made<OdDb2dPolyline>("polyline2d")->vertices().size(), 3u);
    EXPECT_NE(made<OdDb3dPolyline>("polyline3d"), nullptr);
    ASSERT_NE(made<OdDbPolyFaceMesh>("polyface"), nullptr);
    EXPECT_EQ(made<OdDbPolyFaceMesh>("polyface")->faces().size(), 1u);
    ASSERT_NE(made<OdDbPolygonMesh>("polymesh"), nullptr);
    EXPECT_EQ(made<OdDbPolygonMesh>("polymesh")->vertexAt(1, 2)->position(), OdGePoint3d(1, 2, 2));
    auto* text = made<OdDbText>("text");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->textString(), "Hi");
    EXPECT_NEAR(text->rotation(), pi / 6, 1e-12);
    EXPECT_EQ(text->verticalMode(), OdDbText::kTextVertMid);
    ASSERT_NE(made<OdDbMText>("mtext"), nullptr);
    EXPECT_EQ(made<OdDbMText>("mtext")->contents(), std::string(300, 'A'));
    auto* insert = made<OdDbBlockReference>("insert");
    ASSERT_NE(insert, nullptr);
    ASSERT_NE(insert->attribute("TAG1"), nullptr);
    EXPECT_EQ(insert->attribute("TAG1")->textString(), "val");
    ASSERT_NE(made<OdDbMInsertBlock>("minsert"), nullptr);
    EXPECT_EQ(made<OdDbMInsertBlock>("minsert")->columns(), 3);
    EXPECT_NE(made<OdDbSolid>("solid"), nullptr);
    EXPECT_NE(made<OdDbTrace>("trace"), nullptr);
    ASSERT_NE(made<OdDbFace>("face"), nullptr);
    EXPECT_FALSE(made<OdDbFace>("face")->isEdgeVisibleAt(2));
    ASSERT_NE(made<OdDbHatch>("hatch"), nullptr);
    EXPECT_EQ(made<OdDbHatch>("hatch")->loops().size(), 2u);
    ASSERT_NE(made<OdDbSpline>("spline"), nullptr);
    EXPECT_EQ(made<OdDbSpline>("spline")->numFitPoints(), 4);
    ASSERT_NE(made<OdDbLeader>("leader"), nullptr);
    EXPECT_EQ(made<OdDbLeader>("leader")->numVertices(), 3);
    EXPECT_NE(made<OdDbRotatedDimension>("dim_rotated"), nullptr);
    // ezdxf writes an aligned dimension as the rotated kind along the measured direction.
    ASSERT_NE(made<OdDbRotatedDimension>("dim_aligned"), nullptr);
    EXPECT_NEAR(made<OdDbRotatedDimension>("dim_aligned")->rotation(), pi / 4, 1e-12);
    EXPECT_NE(made<OdDb2LineAngularDimension>("dim_angular2l"), nullptr);
    EXPECT_NE(made<OdDbDiametricDimension>("dim_diameter"), nullptr);
    EXPECT_NE(made<OdDbRadialDimension>("dim_radius"), nullptr);
    EXPECT_NE(made<OdDb3PointAngularDimension>("dim_angular3p"), nullptr);
    ASSERT_NE(made<OdDbOrdinateDimension>("dim_ordinate"), nullptr);
    EXPECT_TRUE(made<OdDbOrdinateDimension>("dim_ordinate")->isUsingXAxis());
    ASSERT_NE(made<OdDbRasterImage>("image"), nullptr);
    EXPECT_EQ(made<OdDbRasterImage>("image")->imageSize(), OdGePoint2d(100, 50));
    auto* wipeout = made<OdDbWipeout>("wipeout");
    ASSERT_NE(wipeout, nullptr);
    auto outline = wipeout->boundaryWcs();
    ASSERT_EQ(outline.size(), 4u);
    EXPECT_TRUE(outline[2].isEqualTo(OdGePoint3d(4, 2, 0), 1e-12));
    EXPECT_NE(made<OdDbRegion>("region"), nullptr);
    EXPECT_NE(made<OdDb3dSolid>("solid3d"), nullptr);
    EXPECT_NE(made<OdDbBody>("body"), nullptr);
    ASSERT_NE(made<OdDbXrecord>("xrecord"), nullptr);
    EXPECT_EQ(made<OdDbXrecord>("xrecord")->dataTags().size(), 2u);
    auto* group = made<OdDbGroup>("group");
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->name(), "G1");
    EXPECT_EQ(group->entityHandles(), (std::vector<qvad::Handle>{insert->handle()}));
    auto* order = made<OdDbSortentsTable>("sortents");
    ASSERT_NE(order, nullptr);
    EXPECT_EQ(order->drawOrder().back(), made<OdDbLine>("line")->handle());
    EXPECT_NE(dynamic_cast<OdDbDictionary*>(m_db->namedObjectsDictionary()), nullptr);
}

TEST_P(EzdxfDrawing, EveryObjectSurvivesItsDataList) {
    qvad::dxf::StringPool pool;
    std::size_t checked = 0;
    for (const auto& o : m_db->allObjects()) {
        if (o->isErased()) continue;
        const auto list = qvad::db::entityToDataList(*o);
        EXPECT_EQ(snapshot(qvad::db::dataListToTags(list, o->typeName(), pool)), snapshot(*o))
            << o->typeName() << " " << qvad::formatHandle(o->handle());
        ++checked;
    }
    EXPECT_GT(checked, 100u);
}

TEST_P(EzdxfDrawing, EditsReadBackInTheIndependentReader) {
    auto* text = made<OdDbText>("text");
    auto* lw = made<OdDbPolyline>("lwpolyline");
    auto* mtext = made<OdDbMText>("mtext");
    auto* wipeout = made<OdDbWipeout>("wipeout");
    auto* group = made<OdDbGroup>("group");
    auto* insert = made<OdDbBlockReference>("insert");
    ASSERT_TRUE(text && lw && mtext && wipeout && group && insert);
    text->setTextString("Changed");
    lw->addVertexAt(1, OdGePoint2d(2, 2), 0.25);
    mtext->setContents(std::string(600, 'B'));
    wipeout->setBoundary({{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {0, 3, 0}, {-1, 1, 0}});
    group->append(made<OdDbLine>("line")->handle());
    insert->attributes()[0]->setTextString("new value");
    const std::size_t entities = m_db->modelSpace()->entities().size();

    const fs::path out = m_dir / "out.dxf";
    qvad::dxf::saveDxfFile(*m_db, out.string());
    auto h = [&](const char* name) { return m_handles[name]; };
    auto read = Python::run(m_dir / "read.py", out.string() + " " + h("text") + " " + h("lwpolyline") + " " +
                                                   h("mtext") + " " + h("wipeout") + " " + h("group") + " " +
                                                   h("insert"));
    EXPECT_EQ(read["errors"], "0");
    EXPECT_EQ(read["text"], "Changed");
    EXPECT_EQ(read["lwcount"], "3");
    EXPECT_EQ(read["lwbulge"], "0.25");
    EXPECT_EQ(read["mtext"], "600");
    EXPECT_EQ(read["wipeout"], "6"); // five corners and the closing one
    EXPECT_EQ(read["group"], "2");
    EXPECT_EQ(read["attrib"], "new value");
    EXPECT_EQ(read["entities"], std::to_string(entities));
}

INSTANTIATE_TEST_SUITE_P(Versions, EzdxfDrawing, ::testing::Values("R2000", "R2018"));

} // namespace
