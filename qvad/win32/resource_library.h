#ifndef QVAD_WIN32_RESOURCE_LIBRARY_H
#define QVAD_WIN32_RESOURCE_LIBRARY_H
/* What a resource library (the ".so" standing in for a module's resource ".dll") exports so that
 * LoadStringA can read its string table. */

#ifdef __cplusplus
extern "C" {
#endif

struct QvResourceString {
    unsigned id;
    const char* text; /* UTF-8, zero-terminated */
};

/* Exported by the resource library under this name: its whole string table, in any order, and its
 * length in *count. */
typedef const struct QvResourceString* (*QvResourceStringsFunction)(unsigned* count);
#define QV_RESOURCE_STRINGS_SYMBOL "qvResourceStrings"

#ifdef __cplusplus
}
#endif

#endif
