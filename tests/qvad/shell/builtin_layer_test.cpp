#include "command_fixture.h"

#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace qvad::test {
namespace {

struct Layer {
    bool found = false;
    int flags = 0;
    int color = 0;
};

Layer layer(const char* name) {
    Layer result;
    qv_resbuf* record = nullptr;
    if (qvdbTblSearch("LAYER", name, 0, &record) != QV_NORM || !record) return result;
    result.found = true;
    for (qv_resbuf* rb = record; rb; rb = rb->rbnext) {
        if (rb->restype == 70) result.flags = rb->resval.rint;
        if (rb->restype == 62) result.color = rb->resval.rint;
    }
    qvutRelRb(record);
    return result;
}

using LayerCommandTest = CommandTest;

TEST_F(LayerCommandTest, MakesAndChangesLayersAndRefusesWhatCadProgramsRefuse) {
    const std::string transcript = session({
        "-LAYER", "New",     "A,B, C", "Make", "M1",   "Color", "red", "A,B",
        "OFF",    "b",       "Freeze", "C",    "LOck", "a",     "Set", "C", // frozen: refused
        "Set",    "nothere",                                                // missing: refused
        "Bogus",                                                            // not an option
        "OFF",    "m1",                                                     // the current layer: refused
        "Freeze", "M*",                                                     // the current layer again
        "ON",     "zz*",                                                    // nothing matches
        "Color",  "300",     "blue",   "", // a bad colour, then blue for the current layer (the default)
        "",
    });
    EXPECT_EQ(stringVar("CLAYER"), "M1");
    EXPECT_EQ(layer("A").color, 1);
    EXPECT_EQ(layer("A").flags & 4, 4);
    EXPECT_EQ(layer("B").color, -1);
    EXPECT_EQ(layer("C").flags & 1, 1);
    EXPECT_EQ(layer("M1").color, 5);
    EXPECT_EQ(layer("M1").flags & 1, 0);
    EXPECT_NE(transcript.find("Cannot make layer \"C\" current: it is frozen."), std::string::npos);
    EXPECT_NE(transcript.find("Cannot find layer \"nothere\"."), std::string::npos);
    EXPECT_NE(transcript.find("Invalid option keyword."), std::string::npos);
    EXPECT_NE(transcript.find("Cannot turn off the current layer \"M1\"."), std::string::npos);
    EXPECT_NE(transcript.find("Cannot freeze the current layer \"M1\"."), std::string::npos);
    EXPECT_NE(transcript.find("No matching layer names found."), std::string::npos);
    EXPECT_NE(transcript.find("Enter a color number from 1 to 255"), std::string::npos);

    session({"-LAYER", "ON", "*", "Thaw", "c", "Unlock", "A", "Color", "green", "B", "?", "*", ""});
    EXPECT_EQ(layer("B").color, 3);
    EXPECT_EQ(layer("C").flags & 1, 0);
    EXPECT_EQ(layer("A").flags & 4, 0);
    EXPECT_EQ(layer("A").color, 1);
}

TEST_F(LayerCommandTest, ListingShowsStateAndColor) {
    session({"-LAYER", "New", "Walls", "Color", "cyan", "Walls", "LOck", "Walls", ""});
    const std::string transcript = session({"-LAYER", "?", "W*", ""});
    const auto line = transcript.find("Walls ");
    ASSERT_NE(line, std::string::npos);
    const std::string row = transcript.substr(line, transcript.find('\n', line) - line);
    EXPECT_NE(row.find("On Locked"), std::string::npos);
    EXPECT_NE(row.find("4 (cyan)"), std::string::npos);
}

TEST_F(LayerCommandTest, ModulesLockLayersThroughTheGlobalNames) {
    answers({});
    session({"-LAYER", "New", "Locked", ""});
    EXPECT_EQ(qvedCommand(QV_RTSTR, "_.LAYER", QV_RTSTR, "_LOCK", QV_RTSTR, "Locked", QV_RTSTR, "", 0),
              QV_NORM);
    EXPECT_EQ(layer("Locked").flags & 4, 4);
}

TEST_F(LayerCommandTest, InvalidNewNameChangesNothing) {
    const std::string transcript = session({"-LAYER", "New", "bad<name", ""});
    EXPECT_NE(transcript.find("Invalid layer name \"bad<name\"."), std::string::npos);
    EXPECT_FALSE(layer("bad<name").found);
}

TEST_F(LayerCommandTest, InputEndingInsideTakesTheWholeCommandBack) {
    int status = 0;
    session({"-LAYER", "New", "Gone"}, &status);
    EXPECT_EQ(status, 1);
    EXPECT_FALSE(layer("Gone").found);
}

TEST_F(LayerCommandTest, LayerStatesSurviveSavingAndOpening) {
    session({"-LAYER", "New", "Kept,Off,Frozen", "OFF", "Off", "Freeze", "Frozen", "LOck", "Kept", "Color",
             "6", "Kept", ""});
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("qvad_layer_states_" + std::to_string(getpid()) + ".dxf");
    ASSERT_TRUE(qvad::shell::DrawingSession::current().save(path.string()));
    qvad::shell::DrawingSession::current().close();
    ASSERT_TRUE(qvad::shell::DrawingSession::current().open(path.string()));
    std::filesystem::remove(path);
    EXPECT_EQ(layer("Kept").color, 6);
    EXPECT_EQ(layer("Kept").flags & 4, 4);
    EXPECT_LT(layer("Off").color, 0);
    EXPECT_EQ(layer("Frozen").flags & 1, 1);
    EXPECT_EQ(layer("Frozen").color, 7);
}

TEST_F(LayerCommandTest, UndoTakesBackALayerCommandAsOneStep) {
    session({"-LAYER", "Make", "Undone", "Color", "2", "Undone", ""});
    ASSERT_TRUE(layer("Undone").found);
    session({"U"});
    EXPECT_FALSE(layer("Undone").found);
    EXPECT_EQ(stringVar("CLAYER"), "0");
}

} // namespace
} // namespace qvad::test
