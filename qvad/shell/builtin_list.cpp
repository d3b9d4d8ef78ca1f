// LIST: for each selected entity its type, layer, space and handle, then its main properties as its
// data list holds them (points, sizes, angles, text, colour, linetype), in drawing units.

#include "qvad/api/qvad_api.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/builtin_prompts.h"

#include <cstdio>
#include <string>

namespace qvad::shell {

namespace {

struct PropertyName {
    int code;
    const char* name;
};

// The groups worth showing, with how a drafter calls them; the rest of the list is bookkeeping.
constexpr PropertyName kProperties[] = {
    {1, "Text"},
    {2, "Name"},
    {3, "Style or prompt"},
    {6, "Linetype"},
    {7, "Text style"},
    {10, "Point"},
    {11, "Second point"},
    {12, "Third point"},
    {13, "Fourth point"},
    {39, "Thickness"},
    {40, "Size"},
    {41, "Second size"},
    {42, "Bulge or ratio"},
    {43, "Width"},
    {50, "Angle"},
    {51, "Second angle"},
    {62, "Color"},
    {70, "Flags"},
    {90, "Count"},
    {370, "Lineweight"},
};

const char* propertyName(int code) {
    for (const PropertyName& p : kProperties)
        if (p.code == code) return p.name;
    return nullptr;
}

std::string distance(double value) {
    char text[64] = "";
    if (qvdbRToS(value, -1, -1, text, sizeof text) != QV_NORM) std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string valueText(const qv_resbuf& rb) {
    const int code = rb.restype;
    if (code == 1 || code == 2 || code == 3 || code == 6 || code == 7)
        return std::string("\"") + (rb.resval.rstring ? rb.resval.rstring : "") + "\"";
    if (code >= 10 && code <= 13)
        return "X=" + distance(rb.resval.rpoint[0]) + "  Y=" + distance(rb.resval.rpoint[1]) +
               "  Z=" + distance(rb.resval.rpoint[2]);
    if (code == 50 || code == 51) {
        char text[64] = "";
        qvdbAngToS(rb.resval.rreal, -1, -1, text, sizeof text);
        return text;
    }
    if (code >= 38 && code <= 59) return distance(rb.resval.rreal);
    if (code >= 60 && code <= 79) return std::to_string(rb.resval.rint);
    if (code >= 90 && code <= 99) return std::to_string(rb.resval.rlong);
    if (code >= 370 && code <= 379) return std::to_string(rb.resval.rint);
    return {};
}

void listEntity(const qv_name entity) {
    qv_resbuf* list = nullptr;
    if (qvdbEntGet(entity, &list) != QV_NORM) return;
    std::string type, layer = "0", handle;
    bool paper = false;
    for (const qv_resbuf* rb = list; rb; rb = rb->rbnext) {
        if (rb->restype == 0 && rb->resval.rstring) type = rb->resval.rstring;
        if (rb->restype == 8 && rb->resval.rstring) layer = rb->resval.rstring;
        if (rb->restype == 5 && rb->resval.rstring) handle = rb->resval.rstring;
        if (rb->restype == 67) paper = rb->resval.rint != 0;
    }
    qvutPrintf("\n%s  Layer: \"%s\"\n  Space: %s\n  Handle = %s", type.c_str(), layer.c_str(),
               paper ? "Paper space" : "Model space", handle.c_str());
    for (const qv_resbuf* rb = list; rb; rb = rb->rbnext) {
        if (rb->restype == -3) break;
        const char* name = propertyName(rb->restype);
        if (!name) continue;
        const std::string value = valueText(*rb);
        if (!value.empty()) qvutPrintf("\n  %s: %s", name, value.c_str());
    }
    qvutRelRb(list);
}

} // namespace

void cmdList() {
    qv_name selection = {0, 0};
    if (!pickFirstOrSelect(selection)) return;
    long length = 0;
    qvedSSLength(selection, &length);
    for (long i = 0; i < length; ++i) {
        qv_name entity;
        if (qvedSSName(selection, i, entity) == QV_NORM) listEntity(entity);
    }
    qvedSSFree(selection);
}

} // namespace qvad::shell
