// SAVE and SAVEAS: write the open drawing to its file, or to a file the user names.

#include "qvad/api/qvad_api.h"
#include "qvad/api/sysvars_session.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/drawing_session.h"

#include <string>

namespace qvad::shell {
namespace {

constexpr std::size_t kPathSize = 4096;

// Asks for the file name, the drawing's own (or the name a new drawing would get) as the default.
// Empty when the user cancelled.
std::string askFileName() {
    const DrawingSession& session = DrawingSession::current();
    std::string current =
        session.path().empty() ? api::SysVarSession::current().drawingName() : session.path();
    std::string prompt = "\nFile name <" + current + ">: ";
    char answer[kPathSize] = "";
    if (qvedGetString(1, prompt.c_str(), answer, sizeof answer) != QV_NORM) return {};
    std::string name = answer;
    return name.empty() ? current : name;
}

void saveTo(const std::string& path) {
    DrawingSession& session = DrawingSession::current();
    if (session.save(path)) qvutPrintf("\nSaved %s\n", session.path().c_str());
}

} // namespace

void cmdSave() {
    DrawingSession& session = DrawingSession::current();
    if (!session.drawing()) return;
    // A drawing without a file of its own is saved as with SAVEAS.
    std::string path = session.path().empty() ? askFileName() : session.path();
    if (!path.empty()) saveTo(path);
}

void cmdSaveAs() {
    if (!DrawingSession::current().drawing()) return;
    std::string path = askFileName();
    if (!path.empty()) saveTo(path);
}

} // namespace qvad::shell
