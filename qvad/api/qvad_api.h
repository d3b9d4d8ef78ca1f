#ifndef QVAD_API_H
#define QVAD_API_H
/* The host's exported function interface: what a module calls to reach the drawing, the command line
 * and the user. Plain C so that modules built with any compiler can call it.
 *
 * Conventions kept by every function here:
 * - Functions return a status (QV_NORM on success) and hand results back through out-parameters;
 *   the few that compute a plain number or a character return it directly.
 * - Lists handed out by the host belong to the caller, who releases them with qvutRelRb. The host
 *   never keeps a list passed to it.
 * - Strings in result buffers live on the host heap (qvad_malloc); qvutRelRb frees them.
 * - Text is UTF-8.
 * - Entity and selection-set names are two 64-bit words; a name of a closed drawing or of nothing
 *   is refused with QV_ERROR.
 * - Functions that write text into a caller's buffer take its size and never write past it. */

#include <stddef.h>

#if defined(_WIN32)
#define QV_API __declspec(dllexport)
#else
#define QV_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Status codes. */
#define QV_NORM 5100
#define QV_ERROR (-5001)
#define QV_CANCEL (-5002)
#define QV_REJ (-5003)
#define QV_FAIL (-5004)
#define QV_KWORD (-5005)

/* Type codes of result buffers and of variable-argument calls. */
#define QV_RTNONE 5000
#define QV_RTREAL 5001
#define QV_RTPOINT 5002
#define QV_RTSHORT 5003
#define QV_RTANG 5004
#define QV_RTSTR 5005
#define QV_RTENAME 5006
#define QV_RTPICKS 5007
#define QV_RTORINT 5008
#define QV_RT3DPOINT 5009
#define QV_RTLONG 5010
#define QV_RTVOID 5014
#define QV_RTLB 5016
#define QV_RTLE 5017
#define QV_RTNIL 5019
#define QV_RTT 5021
/* DXF group 0 (an entity's type) for qvutBuildList, where a plain 0 ends the argument list. */
#define QV_RTDXF0 5020

/* Extended data an object may hold, in the bytes qvdbXdSize counts. */
#define QV_XDATA_LIMIT 16383

typedef double qv_real;
typedef qv_real qv_point[3];
typedef long long qv_name[2];

struct qv_resbuf {
    struct qv_resbuf* rbnext;
    short restype;
    union {
        qv_real rreal;
        qv_real rpoint[3];
        short rint;
        char* rstring;
        long long rlname[2];
        int rlong;
        struct {
            short clen;
            char* buf;
        } rbinary;
    } resval;
};

/* ---- Host heap ---- */
QV_API void* qvad_malloc(size_t size);
QV_API void* qvad_realloc(void* memory, size_t size);
QV_API void qvad_free(void* memory);

/* ---- Result buffers ----
 * qvutBuildList takes (code, value) pairs ended by 0. Values by code:
 *   QV_RTREAL, QV_RTANG, QV_RTORINT and real DXF groups: double
 *   QV_RTPOINT, QV_RT3DPOINT and point DXF groups: const qv_real* (3 numbers)
 *   QV_RTSHORT, QV_RTLONG and integer DXF groups: int
 *   QV_RTSTR, QV_RTDXF0 and text DXF groups: const char* (copied; QV_RTDXF0 becomes group 0)
 *   QV_RTENAME, QV_RTPICKS and DXF groups -1..-5 and object references: const long long* (a qv_name)
 *   DXF group 1004 (binary chunk): int length, then const char* bytes
 *   QV_RTLB, QV_RTLE, QV_RTNIL, QV_RTT, QV_RTVOID, QV_RTNONE and DXF group -3: no value
 * Returns NULL (and builds nothing) for an unknown code, unbalanced QV_RTLB/QV_RTLE or no memory. */
