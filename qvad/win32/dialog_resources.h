#pragma once
// Finding a dialog's template in a resource library (see resource_library.h).

#include "qvad/win32/windows_calls.h"

#include <optional>
#include <string>

namespace qvad::win32 {

// The template text of dialog id in module; a null module looks in the current dialog resource
// module, and when that is null too, in every module loaded with global symbols (the program's own).
std::optional<std::string> findDialogTemplate(HMODULE module, unsigned id);

// Where dialogs built without a module of their own take their templates; a module sets its resource
// library here while its dialogs run. Null by default.
void setDialogResourceModule(HMODULE module);
HMODULE dialogResourceModule();

} // namespace qvad::win32
