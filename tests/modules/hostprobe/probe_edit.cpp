// PROBEEDIT: makes, changes and erases entities, new ones and picked ones, so that UNDO and REDO have
// every kind of change to take back.

#include "probe_commands.h"
#include "probe_record.h"

#include <string>

namespace hostprobe {

namespace {

// Replaces the first item of the group in the list; false when the list has none.
bool replacePoint(qv_resbuf* list, short group, const qv_point value) {
    for (qv_resbuf* item = list; item; item = item->rbnext) {
        if (item->restype != group) continue;
        for (int i = 0; i < 3; ++i) item->resval.rpoint[i] = value[i];
        return true;
    }
    return false;
}

// Sets the colour (group 62), adding it where the entity had none.
int recolor(const qv_name entity, int colour) {
    qv_resbuf* list = nullptr;
    if (qvdbEntGet(entity, &list) != QV_NORM) return QV_ERROR;
    bool found = false;
    for (qv_resbuf* item = list; item; item = item->rbnext) {
        if (item->restype == 62) {
            item->resval.rint = static_cast<short>(colour);
            found = true;
        }
    }
    if (!found) {
        qv_resbuf* added = qvutNewRb(62);
        if (!added) {
            qvutRelRb(list);
            return QV_ERROR;
        }
        added->resval.rint = static_cast<short>(colour);
        qv_resbuf* tail = list;
        while (tail->rbnext) tail = tail->rbnext;
        tail->rbnext = added;
    }
    const int status = qvdbEntMod(list);
    qvutRelRb(list);
    return status;
}

void makeAndChange() {
    const qv_point from = {100.0, 100.0, 0.0}, to = {110.0, 100.0, 0.0}, centre = {120.0, 100.0, 0.0};
    qv_name line = {0, 0}, circle = {0, 0};
    qv_resbuf* list = qvutBuildList(QV_RTDXF0, "LINE", 8, "EDIT", 10, from, 11, to, 0);
    recordStatus("make.line", list ? qvdbEntMakeX(list, line) : QV_ERROR);
    qvutRelRb(list);
    record("make.line.handle", handleOf(line));
    list = qvutBuildList(QV_RTDXF0, "CIRCLE", 8, "EDIT", 10, centre, 40, 5.0, 0);
    recordStatus("make.circle", list ? qvdbEntMakeX(list, circle) : QV_ERROR);
    qvutRelRb(list);
    record("make.circle.handle", handleOf(circle));

    const qv_point newEnd = {110.0, 110.0, 0.0};
    list = nullptr;
    int status = qvdbEntGet(line, &list);
    if (status == QV_NORM) status = replacePoint(list, 11, newEnd) ? qvdbEntMod(list) : QV_ERROR;
    qvutRelRb(list);
    recordStatus("mod.line", status);

    recordStatus("del.circle", qvdbEntDel(circle));
    // Erasing twice brings it back; three times erases it for good.
    recordStatus("undel.circle", qvdbEntDel(circle));
    recordStatus("redel.circle", qvdbEntDel(circle));
}

bool changePicked() {
    qv_name entity = {0, 0};
    qv_point where = {0.0, 0.0, 0.0};
    int status = qvedEntSel("\nProbe entity to recolor: ", entity, where);
    recordStatus("recolor.pick", status);
    if (status == QV_CANCEL) return false;
    if (status == QV_NORM) recordStatus("recolor.status", recolor(entity, 3));

    status = qvedEntSel("\nProbe entity to erase: ", entity, where);
    recordStatus("erase.pick", status);
    if (status == QV_CANCEL) return false;
    if (status == QV_NORM) recordStatus("erase.status", qvdbEntDel(entity));
    return true;
}

} // namespace

void probeEdit() {
    makeAndChange();
    if (changePicked()) record("probeedit", "done");
    flushRecords();
    qvedRetVoid();
}

} // namespace hostprobe
