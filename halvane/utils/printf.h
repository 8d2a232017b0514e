/* Formatted output: printf with conversions for addresses, hex dumps, property-list values,
 * 802.11 elements and more. docs/printf.md is the reference of the conversions.
 * Usable from C11 and C++20.
 *
 * Conventions of the C layer:
 *  1. Success is 0 or a count; failure is a negative status of halvane/base/status.h.
 *  2. A pointer may be null only where its comment says so.
 *  3. A heap string handed out is freed by the caller with free().
 *  4. A result parameter is written on success only, unless its comment says otherwise.
 *  5. Lengths and counts are bytes, not characters; text is UTF-8.
 *  6. Nothing prints, exits or throws on its own account.
 *
 * Every front end returns the length of the full output, without terminator and whatever was
 * stored of it (INT32_MAX where it is longer), or a negative status: -1 for a malformed size
 * modifier ("%hld"), what an output callback answered, or kStatusNoMemory. Anything else that is
 * wrong with a format or an argument shows as text inside the output.
 *
 * A format is trusted as code is; arguments need not be. Compilers do not know the conversions
 * beyond C's own, so no function here can carry the format attribute.
 *
 * Threads: reentrant. A call keeps all its state on the caller's stack, and callbacks run on the
 * caller's thread. */
#ifndef HALVANE_UTILS_PRINTF_H
#define HALVANE_UTILS_PRINTF_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bits of PrintFFormat.flags. */
enum {
    kPrintFFlagLeftJustify = 1 << 0, /* '-' */
    kPrintFFlagForceSign = 1 << 1,   /* '+' */
    kPrintFFlagZeroFill = 1 << 2,    /* '0' */
    kPrintFFlagPrecision = 1 << 3    /* a precision was given */
};

/* What stands between '%' and the conversion character. */
typedef struct PrintFFormat {
    uint8_t flags;       /* kPrintFFlag... */
    uint8_t hCount;      /* 'h' modifiers, 0 to 2 */
    uint8_t lCount;      /* 'l' modifiers, 0 to 2; 'j', 'z' and 't' count as one */
    uint8_t altForm;     /* '#' characters; each number selects another form */
    char sign;           /* before the digits of an integer: ' ', '-' or '+'; 0 for none */
    char quote;          /* written before and after the text; 0 for none */
    uint8_t group;       /* ' characters: 1 single quotes or thousands, 2 double quotes */
    uint32_t fieldWidth; /* least width in bytes; an indent in levels for multi-line output */
    uint32_t precision;  /* meaningful with kPrintFFlagPrecision */
} PrintFFormat;

/* All zero: no flag, no width, no precision. */
HALVANE_EXPORT extern const PrintFFormat kPrintFFormatDefault;

typedef struct PrintFContext PrintFContext;

/* Takes one piece of output, never an empty one. Answers the count of bytes it accepted, or a
 * negative status, which ends the call and becomes its result. No callback may throw. */
typedef int32_t (*PrintFOutputCallback)(const char* text, size_t length, PrintFContext* context);

/* The same for CPrintF, with the caller's own context; called once more with an empty text after
 * the last piece. */
typedef int32_t (*PrintFUserCallback)(const char* text, size_t length, void* userContext);

/* Where the output of one call goes. A callback handed to PrintFCore may use the fields after
 * `callback` as it likes. */
struct PrintFContext {
    PrintFOutputCallback callback;
    union {
        char* buffer; /* fixed or heap buffer */
        PrintFUserCallback userCallback;
        FILE* stream;
    };
    size_t used; /* bytes stored in `buffer` */
    union {
        size_t capacity; /* bytes that may be stored in `buffer` */
        void* userContext;
    };
};

/* Stores at most size - 1 bytes, never a part of a UTF-8 character, and a terminator if size is
 * above 0 (also when the call fails). The output comes in pieces, one for each run of literal text
 * and for each text of a conversion: one that does not fit is shortened, and a later one that fits
 * is stored, so "%s%s" of a text that was cut and a short one holds both. `buffer` may be null if
 * size is 0. */
HALVANE_EXPORT int SNPrintF(char* buffer, size_t size, const char* format, ...);
HALVANE_EXPORT int VSNPrintF(char* buffer, size_t size, const char* format, va_list arguments);

/* Appends at *cursor, before `end`. 0: it fitted, terminated, and *cursor stands on the
 * terminator. kStatusTruncated: cut as SNPrintF cuts, and *cursor is `end`. kStatusNoRoom:
 * *cursor was `end` already. After another status *cursor is unchanged. */
HALVANE_EXPORT int SNPrintF_Add(char** cursor, char* end, const char* format, ...);

/* Like SNPrintF, but all of `size` is used and no terminator is written. */
HALVANE_EXPORT int MemPrintF(void* buffer, size_t size, const char* format, ...);
HALVANE_EXPORT int VMemPrintF(void* buffer, size_t size, const char* format, va_list arguments);

/* Stores a heap string in *text; untouched on failure. */
HALVANE_EXPORT int ASPrintF(char** text, const char* format, ...);
HALVANE_EXPORT int VASPrintF(char** text, const char* format, va_list arguments);

/* Replaces the heap string *text (null: empty) by itself and the formatted text; untouched on
 * failure. Returns the length of the whole. The arguments may point into *text. The old text is
 * measured at each call, but moves only now and then. */
HALVANE_EXPORT int AppendPrintF(char** text, const char* format, ...);

/* Hands every piece to `callback`, and after the last one an empty text of length 0. That end
 * signal is not sent after a failure. `userContext` may be null. */
HALVANE_EXPORT int CPrintF(PrintFUserCallback callback, void* userContext, const char* format, ...);
HALVANE_EXPORT int VCPrintF(PrintFUserCallback callback, void* userContext, const char* format,
                            va_list arguments);

/* Writes with fwrite; kStatusTruncated if the stream takes less than it is given. A null stream
 * discards the text but still counts it. The stream is held (flockfile) for the whole call, so that
 * what other threads write stands before or behind the message, never within it. */
HALVANE_EXPORT int FPrintF(FILE* stream, const char* format, ...);
HALVANE_EXPORT int VFPrintF(FILE* stream, const char* format, va_list arguments);

/* The core under all of these: pieces go to context->callback. */
HALVANE_EXPORT int PrintFCore(PrintFContext* context, const char* format, ...);
HALVANE_EXPORT int PrintFCoreVAList(PrintFContext* context, const char* format, va_list arguments);

#ifdef __cplusplus
}
#endif

#endif
