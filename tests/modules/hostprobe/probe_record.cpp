#include "probe_record.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace hostprobe {

namespace {

// Each fact sits one line below the previous one, so a drawing full of them still reads in order.
double nextRecordY() {
    static int count = 0;
    return -10.0 * ++count;
}

std::vector<std::string>& heldRecords() {
    static std::vector<std::string> records;
    return records;
}

} // namespace

void record(const std::string& key, const std::string& value) {
    heldRecords().push_back(key + "=" + value);
}

void flushRecords() {
    for (const std::string& text : heldRecords()) {
        const qv_point at = {-1000.0, nextRecordY(), 0.0};
        qv_resbuf* list = qvutBuildList(QV_RTDXF0, "TEXT", 8, "PROBE", 10, at, 40, 1.0, 1, text.c_str(), 0);
        if (!list || qvdbEntMake(list) != QV_NORM) qvutPrintf("PROBE could not record %s\n", text.c_str());
        qvutRelRb(list);
    }
    heldRecords().clear();
}

void recordStatus(const std::string& key, int status) {
    record(key, std::to_string(status));
}

std::string formatReal(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.6g", value);
    // Rounding noise must not print as "-0".
    return std::string(text) == "-0" ? "0" : text;
}

std::string formatPoint(const qv_point point) {
    return formatReal(point[0]) + "," + formatReal(point[1]) + "," + formatReal(point[2]);
}

std::string handleOf(const qv_name entity) {
    qv_resbuf* list = nullptr;
    if (qvdbEntGet(entity, &list) != QV_NORM) return "?";
    std::string handle = "?";
    for (const qv_resbuf* item = list; item; item = item->rbnext) {
        if (item->restype == 5 && item->resval.rstring) handle = item->resval.rstring;
    }
    qvutRelRb(list);
    return handle;
}

std::string handlesOf(const qv_name selection) {
    long length = 0;
    if (qvedSSLength(selection, &length) != QV_NORM) return "?";
    std::vector<std::string> handles;
    for (long i = 0; i < length; ++i) {
        qv_name entity = {0, 0};
        handles.push_back(qvedSSName(selection, i, entity) == QV_NORM ? handleOf(entity) : "?");
    }
    std::sort(handles.begin(), handles.end());
    std::string joined;
    for (const std::string& handle : handles) joined += (joined.empty() ? "" : ",") + handle;
    return joined;
}

} // namespace hostprobe
