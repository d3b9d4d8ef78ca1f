// System variables through qvedGetVar/qvedSetVar: types, refusals that change nothing, variables kept
// in the drawing surviving a save and reload, and those kept in the session staying out of the file.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/api/sysvars_table.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"
#include "tests/support/temp_folder.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using qvad::api::HostSession;
using qvad::api::SysVarSession;

class SystemVariables : public ::testing::Test {
protected:
    void SetUp() override {
        db = qvad::db::newDrawing();
        HostSession::current().setDrawing(db.get());
    }
    void TearDown() override {
        HostSession::current().setDrawing(nullptr);
        SysVarSession::current().reset();
    }

    static qv_resbuf get(const char* name, int expectedStatus = QV_NORM) {
        qv_resbuf rb{};
        rb.restype = QV_RTSHORT;
        EXPECT_EQ(qvedGetVar(name, &rb), expectedStatus) << name;
        return rb;
    }
    static std::string getText(const char* name) {
        qv_resbuf rb = get(name);
        EXPECT_EQ(rb.restype, QV_RTSTR) << name;
        std::string text = rb.restype == QV_RTSTR && rb.resval.rstring ? rb.resval.rstring : "";
        if (rb.restype == QV_RTSTR) qvad_free(rb.resval.rstring);
        return text;
    }
    static int setShort(const char* name, short value) {
        qv_resbuf rb{};
        rb.restype = QV_RTSHORT;
        rb.resval.rint = value;
        return qvedSetVar(name, &rb);
    }
    static int setReal(const char* name, double value) {
        qv_resbuf rb{};
        rb.restype = QV_RTREAL;
        rb.resval.rreal = value;
        return qvedSetVar(name, &rb);
    }
    static int setText(const char* name, const char* value) {
        qv_resbuf rb{};
        rb.restype = QV_RTSTR;
        rb.resval.rstring = const_cast<char*>(value);
        return qvedSetVar(name, &rb);
    }

    // The group code that follows a header variable's name in DXF text; -1 when the name is missing.
    static int groupAfter(const std::string& dxf, const std::string& name) {
        std::size_t at = dxf.find("\n" + name + "\n");
        if (at == std::string::npos) return -1;
        return std::stoi(dxf.substr(at + name.size() + 2, 6));
    }

    std::unique_ptr<OdDbDatabase> db;
};

TEST_F(SystemVariables, ReadingSetsTheVariablesTypeWhateverTheBufferHeld) {
    EXPECT_EQ(get("CMDECHO").restype, QV_RTSHORT);
    EXPECT_EQ(get("OFFSETDIST").restype, QV_RTREAL);
    EXPECT_EQ(get("LIMMAX").restype, QV_RTPOINT);
    EXPECT_EQ(get("UCSORG").restype, QV_RT3DPOINT);
    EXPECT_EQ(getText("CELTYPE"), "ByLayer");
    EXPECT_EQ(get("LIMMAX").resval.rpoint[0], 420.0); // from the template's header
}

TEST_F(SystemVariables, NamesAreCaseInsensitive) {
    ASSERT_EQ(setShort("cmdecho", 0), QV_NORM);
    EXPECT_EQ(get("CMDECHO").resval.rint, 0);
    ASSERT_EQ(setShort("CmdEcho", 1), QV_NORM);
    EXPECT_EQ(get("cmdecho").resval.rint, 1);
}

TEST_F(SystemVariables, EveryVariableTheGuardSavesCanBeReadAndWrittenBack) {
    for (const char* name :
         {"CMDECHO", "HIGHLIGHT", "PLINETYPE", "OSMODE", "MIRRTEXT", "DIMZIN", "ATTMODE", "ATTDIA",
          "REGENMODE", "OFFSETDIST", "ATTREQ", "GRIDMODE", "PLINEWID", "CELTYPE"}) {
        qv_resbuf rb = get(name);
        EXPECT_EQ(qvedSetVar(name, &rb), QV_NORM) << name;
        if (rb.restype == QV_RTSTR) qvad_free(rb.resval.rstring);
    }
}

