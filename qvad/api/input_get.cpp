// The exported prompts for points, distances, angles, numbers, words and text.

#include "qvad/api/host_session.h"
#include "qvad/api/input_messages.h"
#include "qvad/api/input_points.h"
#include "qvad/api/input_read.h"
#include "qvad/api/sysvars_access.h"
#include "qvad/api/sysvars_value.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace qvad::api {
namespace {

std::string_view promptText(const char* prompt) {
    return prompt ? std::string_view(prompt) : std::string_view();
}

OdGePoint3d pointOf(const qv_point p) {
    return OdGePoint3d(p[0], p[1], p[2]);
}

void store(const OdGePoint3d& point, qv_point result) {
    result[0] = point.x;
    result[1] = point.y;
    result[2] = point.z;
}

// A point answer: a typed value from a feed, or text. Accepted points become the last point.
std::optional<OdGePoint3d> pointAnswer(const Answer& answer) {
    std::optional<OdGePoint3d> point;
    if (answer.kind == Answer::Kind::Point) point = answer.point;
    if (answer.kind == Answer::Kind::Text) point = parseTypedPoint(trimmedAnswer(answer.text));
    if (point) setLastPoint(*point);
    return point;
}

std::optional<double> numberAnswer(const Answer& answer, bool distance) {
    switch (answer.kind) {
    case Answer::Kind::Real:
        return answer.real;
    case Answer::Kind::Int:
        return static_cast<double>(answer.integer);
    case Answer::Kind::Text: {
        std::string_view text = trimmedAnswer(answer.text);
        return distance ? parseTypedDistance(text) : parseReal(text);
    }
    default:
        return std::nullopt;
    }
}

// The NOZERO and NONEG bits, for numbers; empty when the value passes.
std::string valueRefusal(double value, int bits) {
    if ((bits & QV_INP_NOZERO) && value == 0.0) return messages::kNonzero;
    if ((bits & QV_INP_NONEG) && value < 0.0) return messages::kPositive;
    return {};
}

// Asks for the second point of a distance or angle given by two points; the first is already taken.
int secondPoint(OdGePoint3d& point) {
    for (;;) {
        bool echoed = echoing();
        Answer answer;
        if (askOnce(messages::kSecondPoint, answer) != QV_NORM) return QV_CANCEL;
        if (auto p = pointAnswer(answer)) {
            point = *p;
            return QV_NORM;
        }
        showRefusal(messages::kPointRequired, echoed);
    }
}

double planeDistance(const OdGePoint3d& a, const OdGePoint3d& b, bool flat) {
    double dx = b.x - a.x, dy = b.y - a.y, dz = flat ? 0.0 : b.z - a.z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

int getPoint(const qv_point base, const char* prompt, qv_point result) {
    (void)base; // only a screen would draw a rubber band from it
    InputControls controls = takePendingControls();
    OdGePoint3d taken;
    int status = readAnswer(promptText(prompt), controls, [&](const Answer& answer) {
        auto point = pointAnswer(answer);
        if (!point) return Verdict::refused(messages::kPointRequired);
        taken = *point;
        return Verdict::taken();
    });
    if (status == QV_NORM) store(taken, result);
    return status;
}

// A distance or an angle, typed or given by points: from base to one point, or between two points.
int getMeasure(const qv_point base, const char* prompt, qv_real* result, bool angle) {
    InputControls controls = takePendingControls();
    const char* refusal = angle ? (base ? messages::kAngleRequired : messages::kAngleOrTwoPoints)
                                : (base ? messages::kDistanceRequired : messages::kDistanceOrTwoPoints);
    // Angles are never negative, so only the NOZERO bit applies to them.
    int valueBits = angle ? (controls.bits & QV_INP_NOZERO) : controls.bits;
    double value = 0.0;
    int status = readAnswer(promptText(prompt), controls, [&](const Answer& answer) {
        if (answer.kind != Answer::Kind::Point) {
            // A number from a feed counts as typed, in the drawing's angle units.
            std::optional<double> number =
                angle && answer.kind != Answer::Kind::Entity && answer.kind != Answer::Kind::Selection
                    ? parseTypedAngle(trimmedAnswer(answer.text))
                    : numberAnswer(answer, true);
            if (number) {
                if (angle) number = withinTurn(shortSysVar("ANGDIR", 0) == 1 ? -*number : *number);
                std::string refused = valueRefusal(*number, valueBits);
                if (!refused.empty()) return Verdict::refused(refused);
                value = *number;
                return Verdict::taken();
            }
        }
        auto point = pointAnswer(answer);
        if (!point) return Verdict::refused(refusal);
        OdGePoint3d from = base ? pointOf(base) : *point;
        OdGePoint3d to = *point;
        if (!base && secondPoint(to) != QV_NORM) return Verdict{QV_CANCEL, {}};
        double measured =
            angle ? withinTurn(std::atan2(to.y - from.y, to.x - from.x) - realSysVar("ANGBASE", 0.0))
                  : planeDistance(from, to, controls.bits & QV_INP_2D);
        std::string refused = valueRefusal(measured, valueBits);
        if (!refused.empty()) return Verdict::refused(refused);
        value = measured;
        return Verdict::taken();
    });
    if (status == QV_NORM) *result = value;
    return status;
}

int integerStatus(const Answer& answer, const InputControls& controls, int& value, std::string& refusal) {
    std::optional<long long> number;
    if (answer.kind == Answer::Kind::Int) number = answer.integer;
    if (answer.kind == Answer::Kind::Real && std::nearbyint(answer.real) == answer.real &&
        std::abs(answer.real) < 1e18)
        number = static_cast<long long>(answer.real);
    if (answer.kind == Answer::Kind::Text) number = parseInteger(trimmedAnswer(answer.text));
    if (!number || *number < std::numeric_limits<int>::min() || *number > std::numeric_limits<int>::max()) {
        refusal = messages::kIntegerRequired;
        return QV_ERROR;
    }
    refusal = valueRefusal(static_cast<double>(*number), controls.bits);
    if (!refusal.empty()) return QV_ERROR;
    value = static_cast<int>(*number);
    return QV_NORM;
}

} // namespace
} // namespace qvad::api