QV_API struct qv_resbuf* qvutBuildList(int code, ...);
/* One zeroed buffer of this type or group code; NULL without memory. */
QV_API struct qv_resbuf* qvutNewRb(int code);
/* Frees the whole chain and every string it owns. */
QV_API int qvutRelRb(struct qv_resbuf* list);

/* ---- Host commands and the command line ---- */
/* Runs a host command as if typed; arguments as for qvutBuildList, ended by 0. */
QV_API int qvedCommand(int code, ...);
QV_API int qvedCmd(const struct qv_resbuf* arguments);
/* Queues keystrokes on the command line ("^C" cancels, "^P" toggles menu echo). */
QV_API int sds_sendmessage(const char* keystrokes);
QV_API int qvedPrompt(const char* text);
QV_API int qvutPrintf(const char* format, ...);
QV_API int qvedAlert(const char* text);
QV_API int qvedRetVoid(void);
QV_API int qvedRetInt(int value);
QV_API int qvedRetNil(void);
QV_API int qvedRetList(const struct qv_resbuf* list);
/* Nonzero once after the user pressed the break key. */
QV_API int qvedUsrBrk(void);

/* ---- System variables ----
 * Names are case-insensitive. qvedGetVar overwrites the buffer's type; a string value is allocated
 * on the host heap and belongs to the caller. */
QV_API int qvedGetVar(const char* name, struct qv_resbuf* result);
QV_API int qvedSetVar(const char* name, const struct qv_resbuf* value);

/* ---- Selection sets ---- */
/* mode NULL asks the user; "I" takes the pick-first set, "X" the whole drawing with the filter,
 * "W"/"C" windows from point1 to point2, "F"/"WP"/"CP" take a point list (qv_resbuf*) as point1,
 * "P" the previous set, "L" the last entity of the current space; ":S" asks for one selection step,
 * ":$" asks with point1 = const char*[2] {select prompt, remove prompt}. A "_" prefix is ignored.
 * QV_ERROR when nothing was selected or the filter list is malformed; QV_CANCEL when cancelled. */
QV_API int qvedSSGet(const char* mode, const void* point1, const void* point2, const struct qv_resbuf* filter,
                     qv_name selection);
QV_API int qvedSSLength(const qv_name selection, long* length);
QV_API int qvedSSName(const qv_name selection, long index, qv_name entity);
/* A null selection makes a new set in result; otherwise the entity joins selection (result = it). */
QV_API int qvedSSAdd(const qv_name entity, const qv_name selection, qv_name result);
QV_API int qvedSSDel(const qv_name entity, const qv_name selection);
/* QV_NORM when the entity is in the set, QV_ERROR when not. */
QV_API int qvedSSMemb(const qv_name entity, const qv_name selection);
QV_API int qvedSSFree(const qv_name selection);
QV_API int qvedSSSetFirst(const qv_name gripSet, const qv_name pickSet);
/* A missed pick says "Nothing selected." and asks again; an empty answer returns QV_RTNONE. */
QV_API int qvedEntSel(const char* prompt, qv_name entity, qv_point pickPoint);
/* Nested pick: also the block-to-world matrix and the chain of containing references. */
QV_API int qvedNEntSelP(const char* prompt, qv_name entity, qv_point pickPoint, int pickGiven,
                        qv_real transform[4][4], struct qv_resbuf** containers);

/* ---- Entity data lists ---- */
QV_API int qvdbEntGet(const qv_name entity, struct qv_resbuf** list);
/* applications: a list of QV_RTSTR application names or patterns ("*" for all) whose extended data
 * is wanted; NULL for none. */
QV_API int qvdbEntGetX(const qv_name entity, const struct qv_resbuf* applications, struct qv_resbuf** list);
QV_API int qvdbEntMod(const struct qv_resbuf* list);
/* Complex entities: the header (INSERT with 66 = 1, POLYLINE) is held until a SEQEND call closes it;
 * the pieces between go into it. */
