// The module file through its real exports, loaded into the host's real command stack.

#include "qvad/shell/OdEdCommandStack.h"
#include "qvad/shell/OdRxModule.h"
#include "qvad/shell/module_loader.h"
#include "qvad/text/host_print.h"
#include "tooldeck/module/command_table.h"
#include "tooldeck/module/registration.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const std::string kModuleFolder = QVTD_MODULE_DIR;

bool ours(const OdEdCommand& command) {
    for (const char* group : qvtd::kCommandGroups)
        if (command.group.str() == group) return true;
    return false;
}

std::vector<const OdEdCommand*> registeredOfOurs() {
    std::vector<const OdEdCommand*> found;
    for (const OdEdCommand* command : odedRegCmds()->commands())
        if (ours(*command)) found.push_back(command);
    return found;
}

// The host's settings folder (APPDATADIR) and a scratch folder of the test's own; host messages caught.
class ModuleLoad : public ::testing::Test {
protected:
    void SetUp() override {
        m_root = fs::temp_directory_path() / ("qvtd_module_load_" + std::to_string(getpid()));
        fs::remove_all(m_root);
        fs::create_directories(m_root / "config" / "qvad");
        const char* saved = std::getenv("XDG_CONFIG_HOME");
        m_hadConfig = saved != nullptr;
        if (saved) m_savedConfig = saved;
        setenv("XDG_CONFIG_HOME", (m_root / "config").c_str(), 1);
        qvad::setHostPrintHook([this](std::string_view line) { m_printed += std::string(line) + "\n"; });
    }
    void TearDown() override {
        qvad::setHostPrintHook({});
        if (m_hadConfig)
            setenv("XDG_CONFIG_HOME", m_savedConfig.c_str(), 1);
        else
            unsetenv("XDG_CONFIG_HOME");
        fs::remove_all(m_root);
    }
    // A copy of the module file alone in a folder: a fresh load with its own state, and no resource
    // library beside it.
    std::string lonelyCopy(const std::string& name) {
        fs::path folder = m_root / name;
        fs::create_directories(folder);
        fs::copy_file(kModuleFolder + "QvTooldeck.omx", folder / "QvTooldeck.omx");
        return (folder / "QvTooldeck.omx").string();
    }

    fs::path m_root;
    std::string m_printed;
    std::ostringstream m_errors;

private:
    std::string m_savedConfig;
    bool m_hadConfig = false;
};

} // namespace

TEST_F(ModuleLoad, RegistersTheWholeTableAndUnloadRemovesIt) {
    ASSERT_TRUE(registeredOfOurs().empty());
    {
        qvad::shell::ModuleLoader loader(m_errors);
        ASSERT_TRUE(loader.load(kModuleFolder + "QvTooldeck.omx")) << m_errors.str();
        std::vector<const OdEdCommand*> registered = registeredOfOurs();
        auto table = qvtd::commandTable();
        ASSERT_EQ(registered.size(), table.size());
        for (std::size_t i = 0; i < table.size(); ++i) {
            SCOPED_TRACE(table[i].globalName);
            EXPECT_EQ(registered[i]->group.str(), table[i].group);
            EXPECT_EQ(registered[i]->globalName.str(), table[i].globalName);
            EXPECT_EQ(registered[i]->localName.str(), table[i].localName);
            EXPECT_EQ(registered[i]->flags, 0x10000000);
            EXPECT_EQ(registered[i]->functionCode, -1);
            EXPECT_EQ(registered[i]->uiContext, nullptr);
            EXPECT_NE(registered[i]->handler, nullptr);
            // The resource library lies beside the module and was opened first.
            EXPECT_NE(registered[i]->resourceHandle, nullptr);
        }
        EXPECT_EQ(m_printed.find("QvTooldeckRes"), std::string::npos) << m_printed;
    }
    EXPECT_TRUE(registeredOfOurs().empty());
}

TEST_F(ModuleLoad, RefusedGroupIsSkippedAndTheOthersStillLoad) {
    std::ofstream(m_root / "config" / "qvad" / "qvad.ini") << "[QVAD]\nRefusedCommandGroups=quantitiestool\n";
    qvad::shell::ModuleLoader loader(m_errors);
    ASSERT_TRUE(loader.load(kModuleFolder + "QvTooldeck.omx")) << m_errors.str();
    std::vector<const OdEdCommand*> registered = registeredOfOurs();
    EXPECT_EQ(registered.size(), 163u);
    for (const OdEdCommand* command : registered) EXPECT_NE(command->group.str(), "quantitiestool");
    EXPECT_NE(odedRegCmds()->lookupCmd("sahttp"), nullptr);
    EXPECT_EQ(odedRegCmds()->lookupCmd("xlen"), nullptr);
    loader.unloadAll();
    EXPECT_TRUE(registeredOfOurs().empty());
}

