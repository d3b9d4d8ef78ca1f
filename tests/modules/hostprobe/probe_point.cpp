// PROBEPOINT: every kind of input prompt in turn, each answer's status and value recorded. A prompt
// that is cancelled ends the command, as a real command would.

#include "probe_commands.h"
#include "probe_record.h"

#include <string>

namespace hostprobe {

namespace {

// Records the word of a keyword or free-text answer.
void recordInput(const std::string& key) {
    char word[256] = "";
    const int status = qvedGetInput(word, sizeof word);
    record(key + ".word", status == QV_NORM ? word : "?" + std::to_string(status));
}

// Records status and, where there is one, the value; false when the command must stop.
bool recordPointAnswer(const std::string& key, int status, const qv_point value) {
    recordStatus(key + ".status", status);
    if (status == QV_NORM) record(key + ".value", formatPoint(value));
    if (status == QV_KWORD) recordInput(key);
    return status != QV_CANCEL && status != QV_ERROR;
}

// Takes the value by copy, so callers ask first: within one argument list the copy could be made
// before the call that fills it.
bool recordRealAnswer(const std::string& key, int status, double value) {
    recordStatus(key + ".status", status);
    if (status == QV_NORM) record(key + ".value", formatReal(value));
    if (status == QV_KWORD) recordInput(key);
    return status != QV_CANCEL && status != QV_ERROR;
}

bool askPoints() {
    const qv_point origin = {0.0, 0.0, 0.0};
    qv_point point = {0.0, 0.0, 0.0};
    qvedInitGet(QV_INP_NONULL, "Left Right");
    if (!recordPointAnswer("point", qvedGetPoint(nullptr, "\nProbe point [Left/Right]: ", point), point))
        return false;

    // Relative answers are taken from the base point given here.
    const qv_point base = {10.0, 20.0, 0.0};
    qv_point corner = {0.0, 0.0, 0.0};
    if (!recordPointAnswer("corner", qvedGetCorner(base, "\nProbe corner: ", corner), corner)) return false;

    qv_point optional = {0.0, 0.0, 0.0};
    if (!recordPointAnswer("optional", qvedGetPoint(origin, "\nProbe optional point: ", optional), optional))
        return false;
    return true;
}

bool askNumbers() {
    const qv_point origin = {0.0, 0.0, 0.0};
    double distance = 0.0;
    qvedInitGet(QV_INP_NOZERO | QV_INP_NONEG, nullptr);
    int status = qvedGetDist(origin, "\nProbe distance: ", &distance);
    if (!recordRealAnswer("dist", status, distance)) return false;

    double angle = 0.0;
    status = qvedGetAngle(origin, "\nProbe angle: ", &angle);
    if (!recordRealAnswer("angle", status, angle)) return false;

    double real = 0.0;
    qvedInitGet(QV_INP_NONULL | QV_INP_NONEG, nullptr);
    status = qvedGetReal("\nProbe real: ", &real);
    if (!recordRealAnswer("real", status, real)) return false;

    int integer = 0;
    qvedInitGet(QV_INP_NOZERO, "Default");
    status = qvedGetInt("\nProbe integer [Default]: ", &integer);
    recordStatus("int.status", status);
    if (status == QV_NORM) record("int.value", std::to_string(integer));
    if (status == QV_KWORD) recordInput("int");
    return status != QV_CANCEL && status != QV_ERROR;
}

bool askWords() {
    char text[256] = "";
    int status = qvedGetString(0, "\nProbe word: ", text, sizeof text);
    recordStatus("word.status", status);
    if (status == QV_NORM) record("word.value", text);
    if (status == QV_CANCEL || status == QV_ERROR) return false;

    status = qvedGetString(1, "\nProbe sentence: ", text, sizeof text);
    recordStatus("sentence.status", status);
    if (status == QV_NORM) record("sentence.value", text);
    if (status == QV_CANCEL || status == QV_ERROR) return false;

    qvedInitGet(QV_INP_NONULL, "Yes No Maybe");
    status = qvedGetKword("\nProbe choice [Yes/No/Maybe]: ", text, sizeof text);
    recordStatus("kword.status", status);
    if (status == QV_NORM) record("kword.value", text);
    if (status == QV_CANCEL || status == QV_ERROR) return false;

    // Free text where a point is asked for comes back as a keyword answer.
    qv_point point = {0.0, 0.0, 0.0};
    qvedInitGet(QV_INP_ARBITRARY, "Ok");
    return recordPointAnswer("arbitrary", qvedGetPoint(nullptr, "\nProbe point or text: ", point), point);
}

} // namespace

void probePoint() {
    if (askPoints() && askNumbers() && askWords()) record("probepoint", "done");
    flushRecords();
    qvedRetVoid();
}

} // namespace hostprobe
