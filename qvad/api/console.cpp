#include "qvad/api/console.h"

#include <cstdio>

namespace qvad::api {
namespace {

// Until the app sets its own: text goes to standard output and no answer ever comes.
class PrintOnlyConsole final : public Console {
public:
    ReadStatus readLine(std::string_view prompt, std::string& line) override {
        write(prompt);
        line.clear();
        return ReadStatus::Ended;
    }
    void write(std::string_view text) override {
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fflush(stdout);
    }
};

PrintOnlyConsole g_printOnly;
Console* g_console = nullptr;

} // namespace

Console& console() {
    return g_console ? *g_console : g_printOnly;
}

void setConsole(Console* console) {
    g_console = console;
}

} // namespace qvad::api
