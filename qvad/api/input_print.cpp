// Writing to the command line, alerts, the break key and the values commands hand back.

#include "qvad/api/console.h"
#include "qvad/api/host_session.h"
#include "qvad/api/input_state.h"

#include <cstdarg>
#include <cstdio>
#include <string>

namespace qvad::api {
namespace {

std::string formatted(const char* format, va_list arguments) {
    va_list measuring;
    va_copy(measuring, arguments);
    char small[512];
    int length = std::vsnprintf(small, sizeof small, format, measuring);
    va_end(measuring);
    if (length < 0) return {};
    if (static_cast<std::size_t>(length) < sizeof small)
        return std::string(small, static_cast<std::size_t>(length));
    // Long results (lists of many names, whole files) are printed in full.
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::string itemText(const qv_resbuf& rb) {
    char text[128];
    switch (rb.restype) {
    case QV_RTSTR:
        return rb.resval.rstring ? rb.resval.rstring : "";
    case QV_RTREAL:
    case QV_RTANG:
    case QV_RTORINT:
        std::snprintf(text, sizeof text, "%.16g", rb.resval.rreal);
        return text;
    case QV_RTSHORT:
        return std::to_string(rb.resval.rint);
    case QV_RTLONG:
        return std::to_string(rb.resval.rlong);
    case QV_RTPOINT:
        std::snprintf(text, sizeof text, "%.16g,%.16g", rb.resval.rpoint[0], rb.resval.rpoint[1]);
        return text;
    case QV_RT3DPOINT:
        std::snprintf(text, sizeof text, "%.16g,%.16g,%.16g", rb.resval.rpoint[0], rb.resval.rpoint[1],
                      rb.resval.rpoint[2]);
        return text;
    case QV_RTENAME:
    case QV_RTPICKS:
        std::snprintf(text, sizeof text, "<%llx>", static_cast<unsigned long long>(rb.resval.rlname[1]));
        return text;
    default:
        return {};
    }
}

} // namespace
} // namespace qvad::api

using namespace qvad::api;

extern "C" QV_API int qvedPrompt(const char* text) {
    return guarded([&] {
        if (!text) return refuse(HostError::BadArgument);
        console().write(text);
        return QV_NORM;
    });
}

extern "C" QV_API int qvutPrintf(const char* format, ...) {
    if (!format) return refuse(HostError::BadArgument);
    va_list arguments;
    va_start(arguments, format);
    int status = guarded([&] {
        console().write(formatted(format, arguments));
        return QV_NORM;
    });
    va_end(arguments);
    return status;
}

// A message box has no screen to appear on: the text is printed on a line of its own and nothing waits.
extern "C" QV_API int qvedAlert(const char* text) {
    return guarded([&] {
        if (!text) return refuse(HostError::BadArgument);
        std::string line = "\n";
        line += text;
        line += '\n';
        console().write(line);
        return QV_NORM;
    });
}

extern "C" QV_API int qvedRetVoid(void) {
    return guarded([] {
        ReturnValue value;
        value.kind = ReturnValue::Kind::Void;
        setLastReturnValue(std::move(value));
        return QV_NORM;
    });
}

extern "C" QV_API int qvedRetInt(int integer) {
    return guarded([&] {
        ReturnValue value;
        value.kind = ReturnValue::Kind::Int;
        value.integer = integer;
        setLastReturnValue(std::move(value));
        return QV_NORM;
    });
}

extern "C" QV_API int qvedRetNil(void) {
    return guarded([] {
        ReturnValue value;
        value.kind = ReturnValue::Kind::Nil;
        setLastReturnValue(std::move(value));
        return QV_NORM;
    });
}

extern "C" QV_API int qvedRetList(const struct qv_resbuf* list) {
    return guarded([&] {
        ReturnValue value;
        value.kind = ReturnValue::Kind::List;
        for (const qv_resbuf* rb = list; rb; rb = rb->rbnext)
            value.list.push_back({rb->restype, itemText(*rb)});
        setLastReturnValue(std::move(value));
        return QV_NORM;
    });
}

extern "C" QV_API int qvedUsrBrk(void) {
    return guarded([] { return console().takeBreak() ? 1 : 0; });
}
