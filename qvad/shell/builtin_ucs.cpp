// UCS: the user coordinate system lives in the drawing's header ($UCSORG, $UCSXDIR, $UCSYDIR), where
// the coordinate transformations read it. Those variables are read-only to qvedSetVar, so the command
// writes the header itself; undo records header changes like any other.

#include "qvad/api/host_session.h"
#include "qvad/api/sysvars_access.h"
#include "qvad/api/sysvars_header.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/builtin_prompts.h"

#include <cstdint>
#include <vector>

namespace qvad::shell {
namespace {

struct UserSystem {
    OdGePoint3d origin;
    OdGePoint3d xAxis{1, 0, 0};
    OdGePoint3d yAxis{0, 1, 0};
};

constexpr std::size_t kPreviousKept = 10;

// The systems UCS Previous goes back to, for the drawing they were set in.
struct PreviousSystems {
    std::uint64_t drawing = 0;
    std::vector<UserSystem> systems;
};

PreviousSystems& previousSystems() {
    static PreviousSystems previous;
    const std::uint64_t serial = api::HostSession::current().drawingSerial();
    if (previous.drawing != serial) previous = PreviousSystems{serial, {}};
    return previous;
}

UserSystem currentSystem() {
    return {api::pointSysVar("UCSORG"), api::pointSysVar("UCSXDIR", {1, 0, 0}),
            api::pointSysVar("UCSYDIR", {0, 1, 0})};
}

void writePoint(OdDbDatabase& db, const char* name, const OdGePoint3d& point) {
    const api::SysVarDef* def = api::findSysVar(name);
    if (!def) return;
    api::SysVarValue value;
    value.type = def->type;
    value.point = point;
    api::writeHeaderVariable(db, *def, value);
}

void setSystem(const UserSystem& system) {
    OdDbDatabase* db = api::HostSession::current().drawing();
    if (!db) return;
    writePoint(*db, "UCSORG", system.origin);
    writePoint(*db, "UCSXDIR", system.xAxis);
    writePoint(*db, "UCSYDIR", system.yAxis);
}

void changeTo(const UserSystem& system) {
    PreviousSystems& previous = previousSystems();
    previous.systems.push_back(currentSystem());
    if (previous.systems.size() > kPreviousKept) previous.systems.erase(previous.systems.begin());
    setSystem(system);
}

} // namespace

void cmdUcs() {
    if (!api::HostSession::current().drawing()) {
        say("No drawing is open.");
        return;
    }
    const std::vector<std::string_view> options = {"Origin", "Previous", "World"};
    for (;;) {
        std::optional<std::string> answer = askText("\nEnter an option [Origin/Previous/World] <World>: ");
        if (!answer) return;
        std::optional<std::size_t> option =
            answer->empty() ? std::optional<std::size_t>(2) : matchOption(*answer, options);
        if (!option) {
            say("Invalid option keyword.");
            continue;
        }
        if (*option == 2) {
            changeTo(UserSystem{});
        } else if (*option == 1) {
            PreviousSystems& previous = previousSystems();
            if (previous.systems.empty()) {
                say("No previous UCS.");
            } else {
                setSystem(previous.systems.back());
                previous.systems.pop_back();
            }
        } else {
            qv_point typed = {0, 0, 0};
            const int status = qvedGetPoint(nullptr, "\nSpecify new origin point <0,0,0>: ", typed);
            if (status != QV_NORM && status != QV_RTNONE) return;
            // The point is typed in the current system; the header holds it in world coordinates.
            qv_point world = {0, 0, 0};
            if (qvdbUcs2Wcs(typed, 0, world) != QV_NORM) return;
            UserSystem moved = currentSystem();
            moved.origin = OdGePoint3d(world[0], world[1], world[2]);
            changeTo(moved);
        }
        break;
    }
    qvedRetVoid();
}

} // namespace qvad::shell
