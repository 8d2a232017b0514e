/* The scanning and time functions as a C program calls them. */
#include <stdint.h>
#include <string.h>

#include "halvane/utils/scan_time.h"

#include "tests/support/check_line.h"

int firstFailingLineOfScanTimeFromC(void);

static int scanThroughList(const char* text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int assigned = VSNScanF(text, SIZE_MAX, format, arguments);
    va_end(arguments);
    return assigned;
}

static int checkScanning(void) {
    const char* const text = "key=value";
    const char* key = NULL;
    const char* value = NULL;
    size_t keyLength = 0;
    size_t valueLength = 0;
    CHECK(SNScanF(text, SIZE_MAX, "%&[^=]=%&s", &key, &keyLength, &value, &valueLength) == 2);
    CHECK(key == text && keyLength == 3);
    CHECK(value == text + 4 && valueLength == 5);

    int number = 0;
    unsigned long long wide = 0;
    signed char narrow = 0;
    char word[8];
    CHECK(scanThroughList("-7 0xFFFFFFFFFF 300 word", "%d %lli %hhd %7s", &number, &wide, &narrow,
                          word) == 4);
    CHECK(number == -7 && wide == 0xFFFFFFFFFF && narrow == 44 && strcmp(word, "word") == 0);
    return 0;
}

static int checkTime(void) {
    CHECK(UpTicksPerSecond() == 1000000000);
    CHECK(UpTicksToSeconds(1500000000) == 1);
    CHECK(UpTicksToMilliseconds(1500000000) == 1500);
    CHECK(UpTicksToMicroseconds(1500000000) == 1500000);
    CHECK(UpTicksToNanoseconds(1500000000) == 1500000000);
    CHECK(SecondsToUpTicks(2) == 2000000000);
    CHECK(MillisecondsToUpTicks(2) == 2000000);
    CHECK(MicrosecondsToUpTicks(2) == 2000);
    CHECK(NanosecondsToUpTicks(2) == 2);
    CHECK(UpTicksToNTP(1500000000) == 0x0000000180000000);
    CHECK(NTPtoUpTicks(0x0000000180000000) == 1500000000);
    CHECK(SleepForUpTicks(0) == 0);
    const uint64_t now = UpTicks();
    CHECK(UpTicks() >= now);
    SleepUntilUpTicks(now);
    return 0;
}

int firstFailingLineOfScanTimeFromC(void) {
    const int line = checkScanning();
    return line != 0 ? line : checkTime();
}
