// Result-buffer lists and the host heap. Strings and binary chunks in a buffer are owned by it, so
// releasing a chain releases everything it points to.

#include "qvad/api/data_list_buffers.h"
#include "qvad/api/host_session.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

// Reading every object of a large drawing makes and frees buffers by the million, more at a time than
// the allocator's own per-thread cache holds, so freed buffers wait here to be handed out again. Left
// out under the address sanitizer, which must see each buffer's own life to catch a use after free.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeepFreedBuffers = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kKeepFreedBuffers = false;
#else
constexpr bool kKeepFreedBuffers = true;
#endif
#else
constexpr bool kKeepFreedBuffers = true;
#endif

class FreedBuffers {
public:
    FreedBuffers() = default;
    FreedBuffers(const FreedBuffers&) = delete;
    FreedBuffers& operator=(const FreedBuffers&) = delete;
    ~FreedBuffers() {
        while (qv_resbuf* rb = take()) std::free(rb);
        m_count = kLimit; // buffers freed while the thread ends go straight back to the heap
    }

    qv_resbuf* take() {
        qv_resbuf* rb = m_head;
        if (rb) {
            m_head = rb->rbnext;
            --m_count;
        }
        return rb;
    }

    bool keep(qv_resbuf* rb) {
        if (m_count >= kLimit) return false;
        rb->rbnext = m_head;
        m_head = rb;
        ++m_count;
        return true;
    }

private:
    // Enough for the longest lists read one after another; a huge list freed at once goes back to the heap.
    static constexpr std::size_t kLimit = 4096;
    qv_resbuf* m_head = nullptr;
    std::size_t m_count = 0;
};

// Per thread, so that no lock is needed: a buffer freed on another thread than it was made on simply
// joins that thread's list.
thread_local FreedBuffers t_freedBuffers;

} // namespace

extern "C" {

QV_API void* qvad_malloc(size_t size) {
    return std::malloc(size ? size : 1);
}

QV_API void* qvad_realloc(void* memory, size_t size) {
    return std::realloc(memory, size ? size : 1);
}

QV_API void qvad_free(void* memory) {
    std::free(memory);
}

QV_API struct qv_resbuf* qvutNewRb(int code) {
    qv_resbuf* rb = kKeepFreedBuffers ? t_freedBuffers.take() : nullptr;
    if (rb)
        std::memset(rb, 0, sizeof(qv_resbuf));
    else
        rb = static_cast<qv_resbuf*>(std::calloc(1, sizeof(qv_resbuf)));
    if (rb) rb->restype = static_cast<short>(code);
    return rb;
}

QV_API int qvutRelRb(struct qv_resbuf* list) {
    while (list) {
        qv_resbuf* next = list->rbnext;
        switch (qvad::api::bufferValueOf(list->restype)) {
        case qvad::api::BufferValue::String:
            qvad_free(list->resval.rstring);
            break;
        case qvad::api::BufferValue::Binary:
            qvad_free(list->resval.rbinary.buf);
            break;
        default:
            break;
        }
        if (!kKeepFreedBuffers || !t_freedBuffers.keep(list)) std::free(list);
        list = next;
    }
    return QV_NORM;
}

QV_API struct qv_resbuf* qvutBuildList(int code, ...) {
    va_list args;
    va_start(args, code);
    qv_resbuf* result = qvad::api::buildListFromArguments(code, args);
    va_end(args);
    return result;
}

} // extern "C"

// qvedCommand takes its arguments by the same rules, so the parsing lives here once.
qv_resbuf* qvad::api::buildListFromArguments(int code, va_list args) {
    using qvad::api::BufferValue;
    qv_resbuf* result = nullptr;
    try {
        qvad::api::BufferChain chain;
        int depth = 0;
        bool ok = true;
        while (code != 0) {
            // A plain 0 ends the argument list, so the type group needs a code of its own.
            const int group = code == QV_RTDXF0 ? 0 : code;
            const BufferValue kind = qvad::api::bufferValueOf(group);
            if (kind == BufferValue::Unknown || group < -32768 || group > 32767) {
                ok = false;
                break;
            }
            qv_resbuf& rb = chain.append(group);
            switch (kind) {
            case BufferValue::Real:
                rb.resval.rreal = va_arg(args, double);
                break;
            case BufferValue::Point: {
                const qv_real* p = va_arg(args, const qv_real*);
                if (!p)
                    ok = false;
                else
                    std::memcpy(rb.resval.rpoint, p, sizeof rb.resval.rpoint);
                break;
            }
            case BufferValue::Short:
                rb.resval.rint = static_cast<short>(va_arg(args, int));
                break;
            case BufferValue::Long:
                rb.resval.rlong = va_arg(args, int);
                break;
            case BufferValue::Int64:
                rb.resval.rlname[0] = va_arg(args, int);
                break;
            case BufferValue::String: {
                const char* text = va_arg(args, const char*);
                if (!text)
                    ok = false;
                else
                    rb.resval.rstring = qvad::api::hostString(text);
                break;
            }
            case BufferValue::Name: {
                const long long* name = va_arg(args, const long long*);
                if (!name)
                    ok = false;
                else
                    std::memcpy(rb.resval.rlname, name, sizeof rb.resval.rlname);
                break;
            }
            case BufferValue::Binary: {
                int length = va_arg(args, int);
                const char* bytes = va_arg(args, const char*);
                if (length < 0 || length > 32767 || (length > 0 && !bytes)) {
                    ok = false;
                    break;
                }
                rb.resval.rbinary.buf = static_cast<char*>(qvad_malloc(static_cast<size_t>(length)));
                if (!rb.resval.rbinary.buf) throw std::bad_alloc();
                if (length) std::memcpy(rb.resval.rbinary.buf, bytes, static_cast<size_t>(length));
                rb.resval.rbinary.clen = static_cast<short>(length);
                break;
            }
            default:
                if (code == QV_RTLB) ++depth;
                if (code == QV_RTLE && --depth < 0) ok = false;
                break;
            }
            if (!ok) break;
            code = va_arg(args, int);
        }
        if (ok && depth == 0) result = chain.release();
    } catch (...) {
        result = nullptr;
    }
    if (!result) qvad::api::HostSession::current().fail(qvad::api::HostError::BadArgument);
    return result;
}
