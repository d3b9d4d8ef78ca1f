// Any text must parse to a template or be refused with a message; a template that parses keeps the
// promises its users rely on.

#include "qvad/shell/dialog_template.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string_view>

namespace {

using qvad::shell::ControlKind;

void checkPromises(const qvad::shell::DialogTemplate& dialog) {
    std::set<int> ids;
    for (const qvad::shell::ControlTemplate& control : dialog.controls) {
        if (control.id != -1 && !ids.insert(control.id).second) std::abort();
        const bool listed = control.kind == ControlKind::List || control.kind == ControlKind::Combo;
        if (listed && control.selected >= static_cast<int>(control.items.size())) std::abort();
        if (listed && control.selected < -1) std::abort();
        if (control.kind != ControlKind::Static && control.id == -1) std::abort();
        if (control.kind == ControlKind::Radio && (control.group.empty() || control.keyword.empty()))
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const qvad::shell::DialogTemplateParse parse =
        qvad::shell::parseDialogTemplate(std::string_view(reinterpret_cast<const char*>(data), size));
    if (parse.ok())
        checkPromises(parse.dialog);
    else if (!parse.dialog.controls.empty()) // a refused template must not be half used
        std::abort();
    return 0;
}
