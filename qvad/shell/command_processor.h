#pragma once
// Runs commands by name: what the Command: prompt, qvedCommand and queued keystrokes all go through.

#include <string>
#include <string_view>

namespace qvad::shell {

enum class CommandOutcome {
    Done,       // the command ran to its end
    Cancelled,  // a prompt of it was cancelled by the user; what it did before stays, as on any CAD
                // command line (Esc ends a command, it does not undo it)
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

// True while a command runs: qvedCommand then runs its commands inside it, as one undo step.
bool commandRunning();
// How many commands run one inside another: 1 in a command typed at the prompt, more in one run
// through qvedCommand.
int commandDepth();

// The message printed for a name no command has.
std::string unknownCommandMessage(std::string_view typedName);

} // namespace qvad::shell
