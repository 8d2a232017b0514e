/* The logging header from C. Each function returns 0, or the line of the first check that fails. */
#include <string.h>

#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"

#include "tests/support/check_line.h"

int checkLevelsFromC(void);
int checkCategoryFromC(void);
int checkMessagesFromC(void);
int checkControlFromC(void);
LogCategory* categoryFromC(void);

static HALVANE_LOG_CATEGORY(TestC_Code, kLogLevelWarning, kLogHeaderPrefix | kLogHeaderLevel,
                            "TestC:rate=9/1000");

LogCategory* categoryFromC(void) {
    return &gLogCategory_TestC_Code;
}

struct Kept {
    char text[256];
    size_t length;
};
static struct Kept gKept;

static void keep(const LogMessage* message, const char* text, size_t length, void* arg) {
    struct Kept* const kept = arg;
    (void)message;
    if (length > sizeof(kept->text) - 1 - kept->length) return;
    memcpy(kept->text + kept->length, text, length);
    kept->length += length;
    kept->text[kept->length] = '\0';
}

static HalvaneStatus logToKept(void) {
    union {
        LogCallback function;
        void* pointer;
    } callback = {.function = keep};
    char control[128];
    gKept.length = 0;
    SNPrintF(control, sizeof(control), "TestC:output=callback;func=%p;arg=%p", callback.pointer,
             &gKept);
    return LogControl(control);
}

int checkLevelsFromC(void) {
    char name[kLogLevelStringSize];
    CHECK(strcmp(__LogCategory_LevelToString(kLogLevelError + 2, name), "error+2") == 0);
    CHECK(__LogCategory_StringToLevel("warning+5") == kLogLevelWarning + 5);
    return 0;
}

int checkCategoryFromC(void) {
    LogCategory* const category = &gLogCategory_TestC_Code;
    CHECK(category->level == kLogLevelUninitialized);
    CHECK(strcmp(category->name, "TestC_Code") == 0);
    CHECK(!LogIsEnabled(category, kLogLevelInfo));
    CHECK(LogIsEnabled(category, kLogLevelWarning));
    CHECK(category->level == kLogLevelWarning && category->rateMax == 9);
    CHECK(category->prefixLength == 5 && category->output != NULL);
    return 0;
}

static int logList(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length =
        LogPrintFVAList(&gLogCategory_TestC_Code, "f", kLogLevelError, format, arguments);
    va_end(arguments);
    return length;
}

int checkMessagesFromC(void) {
    LogCategory* const category = &gLogCategory_TestC_Code;
    CHECK(logToKept() == kStatusOK);
    HALVANE_LOG(category, kLogLevelInfo, "never");
    HALVANE_LOG(category, kLogLevelWarning, "%d\n", 1);
    CHECK(strcmp(gKept.text, "[TestC@warning] 1\n") == 0);
    HALVANE_LOG(category, kLogLevelMax | kLogFlagFunction | kLogFlagRaw, "without arguments\n");
    CHECK(strcmp(gKept.text, "[TestC@warning] 1\nwithout arguments\n") == 0);

    gKept.length = 0;
    category->flags = kLogHeaderFunction;
    HALVANE_LOG(category, kLogLevelError, "x");
    CHECK(strcmp(gKept.text, "[,checkMessagesFromC] x") == 0);
    gKept.length = 0;
    HALVANE_LOG_AS(category, "int other(void)", kLogLevelError, "%s", "y");
    CHECK(strcmp(gKept.text, "[,other] y") == 0);
    CHECK(LogPrintF(category, "f", kLogLevelError, "%u", 42u) == 7);
    CHECK(logList("%s", "list") == 9);
    return 0;
}

int checkControlFromC(void) {
    CHECK(LogControl("TestC:level") == kStatusMalformed);
    CHECK(LogControl("TestC:output=bogus") == kStatusUnsupported);
    CHECK(LogControl(NULL) == kStatusOK);
    CHECK(LogControlCF(NULL) == kStatusConversionFailed);
    CHECK(LogUtils_EnsureInitialized() == kStatusOK);
    CHECK(gLogUtilsInitializing == 0);
    LogSetAppID("org.example.c");
    LogSetAppID(NULL);
    CHECK(LogUtils_Show(NULL) == kStatusOK);
    CHECK(strcmp(gLogCategory_LogUtils.name, "LogUtils") == 0);
    CHECK(strcmp(gLogCategory_WiFiScan.name, "WiFiScan") == 0);
    return 0;
}
