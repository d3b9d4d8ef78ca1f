#ifndef QVAD_WIN32_WINDOWS_CALLS_H
#define QVAD_WIN32_WINDOWS_CALLS_H
/* The Windows calls modules make, provided on Linux with the meaning they have on Windows: module
 * loading, string resources, message boxes, private-profile settings files, the clipboard, the beep
 * and registry look-ups. Text is UTF-8, the host code page. */

#include <stddef.h>

#if defined(_WIN32)
#define QV_WIN32_API __declspec(dllexport)
#else
#define QV_WIN32_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef void* HMODULE;
typedef void* HINSTANCE;
typedef void* HWND;
typedef void* HGLOBAL;
typedef void* HANDLE;
typedef void* HKEY;
typedef HKEY* PHKEY;
typedef void* FARPROC;
typedef unsigned UINT;
typedef unsigned DWORD;
typedef DWORD* LPDWORD;
typedef long LONG;
typedef int BOOL;
typedef int INT;
typedef char* LPSTR;
typedef const char* LPCSTR;
typedef unsigned char BYTE;
typedef BYTE* LPBYTE;
typedef void* LPVOID;
typedef size_t SIZE_T;
typedef DWORD REGSAM;

#define TRUE 1
#define FALSE 0

#define IDOK 1
#define MB_OK 0x0u
#define MB_ICONERROR 0x10u

#define CF_TEXT 1u
#define CF_UNICODETEXT 13u

#define GMEM_FIXED 0x0000u
#define GMEM_MOVEABLE 0x0002u
#define GMEM_ZEROINIT 0x0040u
#define GMEM_DDESHARE 0x2000u
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)

#define ERROR_SUCCESS 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_INVALID_HANDLE 6L
#define KEY_READ 0x20019u
#define HKEY_CLASSES_ROOT ((HKEY)(unsigned long)0x80000000u)
#define HKEY_CURRENT_USER ((HKEY)(unsigned long)0x80000001u)
#define HKEY_LOCAL_MACHINE ((HKEY)(unsigned long)0x80000002u)

/* ---- Modules ----
 * A name ending in ".dll" stands for the ".so" of the same base name. A name without a folder is looked
 * for beside the calling module, then beside libqvad, then beside the executable, then as the system
 * loader would. */
QV_WIN32_API HMODULE LoadLibraryA(LPCSTR fileName);
QV_WIN32_API BOOL FreeLibrary(HMODULE module);
/* NULL: the executable. Otherwise a module already loaded, by the same names LoadLibraryA takes. */
QV_WIN32_API HMODULE GetModuleHandleA(LPCSTR moduleName);
QV_WIN32_API FARPROC GetProcAddress(HMODULE module, LPCSTR procName);
/* NULL module: the executable. Returns the length copied (without the terminator); when the buffer is
 * too small the path is cut to size - 1 and size is returned. */
QV_WIN32_API DWORD GetModuleFileNameA(HMODULE module, LPSTR fileName, DWORD size);

/* ---- String resources ----
 * Copies string id of the resource library into buffer, cut to bufferMax - 1 characters and ended by
 * a zero; returns the number of characters copied, 0 when the library has no such string. */
QV_WIN32_API int LoadStringA(HINSTANCE instance, UINT id, LPSTR buffer, int bufferMax);

/* ---- Messages ----
 * Printed through the host's print hook as "caption: text"; never waits, answers IDOK. */
QV_WIN32_API int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
/* Rings the terminal bell when one is attached. */
QV_WIN32_API BOOL Beep(DWORD frequency, DWORD duration);

/* ---- Private-profile settings files ----
 * Sections and keys are case-insensitive. A relative file name is taken from the current folder. */
QV_WIN32_API DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR returned,
                                            DWORD size, LPCSTR fileName);
QV_WIN32_API UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT defaultValue, LPCSTR fileName);
/* NULL key removes the section; NULL value removes the key. */
QV_WIN32_API BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR fileName);

/* ---- Clipboard ----
 * One clipboard shared by every host process of the user, kept in the user's state folder. Text set as
 * CF_TEXT is offered as CF_UNICODETEXT too (UTF-16), as Windows converts. */
QV_WIN32_API BOOL OpenClipboard(HWND owner);
QV_WIN32_API BOOL CloseClipboard(void);
QV_WIN32_API BOOL EmptyClipboard(void);
/* The block belongs to the clipboard: valid until the clipboard is closed or emptied. */
QV_WIN32_API HANDLE GetClipboardData(UINT format);
/* The clipboard takes the block over. */
QV_WIN32_API HANDLE SetClipboardData(UINT format, HANDLE memory);
QV_WIN32_API BOOL IsClipboardFormatAvailable(UINT format);

QV_WIN32_API HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes);
QV_WIN32_API LPVOID GlobalLock(HGLOBAL memory);
QV_WIN32_API BOOL GlobalUnlock(HGLOBAL memory);
/* Returns NULL on success, the block itself on failure. */
QV_WIN32_API HGLOBAL GlobalFree(HGLOBAL memory);
QV_WIN32_API SIZE_T GlobalSize(HGLOBAL memory);

/* ---- Registry: nothing is registered on Linux ---- */
QV_WIN32_API LONG RegOpenKeyExA(HKEY key, LPCSTR subKey, DWORD options, REGSAM desired, PHKEY result);
QV_WIN32_API LONG RegQueryValueExA(HKEY key, LPCSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                   LPDWORD dataSize);
QV_WIN32_API LONG RegCloseKey(HKEY key);

#ifdef __cplusplus
}
#endif

#endif
