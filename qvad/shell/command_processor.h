#pragma once
// Runs commands by name: what the Command: prompt, qvedCommand and queued keystrokes all go through.

#include <string_view>

namespace qvad::shell {

enum class CommandOutcome {
    Done,       // the command ran to its end (it may have ended quietly on a cancelled prompt)
    Cancelled,  // cancelled by the user at a prompt; what it changed was taken back
    InputEnded, // the script or standard input ran out inside it; what it changed was taken back
    Unknown,    // no such command (the unknown-command message was printed)
    Failed,     // the handler threw or the command refused to run; message printed, changes taken back
};

// Runs one command by the name as typed ("_NAME" global name, ".NAME" the built-in even when a module
// redefined it, "'NAME" transparently). nested: called from inside a running command (qvedCommand), so
// the undo step belongs to the outer command.
CommandOutcome runCommand(std::string_view typedName, bool nested = false);

// The Command: loop. Reads command names (queued keystrokes first, then the console) and runs them
// until the input ends or QUIT. Returns the exit status: 0, or nonzero when the input ended inside a
// command or a command failed in a script.
int commandLoop();

} // namespace qvad::shell
