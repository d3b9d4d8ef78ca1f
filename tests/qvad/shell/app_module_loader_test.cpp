#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/load_gate.h"
#include "qvad/shell/module_loader.h"
#include "tests/support/temp_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

using qvad::shell::ModuleLoader;

namespace {

const std::string kModules = QV_LOADER_TEST_MODULE_DIR;

std::string registered(const char* name) {
    const OdEdCommand* command = odedRegCmds()->lookupCmd(name);
    return command ? command->group.str() + " " + command->globalName.str() + " " + command->localName.str()
                   : "";
}

// Points APPDATADIR at a folder of the test's own, holding the host's settings file.
class AppModuleLoader : public ::testing::Test {
protected:
    void SetUp() override {
        m_config = testTempFolder("qvad_app_module_loader");
        std::filesystem::remove_all(m_config);
        std::filesystem::create_directories(m_config / "qvad");
        const char* saved = std::getenv("XDG_CONFIG_HOME");
        m_hadConfig = saved != nullptr;
        if (saved) m_savedConfig = saved;
        setenv("XDG_CONFIG_HOME", m_config.c_str(), 1);
    }
    void TearDown() override {
        if (m_hadConfig)
            setenv("XDG_CONFIG_HOME", m_savedConfig.c_str(), 1);
        else
            unsetenv("XDG_CONFIG_HOME");
        std::filesystem::remove_all(m_config);
    }
    void refuseGroups(const std::string& list) {
        std::ofstream(m_config / "qvad" / "qvad.ini")
            << "[Other]\nRefusedCommandGroups=LoaderAlpha\n\n[qvad]\n"
            << "RefusedCommandGroups=" << list << "\n";
    }

    std::ostringstream m_errors;

private:
    std::filesystem::path m_config;
    std::string m_savedConfig;
    bool m_hadConfig = false;
};

} // namespace

TEST_F(AppModuleLoader, GoodModuleRegistersItsGroupsAndRemovesThemOnUnload) {
    {
        ModuleLoader loader(m_errors);
        ASSERT_TRUE(loader.load(kModules + "good_module.omx")) << m_errors.str();
        EXPECT_EQ(registered("alphacmd"), "LoaderAlpha alphacmd alphacmd");
        EXPECT_EQ(registered("betalocal"), "LoaderBeta betacmd betalocal");
        EXPECT_EQ(loader.loadedPaths(), std::vector<std::string>{kModules + "good_module.omx"});

        // Loaded once only: a second load would send a second load message.
        EXPECT_FALSE(loader.load(kModules + "good_module.omx"));
        EXPECT_NE(m_errors.str().find("already loaded"), std::string::npos);
        EXPECT_EQ(loader.loadedPaths().size(), 1u);
    } // the loader unloads what it loaded
    EXPECT_EQ(registered("alphacmd"), "");
    EXPECT_EQ(registered("betalocal"), "");

    // And it can come back after that.
    ModuleLoader again(m_errors);
    EXPECT_TRUE(again.load(kModules + "good_module.omx"));
    EXPECT_EQ(registered("alphacmd"), "LoaderAlpha alphacmd alphacmd");
    again.unloadAll();
    EXPECT_EQ(registered("alphacmd"), "");
    EXPECT_TRUE(again.loadedPaths().empty());
}

TEST_F(AppModuleLoader, RefusesModulesItCannotTrustAndSaysWhy) {
    ModuleLoader loader(m_errors);
    EXPECT_FALSE(loader.load(kModules + "wrong_version_module.omx"));
    EXPECT_FALSE(loader.load(kModules + "missing_export_module.omx"));
    EXPECT_FALSE(loader.load(kModules + "absent.omx"));
    EXPECT_TRUE(loader.loadedPaths().empty());
    EXPECT_EQ(registered("stalecmd"), ""); // refused before any message was sent

    std::istringstream lines(m_errors.str());
    std::string wrongVersion, missingExport, absent, extra;
    std::getline(lines, wrongVersion);
    std::getline(lines, missingExport);
    std::getline(lines, absent);
    EXPECT_FALSE(std::getline(lines, extra)) << "one message per module";
    EXPECT_EQ(wrongVersion, "qvad: cannot load module " + kModules +
                                "wrong_version_module.omx: interface version 2.3.0.0 is not 2.4.x");
    EXPECT_EQ(missingExport, "qvad: cannot load module " + kModules +
                                 "missing_export_module.omx: it does not export omrxEntryPoint");
    EXPECT_EQ(absent.rfind("qvad: cannot load module " + kModules + "absent.omx: ", 0), 0u) << absent;
}

TEST_F(AppModuleLoader, FolderLoadTakesTheGoodModulesAndGoesOnPastTheBadOnes) {
    ModuleLoader loader(m_errors);
    EXPECT_EQ(loader.loadFolder(kModules), 1);
    EXPECT_EQ(loader.loadedPaths(), std::vector<std::string>{kModules + "good_module.omx"});
    EXPECT_EQ(registered("betalocal"), "LoaderBeta betacmd betalocal");
    EXPECT_EQ(loader.loadFolder(kModules + "no such folder/"), 0);
}

TEST_F(AppModuleLoader, GateRefusesTheGroupsTheSettingsName) {
    EXPECT_NE(CheckCmdLoadAsName("LoaderBeta"), 0); // no settings file: nothing refused
    refuseGroups(" Other , loaderbeta");
    EXPECT_EQ(CheckCmdLoadAsName("LoaderBeta"), 0);
    EXPECT_NE(CheckCmdLoadAsName("LoaderAlpha"), 0); // the same key in another section does not count
    EXPECT_NE(CheckCmdLoadAsName(nullptr), 0);

    ModuleLoader loader(m_errors);
    ASSERT_TRUE(loader.load(kModules + "good_module.omx"));
    EXPECT_EQ(registered("alphacmd"), "LoaderAlpha alphacmd alphacmd");
    EXPECT_EQ(registered("betalocal"), "");
}

TEST(AppLoadGate, GroupListsAreCommaSeparatedNamesWithoutRegardToCase) {
    using qvad::shell::groupListed;
    EXPECT_TRUE(groupListed("a,QvTooldeck", "qvtooldeck"));
    EXPECT_TRUE(groupListed("  quantitiestool  ", "quantitiestool"));
    EXPECT_FALSE(groupListed("QvTooldeck2,Tool", "QvTooldeck"));
    EXPECT_FALSE(groupListed("", "QvTooldeck"));
    EXPECT_FALSE(groupListed(",,", ""));
}
