#include "qvad/api/answers.h"

#include "qvad/api/host_session.h"
#include "qvad/ge/point3d.h"

#include <cstdio>

namespace qvad::api {
namespace {

AnswerFeed* g_top = nullptr;
PromptTally g_tally;

std::string numberText(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.16g", value);
    return text;
}

std::string nameText(const long long name[2]) {
    char text[64];
    std::snprintf(text, sizeof text, "<%llx>", static_cast<unsigned long long>(name[1]));
    return text;
}

bool cmdEcho() {
    qv_resbuf value{};
    value.restype = QV_RTSHORT;
    if (qvedGetVar("CMDECHO", &value) != QV_NORM) return true;
    return value.restype != QV_RTSHORT || value.resval.rint != 0;
}

} // namespace

bool answersFromList(const qv_resbuf* list, std::deque<Answer>& answers) {
    for (const qv_resbuf* rb = list; rb; rb = rb->rbnext) {
        Answer a;
        switch (rb->restype) {
        case QV_RTSTR:
            a.text = rb->resval.rstring ? rb->resval.rstring : "";
            if (a.text == "\\") a.kind = Answer::Kind::Pause;
            break;
        case QV_RTREAL:
        case QV_RTANG:
        case QV_RTORINT:
            a.kind = Answer::Kind::Real;
            a.real = rb->resval.rreal;
            a.text = numberText(a.real);
            break;
        case QV_RTSHORT:
            a.kind = Answer::Kind::Int;
            a.integer = rb->resval.rint;
            a.text = std::to_string(a.integer);
            break;
        case QV_RTLONG:
            a.kind = Answer::Kind::Int;
            a.integer = rb->resval.rlong;
            a.text = std::to_string(a.integer);
            break;
        case QV_RTPOINT:
        case QV_RT3DPOINT:
            a.kind = Answer::Kind::Point;
            a.point = OdGePoint3d(rb->resval.rpoint[0], rb->resval.rpoint[1],
                                  rb->restype == QV_RT3DPOINT ? rb->resval.rpoint[2] : 0.0);
            a.text = numberText(a.point.x) + "," + numberText(a.point.y);
            if (rb->restype == QV_RT3DPOINT) a.text += "," + numberText(a.point.z);
            break;
        case QV_RTENAME:
        case QV_RTPICKS:
            a.kind = rb->restype == QV_RTENAME ? Answer::Kind::Entity : Answer::Kind::Selection;
            a.name[0] = rb->resval.rlname[0];
            a.name[1] = rb->resval.rlname[1];
            a.text = nameText(a.name);
            break;
        case QV_RTNONE:
        case QV_RTVOID:
        case QV_RTNIL:
            a.text.clear(); // an empty answer: Enter
            break;
        default:
            return false;
        }
        answers.push_back(std::move(a));
    }
    return true;
}

AnswerFeed::AnswerFeed(std::deque<Answer> answers, bool echoed)
    : m_answers(std::move(answers)), m_echoed(echoed), m_below(g_top) {
    g_top = this;
}

AnswerFeed::~AnswerFeed() {
    g_top = m_below;
}

std::deque<Answer>& queuedKeystrokes() {
    static std::deque<Answer> queue;
    return queue;
}

bool echoing() {
    for (AnswerFeed* feed = g_top; feed; feed = feed->m_below) {
        if (!feed->empty()) return feed->echoed() && cmdEcho();
    }
    return true;
}

void show(std::string_view text) {
    if (echoing()) console().write(text);
}

ReadStatus ask(std::string_view prompt, Answer& answer) {
    for (AnswerFeed* feed = g_top; feed; feed = feed->m_below) {
        if (feed->empty()) continue;
        Answer next = std::move(feed->m_answers.front());
        feed->m_answers.pop_front();
        if (next.kind == Answer::Kind::Pause) break;
        if (next.kind == Answer::Kind::Cancel) {
            ++g_tally.cancelled;
            return ReadStatus::Cancelled;
        }
        if (feed->echoed() && cmdEcho()) {
            std::string line(prompt);
            line += next.text;
            line += '\n';
            console().write(line);
        }
        answer = std::move(next);
        return ReadStatus::Answer;
    }
    answer = Answer{};
    const ReadStatus status = console().readLine(prompt, answer.text);
    if (status == ReadStatus::Cancelled) ++g_tally.cancelled;
    if (status == ReadStatus::Ended) ++g_tally.ended;
    return status;
}

const PromptTally& promptTally() {
    return g_tally;
}

} // namespace qvad::api
