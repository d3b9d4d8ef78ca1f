// qvad: opens a drawing, runs commands or scripts on it, and saves it.
//
// A run goes: open the drawing (or a new one), load the modules, answer prompts from the -c lines and
// then the script (or the terminal), save to -o when the input ended between commands, unload the
// modules. QUIT ends the run without saving, also with -o: it means the changes are discarded.

#include "qvad/api/console.h"
#include "qvad/app/command_listing.h"
#include "qvad/app/drawing_info.h"
#include "qvad/app/input_chain.h"
#include "qvad/app/options.h"
#include "qvad/shell/command_processor.h"
#include "qvad/shell/drawing_session.h"
#include "qvad/shell/module_loader.h"

#include <iostream>

namespace {

constexpr int kExitScriptFailed = 1;
constexpr int kExitUnreadable = 2;
constexpr int kExitSaveFailed = 3;

using qvad::shell::DrawingSession;

void loadModules(qvad::shell::ModuleLoader& loader, const std::vector<std::string>& modules) {
    if (modules.empty()) {
        loader.loadFolder(qvad::shell::ModuleLoader::defaultFolder());
        return;
    }
    for (const std::string& path : modules) loader.load(path);
}

// Runs the commands; the exit status so far.
int runInput(const qvad::app::Options& options) {
    qvad::app::InputChain input;
    if (!input.build(options.commands, options.script)) return kExitUnreadable;
    qvad::api::setConsole(&input.console());
    int status = qvad::shell::commandLoop();
    qvad::api::setConsole(nullptr);
    if (status == 0) return 0;
    if (input.endedInsideCommand()) {
        std::string where = input.location();
        std::cerr << "qvad: " << (where.empty() ? "" : where + ": ")
                  << "the input ended inside a command; the drawing was not saved\n";
    } else {
        std::string source = input.location();
        source = source.substr(0, source.rfind(':'));
        std::cerr << "qvad: " << (source.empty() ? "" : source + ": ")
                  << "a command failed or was unknown (see above); the drawing was not saved\n";
    }
    return kExitScriptFailed;
}

} // namespace

int main(int argc, char** argv) {
    qvad::app::Options options;
    if (int status = qvad::app::parseOptions(argc, argv, options); status >= 0) return status;

    DrawingSession& session = DrawingSession::current();
    if (options.drawing.empty()) {
        session.openNew();
    } else if (!session.open(options.drawing)) {
        return kExitUnreadable;
    }
    if (options.info) {
        std::cout << "Drawing: " << (options.drawing.empty() ? "(new drawing)" : options.drawing) << "\n";
        qvad::app::printDrawingInfo(*session.drawing(), std::cout);
        return 0;
    }

    qvad::shell::ModuleLoader modules(std::cerr);
    loadModules(modules, options.modules);
    if (options.listCommands) {
        qvad::app::printCommands(std::cout);
        return 0;
    }

    int status = runInput(options);
    if (status == 0 && !session.quitRequested() && !options.output.empty()) {
        if (!session.save(options.output))
            status = kExitSaveFailed;
        else
            std::cout << "Saved " << options.output << " (" << session.drawing()->version() << ")\n";
    }
    modules.unloadAll();
    session.close();
    return status;
}
