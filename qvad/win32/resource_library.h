#ifndef QVAD_WIN32_RESOURCE_LIBRARY_H
#define QVAD_WIN32_RESOURCE_LIBRARY_H
/* What a resource library (the ".so" standing in for a module's resource ".dll") exports so that
 * LoadStringA can read its string table and dialogs can read their templates. */

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

struct QvResourceDialog {
    unsigned id;
    const char* templateText; /* UTF-8, in the form qvad/shell/dialog_template.h describes */
};

/* Exported under this name by a resource library that holds dialogs: all its templates and their
 * number in *count. Optional: a library of strings only need not export it. */
typedef const struct QvResourceDialog* (*QvResourceDialogsFunction)(unsigned* count);
#define QV_RESOURCE_DIALOGS_SYMBOL "qvResourceDialogs"

#ifdef __cplusplus
}
#endif

#endif
