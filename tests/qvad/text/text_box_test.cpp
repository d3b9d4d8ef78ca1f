#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/text/font_map.h"
#include "qvad/text/host_print.h"
#include "qvad/text/text_box.h"

#include <cmath>
#include <cstdio>
#include <deque>
#include <ft2build.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

namespace {

// Asks fontconfig's own command, so the test does not trust the code it checks to find the font.
std::string fontFileOf(const std::string& pattern) {
    std::string command = "fc-match -f '%{file}' '" + pattern + "'";
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return {};
    char buffer[512] = {};
    std::string out;
    while (fgets(buffer, sizeof buffer, pipe)) out += buffer;
    pclose(pipe);
    return out;
}

// Width of the text at the given cap height, summed from FreeType's unscaled advances.
double freetypeWidth(const std::string& file, const std::string& text, double capHeightSize) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    EXPECT_EQ(FT_Init_FreeType(&library), 0);
    EXPECT_EQ(FT_New_Face(library, file.c_str(), 0, &face), 0);
    auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    double cap = os2->sCapHeight;
    double units = 0.0;
    for (char c : text) {
        EXPECT_EQ(FT_Load_Char(face, static_cast<FT_ULong>(c), FT_LOAD_NO_SCALE), 0);
        units += face->glyph->metrics.horiAdvance;
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return units / cap * capHeightSize;
}

// A drawing holding just a STYLE table with the given styles (name, font file).
std::unique_ptr<OdDbDatabase>
drawingWithStyles(const std::vector<std::pair<const char*, const char*>>& styles) {
    auto db = std::make_unique<OdDbDatabase>();
    auto* table = db->make<OdDbSymbolTable>();
    table->assignTags({{0, "TABLE"}, {2, "STYLE"}});
    db->tables().push_back(table);
    for (auto [name, font] : styles) {
        auto* record = db->make<OdDbSymbolTableRecord>("STYLE");
        record->assignTags(
            {{0, "STYLE"}, {2, name}, {70, "0"}, {40, "0.0"}, {41, "1.0"}, {3, font}, {4, ""}});
        table->records().push_back(record);
    }
    return db;
}

struct DataList {
    std::vector<std::unique_ptr<qv_resbuf>> buffers;
    std::deque<std::string> strings; // stable addresses for the buffers that point into them

    DataList& text(short code, const char* value) {
        strings.emplace_back(value);
        auto& rb = add(code);
        rb.resval.rstring = strings.back().data();
        return *this;
    }
    DataList& real(short code, double value) {
        add(code).resval.rreal = value;
        return *this;
    }
    DataList& integer(short code, short value) {
        add(code).resval.rint = value;
        return *this;
    }
    DataList& point(short code, double x, double y) {
        auto& rb = add(code);
        rb.resval.rpoint[0] = x;
        rb.resval.rpoint[1] = y;
        rb.resval.rpoint[2] = 0.0;
        return *this;
    }
    qv_resbuf& add(short code) {
        buffers.push_back(std::make_unique<qv_resbuf>());
        qv_resbuf& rb = *buffers.back();
        rb.restype = code;
        if (buffers.size() > 1) buffers[buffers.size() - 2]->rbnext = &rb;
        return rb;
    }
    const qv_resbuf* head() const { return buffers.empty() ? nullptr : buffers.front().get(); }
};

struct Box {
    int status;
    qv_point ll;
    qv_point ur;
    double width() const { return ur[0] - ll[0]; }
};

Box textBox(const DataList& list) {
    Box box{};
    box.status = qvedTextBox(list.head(), box.ll, box.ur);
    return box;
}

class TextBoxTest : public testing::Test {
protected:
    void SetUp() override {
        drawing = drawingWithStyles({{"Arial", "arial.ttf"}, {"Lost", "no-such-font-anywhere.ttf"}});
        qvad::text::setStyleDrawingProvider([this] { return drawing.get(); });
        qvad::setHostPrintHook([this](std::string_view line) { printed.emplace_back(line); });
    }
    void TearDown() override {
        qvad::text::setStyleDrawingProvider({});
        qvad::setHostPrintHook({});
    }
    static DataList arialText(const char* text) {
        DataList list;
        list.text(0, "TEXT").text(1, text).text(7, "Arial").real(40, 2.5).real(41, 1.0).real(50, 0.7);
        return list;
    }

