// Strings on the host heap, for text the host and a module hand each other.

#include "qvad/api/host_session.h"

#include <cstring>

namespace {

char* hostCopy(const char* text) {
    std::size_t size = std::strlen(text) + 1;
    char* copy = static_cast<char*>(qvad_malloc(size));
    if (copy) std::memcpy(copy, text, size);
    return copy;
}

} // namespace

extern "C" {

QV_API int qvutNewString(const char* text, char** result) {
    using namespace qvad::api;
    if (!text || !result) return refuse(HostError::BadArgument);
    char* copy = hostCopy(text);
    if (!copy) return refuse(HostError::OutOfMemory);
    *result = copy;
    return QV_NORM;
}

// The copy is made before the old string goes, so a failure leaves the target as it was (and text
// may be the target's own string).
QV_API int qvutUpdString(const char* text, char** target) {
    using namespace qvad::api;
    if (!text || !target) return refuse(HostError::BadArgument);
    char* copy = hostCopy(text);
    if (!copy) return refuse(HostError::OutOfMemory);
    qvad_free(*target);
    *target = copy;
    return QV_NORM;
}

QV_API int qvutDelString(char** target) {
    using namespace qvad::api;
    if (!target) return refuse(HostError::BadArgument);
    qvad_free(*target);
    *target = nullptr;
    return QV_NORM;
}

} // extern "C"
