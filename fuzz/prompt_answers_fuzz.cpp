// Any lines typed or read from a script, given one after another to the host's prompts, must be taken
// or refused with a message and the prompt again; when the lines run out every prompt gives up.
// Nothing may crash, hang or leak, whatever the answers.
//
// Input: lines separated by '\n'; a line "^C" cancels the prompt it answers.

#include "qvad/api/console.h"
#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

namespace {

class LinesConsole final : public qvad::api::Console {
public:
    explicit LinesConsole(std::string_view input) {
        std::size_t start = 0;
        while (start <= input.size()) {
            std::size_t end = input.find('\n', start);
            if (end == std::string_view::npos) end = input.size();
            m_lines.emplace_back(input.substr(start, end - start));
            start = end + 1;
        }
        qvad::api::setConsole(this);
    }
    ~LinesConsole() override { qvad::api::setConsole(nullptr); }
    LinesConsole(const LinesConsole&) = delete;
    LinesConsole& operator=(const LinesConsole&) = delete;

    qvad::api::ReadStatus readLine(std::string_view, std::string& line) override {
        line.clear();
        // Every prompt reads at least one line, so a prompt that never gives up is a hang, not a loop
        // over a long input; past the end it must stop asking.
        if (m_lines.empty()) {
            if (++m_readsAfterEnd > 1000) std::abort();
            return qvad::api::ReadStatus::Ended;
        }
        std::string answer = std::move(m_lines.front());
        m_lines.pop_front();
        if (answer == "^C") return qvad::api::ReadStatus::Cancelled;
        line = std::move(answer);
        return qvad::api::ReadStatus::Answer;
    }
    void write(std::string_view) override {}

private:
    std::deque<std::string> m_lines;
    int m_readsAfterEnd = 0;
};

void makeEntity(qv_resbuf* list) {
    if (!list) std::abort();
    if (qvdbEntMake(list) != QV_NORM) std::abort();
    qvutRelRb(list);
}

// Something to pick, window and name by handle.
void drawSomething() {
    const qv_real lineStart[3] = {0, 0, 0};
    const qv_real lineEnd[3] = {10, 5, 0};
    const qv_real centre[3] = {20, 20, 0};
    makeEntity(qvutBuildList(QV_RTDXF0, "LINE", 10, lineStart, 11, lineEnd, 0));
    makeEntity(qvutBuildList(QV_RTDXF0, "CIRCLE", 10, centre, 40, 3.0, 0));
    makeEntity(qvutBuildList(QV_RTDXF0, "TEXT", 10, lineEnd, 40, 2.5, 1, "note", 0));
}

// A keyword answer leaves its word for qvedGetInput.
void takeKeyword(int status) {
    if (status != QV_KWORD) return;
    char word[64];
    qvedGetInput(word, sizeof word);
}

void askEverything() {
    const qv_point base = {1, 2, 0};
    qv_point point;
    qv_real real = 0;
    int integer = 0;
    char text[32];

    qvedInitGet(0, "Close Undo eXit");
    takeKeyword(qvedGetPoint(nullptr, "\nSpecify point or [Close/Undo/eXit]: ", point));
    qvedInitGet(QV_INP_DASH, "Close Undo");
    takeKeyword(qvedGetPoint(base, "\nNext point: ", point));
    qvedInitGet(QV_INP_NONULL | QV_INP_NOZERO | QV_INP_NONEG, "Twice");
    takeKeyword(qvedGetDist(base, "\nDistance: ", &real));
    takeKeyword(qvedGetCorner(base, "\nOther corner: ", point));
    qvedInitGet(0, "Reference");
    takeKeyword(qvedGetAngle(base, "\nAngle: ", &real));
    qvedInitGet(QV_INP_NONEG, "Half");
    takeKeyword(qvedGetReal("\nScale: ", &real));
    qvedInitGet(QV_INP_NOZERO, "Many");
    takeKeyword(qvedGetInt("\nCount: ", &integer));
    qvedInitGet(QV_INP_NONULL, "Yes No _Yes No");
    qvedGetKword("\nSure? [Yes/No]: ", text, sizeof text);
    qvedGetString(0, "\nName: ", text, sizeof text);
    qvedGetString(1, "\nTitle: ", text, sizeof text);

    qv_name selection = {0, 0};
    if (qvedSSGet(nullptr, nullptr, nullptr, nullptr, selection) == QV_NORM) {
        long length = 0;
        if (qvedSSLength(selection, &length) != QV_NORM || length <= 0) std::abort();
        qvedSSFree(selection);
    }
    qv_name entity = {0, 0};
    qvedEntSel("\nSelect object: ", entity, point);
}

} // namespace

// fontconfig keeps its default configuration, made on first use, for the life of the process; text
// extents reach it when a pick tests the drawing's text.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A fresh drawing each time, so that one input's previous set cannot leak into the next run.
    std::unique_ptr<OdDbDatabase> drawing = qvad::db::newDrawing();
    qvad::api::HostSession::current().setDrawing(drawing.get());
    drawSomething();
    {
        LinesConsole console(std::string_view(reinterpret_cast<const char*>(data), size));
        askEverything();
    }
    qvad::api::HostSession::current().setDrawing(nullptr);
    return 0;
}
