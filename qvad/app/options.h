#pragma once
// qvad's command-line options.

#include <string>
#include <vector>

namespace qvad::app {

struct Options {
    std::string drawing;               // empty: a new drawing from the built-in template
    std::string script;                // -s: answers from this file, then end
    std::vector<std::string> commands; // -c: each value is one line of input, fed before the script
    std::string output;                // -o: saved here when the input ends (not after QUIT)
    std::vector<std::string> modules;  // --module: these instead of the modules folder
    bool listCommands = false;         // --commands
    bool info = false;                 // --info
};

// Parses argv. Returns -1 when the program goes on, else the exit status (help printed: 0, bad
// options: the message is printed and the status is nonzero).
int parseOptions(int argc, char** argv, Options& options);

} // namespace qvad::app
