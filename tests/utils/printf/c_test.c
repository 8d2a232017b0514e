/* Every front end called from C. Each function returns 0, or the line of the first check that
 * fails. */
#include <stdlib.h>
#include <string.h>

#include "halvane/base/status.h"
#include "halvane/utils/printf.h"

#include "tests/support/check_line.h"

int checkBuffersFromC(void);
int checkHeapFromC(void);
int checkCallbacksFromC(void);
int checkStreamsFromC(void);
int checkFormatFromC(void);

static int formatNested(char* buffer, size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = SNPrintF(buffer, size, "<%V>", format, &arguments);
    va_end(arguments);
    return length;
}

static int formatList(char* buffer, size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VSNPrintF(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

static int formatMemoryList(char* buffer, size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VMemPrintF(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

int checkBuffersFromC(void) {
    static const unsigned char kAddress[6] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    char text[32];
    CHECK(SNPrintF(text, sizeof(text), "%.6a %d", kAddress, -1) == 20);
    CHECK(strcmp(text, "00:11:22:33:44:55 -1") == 0);
    CHECK(formatList(text, sizeof(text), "%s", "list") == 4 && strcmp(text, "list") == 0);
    CHECK(formatNested(text, sizeof(text), "%d-%d", 1, 2) == 5 && strcmp(text, "<1-2>") == 0);

    char* cursor = text;
    char* const end = text + 8;
    CHECK(SNPrintF_Add(&cursor, end, "%d", 123) == kStatusOK && cursor == text + 3);
    CHECK(SNPrintF_Add(&cursor, end, "%s", "456789") == kStatusTruncated && cursor == end);
    CHECK(strcmp(text, "1234567") == 0);
    CHECK(SNPrintF_Add(&cursor, end, "x") == kStatusNoRoom);

    CHECK(MemPrintF(text, 3, "%s", "abcdef") == 6 && memcmp(text, "abc4", 4) == 0);
    CHECK(formatMemoryList(text, 2, "%s", "xy") == 2 && memcmp(text, "xyc4", 4) == 0);
    return 0;
}

static int formatHeapList(char** text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VASPrintF(text, format, arguments);
    va_end(arguments);
    return length;
}

int checkHeapFromC(void) {
    char* text = NULL;
    CHECK(ASPrintF(&text, "%u", 42u) == 2 && strcmp(text, "42") == 0);
    CHECK(AppendPrintF(&text, "-%s", "x") == 4 && strcmp(text, "42-x") == 0);
    free(text);
    text = NULL;
    CHECK(formatHeapList(&text, "%c", 'c') == 1 && strcmp(text, "c") == 0);
    free(text);
    return 0;
}

struct Collected {
    char text[64];
    size_t length;
    int ends;
};

static int32_t collect(const char* text, size_t length, void* context) {
    struct Collected* const collected = context;
    if (length == 0) ++collected->ends;
    memcpy(collected->text + collected->length, text, length);
    collected->length += length;
    return (int32_t)length;
}

static int formatCallbackList(struct Collected* collected, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VCPrintF(collect, collected, format, arguments);
    va_end(arguments);
    return length;
}

static int32_t countOnly(const char* text, size_t length, PrintFContext* context) {
    (void)text;
    context->used += length;
    return (int32_t)length;
}

static int formatCoreList(PrintFContext* context, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = PrintFCoreVAList(context, format, arguments);
    va_end(arguments);
    return length;
}

int checkCallbacksFromC(void) {
    struct Collected collected = {.length = 0};
    CHECK(CPrintF(collect, &collected, "a%db", 1) == 3 && collected.ends == 1);
    CHECK(formatCallbackList(&collected, "%s", "c") == 1 && collected.ends == 2);
    CHECK(collected.length == 4 && memcmp(collected.text, "a1bc", 4) == 0);

    PrintFContext context = {.callback = countOnly};
    CHECK(PrintFCore(&context, "%d%%", 100) == 4 && context.used == 4);
    CHECK(formatCoreList(&context, "%s", "xyz") == 3 && context.used == 7);
    return 0;
}

static int formatStreamList(FILE* stream, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VFPrintF(stream, format, arguments);
    va_end(arguments);
    return length;
}

int checkStreamsFromC(void) {
    FILE* const stream = tmpfile();
    CHECK(stream != NULL);
    char text[16] = "";
    CHECK(FPrintF(stream, "%d,", 7) == 2);
    CHECK(formatStreamList(stream, "%s", "eight") == 5);
    rewind(stream);
    CHECK(fread(text, 1, sizeof(text), stream) == 7);
    fclose(stream);
    CHECK(memcmp(text, "7,eight", 7) == 0);
    CHECK(FPrintF(NULL, "%d", 12345) == 5);
    return 0;
}

int checkFormatFromC(void) {
    static const PrintFFormat kZero;
    CHECK(memcmp(&kPrintFFormatDefault, &kZero, sizeof(kZero)) == 0);
    return 0;
}
