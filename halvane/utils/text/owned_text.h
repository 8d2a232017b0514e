/* Heap strings that a variable or a list owns, and how to free them.
 *
 * Usable from C11 and C++20. Any thread may call the functions, but only one thread at a time
 * for one string or list. */
#ifndef HALVANE_UTILS_TEXT_OWNED_TEXT_H
#define HALVANE_UTILS_TEXT_OWNED_TEXT_H

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A list of texts. Each node and each text is a separate heap block, allocated with malloc or a
 * function that uses it. A text may be null. A null list is an empty list. */
typedef struct StringList {
    struct StringList* next; /* null at the end */
    char* text;              /* NUL-terminated */
} StringList;

/* A list of named values, allocated in the same way. */
typedef struct NameValueList {
    struct NameValueList* next; /* null at the end */
    char* name;                 /* NUL-terminated */
    char* value;                /* NUL-terminated */
} NameValueList;

/* Free every node and its texts. The list may be null. */
HALVANE_EXPORT void StringListFree(StringList* list);
HALVANE_EXPORT void NameValueListFree(NameValueList* list);

/* Makes the heap string *text a copy of `replacement`, unless both are equal. Either may be
 * null, and null equals no text. `replacement` may be a part of *text.
 *
 * Returns 1 if *text is now the copy, or null like `replacement`; the former string has been
 * freed. Returns 0 if they were equal; *text is the same pointer. kStatusNoMemory: *text is
 * unchanged. */
HALVANE_EXPORT int ReplaceDifferentString(char** text, const char* replacement);

#ifdef __cplusplus
}
#endif

#endif