TEST_F(SystemVariables, RefusalsChangeNothing) {
    std::string before = qvad::dxf::writeDxf(*db);
    qv_resbuf untouched{};
    untouched.restype = QV_RTSHORT;
    untouched.resval.rint = 77;
    EXPECT_EQ(qvedGetVar("NOSUCHVAR", &untouched), QV_ERROR);
    EXPECT_EQ(untouched.restype, QV_RTSHORT);
    EXPECT_EQ(untouched.resval.rint, 77);
    EXPECT_EQ(setShort("NOSUCHVAR", 1), QV_ERROR);
    EXPECT_EQ(qvedGetVar(nullptr, &untouched), QV_ERROR);
    EXPECT_EQ(qvedGetVar("CMDECHO", nullptr), QV_ERROR);
    EXPECT_EQ(qvedSetVar("CMDECHO", nullptr), QV_ERROR);

    // Wrong types.
    EXPECT_EQ(setText("USERR1", "1.5"), QV_ERROR);
    EXPECT_EQ(setReal("USERI1", 2.0), QV_ERROR);
    EXPECT_EQ(setShort("CLAYER", 1), QV_ERROR);
    EXPECT_EQ(setReal("LIMMAX", 1.0), QV_ERROR);
    // Read-only variables.
    EXPECT_EQ(setText("DWGNAME", "x.dxf"), QV_ERROR);
    EXPECT_EQ(setText("DWGPREFIX", "/tmp/"), QV_ERROR);
    EXPECT_EQ(setText("EXEDIR", "/tmp/"), QV_ERROR);
    EXPECT_EQ(setText("APPDATADIR", "/tmp/"), QV_ERROR);
    EXPECT_EQ(setText("ACADVER", "AC1009"), QV_ERROR);
    // Values the variable does not take.
    EXPECT_EQ(setShort("LUNITS", 6), QV_ERROR);
    EXPECT_EQ(setShort("CMDECHO", 2), QV_ERROR);
    EXPECT_EQ(setReal("TEXTSIZE", -1.0), QV_ERROR);
    EXPECT_EQ(setReal("USERR1", std::nan("")), QV_ERROR);
    EXPECT_EQ(setText("CLAYER", "NoSuchLayer"), QV_ERROR);
    EXPECT_EQ(setText("TEXTSTYLE", "NoSuchStyle"), QV_ERROR);
    EXPECT_EQ(setText("CECOLOR", "300"), QV_ERROR);
    EXPECT_EQ(setText("DIMDSEP", ".."), QV_ERROR);
    EXPECT_EQ(setText("DIMPOST", "line\nbreak"), QV_ERROR);

    EXPECT_EQ(qvad::dxf::writeDxf(*db), before);
    EXPECT_EQ(get("CMDECHO").resval.rint, 1);
}

TEST_F(SystemVariables, AShortIsTakenWhereARealIsExpectedAndNotTheOtherWayRound) {
    ASSERT_EQ(setShort("FILLETRAD", 3), QV_NORM);
    qv_resbuf rb = get("FILLETRAD");
    EXPECT_EQ(rb.restype, QV_RTREAL);
    EXPECT_EQ(rb.resval.rreal, 3.0);
    EXPECT_EQ(setReal("OSMODE", 3.0), QV_ERROR);
}

TEST_F(SystemVariables, NamedRecordsAndColoursAreKeptInTheirOwnSpelling) {
    ASSERT_EQ(setText("CLAYER", "0"), QV_NORM);
    ASSERT_EQ(setText("CELTYPE", "bylayer"), QV_NORM);
    EXPECT_EQ(getText("CELTYPE"), "ByLayer");
    ASSERT_EQ(setText("CECOLOR", "red"), QV_NORM);
    EXPECT_EQ(getText("CECOLOR"), "1");
    EXPECT_EQ(db->header().value("$CECOLOR"), "1");
    ASSERT_EQ(setText("CECOLOR", "ByBlock"), QV_NORM);
    EXPECT_EQ(db->header().value("$CECOLOR"), "0");
    ASSERT_EQ(setText("DIMDSEP", ","), QV_NORM);
    EXPECT_EQ(db->header().value("$DIMDSEP"), "44");
    EXPECT_EQ(getText("DIMDSEP"), ",");
}

TEST_F(SystemVariables, ErrnoIsWritableAndSaysWhyTheLastCallFailed) {
    ASSERT_EQ(setShort("ERRNO", 0), QV_NORM);
    EXPECT_EQ(get("ERRNO").resval.rint, 0);
    EXPECT_EQ(setShort("NOSUCHVAR", 1), QV_ERROR);
    EXPECT_NE(get("ERRNO").resval.rint, 0);
}