    std::unique_ptr<OdDbDatabase> drawing;
    std::vector<std::string> printed;
};

TEST_F(TextBoxTest, TrueTypeWidthIsTheSumOfTheMappedFontsAdvances) {
    std::string file = fontFileOf("Liberation Sans:style=Regular");
    ASSERT_NE(file.find("LiberationSans-Regular"), std::string::npos) << file;

    Box box = textBox(arialText("ABC"));
    ASSERT_EQ(box.status, QV_NORM);
    EXPECT_NEAR(box.ll[0], 0.0, 1e-9);
    EXPECT_NEAR(box.ur[0], freetypeWidth(file, "ABC", 2.5), 1e-9);
    // Capitals stand on the baseline and reach the text height; only the C's round overshoot passes them.
    EXPECT_LE(box.ll[1], 0.0);
    EXPECT_GT(box.ll[1], -0.05);
    EXPECT_GE(box.ur[1], 2.5);
    EXPECT_LT(box.ur[1], 2.6);
    EXPECT_TRUE(printed.empty()) << printed.front();

    Box descender = textBox(arialText("Agy"));
    EXPECT_LT(descender.ll[1], -0.4); // g and y hang well below the baseline
}

TEST_F(TextBoxTest, WidthFactorObliqueAndJustificationMoveTheBox) {
    Box plain = textBox(arialText("Hello"));
    ASSERT_EQ(plain.status, QV_NORM);

    Box wide = textBox(arialText("Hello").real(41, 2.0));
    EXPECT_NEAR(wide.width(), 2.0 * plain.width(), 1e-9);
    EXPECT_NEAR(wide.ur[1], plain.ur[1], 1e-12);

    Box leaning = textBox(arialText("Hello").real(51, 0.25));
    EXPECT_NEAR(leaning.ur[0] - plain.ur[0], plain.ur[1] * std::tan(0.25), 1e-9);

    Box centered = textBox(arialText("Hello").integer(72, 1));
    EXPECT_NEAR(centered.ll[0], -plain.width() / 2.0, 1e-9);
    EXPECT_NEAR(centered.ur[0], plain.width() / 2.0, 1e-9);

    Box right = textBox(arialText("Hello").integer(72, 2));
    EXPECT_NEAR(right.ur[0], 0.0, 1e-9);

    Box top = textBox(arialText("Hello").integer(73, 3));
    EXPECT_NEAR(top.ur[1], plain.ur[1] - 2.5, 1e-9);

    Box middle = textBox(arialText("Hello").integer(72, 4));
    EXPECT_NEAR(middle.ll[1] + middle.ur[1], plain.ll[1] + plain.ur[1] - 2.5, 1e-9);

    // Attributes keep their field length in 73 and the vertical alignment in 74.
    DataList attribute = arialText("Hello");
    attribute.buffers.front()->resval.rstring = attribute.strings.emplace_back("ATTRIB").data();
    Box attributeTop = textBox(attribute.integer(73, 12).integer(74, 3));
    EXPECT_NEAR(attributeTop.ur[1], top.ur[1], 1e-9);

    // Fitted text spans exactly from its insertion point to its alignment point.
    Box fitted = textBox(arialText("Hello").integer(72, 5).point(10, 1, 1).point(11, 21, 1));
    EXPECT_NEAR(fitted.width(), 20.0, 1e-9);
}

TEST_F(TextBoxTest, MissingFontFallsBackAndSaysSoOnce) {
    DataList lost;
    lost.text(0, "TEXT").text(1, "ABC").text(7, "Lost").real(40, 2.5);
    Box first = textBox(lost);
    Box second = textBox(lost);
    ASSERT_EQ(first.status, QV_NORM);
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_NE(printed[0].find("no-such-font-anywhere.ttf"), std::string::npos);
    EXPECT_NE(printed[0].find(qvad::text::kFallbackFamily), std::string::npos);
    EXPECT_EQ(second.ur[0], first.ur[0]);
    EXPECT_GT(first.ur[0], 2.5); // three capitals are wider than one is high, whatever the font
}

TEST_F(TextBoxTest, ControlCodesMeasureAsTheCharactersTheyShow) {
    Box coded = textBox(arialText("%%d%%p%%%"));
    Box shown = textBox(arialText("\xC2\xB0\xC2\xB1%"));
    EXPECT_NEAR(coded.ur[0], shown.ur[0], 1e-12);
    Box underlined = textBox(arialText("%%uAB%%u"));
    Box plain = textBox(arialText("AB"));
    EXPECT_NEAR(underlined.ur[0], plain.ur[0], 1e-12);
}

TEST_F(TextBoxTest, BadInputIsRefused) {
    qv_point ll, ur;
    EXPECT_EQ(qvedTextBox(nullptr, ll, ur), QV_ERROR);
    DataList noText;
    noText.text(0, "TEXT").real(40, 2.5);
    EXPECT_EQ(qvedTextBox(noText.head(), ll, ur), QV_ERROR);
    EXPECT_EQ(textBox(arialText("A").real(41, 0.0)).status, QV_ERROR);
    EXPECT_EQ(textBox(arialText("A").real(40, -1.0)).status, QV_ERROR);
    EXPECT_EQ(qvedTextBox(arialText("A").head(), nullptr, ur), QV_ERROR);
}

TEST(FontMapTest, DrawingNamesMapToTheDocumentedFamilies) {
    EXPECT_EQ(qvad::text::mappedFamily("arial.ttf"), "Liberation Sans");
    EXPECT_EQ(qvad::text::mappedFamily("C:\\Windows\\Fonts\\ARIAL.TTF"), "Liberation Sans");
    EXPECT_EQ(qvad::text::mappedFamily("times.ttf"), "Liberation Serif");
    EXPECT_EQ(qvad::text::mappedFamily("cour.ttf"), "Liberation Mono");
    EXPECT_EQ(qvad::text::mappedFamily("txt"), "DejaVu Sans"); // drawings may drop ".shx"
    EXPECT_EQ(qvad::text::mappedFamily("nothing.ttf"), "");

    qvad::text::ResolvedFont arial = qvad::text::resolveFont("Arial.ttf");
    EXPECT_FALSE(arial.fellBack);
    EXPECT_NE(arial.file.find("LiberationSans-Regular"), std::string::npos);
    // An installed file named directly needs no table entry.
    qvad::text::ResolvedFont direct = qvad::text::resolveFont("DejaVuSansMono.ttf");
    EXPECT_FALSE(direct.fellBack);
    EXPECT_EQ(direct.family, "DejaVu Sans Mono");
    EXPECT_TRUE(qvad::text::resolveFont("nothing.ttf").fellBack);
}

} // namespace
