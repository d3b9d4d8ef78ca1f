#include "qvad/app/options.h"

#include <CLI/CLI.hpp>

namespace qvad::app {

int parseOptions(int argc, char** argv, Options& options) {
    CLI::App app{"qvad: a command-line CAD host"};
    app.add_option("DRAWING", options.drawing, "drawing to open (DXF)");
    app.add_option("-s,--script", options.script, "answer prompts from FILE, then end (no terminal needed)");
    app.add_option("-c,--command", options.commands,
                   "feed LINE as if typed (repeatable; runs before --script)")
        ->allow_extra_args(false);
    app.add_option("-o,--output", options.output, "save the drawing to FILE when the input ends");
    app.add_option("--module", options.modules,
                   "load this module (repeatable; default: the modules folder beside the executable)")
        ->allow_extra_args(false);
    app.add_flag("--commands", options.listCommands,
                 "list every registered command as \"GROUP GLOBAL LOCAL\", then exit");
    app.add_flag("--info", options.info, "print version, code page and entity counts of DRAWING, then exit");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e);
    }
    return -1;
}

} // namespace qvad::app