TEST_F(ModuleLoad, WithoutItsResourceLibraryTheModuleSaysSoAndStillRegisters) {
    qvad::shell::ModuleLoader loader(m_errors);
    ASSERT_TRUE(loader.load(lonelyCopy("lonely"))) << m_errors.str();
    EXPECT_NE(m_printed.find("QVAD: Can't load QvTooldeckRes.dll"), std::string::npos) << m_printed;
    std::vector<const OdEdCommand*> registered = registeredOfOurs();
    EXPECT_EQ(registered.size(), 175u);
    for (const OdEdCommand* command : registered) EXPECT_EQ(command->resourceHandle, nullptr);
    loader.unloadAll();
    EXPECT_TRUE(registeredOfOurs().empty());
}

TEST_F(ModuleLoad, ExportsKeepTheirContracts) {
    void* module = dlopen(lonelyCopy("exports").c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    auto version = reinterpret_cast<OdrxGetAPIVersionFunction>(dlsym(module, "odrxGetAPIVersion"));
    auto create = reinterpret_cast<OdrxCreateModuleObjectFunction>(dlsym(module, "odrxCreateModuleObject"));
    auto entry = reinterpret_cast<OmrxEntryPointFunction>(dlsym(module, "omrxEntryPoint"));
    auto nester = reinterpret_cast<int (*)(int, int, double*, int*)>(dlsym(module, "NesterFrame"));
    ASSERT_TRUE(version && create && entry && nester);
    // The container instantiations are exported too.
    EXPECT_NE(dlsym(module, "_ZN10QvDynArrayIdE6AppendERKd"), nullptr); // QvDynArray<double>::Append
    EXPECT_NE(dlsym(module, "_ZN7QvQueneIlE7PopHeadERl"), nullptr);     // QvQuene<long>::PopHead

    int major = -1, minor = -1, build = -1, patch = -1;
    version(major, minor, build, patch);
    EXPECT_EQ(std::vector<int>({major, minor, build, patch}), std::vector<int>({2, 4, 2, 0}));

    // The first call takes the handle over; later ones hand back the same object and leave theirs alone.
    int firstToken = 0, laterToken = 0;
    HINSTANCE first = &firstToken, later = &laterToken;
    OdRxModule* object = create(first);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(object->moduleHandle(), &firstToken);
    EXPECT_EQ(object->moduleName(), OdString("QvTooldeck"));
    EXPECT_EQ(create(later), object);
    EXPECT_EQ(later, &laterToken);

    // Unknown messages and an unload before any load do nothing and answer 0.
    std::size_t before = odedRegCmds()->commands().size();
    EXPECT_EQ(entry(0), 0);
    EXPECT_EQ(entry(3), 0);
    EXPECT_EQ(entry(2), 0);
    EXPECT_EQ(odedRegCmds()->commands().size(), before);

    // Load twice: the second registration is refused name by name and changes nothing.
    EXPECT_EQ(entry(1), 0);
    EXPECT_EQ(registeredOfOurs().size(), 175u);
    EXPECT_EQ(entry(1), 0);
    EXPECT_EQ(registeredOfOurs().size(), 175u);
    EXPECT_EQ(entry(2), 0);
    EXPECT_TRUE(registeredOfOurs().empty());

    double points[] = {3, 1, -2, 5, 7, -4, 0, 9};
    int extremes[4] = {-1, -1, -1, -1};
    EXPECT_EQ(nester(4, 2, points, extremes), 4);
    EXPECT_EQ(std::vector<int>(extremes, extremes + 4), std::vector<int>({1, 2, 2, 3}));
    int untouched[4] = {-1, -1, -1, -1};
    EXPECT_EQ(nester(0, 2, points, untouched), 0);
    EXPECT_EQ(nester(2, 4, points, untouched), 0);
    EXPECT_EQ(untouched[0], -1);
}

namespace {

std::vector<std::string> groupsAsked;
int refuseTheFirstGroup(const char* group) {
    groupsAsked.push_back(group);
    return std::string(group) != "QvTooldeck";
}

} // namespace

TEST_F(ModuleLoad, GateIsAskedOncePerGroupInOrder) {
    groupsAsked.clear();
    qvtd::registerCommands(&refuseTheFirstGroup, nullptr);
    EXPECT_EQ(groupsAsked, (std::vector<std::string>{"QvTooldeck", "quantitiestool", "OrmelCADtools"}));
    std::vector<const OdEdCommand*> registered = registeredOfOurs();
    EXPECT_EQ(registered.size(), 32u);
    EXPECT_EQ(registered.front()->globalName.str(), "xlen");
    EXPECT_EQ(registered.back()->globalName.str(), "sahttp");

    // A name already taken by someone else is left out; the rest of the table still registers.
    qvtd::removeCommandGroups();
    odedRegCmds()->addCommand("Squatter", "xarea", "xarea", 0, [] {});
    qvtd::registerCommands(nullptr, nullptr);
    EXPECT_EQ(registeredOfOurs().size(), 174u);
    EXPECT_EQ(odedRegCmds()->lookupCmd("xarea")->group.str(), "Squatter");
    qvtd::removeCommandGroups();
    odedRegCmds()->removeGroup("Squatter");
    EXPECT_TRUE(registeredOfOurs().empty());
}
