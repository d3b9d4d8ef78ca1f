#include "qvad/text/font_map.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fontconfig/fontconfig.h>
#include <mutex>

namespace qvad::text {
namespace {

struct FontMapping {
    std::string_view drawingName;
    std::string_view family;
    std::string_view style;
};

// Liberation fonts share the advance widths of the TrueType fonts drawings name most, so texts measure
// as they did where the drawing was made. Stroke fonts have no metric twin; DejaVu Sans is close to
// their wide, even letters.
constexpr std::array kFontTable{
    FontMapping{"arial.ttf", "Liberation Sans", "Regular"},
    FontMapping{"arialbd.ttf", "Liberation Sans", "Bold"},
    FontMapping{"ariali.ttf", "Liberation Sans", "Italic"},
    FontMapping{"arialbi.ttf", "Liberation Sans", "Bold Italic"},
    FontMapping{"arialn.ttf", "Liberation Sans Narrow", "Regular"},
    FontMapping{"times.ttf", "Liberation Serif", "Regular"},
    FontMapping{"timesbd.ttf", "Liberation Serif", "Bold"},
    FontMapping{"timesi.ttf", "Liberation Serif", "Italic"},
    FontMapping{"timesbi.ttf", "Liberation Serif", "Bold Italic"},
    FontMapping{"cour.ttf", "Liberation Mono", "Regular"},
    FontMapping{"courbd.ttf", "Liberation Mono", "Bold"},
    FontMapping{"couri.ttf", "Liberation Mono", "Italic"},
    FontMapping{"verdana.ttf", "DejaVu Sans", "Book"},
    FontMapping{"tahoma.ttf", "DejaVu Sans", "Book"},
    FontMapping{"simsun.ttc", "Noto Serif CJK SC", "Regular"},
    FontMapping{"simhei.ttf", "Noto Sans CJK SC", "Regular"},
    FontMapping{"msyh.ttc", "Noto Sans CJK SC", "Regular"},
    FontMapping{"txt.shx", "DejaVu Sans", "Book"},
    FontMapping{"simplex.shx", "DejaVu Sans", "Book"},
    FontMapping{"romans.shx", "DejaVu Sans", "Book"},
    FontMapping{"romand.shx", "DejaVu Sans", "Book"},
    FontMapping{"romanc.shx", "DejaVu Serif", "Book"},
    FontMapping{"romant.shx", "DejaVu Serif", "Book"},
    FontMapping{"complex.shx", "DejaVu Serif", "Book"},
    FontMapping{"italic.shx", "DejaVu Sans", "Oblique"},
    FontMapping{"isocp.shx", "DejaVu Sans", "Book"},
    FontMapping{"isoct.shx", "DejaVu Sans", "Book"},
    FontMapping{"isocpeur.ttf", "DejaVu Sans", "Book"},
    FontMapping{"monotxt.shx", "DejaVu Sans Mono", "Book"},
    FontMapping{"gbenor.shx", "DejaVu Sans", "Book"},
    FontMapping{"gbeitc.shx", "DejaVu Sans", "Oblique"},
    FontMapping{"gbcbig.shx", "Noto Sans CJK SC", "Regular"},
    FontMapping{"bigfont.shx", "Noto Sans CJK SC", "Regular"},
    FontMapping{"hztxt.shx", "Noto Sans CJK SC", "Regular"},
};

std::string lowerBaseName(std::string_view name) {
    auto slash = name.find_last_of("/\\");
    if (slash != std::string_view::npos) name.remove_prefix(slash + 1);
    std::string out(name);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (!out.empty() && out.find('.') == std::string::npos) out += ".shx";
    return out;
}

const FontMapping* findMapping(const std::string& key) {
    for (const FontMapping& m : kFontTable)
        if (m.drawingName == key) return &m;
    return nullptr;
}

bool sameNoCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

// fontconfig always answers with its nearest font; only an exact family counts as installed.
bool matchFamily(std::string_view family, std::string_view style, ResolvedFont& out) {
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(std::string(family).c_str()));
    if (!style.empty())
        FcPatternAddString(pattern, FC_STYLE, reinterpret_cast<const FcChar8*>(std::string(style).c_str()));
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pattern, &result);
    FcPatternDestroy(pattern);
    if (!match) return false;
    bool found = false;
    FcChar8* file = nullptr;
    if (FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch) {
        for (int i = 0;; ++i) {
            FcChar8* got = nullptr;
            if (FcPatternGetString(match, FC_FAMILY, i, &got) != FcResultMatch) break;
            if (sameNoCase(reinterpret_cast<const char*>(got), family)) found = true;
        }
        if (found) {
            int index = 0;
            FcPatternGetInteger(match, FC_INDEX, 0, &index);
            out.file = reinterpret_cast<const char*>(file);
            out.faceIndex = index;
            out.family = std::string(family);
        }
    }
    FcPatternDestroy(match);
    return found;
}

// A drawing may name an installed file directly ("DejaVuSansMono.ttf").
bool matchFileName(const std::string& lowerName, ResolvedFont& out) {
    FcPattern* pattern = FcPatternCreate();
    FcObjectSet* objects = FcObjectSetBuild(FC_FILE, FC_INDEX, FC_FAMILY, nullptr);
    FcFontSet* fonts = FcFontList(nullptr, pattern, objects);
    bool found = false;
    for (int i = 0; fonts && i < fonts->nfont && !found; ++i) {
        FcChar8* file = nullptr;
        if (FcPatternGetString(fonts->fonts[i], FC_FILE, 0, &file) != FcResultMatch) continue;
        if (lowerBaseName(reinterpret_cast<const char*>(file)) != lowerName) continue;
        FcChar8* family = nullptr;
        int index = 0;
        FcPatternGetInteger(fonts->fonts[i], FC_INDEX, 0, &index);
        if (index != 0) continue;
        FcPatternGetString(fonts->fonts[i], FC_FAMILY, 0, &family);
        out.file = reinterpret_cast<const char*>(file);
        out.faceIndex = 0;
        out.family = family ? reinterpret_cast<const char*>(family) : "";
        found = true;
    }
    if (fonts) FcFontSetDestroy(fonts);
    FcObjectSetDestroy(objects);
    FcPatternDestroy(pattern);
    return found;
}

std::mutex& fontconfigMutex() {
    static std::mutex m;
    return m;
}

} // namespace

std::string mappedFamily(std::string_view drawingFontName) {
    const FontMapping* m = findMapping(lowerBaseName(drawingFontName));
    return m ? std::string(m->family) : std::string();
}

ResolvedFont resolveFont(std::string_view drawingFontName) {
    std::lock_guard lock(fontconfigMutex());
    ResolvedFont font;
    std::string key = lowerBaseName(drawingFontName);
    if (const FontMapping* m = findMapping(key); m && matchFamily(m->family, m->style, font)) return font;
    if (!key.empty() && matchFileName(key, font)) return font;
    font = {};
    font.fellBack = true;
    matchFamily(kFallbackFamily, "Book", font);
    font.fellBack = true;
    return font;
}

} // namespace qvad::text
