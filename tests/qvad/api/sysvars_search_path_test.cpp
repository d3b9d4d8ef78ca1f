// Finding support files: the name as given, the drawing's folder, SRCHPATH's folders in order, EXEDIR.

#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using qvad::api::SysVarSession;

class SearchPath : public ::testing::Test {
protected:
    void SetUp() override {
        root = fs::temp_directory_path() / ("qvad-find-" + std::to_string(::getpid()));
        for (const char* folder : {"drawing", "first", "second", "data", "work"})
            fs::create_directories(root / folder);
        SysVarSession::current().setDrawingPath((root / "drawing" / "plan.dxf").string());
        SysVarSession::current().setExeDir((root / "data").string());
        previousWorkFolder = fs::current_path();
        fs::current_path(root / "work");
    }
    void TearDown() override {
        fs::current_path(previousWorkFolder);
        SysVarSession::current().reset();
        fs::remove_all(root);
    }
    void touch(const fs::path& path) { std::ofstream(path) << "x"; }
    void setSearchPath(const std::string& folders) {
        qv_resbuf rb{};
        rb.restype = QV_RTSTR;
        rb.resval.rstring = const_cast<char*>(folders.c_str());
        ASSERT_EQ(qvedSetVar("SRCHPATH", &rb), QV_NORM);
    }
    std::string find(const char* name) {
        char found[1024] = "";
        if (qvedFindFile(name, found, sizeof found) != QV_NORM) return "(none)";
        return found;
    }

    fs::path root, previousWorkFolder;
};

TEST_F(SearchPath, EachPlaceIsTriedInTurn) {
    setSearchPath((root / "first").string() + ";" + (root / "second").string());
    for (const char* folder : {"work", "drawing", "first", "second", "data"})
        touch(root / folder / "table.kdp");
    EXPECT_EQ(find("table.kdp"), (root / "work" / "table.kdp").string());
    fs::remove(root / "work" / "table.kdp");
    EXPECT_EQ(find("table.kdp"), (root / "drawing" / "table.kdp").string());
    fs::remove(root / "drawing" / "table.kdp");
    EXPECT_EQ(find("table.kdp"), (root / "first" / "table.kdp").string());
    fs::remove(root / "first" / "table.kdp");
    EXPECT_EQ(find("table.kdp"), (root / "second" / "table.kdp").string());
    fs::remove(root / "second" / "table.kdp");
    EXPECT_EQ(find("table.kdp"), (root / "data" / "table.kdp").string());
    fs::remove(root / "data" / "table.kdp");
    EXPECT_EQ(find("table.kdp"), "(none)");
}

TEST_F(SearchPath, BackslashesAndSubfoldersAreFollowed) {
    fs::create_directories(root / "data" / "extendCmd");
    touch(root / "data" / "extendCmd" / "ITools.Kdp");
    EXPECT_EQ(find("extendCmd\\ITools.Kdp"), (root / "data" / "extendCmd" / "ITools.Kdp").string());
    setSearchPath(" ; " + root.string() + "\\first ;");
    touch(root / "first" / "a.dim");
    EXPECT_EQ(find("a.dim"), (root / "first" / "a.dim").string());
    EXPECT_EQ(find((root / "first" / "a.dim").c_str()), (root / "first" / "a.dim").string());
}

TEST_F(SearchPath, FoldersAndMissingFilesAreNotFoundAndSmallBuffersRefused) {
    EXPECT_EQ(find("first"), "(none)"); // a folder is no file
    EXPECT_EQ(find("/nonexistent/file.txt"), "(none)");
    EXPECT_EQ(find(""), "(none)");
    touch(root / "work" / "x.txt");
    char tiny[4] = "abc";
    EXPECT_EQ(qvedFindFile("x.txt", tiny, sizeof tiny), QV_ERROR);
    EXPECT_STREQ(tiny, "abc");
    EXPECT_EQ(qvedFindFile(nullptr, tiny, sizeof tiny), QV_ERROR);
}

} // namespace
