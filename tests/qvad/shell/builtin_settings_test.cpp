#include "command_fixture.h"

#include <array>

namespace qvad::test {
namespace {

using SettingsCommandTest = CommandTest;

std::array<double, 3> userToWorld(double x, double y) {
    qv_point from = {x, y, 0};
    qv_point to = {0, 0, 0};
    qv_resbuf user{};
    user.restype = QV_RTSHORT;
    user.resval.rint = 1;
    qv_resbuf world{};
    world.restype = QV_RTSHORT;
    world.resval.rint = 0;
    EXPECT_EQ(qvedTrans(from, &user, &world, 0, to), QV_NORM);
    return {to[0], to[1], to[2]};
}

short shortVar(const char* name) {
    qv_resbuf rb{};
    EXPECT_EQ(qvedGetVar(name, &rb), QV_NORM);
    return rb.resval.rint;
}

TEST_F(SettingsCommandTest, UcsOriginPreviousAndWorldMoveWhatTransformsRead) {
    session({"UCS", "Origin", "5,5"});
    EXPECT_EQ(userToWorld(0, 0), (std::array<double, 3>{5, 5, 0}));
    session({"UCS", "o", "1,1"}); // typed in the current system
    EXPECT_EQ(userToWorld(0, 0), (std::array<double, 3>{6, 6, 0}));
    session({"UCS", "P"});
    EXPECT_EQ(userToWorld(0, 0), (std::array<double, 3>{5, 5, 0}));
    session({"UCS", ""}); // World is the default
    EXPECT_EQ(userToWorld(2, 3), (std::array<double, 3>{2, 3, 0}));
    session({"UCS", "Previous", "UCS", "Previous"});
    EXPECT_EQ(userToWorld(0, 0), (std::array<double, 3>{0, 0, 0}));
    const std::string transcript = session({"UCS", "P", "UCS", "Zed", "W"});
    EXPECT_NE(transcript.find("No previous UCS."), std::string::npos);
    EXPECT_NE(transcript.find("Invalid option keyword."), std::string::npos);
}

TEST_F(SettingsCommandTest, UcsRunFromAModuleCommand) {
    answers({});
    EXPECT_EQ(qvedCommand(QV_RTSTR, "_.UCS", QV_RTSTR, "_O", QV_RTSTR, "2,0", 0), QV_NORM);
    EXPECT_EQ(userToWorld(0, 0), (std::array<double, 3>{2, 0, 0}));
    // A wrong answer asks again; with the list used up, the console answers (here: no more input).
    EXPECT_EQ(qvedCommand(QV_RTSTR, "ucs", QV_RTSTR, "Zed", 0), QV_CANCEL);
    EXPECT_EQ(qvedCommand(QV_RTSTR, "ucs", QV_RTSTR, "w", 0), QV_NORM);
    EXPECT_EQ(userToWorld(0, 0), (std::array<double, 3>{0, 0, 0}));
    EXPECT_EQ(qvedCommand(QV_RTSTR, "ucs", QV_RTSTR, "p", 0), QV_NORM);
    EXPECT_EQ(userToWorld(0, 0), (std::array<double, 3>{2, 0, 0}));
}

TEST_F(SettingsCommandTest, SetvarSetsRefusesAndLists) {
    std::string transcript = session({"SETVAR", "cmdecho", "0"});
    EXPECT_EQ(shortVar("CMDECHO"), 0);
    transcript = session({"SETVAR", "", "abc", "1"}); // the last name again; a bad value asks again
    EXPECT_EQ(shortVar("CMDECHO"), 1);
    EXPECT_NE(transcript.find("Enter new value for CMDECHO <0>"), std::string::npos);
    EXPECT_NE(transcript.find("Invalid value for CMDECHO: \"abc\"."), std::string::npos);

    transcript = session({"SETVAR", "NoSuchVariable", "CLAYER", "nolayer", "0"});
    EXPECT_NE(transcript.find("Unknown variable name \"NOSUCHVARIABLE\"."), std::string::npos);
    EXPECT_NE(transcript.find("Invalid value for CLAYER"), std::string::npos);
    EXPECT_EQ(stringVar("CLAYER"), "0");

    transcript = session({"SETVAR", "ACADVER"});
    EXPECT_NE(transcript.find("(read only)"), std::string::npos);

    transcript = session({"SETVAR", "?", "CMD*"});
    EXPECT_NE(transcript.find("CMDECHO"), std::string::npos);
    EXPECT_EQ(transcript.find("CLAYER"), std::string::npos);
}

TEST_F(SettingsCommandTest, CecolorTakesNamesNumbersAndByValues) {
    session({"CECOLOR", "red"});
    EXPECT_EQ(stringVar("CECOLOR"), "1");
    const std::string transcript = session({"CECOLOR", "Truecolor", "999", "BYBLOCK"});
    EXPECT_EQ(stringVar("CECOLOR"), "BYBLOCK");
    EXPECT_NE(transcript.find("<1>"), std::string::npos);
    EXPECT_NE(transcript.find("Only indexed colors are available"), std::string::npos);
    EXPECT_NE(transcript.find("Invalid color \"999\""), std::string::npos);
    session({"CECOLOR", "200"});
    EXPECT_EQ(stringVar("CECOLOR"), "200");
    session({"CECOLOR", ""});
    EXPECT_EQ(stringVar("CECOLOR"), "200");
    session({"CECOLOR", "bylayer"});
    EXPECT_EQ(stringVar("CECOLOR"), "BYLAYER");
}

} // namespace
} // namespace qvad::test
