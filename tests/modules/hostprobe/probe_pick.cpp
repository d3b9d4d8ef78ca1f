// PROBEPICK: picks one entity, then one inside a block reference, recording what was hit, where, and
// through which references.

#include "probe_commands.h"
#include "probe_record.h"

#include <string>

namespace hostprobe {

namespace {

// A missed pick may be answered again, as a command would let the user try once more.
int pickEntity(const char* prompt, qv_name entity, qv_point where) {
    int status = QV_ERROR;
    for (int attempt = 1; attempt <= 3 && status == QV_ERROR; ++attempt) {
        status = qvedEntSel(prompt, entity, where);
        record("pick.attempt" + std::to_string(attempt), std::to_string(status));
    }
    return status;
}

std::string typeOf(const qv_name entity) {
    qv_resbuf* list = nullptr;
    if (qvdbEntGet(entity, &list) != QV_NORM) return "?";
    std::string type = "?";
    for (const qv_resbuf* item = list; item; item = item->rbnext) {
        if (item->restype == 0 && item->resval.rstring) type = item->resval.rstring;
    }
    qvutRelRb(list);
    return type;
}

bool pickPlain() {
    qv_name entity = {0, 0};
    qv_point where = {0.0, 0.0, 0.0};
    const int status = pickEntity("\nProbe pick: ", entity, where);
    recordStatus("pick.status", status);
    if (status != QV_NORM) return false;
    record("pick.handle", handleOf(entity));
    record("pick.point", formatPoint(where));
    return true;
}

bool pickNested() {
    qv_name entity = {0, 0};
    qv_point where = {0.0, 0.0, 0.0};
    qv_real transform[4][4] = {};
    qv_resbuf* containers = nullptr;
    const int status = qvedNEntSelP("\nProbe nested pick: ", entity, where, 0, transform, &containers);
    recordStatus("nested.status", status);
    if (status != QV_NORM) return false;
    record("nested.handle", handleOf(entity));
    record("nested.type", typeOf(entity));
    record("nested.point", formatPoint(where));
    // Where the block's origin lands in the world: the translation column.
    const qv_point origin = {transform[0][3], transform[1][3], transform[2][3]};
    record("nested.origin", formatPoint(origin));
    std::string chain;
    for (const qv_resbuf* item = containers; item; item = item->rbnext) {
        if (item->restype != QV_RTENAME) continue;
        qv_name reference = {item->resval.rlname[0], item->resval.rlname[1]};
        chain += (chain.empty() ? "" : ",") + handleOf(reference);
    }
    record("nested.containers", chain);
    qvutRelRb(containers);
    return true;
}

} // namespace

void probePick() {
    if (pickPlain() && pickNested()) record("probepick", "done");
    flushRecords();
    qvedRetVoid();
}

} // namespace hostprobe