using namespace qvad::api;

extern "C" QV_API int qvedInitGet(int bits, const char* keywords) {
    return guarded([&] {
        InputControls controls;
        controls.bits = bits;
        controls.keywords = KeywordList(keywords ? keywords : "");
        setPendingControls(std::move(controls));
        return QV_NORM;
    });
}

extern "C" QV_API int qvedGetPoint(const qv_point base, const char* prompt, qv_point result) {
    return guarded([&] {
        if (!result) {
            takePendingControls();
            return refuse(HostError::BadArgument);
        }
        return getPoint(base, prompt, result);
    });
}

extern "C" QV_API int qvedGetCorner(const qv_point base, const char* prompt, qv_point result) {
    return guarded([&] {
        if (!base || !result) {
            takePendingControls();
            return refuse(HostError::BadArgument);
        }
        return getPoint(base, prompt, result);
    });
}

extern "C" QV_API int qvedGetDist(const qv_point base, const char* prompt, qv_real* result) {
    return guarded([&] {
        if (!result) {
            takePendingControls();
            return refuse(HostError::BadArgument);
        }
        return getMeasure(base, prompt, result, false);
    });
}

// The angle comes back counterclockwise from ANGBASE, whatever ANGDIR says about typed angles.
extern "C" QV_API int qvedGetAngle(const qv_point base, const char* prompt, qv_real* result) {
    return guarded([&] {
        if (!result) {
            takePendingControls();
            return refuse(HostError::BadArgument);
        }
        return getMeasure(base, prompt, result, true);
    });
}

extern "C" QV_API int qvedGetReal(const char* prompt, qv_real* result) {
    return guarded([&] {
        InputControls controls = takePendingControls();
        if (!result) return refuse(HostError::BadArgument);
        double value = 0.0;
        int status = readAnswer(promptText(prompt), controls, [&](const Answer& answer) {
            auto number = numberAnswer(answer, false);
            if (!number) return Verdict::refused(messages::kRealRequired);
            std::string refused = valueRefusal(*number, controls.bits);
            if (!refused.empty()) return Verdict::refused(refused);
            value = *number;
            return Verdict::taken();
        });
        if (status == QV_NORM) *result = value;
        return status;
    });
}

extern "C" QV_API int qvedGetInt(const char* prompt, int* result) {
    return guarded([&] {
        InputControls controls = takePendingControls();
        if (!result) return refuse(HostError::BadArgument);
        int value = 0;
        int status = readAnswer(promptText(prompt), controls, [&](const Answer& answer) {
            std::string refused;
            if (integerStatus(answer, controls, value, refused) != QV_NORM) return Verdict::refused(refused);
            return Verdict::taken();
        });
        if (status == QV_NORM) *result = value;
        return status;
    });
}

// Keywords and bits do not apply to free text; an empty answer is an empty string with QV_NORM.
extern "C" QV_API int qvedGetString(int allowSpaces, const char* prompt, char* result, size_t resultSize) {
    return guarded([&] {
        takePendingControls();
        if (!result || resultSize == 0) return refuse(HostError::BadArgument);
        for (;;) {
            bool echoed = echoing();
            Answer answer;
            if (askOnce(promptText(prompt), answer) != QV_NORM) return QV_CANCEL;
            std::string_view text = answer.text;
            if (!allowSpaces) text = text.substr(0, text.find(' '));
            if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
            if (copyTextOut(text, result, resultSize) == QV_NORM) return QV_NORM;
            showRefusal(messages::kTooLong, echoed);
        }
    });
}

// A keyword's word comes back in result with QV_NORM (any text too with the ARBITRARY bit).
extern "C" QV_API int qvedGetKword(const char* prompt, char* result, size_t resultSize) {
    return guarded([&] {
        InputControls controls = takePendingControls();
        if (!result || resultSize == 0 || (controls.keywords.empty() && !(controls.bits & QV_INP_ARBITRARY)))
            return refuse(HostError::BadArgument);
        int status = readAnswer(promptText(prompt), controls,
                                [](const Answer&) { return Verdict::refused(messages::kInvalidKeyword); });
        if (status == QV_RTNONE) result[0] = '\0';
        if (status != QV_KWORD) return status;
        if (copyTextOut(lastInputText(), result, resultSize) != QV_NORM)
            return refuse(HostError::BadArgument);
        return QV_NORM;
    });
}

extern "C" QV_API int qvedGetInput(char* result, size_t resultSize) {
    return guarded([&] {
        if (!result) return refuse(HostError::BadArgument);
        if (copyTextOut(lastInputText(), result, resultSize) != QV_NORM)
            return refuse(HostError::BadArgument);
        return QV_NORM;
    });
}