TEST_F(SystemVariables, DrawingVariablesSurviveSaveAndReload) {
    ASSERT_EQ(setReal("USERR5", 1234.5678), QV_NORM);
    ASSERT_EQ(setShort("USERI3", -42), QV_NORM);
    ASSERT_EQ(setShort("DIMZIN", 12), QV_NORM);
    ASSERT_EQ(setReal("TEXTSIZE", 3.5), QV_NORM);
    ASSERT_EQ(setReal("DIMASZ", 1.75), QV_NORM);
    ASSERT_EQ(setShort("LUNITS", 4), QV_NORM);
    ASSERT_EQ(setText("DIMAPOST", "[ ]"), QV_NORM);
    qv_resbuf corner{};
    corner.restype = QV_RTPOINT;
    corner.resval.rpoint[0] = 841;
    corner.resval.rpoint[1] = 594;
    ASSERT_EQ(qvedSetVar("LIMMAX", &corner), QV_NORM);
    // Session variables stay out of the file.
    ASSERT_EQ(setShort("OSMODE", 0), QV_NORM);
    ASSERT_EQ(setText("USERS2", "kept in memory"), QV_NORM);

    std::string saved = qvad::dxf::writeDxf(*db);
    // Each under the group code drawing readers expect of it.
    EXPECT_EQ(groupAfter(saved, "$USERR5"), 40);
    EXPECT_EQ(groupAfter(saved, "$USERI3"), 70);
    EXPECT_EQ(groupAfter(saved, "$DIMAPOST"), 1);
    EXPECT_EQ(groupAfter(saved, "$LIMMAX"), 10);
    EXPECT_EQ(saved.find("$OSMODE"), std::string::npos);
    EXPECT_EQ(saved.find("kept in memory"), std::string::npos);

    HostSession::current().setDrawing(nullptr);
    std::unique_ptr<OdDbDatabase> reloaded = qvad::dxf::readDxfBuffer(saved);
    HostSession::current().setDrawing(reloaded.get());
    EXPECT_EQ(get("USERR5").resval.rreal, 1234.5678);
    EXPECT_EQ(get("USERI3").resval.rint, -42);
    EXPECT_EQ(get("DIMZIN").resval.rint, 12);
    EXPECT_EQ(get("TEXTSIZE").resval.rreal, 3.5);
    EXPECT_EQ(get("DIMASZ").resval.rreal, 1.75);
    EXPECT_EQ(get("LUNITS").resval.rint, 4);
    EXPECT_EQ(getText("DIMAPOST"), "[ ]");
    EXPECT_EQ(get("LIMMAX").resval.rpoint[1], 594.0);
    HostSession::current().setDrawing(db.get());
}

TEST_F(SystemVariables, TheRunningTotalRoundTripsThroughUserr5) {
    double total = 0.0;
    for (double step : {12.25, -3.5, 1e-7, 1e9}) {
        qv_resbuf rb = get("userr5");
        ASSERT_EQ(rb.restype, QV_RTREAL);
        EXPECT_EQ(rb.resval.rreal, total);
        rb.resval.rreal += step;
        total += step;
        ASSERT_EQ(qvedSetVar("userr5", &rb), QV_NORM);
    }
    EXPECT_EQ(get("USERR5").resval.rreal, total);
}

TEST_F(SystemVariables, DrawingVariablesCannotBeWrittenWithoutADrawing) {
    HostSession::current().setDrawing(nullptr);
    EXPECT_EQ(get("TEXTSIZE").resval.rreal, 2.5); // the default
    EXPECT_EQ(setReal("TEXTSIZE", 5.0), QV_ERROR);
    EXPECT_EQ(setShort("CMDECHO", 0), QV_NORM);
}

TEST_F(SystemVariables, FoldersEndInASlash) {
    const char* saved = std::getenv("XDG_CONFIG_HOME");
    std::string previous = saved ? saved : "";
    std::filesystem::path config = testTempFolder("qvad-sysvars-config");
    setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    EXPECT_EQ(getText("APPDATADIR"), (config / "qvad").string() + "/");
    EXPECT_TRUE(std::filesystem::is_directory(config / "qvad"));
    setenv("XDG_CONFIG_HOME", "relative/ignored", 1);
    EXPECT_EQ(getText("APPDATADIR").find("relative"), std::string::npos);
    if (saved)
        setenv("XDG_CONFIG_HOME", previous.c_str(), 1);
    else
        unsetenv("XDG_CONFIG_HOME");
    std::filesystem::remove_all(config);

    std::string exeDir = getText("EXEDIR");
    EXPECT_TRUE(exeDir.ends_with("/share/qvad/")) << exeDir;
    SysVarSession::current().setExeDir("/opt/qvad/data");
    EXPECT_EQ(getText("EXEDIR"), "/opt/qvad/data/");
}

TEST_F(SystemVariables, DrawingNameAndFolderFollowTheDrawingsFile) {
    EXPECT_EQ(get("DWGTITLED").resval.rint, 0);
    SysVarSession::current().setDrawingPath("/srv/plans/level 2.dxf");
    EXPECT_EQ(getText("DWGNAME"), "level 2.dxf");
    EXPECT_EQ(getText("DWGPREFIX"), "/srv/plans/");
    EXPECT_EQ(get("DWGTITLED").resval.rint, 1);
}

TEST(SystemVariableTable, EveryDefaultIsAcceptedByItsOwnVariable) {
    using namespace qvad::api;
    for (auto rows : {generalSysVars(), dimensionSysVars()}) {
        for (const SysVarDef& def : rows) {
            EXPECT_EQ(findSysVar(def.name), &def) << def.name << " is listed twice";
            if (def.type != SysVarType::Short || def.home == SysVarHome::Derived) continue;
            long long initial = std::stoll(std::string(def.initial));
            EXPECT_TRUE(initial >= def.minShort && initial <= def.maxShort) << def.name;
        }
    }
}

} // namespace
