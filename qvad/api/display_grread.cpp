// Reading the next key or point, from typed answers.

#include "qvad/api/display_state.h"
#include "qvad/api/host_session.h"
#include "qvad/api/input_points.h"
#include "qvad/api/input_read.h"

namespace qvad::api {
namespace {

// The code of the first character of UTF-8 text; a stray byte stands for itself.
int firstCharacter(std::string_view text) {
    auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned char lead = byte(0);
    std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (length == 1 || text.size() < length) return lead;
    int code = lead & (0x3F >> (length - 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return lead;
        code = (code << 6) | (byte(i) & 0x3F);
    }
    return code;
}

} // namespace
} // namespace qvad::api

using namespace qvad::api;

extern "C" QV_API int qvedGrRead(int track, int* type, struct qv_resbuf* result) {
    (void)track;
    return guarded([&] {
        if (!type || !result) return refuse(HostError::BadArgument);
        Answer answer;
        if (askOnce("", answer) != QV_NORM) return QV_CANCEL;
        std::optional<OdGePoint3d> point;
        if (answer.kind == Answer::Kind::Point) point = answer.point;
        if (answer.kind == Answer::Kind::Text) point = parseTypedPoint(trimmedAnswer(answer.text));
        if (point) {
            *type = 3;
            result->restype = QV_RT3DPOINT;
            result->resval.rpoint[0] = point->x;
            result->resval.rpoint[1] = point->y;
            result->resval.rpoint[2] = point->z;
            return QV_NORM;
        }
        *type = 2;
        result->restype = QV_RTSHORT;
        result->resval.rint = static_cast<short>(answer.text.empty() ? 13 : firstCharacter(answer.text));
        return QV_NORM;
    });
}
