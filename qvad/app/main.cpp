// qvad: opens a drawing, runs commands or scripts on it, and saves it.

#include "qvad/app/drawing_info.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/drawing_template.h"
#include "qvad/dxf/dxf_error.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <system_error>

namespace {

int loadFailure(const std::string& path, const qvad::dxf::DxfError& e) {
    std::cerr << "qvad: " << path;
    if (e.line() != 0) std::cerr << ":" << e.line();
    std::cerr << ": " << e.what() << "\n";
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"qvad: a command-line CAD host"};
    std::string drawing, output, script, modulePath;
    std::vector<std::string> commands;
    bool info = false, listCommands = false;
    app.add_option("DRAWING", drawing, "drawing to open (DXF)");
    app.add_option("-s,--script", script, "answer prompts from FILE, then end");
    app.add_option("-c,--command", commands, "feed LINE as if typed (repeatable)");
    app.add_option("-o,--output", output, "save the drawing to FILE when the input ends");
    app.add_option("--module", modulePath, "load this module");
    app.add_flag("--commands", listCommands, "list every registered command, then exit");
    app.add_flag("--info", info, "print version, code page and entity counts of DRAWING, then exit");
    CLI11_PARSE(app, argc, argv);

    if (!script.empty() || !commands.empty() || !modulePath.empty() || listCommands) {
        std::cerr << "qvad: the command line, scripts and modules are not available yet\n";
        return 2;
    }
    std::unique_ptr<OdDbDatabase> db;
    try {
        db = drawing.empty() ? qvad::db::newDrawing() : qvad::dxf::readDxfFile(drawing);
    } catch (const qvad::dxf::DxfError& e) {
        return loadFailure(drawing, e);
    } catch (const std::system_error& e) {
        std::cerr << "qvad: " << e.what() << "\n";
        return 2;
    }
    for (const std::string& repair : db->repairs()) std::cout << "Repaired: " << repair << "\n";

    if (info || output.empty()) {
        std::cout << "Drawing: " << (drawing.empty() ? "(new drawing)" : drawing) << "\n";
        qvad::app::printDrawingInfo(*db, std::cout);
        if (info) return 0;
    }
    if (!output.empty()) {
        try {
            qvad::dxf::saveDxfFile(*db, output);
        } catch (const std::system_error& e) {
            std::cerr << "qvad: " << e.what() << "\n";
            return 3;
        }
        std::cout << "Saved " << output << " (" << db->version() << ")\n";
    }
    return 0;
}
