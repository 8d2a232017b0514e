// Strings: comparison, search, splitting, quoting and cleaning of any texts agree with naive code,
// and nothing reads past a length.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <ranges>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/utils/strings.h"
#include "halvane/utils/text/substring_search_internal.h"
#include "halvane/utils/text/two_way_search_internal.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

namespace {

char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
}

std::string lowered(std::string text) {
    std::ranges::transform(text, text.begin(), lower);
    return text;
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

int compared(const std::string& a, const std::string& b) {
    return sign(a.compare(b));
}

void checkCompare(const std::string& text, const std::string& other) {
    const std::string cstring = other.c_str();
    REQUIRE(strncmpx(text.data(), text.size(), other.c_str()) == compared(text, cstring));
    REQUIRE(strnicmpx(text.data(), text.size(), other.c_str()) ==
            compared(lowered(text), lowered(cstring)));
    REQUIRE((strncmp_prefix(text.data(), text.size(), other.c_str()) == 0) ==
            text.starts_with(cstring));
    REQUIRE((strnicmp_prefix(text.data(), text.size(), other.c_str()) == 0) ==
            lowered(text).starts_with(lowered(cstring)));
    REQUIRE((strncmp_suffix(text.data(), text.size(), other.c_str()) == 0) ==
            text.ends_with(cstring));
    REQUIRE((strnicmp_suffix(text.data(), text.size(), other.c_str()) == 0) ==
            lowered(text).ends_with(lowered(cstring)));
    REQUIRE((strcmp_prefix(text.c_str(), other.c_str()) == 0) ==
            std::string(text.c_str()).starts_with(cstring));
    REQUIRE((stricmp_prefix(text.c_str(), other.c_str()) == 0) ==
            lowered(text.c_str()).starts_with(lowered(cstring)));
    const std::size_t common = std::min(text.size(), other.size());
    REQUIRE(sign(memicmp(text.data(), other.data(), common)) ==
            compared(lowered(text.substr(0, common)), lowered(other.substr(0, common))));
}

int natural(const std::string& a, const std::string& b, bool caseSensitive) {
    return TextCompareNatural(a.data(), a.size(), b.data(), b.size(), caseSensitive);
}

void checkNaturalOrder(const std::string& a, const std::string& b, const std::string& c) {
    for (const bool caseSensitive : {false, true}) {
        const int order = natural(a, b, caseSensitive);
        REQUIRE(order >= -1 && order <= 1 && order == -natural(b, a, caseSensitive));
        REQUIRE(natural(a, a, caseSensitive) == 0);
        if (caseSensitive) REQUIRE((order == 0) == (a == b));
        // Transitive.
        const int next = natural(b, c, caseSensitive);
        if (order == next || order == 0) REQUIRE(natural(a, c, caseSensitive) == next);
    }
}

void checkSearch(const std::string& text, const std::string& pattern) {
    const std::size_t place = text.find(pattern);
    REQUIRE(halvane::findBytes(text, pattern) == place);
    REQUIRE(halvane::TwoWaySearch<halvane::ExactBytes>(pattern).find(text) == place);
    const std::size_t folded = lowered(text).find(lowered(pattern));
    REQUIRE(halvane::findIgnoringCase(text, pattern) == folded);
    REQUIRE(halvane::TwoWaySearch<halvane::BytesIgnoringCase>(pattern).find(text) == folded);
    const void* found = BoyerMooreSearch(text.data(), text.size(), pattern.data(), pattern.size());
    REQUIRE(found == (place == std::string::npos ? nullptr : text.data() + place));
    const std::string cText = text.c_str();
    const std::size_t cPlace = lowered(cText).find(lowered(pattern.c_str()));
    const char* expected = cPlace == std::string::npos ? nullptr : text.data() + cPlace;
    REQUIRE(strncasestr(text.data(), text.size(), pattern.c_str()) == expected);
    REQUIRE(stristr(text.c_str(), pattern.c_str()) == expected);
    const std::size_t span = std::min(cText.find_first_not_of(pattern.c_str()), cText.size());
    REQUIRE(strnspn(text.data(), text.size(), pattern.c_str()) == span);
    REQUIRE(strnspnx(text.data(), text.size(), pattern.c_str()) == span);
}

void checkPieces(const std::string& text, const std::string& separators) {
    const char* const end = text.data() + text.size();
    const char* next = nullptr;
    std::size_t length = 0;
    std::size_t pieces = 0;
    for (const char* at = text.data(); TextSep(at, end, separators.c_str(), &length, &next);
         at = next) {
        const std::size_t stop = std::string_view(at, end).find_first_of(separators.c_str());
        REQUIRE(length == std::min(stop, static_cast<std::size_t>(end - at)));
        REQUIRE(next == std::min(at + length + 1, end));
        ++pieces;
    }
    StringList* list = nullptr;
    REQUIRE(SplitText(text.data(), text.size(), separators.c_str(), &list) == kStatusOK);
    for (const StringList* node = list; node != nullptr; node = node->next) --pieces;
    REQUIRE(pieces == 0);
    StringListFree(list);
    for (const char* at = text.data(); ParseLine(at, end, &length, &next); at = next) {
        REQUIRE(std::string_view(at, length).find_first_of("\r\n") == std::string::npos);
        REQUIRE(next > at && next <= end);
    }
}

void checkNamedValues(const std::string& text) {
    const char* const end = text.data() + text.size();
    const char *name = nullptr, *value = nullptr, *next = nullptr;
    std::size_t nameLength = 0, valueLength = 0;
    for (const char* at = text.data();
         ParseCommaSeparatedNameValuePair(at, end, &name, &nameLength, &value, &valueLength, &next);
         at = next) {
        REQUIRE(name >= at && name + nameLength <= next && next > at && next <= end);
        REQUIRE(value == nullptr ? valueLength == 0 : value == name + nameLength + 1);
    }
}

template <typename Parse>
void checkTokens(Parse parse, const std::string& text, std::size_t capacity) {
    const char* const end = text.data() + text.size();
    std::vector<char> buffer(capacity + 1);
    std::vector<char> whole(text.size() + 1);
    std::size_t copied = 0, total = 0, wholeCopied = 0;
    const char* next = nullptr;
    for (const char* at = text.data();
         parse(at, end, ',', buffer.data(), capacity, &copied, &total, &next); at = next) {
        REQUIRE(copied == std::min(capacity, total));
        REQUIRE(next > at && next <= end && total <= static_cast<std::size_t>(next - at));
        REQUIRE(parse(at, end, ',', whole.data(), text.size(), &wholeCopied, &total, &next));
        REQUIRE(std::memcmp(buffer.data(), whole.data(), copied) == 0);
    }
}

void checkCommandLine(const std::string& text) {
    int count = 0;
    char** vector = nullptr;
    REQUIRE(ParseCommandLineIntoArgV(text.c_str(), &count, &vector) == kStatusOK);
    for (int i = 0; i < count; ++i) REQUIRE(std::strlen(vector[i]) <= text.size());
    REQUIRE(vector[count] == nullptr);
    FreeCommandLineArgV(vector);
}

void checkClean(const std::string& text, std::size_t size) {
    const auto isPrintable = [](char c) { return c >= 0x20 && c <= 0x7E; };
    REQUIRE(IsASCII7PrintableString(text.data(), text.size()) ==
            std::ranges::all_of(text, isPrintable));
    std::vector<char> buffer(size + 1, 'x');
    for (const auto cleanse : {CleanseDiskString, CleanseHFSVolumeName}) {
        REQUIRE(cleanse(text.data(), text.size(), buffer.data(), size) == buffer.data());
        REQUIRE(buffer[size] == 'x' || size == 0);
        if (size > 0) REQUIRE(::strnlen(buffer.data(), size) < size);
    }
    std::string changed = text;
    tolowerstr(changed.data(), changed.size());
    REQUIRE(std::string(changed.c_str()) == lowered(text.c_str()));
    toupperstr(changed.data(), changed.size());
    REQUIRE(lowered(changed.c_str()) == lowered(text.c_str()));
    REQUIRE(MIMETypeToExtension(text.c_str()) != nullptr);
    const std::size_t dot = std::string(text.c_str()).rfind('.');
    const char* const extension =
        text.c_str() + (dot == std::string::npos ? std::strlen(text.c_str()) : dot + 1);
    REQUIRE(GetFileExtensionFromString(text.c_str()) == extension);
}

void checkXMLEscape(const std::string& text) {
    std::string expected;
    for (const char character : text) {
        const std::size_t which = std::string_view("&\"'<>").find(character);
        constexpr const char* kNames[] = {"&amp;", "&quot;", "&#39;", "&lt;", "&gt;"};
        which == std::string_view::npos ? void(expected += character)
                                        : void(expected += kNames[which]);
    }
    char* copy = nullptr;
    std::size_t length = 0;
    REQUIRE(XMLEscapeCopy(text.data(), text.size(), &copy, &length) == kStatusOK);
    REQUIRE(std::string(copy, length) == expected && copy[length] == '\0');
    std::free(copy);
}

void checkUnicode(const std::string& text, std::size_t maximum) {
    const std::size_t cut = TruncateUTF8(text.data(), text.size(), maximum);
    REQUIRE(cut <= maximum && cut <= text.size());
    if (text.size() <= maximum) REQUIRE(cut == text.size());
    if (halvane::isUtf8(text)) {
        REQUIRE(halvane::isUtf8(text.substr(0, cut)));
        if (text.size() > maximum) REQUIRE(maximum - cut < 4);
    }
    REQUIRE(halvane::utf16Length(text) <= text.size());
    std::vector<std::uint16_t> units(text.size() / 2);
    if (!units.empty()) std::memcpy(units.data(), text.data(), units.size() * 2);
    const auto zero = std::ranges::find(units, 0) - units.begin();
    REQUIRE(UTF16strlen(units.data(), units.size()) == static_cast<std::size_t>(zero));
}

void checkSuffix(const std::string& text, std::size_t capacity, std::uint64_t number, bool style) {
    std::size_t length = 0;
    const std::uint64_t there = RemoveNumericSuffix(text.data(), text.size(), style, &length);
    REQUIRE(length <= text.size() && (there == 0 || length < text.size()));
    REQUIRE(ContainsNumericSuffix(text.data(), text.size(), style) || there == 0);
    std::vector<char> buffer(std::max(capacity, text.size()));
    std::ranges::copy(text, buffer.begin());
    const auto status =
        AppendNumericSuffix(buffer.data(), text.size(), buffer.size(), number, style, &length);
    if (status == kStatusOK) {
        REQUIRE(length <= buffer.size());
        std::size_t without = 0;
        REQUIRE(RemoveNumericSuffix(buffer.data(), length, style, &without) == number || !style);
        IncrementNumericSuffix(buffer.data(), length, buffer.size(), style, &length);
        REQUIRE(length <= buffer.size());
    }
    char* owned = nullptr;
    REQUIRE(ReplaceDifferentString(&owned, text.c_str()) == 1);
    REQUIRE(ReplaceDifferentString(&owned, text.c_str()) == 0);
    REQUIRE(ReplaceDifferentString(&owned, nullptr) == 1 && owned == nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    halvane::fuzzing::ByteSource source(data, size);
    const std::string pattern = source.text(16);
    const std::string other = source.text(40);
    const std::size_t number = source.byte();
    const std::string text = source.restText();
    checkCompare(text, pattern);
    checkNaturalOrder(text, pattern, other);
    checkSearch(text, pattern);
    checkPieces(text, pattern);
    checkNamedValues(text);
    checkTokens(ParseQuotedEscapedString, text, number);
    checkTokens(ParseEscapedString, text, number);
    checkCommandLine(text);
    checkClean(text, number);
    checkXMLEscape(text);
    checkUnicode(text, number);
    checkSuffix(text, number, number * 0x0101010101010101u, number % 2 == 0);
    return 0;
}
