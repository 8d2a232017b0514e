/* Formatted output: printf with conversions for addresses, hex dumps, property-list values, 802.11
 * elements and more. docs/printf.md is the reference of the conversions.
 * Usable from C11 and C++20.
 *
 * Conventions of the C layer:
 *  1. Success is 0 or a count; failure is a negative status of halvane/base/status.h.
 *  2. A pointer may be null only where its comment says so.
 *  3. The caller frees each heap string that it receives with free().
 *  4. A result parameter is written on success only, unless its comment says otherwise.
 *  5. Lengths and counts are bytes, not characters; text is UTF-8.
 *  6. No function prints, exits or throws by itself.
 *
 * Every front end returns the length of the full output, without the terminator and however much
 * was stored (INT32_MAX if it is longer), or a negative status: -1 for a malformed size modifier
 * ("%hld"), the status of an output callback, or kStatusNoMemory. Every other fault of a format
 * or an argument shows as text in the output.
 *
 * A format must be trusted like code; arguments need not be. Compilers do not know the
 * additional conversions, so no function has the format attribute.
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

/* The flags, width, precision and length between '%' and the conversion character. */
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

/* What one call of the engine works on, described below. */
typedef struct PrintFContext PrintFContext;

/* Receives one piece of output, never an empty one. Returns the number of bytes it accepted, or
 * a negative status, which ends the call and becomes its result. No callback may throw. */
typedef int32_t (*PrintFOutputCallback)(const char* text, size_t length, PrintFContext* context);

/* The same for CPrintF, with the caller's own context. It is called once more with an empty text
 * after the last piece. */
typedef int32_t (*PrintFUserCallback)(const char* text, size_t length, void* userContext);

/* The destination of one call's output. A callback passed to PrintFCore may use the fields after
 * `callback` as it likes. */
struct PrintFContext {
    PrintFOutputCallback callback; /* receives the pieces */
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
 * above 0 (also if the call fails). The output comes in pieces, one for each run of literal text
 * and one for each text of a conversion. A piece that does not fit is cut, and a later piece
 * that fits is stored: "%s%s" of a cut text and a short one stores both. `buffer` may be null if
 * size is 0. */
HALVANE_EXPORT int SNPrintF(char* buffer, size_t size, const char* format, ...);
HALVANE_EXPORT int VSNPrintF(char* buffer, size_t size, const char* format, va_list arguments);

/* Appends at *cursor, before `end`. 0: the text fits and is terminated, and *cursor points to
 * the terminator. kStatusTruncated: the text is cut as SNPrintF does, and *cursor is `end`.
 * kStatusNoRoom: *cursor was already `end`. After any other status *cursor is unchanged. */
HALVANE_EXPORT int SNPrintF_Add(char** cursor, char* end, const char* format, ...);

/* Like SNPrintF, but uses all of `size` and writes no terminator. */
HALVANE_EXPORT int MemPrintF(void* buffer, size_t size, const char* format, ...);
HALVANE_EXPORT int VMemPrintF(void* buffer, size_t size, const char* format, va_list arguments);

/* Stores a heap string in *text, which is unchanged on failure. */
HALVANE_EXPORT int ASPrintF(char** text, const char* format, ...);
HALVANE_EXPORT int VASPrintF(char** text, const char* format, va_list arguments);

/* Appends the formatted text to the heap string *text (null: empty), which is unchanged on
 * failure. Returns the length of the whole string. The arguments may point into *text. Each call
 * measures the old text but rarely moves it. */
HALVANE_EXPORT int AppendPrintF(char** text, const char* format, ...);

/* Passes every piece to `callback`, and after the last one an empty text of length 0. No such
 * end signal follows a failure. `userContext` may be null. */
HALVANE_EXPORT int CPrintF(PrintFUserCallback callback, void* userContext, const char* format, ...);
HALVANE_EXPORT int VCPrintF(PrintFUserCallback callback, void* userContext, const char* format,
                            va_list arguments);

/* Writes with fwrite; kStatusTruncated if the stream accepts less. A null stream discards the
 * text but counts it. The stream is locked (flockfile) during the whole call, so the output of
 * other threads comes before or after the message, never inside it. */
HALVANE_EXPORT int FPrintF(FILE* stream, const char* format, ...);
HALVANE_EXPORT int VFPrintF(FILE* stream, const char* format, va_list arguments);

/* The core of all these functions: pieces go to context->callback. */
HALVANE_EXPORT int PrintFCore(PrintFContext* context, const char* format, ...);
HALVANE_EXPORT int PrintFCoreVAList(PrintFContext* context, const char* format, va_list arguments);

#ifdef __cplusplus
}
#endif

#endif
