// GlobalAlloc and friends. A handle is the block's own address, as GMEM_FIXED handles are on Windows,
// so callers that use the handle as a pointer still work; moveable blocks never move here.

#include "qvad/win32/global_memory.h"

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>

namespace {

struct BlockInfo {
    std::size_t size = 0;
    unsigned locks = 0;
};

std::mutex& blocksMutex() {
    static std::mutex m;
    return m;
}

// Every live block, so that a stale or foreign handle is refused instead of being read through.
std::unordered_map<void*, BlockInfo>& blocks() {
    static std::unordered_map<void*, BlockInfo> live;
    return live;
}

} // namespace

extern "C" {

QV_WIN32_API HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    // A zero-byte block still needs an address of its own.
    void* memory =
        (flags & GMEM_ZEROINIT) ? std::calloc(bytes ? bytes : 1, 1) : std::malloc(bytes ? bytes : 1);
    if (!memory) return nullptr;
    std::lock_guard lock(blocksMutex());
    blocks()[memory] = {bytes, 0};
    return memory;
}

QV_WIN32_API LPVOID GlobalLock(HGLOBAL memory) {
    std::lock_guard lock(blocksMutex());
    auto it = blocks().find(memory);
    if (it == blocks().end()) return nullptr;
    ++it->second.locks;
    return memory;
}

QV_WIN32_API BOOL GlobalUnlock(HGLOBAL memory) {
    std::lock_guard lock(blocksMutex());
    auto it = blocks().find(memory);
    if (it == blocks().end() || it->second.locks == 0) return FALSE;
    return --it->second.locks > 0 ? TRUE : FALSE;
}

QV_WIN32_API HGLOBAL GlobalFree(HGLOBAL memory) {
    std::lock_guard lock(blocksMutex());
    auto it = blocks().find(memory);
    if (it == blocks().end()) return memory;
    blocks().erase(it);
    std::free(memory);
    return nullptr;
}

QV_WIN32_API SIZE_T GlobalSize(HGLOBAL memory) {
    std::lock_guard lock(blocksMutex());
    auto it = blocks().find(memory);
    return it == blocks().end() ? 0 : it->second.size;
}

} // extern "C"

namespace qvad::win32 {

HGLOBAL globalBlockWith(std::string_view bytes, std::size_t terminatorBytes) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes.size() + terminatorBytes);
    if (block && !bytes.empty()) std::memcpy(block, bytes.data(), bytes.size());
    return block;
}

std::string_view globalBlockBytes(HGLOBAL block) {
    SIZE_T size = GlobalSize(block);
    return size ? std::string_view(static_cast<const char*>(block), size) : std::string_view();
}

bool isGlobalBlock(HGLOBAL block) {
    std::lock_guard lock(blocksMutex());
    return blocks().count(block) != 0;
}

} // namespace qvad::win32
