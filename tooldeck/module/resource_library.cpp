#include "tooldeck/module/resource_library.h"

namespace qvtd {

namespace {

HMODULE& handle() {
    static HMODULE library = nullptr;
    return library;
}

} // namespace

HMODULE resourceLibrary() {
    return handle();
}

HMODULE openResourceLibrary() {
    // LoadLibraryA looks beside its caller first, so the library is found next to the module file.
    if (!handle()) handle() = LoadLibraryA(kResourceLibraryName);
    return handle();
}

void useResourceLibrary(HMODULE library) {
    handle() = library;
}

} // namespace qvtd
