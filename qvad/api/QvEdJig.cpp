#include "qvad/api/QvEdJig.h"

#include "qvad/api/input_messages.h"
#include "qvad/api/input_points.h"
#include "qvad/api/input_read.h"
#include "qvad/api/sysvars_value.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>

using namespace qvad::api;

namespace {

enum Kind { kPointKind, kStringKind, kDistKind };

std::string formattedPrompt(const char* format, va_list arguments) {
    va_list measuring;
    va_copy(measuring, arguments);
    int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    if (length < 0) return format;
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

} // namespace

QvEdJig::QvEdJig() = default;
QvEdJig::~QvEdJig() = default;

void QvEdJig::setDispPrompt(const char* format, ...) {
    if (!format) {
        m_prompt.clear();
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    m_prompt = formattedPrompt(format, arguments);
    va_end(arguments);
}

void QvEdJig::setKeywordList(const char* keywords) {
    m_keywords = keywords ? keywords : "";
}

QvEdJig::DragStatus QvEdJig::drag() {
    DragStatus status = sampler();
    if (status == kNoChange) return kNormal;
    if (status == kNormal) update();
    return status;
}

QvEdJig::DragStatus QvEdJig::acquirePoint(OdGePoint3d& point) {
    return acquire(kPointKind, &point, nullptr, nullptr, nullptr);
}

QvEdJig::DragStatus QvEdJig::acquirePoint(OdGePoint3d& point, const OdGePoint3d& base) {
    return acquire(kPointKind, &point, nullptr, nullptr, &base);
}

QvEdJig::DragStatus QvEdJig::acquireString(std::string& text) {
    return acquire(kStringKind, nullptr, &text, nullptr, nullptr);
}

QvEdJig::DragStatus QvEdJig::acquireDist(double& distance, const OdGePoint3d& base) {
    return acquire(kDistKind, nullptr, nullptr, &distance, &base);
}

QvEdJig::DragStatus QvEdJig::acquire(int kind, OdGePoint3d* point, std::string* text, double* distance,
                                     const OdGePoint3d* base) {
    InputControls controls;
    controls.keywords = KeywordList(m_keywords);
    if (!(m_controls & kNullResponseAccepted)) controls.bits |= QV_INP_NONULL;
    if (m_controls & kAcceptOtherInputString) controls.bits |= QV_INP_ARBITRARY;
    m_keyword.clear();
    m_keywordIndex = -1;
    m_other.clear();
    OdGePoint3d sampledPoint;
    std::string sampledText;
    double sampledDistance = 0.0;
    int status = readAnswer(m_prompt, controls, [&](const Answer& answer) {
        if (kind == kStringKind) {
            sampledText = answer.text;
            return Verdict::taken();
        }
        std::optional<OdGePoint3d> typed;
        if (answer.kind == Answer::Kind::Point) typed = answer.point;
        if (answer.kind == Answer::Kind::Text) typed = parseTypedPoint(trimmedAnswer(answer.text));
        if (kind == kDistKind) {
            std::optional<double> value;
            if (typed && base) value = typed->distanceTo(*base);
            if (!typed && answer.kind == Answer::Kind::Real) value = answer.real;
            if (!typed && answer.kind == Answer::Kind::Int) value = static_cast<double>(answer.integer);
            if (!typed && answer.kind == Answer::Kind::Text)
                value = parseTypedDistance(trimmedAnswer(answer.text));
            if (!value) return Verdict::refused(messages::kDistanceRequired);
            if ((m_controls & kNoZeroResponseAccepted) && *value == 0.0)
                return Verdict::refused(messages::kNonzero);
            if ((m_controls & kNoNegativeResponseAccepted) && *value < 0.0)
                return Verdict::refused(messages::kPositive);
            sampledDistance = *value;
        } else {
            if (!typed) return Verdict::refused(messages::kPointRequired);
            sampledPoint = *typed;
        }
        if (typed && !(m_controls & kDontUpdateLastPoint)) setLastPoint(*typed);
        return Verdict::taken();
    });
    switch (status) {
    case QV_NORM:
        break;
    case QV_RTNONE:
        return kNull;
    case QV_KWORD:
        m_keywordIndex = controls.keywords.matchIndex(lastInputText());
        if (m_keywordIndex < 0) {
            m_other = lastInputText();
            return kOther;
        }
        m_keyword = lastInputText();
        return kKeyword;
    default:
        return kCancel;
    }
    bool same = m_sampled;
    if (kind == kPointKind) {
        same = same && sampledPoint == m_lastPoint;
        m_lastPoint = *point = sampledPoint;
    } else if (kind == kStringKind) {
        same = same && sampledText == m_lastText;
        *text = m_lastText = sampledText;
    } else {
        same = same && sampledDistance == m_lastDistance;
        m_lastDistance = *distance = sampledDistance;
    }
    m_sampled = true;
    return same ? kNoChange : kNormal;
}