QV_API int qvdbEntMake(const struct qv_resbuf* list);
/* As qvdbEntMake, and names what was made (the header's name after a SEQEND). */
QV_API int qvdbEntMakeX(const struct qv_resbuf* list, qv_name entity);
/* Erases the entity, or brings back an erased one. */
QV_API int qvdbEntDel(const qv_name entity);
QV_API int qvdbEntUpd(const qv_name entity);
QV_API int qvdbEntLast(qv_name entity);
/* The entity after this one (into attributes and vertices up to SEQEND); a null name gives the first. */
QV_API int qvdbEntNext(const qv_name entity, qv_name next);
QV_API int qvdbHandEnt(const char* handle, qv_name entity);

/* ---- Tables and dictionaries ---- */
/* setNext nonzero makes the found record the one the next qvdbTblNext returns after. */
QV_API int qvdbTblSearch(const char* table, const char* name, int setNext, struct qv_resbuf** record);
/* rewind nonzero starts at the first record. QV_ERROR after the last. */
QV_API int qvdbTblNext(const char* table, int rewind, struct qv_resbuf** record);
QV_API int qvdbTblObjName(const char* table, const char* name, qv_name record);
QV_API int qvdbNamedObjDict(qv_name dictionary);
QV_API int qvdbDictSearch(const qv_name dictionary, const char* key, int setNext, struct qv_resbuf** entry);
/* Registers an application for extended data; QV_ERROR when it already is. */
QV_API int qvdbRegApp(const char* application);
/* The bytes the extended data of a list (from -3 on, or the whole list) takes. */
QV_API int qvdbXdSize(const struct qv_resbuf* list, long* size);
/* What extended data the entity may still take, in bytes. */
QV_API int qvdbXdRoom(const qv_name entity, long* room);

/* ---- Interactive input ----
 * qvedInitGet's bits and keywords hold for the next input call only. A keyword answer returns
 * QV_KWORD and qvedGetInput gives the word. base may be NULL. An empty answer returns QV_RTNONE
 * (asked again with QV_INP_NONULL); a cancelled prompt, or one that met the end of all input,
 * QV_CANCEL. A bad answer gets a one-line message and the prompt again.
 * qvedGetAngle returns radians counterclockwise from ANGBASE; typed angles count as the drawing's
 * ANGDIR and AUNITS say. qvedGetString ignores qvedInitGet and returns QV_NORM with "" for Enter;
 * without allowSpaces the answer ends at its first space. qvedGetKword returns QV_NORM with the
 * keyword in result. */
#define QV_INP_NONULL 1
#define QV_INP_NOZERO 2
#define QV_INP_NONEG 4
#define QV_INP_NOLIM 8
/* Points are always 3D here; the bit is accepted for modules that set it. */
#define QV_INP_3D 16
#define QV_INP_DASH 32
#define QV_INP_2D 64
#define QV_INP_ARBITRARY 128
QV_API int qvedInitGet(int bits, const char* keywords);
QV_API int qvedGetPoint(const qv_point base, const char* prompt, qv_point result);
QV_API int qvedGetCorner(const qv_point base, const char* prompt, qv_point result);
QV_API int qvedGetDist(const qv_point base, const char* prompt, qv_real* result);
QV_API int qvedGetAngle(const qv_point base, const char* prompt, qv_real* result);
QV_API int qvedGetReal(const char* prompt, qv_real* result);
QV_API int qvedGetInt(const char* prompt, int* result);
QV_API int qvedGetString(int allowSpaces, const char* prompt, char* result, size_t resultSize);
QV_API int qvedGetKword(const char* prompt, char* result, size_t resultSize);
QV_API int qvedGetInput(char* result, size_t resultSize);

/* ---- Display ---- */
QV_API int qvedRedraw(const qv_name entity, int mode);
QV_API int qvedGrDraw(const qv_point from, const qv_point to, int colour, int highlight);
/* type receives the kind of input: 3 a point (result QV_RT3DPOINT), 2 a key (result QV_RTSHORT with
 * the character code, 13 for Enter). Without a screen each call reads one answer; see display_state.h. */
