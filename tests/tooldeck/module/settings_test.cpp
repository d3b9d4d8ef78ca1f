// Settings through a real "qvad.ini" in a scratch APPDATADIR.

#include "qvad/shell/drawing_session.h"
#include "recording_console.h"
#include "tooldeck/module/data_folders.h"
#include "tooldeck/module/settings.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class Settings : public ::testing::Test {
protected:
    void SetUp() override {
        m_config = fs::temp_directory_path() / ("qvtd_settings_" + std::to_string(getpid()));
        fs::remove_all(m_config);
        fs::create_directories(m_config);
        const char* saved = std::getenv("XDG_CONFIG_HOME");
        m_hadConfig = saved != nullptr;
        if (saved) m_savedConfig = saved;
        setenv("XDG_CONFIG_HOME", m_config.c_str(), 1);
        qvad::shell::DrawingSession::current().openNew();
    }
    void TearDown() override {
        qvad::shell::DrawingSession::current().close();
        if (m_hadConfig)
            setenv("XDG_CONFIG_HOME", m_savedConfig.c_str(), 1);
        else
            unsetenv("XDG_CONFIG_HOME");
        fs::remove_all(m_config);
    }
    std::string fileText() const {
        std::ifstream file(m_config / "qvad" / "qvad.ini");
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }

    fs::path m_config;

private:
    std::string m_savedConfig;
    bool m_hadConfig = false;
};

} // namespace

TEST_F(Settings, DefaultsWithoutAFileThenValuesWrittenInTheirFormats) {
    EXPECT_EQ(qvtd::settingsFilePath(), (m_config / "qvad" / "qvad.ini").string());
    EXPECT_EQ(qvtd::readSettingText("TEXTMASK_MASKTYPE"), "Wipeout");
    EXPECT_DOUBLE_EQ(qvtd::readSettingReal("TEXTMASK_OFFSET"), 0.35);
    EXPECT_EQ(qvtd::readSettingInt("TEXTMASK_COLOR"), 2);
    EXPECT_EQ(qvtd::readSettingInt("Dimcoor"), 3635);
    EXPECT_FALSE(qvtd::readSettingBool("TXT2MTXT_SELECTTYPE"));
    EXPECT_TRUE(qvtd::readSettingBool("TXT2MTXT_WORDWARD"));
    EXPECT_TRUE(qvtd::readSettingBool("TXT2MTXT_SELECTTYPE", true)); // the dialog's own default
    EXPECT_FALSE(fs::exists(m_config / "qvad" / "qvad.ini"));

    EXPECT_TRUE(qvtd::writeSettingText("TEXTMASK_MASKTYPE", "Solid"));
    EXPECT_TRUE(qvtd::writeSettingReal("TEXTMASK_OFFSET", 0.5));
    EXPECT_TRUE(qvtd::writeSettingInt("TEXTMASK_COLOR", 5));
    EXPECT_TRUE(qvtd::writeSettingReal("TEXTCIRCLE", 1.0 / 3.0));
    EXPECT_TRUE(qvtd::writeSettingReal("EXOFFSET-DIST", 12.345));
    EXPECT_TRUE(qvtd::writeSettingReal("DimcoorZg", 2.26));
    EXPECT_TRUE(qvtd::writeSettingBool("TXT2MTXT_SELECTTYPE", true));

    const std::string text = fileText();
    EXPECT_NE(text.find("[QVADEXCMD]"), std::string::npos) << text;
    EXPECT_NE(text.find("TEXTMASK_MASKTYPE=Solid"), std::string::npos) << text;
    EXPECT_NE(text.find("TEXTMASK_OFFSET=0.500000"), std::string::npos) << text;
    EXPECT_NE(text.find("TEXTMASK_COLOR=5"), std::string::npos) << text;
    EXPECT_NE(text.find("TEXTCIRCLE=0.3333"), std::string::npos) << text;
    EXPECT_NE(text.find("EXOFFSET-DIST=12.35"), std::string::npos) << text;
    EXPECT_NE(text.find("DimcoorZg=2.3"), std::string::npos) << text; // one decimal
    EXPECT_NE(text.find("TXT2MTXT_SELECTTYPE=TRUE"), std::string::npos) << text;

    EXPECT_EQ(qvtd::readSettingText("TEXTMASK_MASKTYPE"), "Solid");
    EXPECT_DOUBLE_EQ(qvtd::readSettingReal("TEXTMASK_OFFSET"), 0.5);
    EXPECT_EQ(qvtd::readSettingInt("TEXTMASK_COLOR"), 5);
    EXPECT_DOUBLE_EQ(qvtd::readSettingReal("TEXTCIRCLE"), 0.3333);
    EXPECT_TRUE(qvtd::readSettingBool("TXT2MTXT_SELECTTYPE"));
}

TEST_F(Settings, OutOfRangeValuesAreRefusedWithTheirMessageAndNothingWritten) {
    RecordingConsole console;
    EXPECT_TRUE(qvtd::writeSettingReal("DimcoorZg", 4.0));
    EXPECT_FALSE(qvtd::writeSettingReal("DimcoorZg", 200.0));
    EXPECT_NE(console.transcript.find("参数错误，请输入0.1到100之间的值:"), std::string::npos)
        << console.transcript;
    EXPECT_DOUBLE_EQ(qvtd::readSettingReal("DimcoorZg"), 4.0);

    EXPECT_FALSE(qvtd::writeSettingReal("DimcoorBl", 0.05));
    EXPECT_NE(console.transcript.find("参数错误，请输入0.1到1000之间的值:"), std::string::npos);
    EXPECT_TRUE(qvtd::writeSettingReal("DimcoorBl", 1000.0));
    EXPECT_TRUE(qvtd::writeSettingReal("DimcoorZg", 0.1));
    EXPECT_EQ(qvtd::readSettingText("DimcoorBl"), "1000.0");
}

TEST_F(Settings, DamagedValuesReadAsTheirDefaults) {
    fs::create_directories(m_config / "qvad");
    std::ofstream(m_config / "qvad" / "qvad.ini")
        << "[qvadexcmd]\nTEXTMASK_OFFSET=abc\nTXT2MTXT_WORDWARD=true\n"
           "Breakline-Block="
        << std::string(400, 'x') << "\n";
    EXPECT_DOUBLE_EQ(qvtd::readSettingReal("TEXTMASK_OFFSET"), 0.35);
    EXPECT_FALSE(qvtd::readSettingBool("TXT2MTXT_WORDWARD"));         // only "TRUE" is true
    EXPECT_EQ(qvtd::readSettingText("Breakline-Block").size(), 255u); // read buffer of 256
}

TEST_F(Settings, DataFilesLieBelowTheHostFolder) {
    const std::string folder = qvtd::executableFolder();
    ASSERT_FALSE(folder.empty());
    EXPECT_EQ(folder.back(), '/');
    EXPECT_EQ(qvtd::dataFilePath("Fzdata\\Table\\Tksize"), folder + "Fzdata/Table/Tksize");
    EXPECT_EQ(qvtd::standardsCheckFilePath(), folder + "extendCmd/Chkcksys.chk");
}
