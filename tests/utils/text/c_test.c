/* The string utilities as a C program calls them. */
#include <stdint.h>
#include <stdlib.h>

#include "halvane/utils/strings.h"

#include "tests/support/check_line.h"

int firstFailingLineOfStringsFromC(void);

static int checkComparingAndSearching(void) {
    const char* const text = "Console.log";
    CHECK(strnicmpx(text, 7, "console") == 0 && strncmpx(text, 7, "Console") == 0);
    CHECK(strcmp_prefix(text, "Con") == 0 && stricmp_prefix(text, "CON") == 0);
    CHECK(strncmp_prefix(text, 4, "Cons") == 0 && strnicmp_prefix(text, 3, "Cons") == -1);
    CHECK(strncmp_suffix(text, SIZE_MAX, ".log") == 0);
    CHECK(strnicmp_suffix(text, SIZE_MAX, ".LOG") == 0);
    CHECK(memicmp("aB", "Ab", 2) == 0);
    CHECK(stristr(text, "SOLE") == text + 3 && strncasestr(text, 6, "SOLE") == NULL);
    CHECK(strnspn("12a", SIZE_MAX, "12") == 2 && strnspnx("12a", SIZE_MAX, "12") == 2);
    CHECK(BoyerMooreSearch(text, 11, "log", 3) == text + 8);
    CHECK(TextCompareNatural("a2", SIZE_MAX, "a10", SIZE_MAX, true) == -1);
    return 0;
}

static int checkNumbersAndCase(void) {
    static const uint16_t kWide[] = {'a', 'b', 0};
    char text[] = "aBc";
    const char* end = NULL;
    CHECK(strcmp(tolowerstr(text, SIZE_MAX), "abc") == 0);
    CHECK(strcmp(toupperstr(text, 1), "Abc") == 0);
    CHECK(strtoi("0x10 ", SIZE_MAX, &end, 0) == 16 && *end == ' ');
    CHECK(UTF16strlen(kWide, SIZE_MAX) == 2 && TruncateUTF8("a\xC3\xA9", 3, 2) == 1);
    CHECK(IsASCII7PrintableString("abc", SIZE_MAX));
    CHECK(strcmp(NumberToOrdinalSuffixCString(112), "th") == 0);
    char buffer[8];
    CHECK(strcmp(MapValueToString(3, "<%d>", buffer, sizeof(buffer), "one", 1, (const char*)NULL),
                 "<3>") == 0);
    CHECK(strcmp(MIMETypeToExtension("image/jpeg"), "jpg") == 0);
    CHECK(strcmp(GetFileExtensionFromString("a.b"), "b") == 0);
    CHECK(strlen(RandomString(5, 5, buffer)) == 5);
    return 0;
}

static int checkSplitting(void) {
    const char* const text = "a 'b c',d=e\n";
    const char* const end = text + 11;
    char buffer[16];
    size_t copied = 0;
    size_t total = 0;
    const char* next = NULL;
    CHECK(ParseQuotedEscapedString(text + 2, end, ',', buffer, sizeof(buffer), &copied, &total,
                                   &next));
    CHECK(copied == 3 && total == 3 && memcmp(buffer, "b c", 3) == 0 && next == text + 8);
    CHECK(ParseEscapedString(text, end, ' ', buffer, sizeof(buffer), &copied, &total, &next));
    CHECK(copied == 1 && next == text + 2);
    CHECK(ParseLine(text, end + 1, &total, &next) && total == 11 && next == end + 1);
    CHECK(TextSep(text, end, " ,", &total, &next) && total == 1 && next == text + 2);

    const char* name = NULL;
    const char* value = NULL;
    CHECK(ParseCommaSeparatedNameValuePair(text + 8, end, &name, &copied, &value, &total, &next));
    CHECK(name == text + 8 && copied == 1 && value == text + 10 && total == 1 && next == end);

    StringList* list = NULL;
    CHECK(SplitText("a,b", SIZE_MAX, ",", &list) == kStatusOK);
    CHECK(strcmp(list->next->text, "b") == 0);
    StringListFree(list);
    NameValueListFree(NULL);

    int count = 0;
    char** arguments = NULL;
    CHECK(ParseCommandLineIntoArgV(text, &count, &arguments) == kStatusOK && count == 2);
    CHECK(strcmp(arguments[1], "b c,d=e") == 0 && arguments[2] == NULL);
    FreeCommandLineArgV(arguments);
    return 0;
}

static int checkNames(void) {
    char text[64] = "Anna's  Hub ";
    char label[kDNSLabelBufferSize];
    size_t length = 0;
    ConvertUTF8StringToRFC1034LabelString("Anna's Hub", label);
    CHECK(strcmp(label, "Annas-Hub") == 0 && ValidDNSName(label) == kStatusOK);
    CHECK(strcmp(CleanseDiskString(" a ", SIZE_MAX, label, sizeof(label)), "a") == 0);
    CHECK(strcmp(CleanseHFSVolumeName(" b ", SIZE_MAX, label, sizeof(label)), "b") == 0);
    CHECK(AppendNumericSuffix(text, SIZE_MAX, sizeof(text), 2, true, &length) == kStatusOK);
    CHECK(strcmp(text, "Anna's  Hub (2)") == 0 && ContainsNumericSuffix(text, length, true));
    CHECK(IncrementNumericSuffix(text, length, sizeof(text), true, &length) == kStatusOK);
    CHECK(IncrementNumericSuffixEx(text, length, sizeof(text), true, &length, 5) == kStatusOK);
    CHECK(RemoveNumericSuffix(text, length, true, &length) == 4 && length == 11);

    char* owned = NULL;
    CHECK(XMLEscapeCopy("<", SIZE_MAX, &owned, &length) == kStatusOK && length == 4);
    XMLEscape("&", SIZE_MAX, NULL, &length);
    CHECK(length == 5 && strcmp(owned, "&lt;") == 0);
    CHECK(ReplaceDifferentString(&owned, "new") == 1 && strcmp(owned, "new") == 0);
    free(owned);
    return 0;
}

int firstFailingLineOfStringsFromC(void) {
    int (*const checks[])(void) = {checkComparingAndSearching, checkNumbersAndCase, checkSplitting,
                                   checkNames};
    for (size_t i = 0; i < sizeof(checks) / sizeof(checks[0]); ++i) {
        const int line = checks[i]();
        if (line != 0) return line;
    }
    return 0;
}