QV_API int qvedGrRead(int track, int* type, struct qv_resbuf* result);
/* Extents of a text given as a data list (or just its 1 group), relative to its insertion point. */
QV_API int qvedTextBox(const struct qv_resbuf* text, qv_point lowerLeft, qv_point upperRight);

/* ---- Coordinates and geometry ---- */
/* from/to: QV_RTSHORT 0 world, 1 user, 2 display...; QV_RTENAME an entity's system; QV_RT3DPOINT a normal. */
QV_API int qvedTrans(const qv_point point, const struct qv_resbuf* from, const struct qv_resbuf* to,
                     int displacement, qv_point result);
QV_API int qvdbWcs2Ecs(const qv_point point, const qv_point normal, int displacement, qv_point result);
QV_API int qvdbEcs2Wcs(const qv_point point, const qv_point normal, int displacement, qv_point result);
QV_API int qvdbUcs2Wcs(const qv_point point, int displacement, qv_point result);
QV_API qv_real qvutDistance(const qv_point from, const qv_point to);
QV_API qv_real qvutAngle(const qv_point from, const qv_point to);
QV_API int qvutPolar(const qv_point base, qv_real angle, qv_real distance, qv_point result);
/* onSegments nonzero: the crossing must lie on both segments. QV_ERROR when there is none. */
QV_API int qvdbInters(const qv_point from1, const qv_point to1, const qv_point from2, const qv_point to2,
                      int onSegments, qv_point result);
QV_API int qvedOsnap(const qv_point point, const char* modes, qv_point result);

/* ---- Number and unit conversions ----
 * unit -1 takes the drawing's LUNITS / AUNITS, precision -1 its LUPREC / AUPREC. */
QV_API int qvdbRToS(qv_real value, int unit, int precision, char* result, size_t resultSize);
QV_API int qvdbAngToS(qv_real angle, int unit, int precision, char* result, size_t resultSize);
QV_API int qvdbDisToF(const char* text, int unit, qv_real* result);
QV_API int qvdbAngToF(const char* text, int unit, qv_real* result);
QV_API int qvutCvUnit(qv_real value, const char* fromUnit, const char* toUnit, qv_real* result);

/* ---- Strings ---- */
/* QV_NORM when text matches the pattern (comma-separated alternatives, wildcards), QV_ERROR otherwise. */
QV_API int qvutWcMatch(const char* text, const char* pattern);
QV_API int qvutToUpper(int c);
QV_API int qvutToLower(int c);
QV_API int qvutIsUpper(int c);
/* Host-heap copies: New allocates, Upd replaces *target (freeing the old one), Del frees and clears. */
QV_API int qvutNewString(const char* text, char** result);
QV_API int qvutUpdString(const char* text, char** target);
QV_API int qvutDelString(char** target);

/* ---- Files ---- */
QV_API int qvedFindFile(const char* name, char* result, size_t resultSize);
/* A file-name prompt "<title> <default>: "; an empty answer takes defaultName. extension ("dxf",
 * "*.txt", or a list "dim,*" whose first entry counts) is added to an answer without one. Flags:
 * QV_GETFILED_SAVE, the file may be new (its folder must exist), and an existing one is replaced only
 * after a Yes; without it the file must exist. A name that does not do is refused with a message and
 * asked again. Other bits are ignored. QV_CANCEL when the prompt is cancelled or input has ended.
 * The chosen name comes back as a QV_RTSTR in result (its string belongs to the caller). */
#define QV_GETFILED_SAVE 1
QV_API int qvedGetFiled(const char* title, const char* defaultName, const char* extension, int flags,
                        struct qv_resbuf* result);

#ifdef __cplusplus
}
#endif

#endif
