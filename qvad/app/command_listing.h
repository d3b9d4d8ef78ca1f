#pragma once

#include <ostream>

namespace qvad::app {

// Every registered command as "GROUP GLOBAL LOCAL", one a line, in the command stack's order.
void printCommands(std::ostream& out);

} // namespace qvad::app
