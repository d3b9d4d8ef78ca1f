#include "qvad/app/command_listing.h"

#include "qvad/shell/OdEdCommandStack.h"

namespace qvad::app {

void printCommands(std::ostream& out) {
    OdSmartPtr<OdEdCommandStack> stack = odedRegCmds();
    for (const OdEdCommand* command : stack->commands())
        out << command->group.str() << " " << command->globalName.str() << " " << command->localName.str()
            << "\n";
}

} // namespace qvad::app
