/* Heap strings that belong to a variable or to a list, and their release.
 *
 * Usable from C11 and C++20. Functions may be called from any thread, on one string or list by one
 * thread at a time. */
#ifndef HALVANE_UTILS_TEXT_OWNED_TEXT_H
#define HALVANE_UTILS_TEXT_OWNED_TEXT_H

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A list of texts. Each node and each text is a heap block of its own, made with malloc or what
 * uses it; a text may be null. A null list is an empty one. */
typedef struct StringList {
    struct StringList* next;
    char* text;
} StringList;

/* A list of named values, made likewise. */
typedef struct NameValueList {
    struct NameValueList* next;
    char* name;
    char* value;
} NameValueList;

/* Release every node with what it holds. The list may be null. */
HALVANE_EXPORT void StringListFree(StringList* list);
HALVANE_EXPORT void NameValueListFree(NameValueList* list);

/* Makes the heap string *text a copy of `replacement`, unless it is equal to it already. Either may
 * be null, which equals no text; `replacement` may be a part of *text.
 *
 * 1: *text is the copy, or null as `replacement` is, and what it was has been freed. 0: they were
 * equal, *text is the same pointer. kStatusNoMemory: *text is unchanged. */
HALVANE_EXPORT int ReplaceDifferentString(char** text, const char* replacement);

#ifdef __cplusplus
}
#endif

#endif
