// PROBECMD: runs host commands from inside a command, the way module commands do, and reads back
// what they changed.

#include "probe_commands.h"
#include "probe_record.h"

#include <string>

namespace hostprobe {

namespace {

std::string readVariable(const char* name) {
    qv_resbuf* value = qvutNewRb(QV_RTSHORT);
    if (!value) return "?";
    std::string text = "?";
    if (qvedGetVar(name, value) == QV_NORM) {
        switch (value->restype) {
        case QV_RTSHORT:
            text = std::to_string(value->resval.rint);
            break;
        case QV_RTLONG:
            text = std::to_string(value->resval.rlong);
            break;
        case QV_RTREAL:
            text = formatReal(value->resval.rreal);
            break;
        case QV_RTSTR:
            text = value->resval.rstring ? value->resval.rstring : "";
            break;
        default:
            text = "type " + std::to_string(value->restype);
        }
    }
    qvutRelRb(value);
    return text;
}

bool layerExists(const char* name) {
    qv_resbuf* entry = nullptr;
    const bool found = qvdbTblSearch("LAYER", name, 0, &entry) == QV_NORM && entry;
    qvutRelRb(entry);
    return found;
}

} // namespace

void probeCmd() {
    recordStatus("layer.status",
                 qvedCommand(QV_RTSTR, "_.-layer", QV_RTSTR, "_M", QV_RTSTR, "NEWLAYER", QV_RTSTR, "", 0));
    record("layer.clayer", readVariable("clayer"));

    // A group of its own inside the command, as the module's command frame opens one.
    recordStatus("group.begin", qvedCommand(QV_RTSTR, ".undo", QV_RTSTR, "BE", 0));
    recordStatus("group.layer",
                 qvedCommand(QV_RTSTR, "_.-layer", QV_RTSTR, "_N", QV_RTSTR, "GROUPED", QV_RTSTR, "", 0));
    recordStatus("group.end", qvedCommand(QV_RTSTR, ".undo", QV_RTSTR, "E", 0));
    record("group.exists", layerExists("GROUPED") ? "1" : "0");

    qv_resbuf* setvar = qvutBuildList(QV_RTSTR, "_.setvar", QV_RTSTR, "USERI1", QV_RTSHORT, 42, 0);
    recordStatus("cmd.status", setvar ? qvedCmd(setvar) : QV_ERROR);
    qvutRelRb(setvar);
    record("cmd.useri1", readVariable("USERI1"));

    recordStatus("cecolor.status", qvedCommand(QV_RTSTR, "_.cecolor", QV_RTSTR, "1", 0));
    record("cecolor.value", readVariable("CECOLOR"));

    recordStatus("unknown.status", qvedCommand(QV_RTSTR, "_probe_no_such_command", 0));

    // Queued keys run once this command has ended.
    recordStatus("sendmessage.status", sds_sendmessage("^C^P_.setvar USERI2 7 "));
    record("sendmessage.useri2.now", readVariable("USERI2"));

    record("probecmd", "done");
    flushRecords();
    qvedRetVoid();
}

} // namespace hostprobe
