// LoadStringA over the string table a resource library exports (see resource_library.h).

#include "qvad/win32/resource_library.h"
#include "qvad/win32/windows_calls.h"

#include <cstring>
#include <dlfcn.h>

namespace {

const char* findString(HINSTANCE instance, UINT id) {
    void* module = instance ? instance : dlopen(nullptr, RTLD_NOW);
    auto table = reinterpret_cast<QvResourceStringsFunction>(dlsym(module, QV_RESOURCE_STRINGS_SYMBOL));
    if (!instance) dlclose(module);
    if (!table) return nullptr;
    unsigned count = 0;
    const QvResourceString* strings = table(&count);
    for (unsigned i = 0; strings && i < count; ++i)
        if (strings[i].id == id) return strings[i].text;
    return nullptr;
}

// Never ends a cut inside a UTF-8 sequence, so the text stays valid.
std::size_t cutLength(const char* text, std::size_t length, std::size_t room) {
    if (length <= room) return length;
    std::size_t cut = room;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
    return cut;
}

} // namespace

extern "C" QV_WIN32_API int LoadStringA(HINSTANCE instance, UINT id, LPSTR buffer, int bufferMax) {
    if (!buffer || bufferMax < 0) return 0;
    const char* text = findString(instance, id);
    std::size_t length = text ? std::strlen(text) : 0;
    if (bufferMax == 0) {
        // Windows hands out a read-only pointer to the resource itself when the buffer size is 0.
        if (length == 0) return 0;
        std::memcpy(buffer, &text, sizeof text);
        return static_cast<int>(length);
    }
    std::size_t copied = cutLength(text ? text : "", length, static_cast<std::size_t>(bufferMax) - 1);
    if (copied) std::memcpy(buffer, text, copied);
    buffer[copied] = '\0';
    return static_cast<int>(copied);
}
