// PROBESELECT: every way of building a selection set, then the set operations on a set of its own.
// Each set's size and members are recorded, and every set is freed again.

#include "probe_commands.h"
#include "probe_record.h"

#include <string>

namespace hostprobe {

namespace {

// Records what a selection call gave and frees the set unless the caller keeps it.
int recordSelection(const std::string& key, int status, const qv_name selection, bool keep = false) {
    recordStatus(key + ".status", status);
    if (status != QV_NORM) return status;
    long length = -1;
    qvedSSLength(selection, &length);
    record(key + ".count", std::to_string(length));
    record(key + ".handles", handlesOf(selection));
    if (!keep) qvedSSFree(selection);
    return status;
}

int selectWithFilter(const std::string& key, qv_resbuf* filter) {
    qv_name selection = {0, 0};
    const int status = filter ? qvedSSGet("X", nullptr, nullptr, filter, selection) : QV_ERROR;
    qvutRelRb(filter);
    return recordSelection(key, status, selection);
}

void selectByFilters() {
    // Circles on DOORS, or red lines.
    selectWithFilter("x.or", qvutBuildList(-4, "<OR", 8, "DOORS", -4, "<AND", QV_RTDXF0, "LINE", 62, 1, -4,
                                           "AND>", -4, "OR>", 0));
    selectWithFilter("x.wild", qvutBuildList(QV_RTDXF0, "LINE", 8, "WALL*", 0));
    selectWithFilter("x.not", qvutBuildList(-4, "<NOT", -4, "<OR", QV_RTDXF0, "LINE", 8, "PROBE", -4, "OR>",
                                            -4, "NOT>", 0));
    selectWithFilter("x.radius", qvutBuildList(QV_RTDXF0, "CIRCLE", -4, ">=", 40, 1.5, 0));
    selectWithFilter("x.none", qvutBuildList(8, "NO SUCH LAYER", 0));
}

void selectByShape(const std::string& key, const char* mode, qv_resbuf* points) {
    qv_name selection = {0, 0};
    const int status = points ? qvedSSGet(mode, points, nullptr, nullptr, selection) : QV_ERROR;
    qvutRelRb(points);
    recordSelection(key, status, selection);
}

void selectByGeometry() {
    const qv_point low = {-1.0, -1.0, 0.0}, high = {11.0, 6.0, 0.0};
    qv_name selection = {0, 0};
    recordSelection("w", qvedSSGet("W", low, high, nullptr, selection), selection);

    const qv_point crossLow = {9.0, -1.0, 0.0}, crossHigh = {21.0, 1.0, 0.0};
    recordSelection("c", qvedSSGet("C", crossLow, crossHigh, nullptr, selection), selection);

    const qv_point fenceFrom = {5.0, -1.0, 0.0}, fenceTo = {5.0, 6.0, 0.0};
    selectByShape("f", "F", qvutBuildList(QV_RT3DPOINT, fenceFrom, QV_RT3DPOINT, fenceTo, 0));

    const qv_point a = {-1.0, -1.0, 0.0}, b = {11.0, -1.0, 0.0}, c = {11.0, 6.0, 0.0}, d = {-1.0, 6.0, 0.0};
    selectByShape("wp", "WP",
                  qvutBuildList(QV_RT3DPOINT, a, QV_RT3DPOINT, b, QV_RT3DPOINT, c, QV_RT3DPOINT, d, 0));

    const qv_point e = {19.0, -1.0, 0.0}, f = {35.0, -1.0, 0.0}, g = {35.0, 1.0, 0.0}, h = {19.0, 1.0, 0.0};
    selectByShape("cp", "CP",
                  qvutBuildList(QV_RT3DPOINT, e, QV_RT3DPOINT, f, QV_RT3DPOINT, g, QV_RT3DPOINT, h, 0));

    // The previous set is the one just made with CP.
    recordSelection("p", qvedSSGet("P", nullptr, nullptr, nullptr, selection), selection);
    recordSelection("l", qvedSSGet("L", nullptr, nullptr, nullptr, selection), selection);
}

void selectImplied() {
    const qv_point low = {-1.0, -1.0, 0.0}, high = {11.0, 6.0, 0.0};
    qv_name window = {0, 0};
    if (qvedSSGet("W", low, high, nullptr, window) != QV_NORM) return record("i", "no window");
    recordStatus("setfirst.status", qvedSSSetFirst(window, window));
    qvedSSFree(window);
    qv_name implied = {0, 0};
    recordSelection("i", qvedSSGet("I", nullptr, nullptr, nullptr, implied), implied);
    // Once taken, a cleared pick-first set stays empty.
    recordStatus("setfirst.clear", qvedSSSetFirst(nullptr, nullptr));
    recordStatus("i.after.status", qvedSSGet("I", nullptr, nullptr, nullptr, implied));
    qvedSSFree(implied);
}

// Interactive selections; false when the user cancelled, which ends the command.
bool selectInteractively() {
    qv_name selection = {0, 0};
    if (recordSelection("single", qvedSSGet(":S", nullptr, nullptr, nullptr, selection), selection) ==
        QV_CANCEL)
        return false;
    if (recordSelection("ask", qvedSSGet(nullptr, nullptr, nullptr, nullptr, selection), selection) ==
        QV_CANCEL)
        return false;
    const char* prompts[2] = {"\nProbe add objects: ", "\nProbe remove objects: "};
    if (recordSelection("custom", qvedSSGet(":$", prompts, nullptr, nullptr, selection), selection) ==
        QV_CANCEL)
        return false;
    return true;
}

void probeSetOperations(const qv_name first, const qv_name second) {
    qv_name set = {0, 0};
    recordStatus("ops.new.status", qvedSSAdd(nullptr, nullptr, set));
    long length = -1;
    qvedSSLength(set, &length);
    record("ops.new.count", std::to_string(length));

    qv_name same = {0, 0};
    recordStatus("ops.add.status", qvedSSAdd(first, set, same));
    qvedSSAdd(first, set, same); // twice: members are unique
    qvedSSAdd(second, set, same);
    qvedSSLength(set, &length);
    record("ops.add.count", std::to_string(length));
    record("ops.add.handles", handlesOf(set));

    recordStatus("ops.memb.before", qvedSSMemb(second, set));
    recordStatus("ops.del.status", qvedSSDel(second, set));
    recordStatus("ops.memb.after", qvedSSMemb(second, set));
    recordStatus("ops.del.again", qvedSSDel(second, set));
    qvedSSLength(set, &length);
    record("ops.del.count", std::to_string(length));

    qv_name member = {0, 0};
    recordStatus("ops.name.status", qvedSSName(set, 0, member));
    record("ops.name.handle", handleOf(member));
    recordStatus("ops.name.past", qvedSSName(set, 5, member));

    recordStatus("ops.free.status", qvedSSFree(set));
    recordStatus("ops.length.freed", qvedSSLength(set, &length));
}

void selectSetMembers() {
    // The set operations work on the first and last entity of the drawing.
    qv_name first = {0, 0}, last = {0, 0};
    if (qvdbEntNext(nullptr, first) != QV_NORM || qvdbEntLast(last) != QV_NORM)
        return record("ops", "no entities");
    probeSetOperations(first, last);
}

} // namespace

void probeSelect() {
    selectByFilters();
    selectByGeometry();
    selectImplied();
    selectSetMembers();
    if (selectInteractively()) record("probeselect", "done");
    flushRecords();
    qvedRetVoid();
}

} // namespace hostprobe
