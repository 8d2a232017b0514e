// Foreign text: cutting, searching, comparing, escaping and cleaning.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/utf8_internal.h"
#include "halvane/utils/strings.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

namespace bench {

namespace {

constexpr std::size_t kMost = 262144;

// A text of n characters, `piece` again and again between `head` and `tail`.
template <typename Read>
void addText(const char* row, std::string_view head, std::string_view piece, std::string_view tail,
             Read read, std::size_t most = kMost) {
    addGrowth(
        row, most,
        [head, piece, tail](std::size_t n) {
            return enclosed(head, piece, n / piece.size(), tail);
        },
        [read](const std::string& text) { return read(text); });
}

const char* endOf(const std::string& text) {
    return text.data() + text.size();
}

void addSplitRows() {
    addText("SplitText", "", "ab,", "", [](const std::string& text) {
        StringList* list = nullptr;
        const bool done = SplitText(text.c_str(), SIZE_MAX, ",;", &list) == 0 && list != nullptr;
        StringListFree(list);
        return done;
    });
    addText("SplitText: empty pieces", "", ",", "", [](const std::string& text) {
        StringList* list = nullptr;
        const bool done = SplitText(text.c_str(), SIZE_MAX, ",", &list) == 0 && list != nullptr;
        StringListFree(list);
        return done;
    });
    addText("TextSep", "", "ab,", "", [](const std::string& text) {
        std::size_t count = 0;
        std::size_t length = 0;
        const char* next = text.data();
        while (TextSep(next, endOf(text), ",", &length, &next)) ++count;
        return count == text.size() / 3;
    });
    addText("ParseLine", "", "ab\n", "", [](const std::string& text) {
        std::size_t count = 0;
        std::size_t length = 0;
        const char* next = text.data();
        while (ParseLine(next, endOf(text), &length, &next)) ++count;
        return count == text.size() / 3;
    });
    addText("ParseCommaSeparatedNameValuePair", "", "a=b,", "", [](const std::string& text) {
        std::size_t count = 0;
        const char* next = text.data();
        while (ParseCommaSeparatedNameValuePair(next, endOf(text), nullptr, nullptr, nullptr,
                                                nullptr, &next)) {
            ++count;
        }
        return count == text.size() / 4;
    });
}

void addQuoteRows() {
    std::array<char, 8> buffer{};
    addText("ParseQuotedEscapedString", "", "\"a b\"'c'\\x41,", "",
            [buffer](const std::string& text) {
                auto room = buffer;
                std::size_t count = 0;
                const char* next = text.data();
                while (ParseQuotedEscapedString(next, endOf(text), ',', room.data(), room.size(),
                                                nullptr, nullptr, &next)) {
                    ++count;
                }
                return count >= 1;
            });
    addText("ParseQuotedEscapedString: open quote", "\"", "a\\\"", "", [](const std::string& text) {
        std::size_t total = 0;
        return ParseQuotedEscapedString(text.data(), endOf(text), ',', nullptr, 0, nullptr, &total,
                                        nullptr) &&
               total > 0;
    });
    addText("ParseQuotedEscapedString: continued lines", "", "\\\n", "a",
            [](const std::string& text) {
                std::size_t total = 0;
                return ParseQuotedEscapedString(text.data(), endOf(text), ',', nullptr, 0, nullptr,
                                                &total, nullptr);
            });
    addText("ParseEscapedString", "", "a\\,b,", "", [](const std::string& text) {
        std::size_t count = 0;
        const char* next = text.data();
        while (ParseEscapedString(next, endOf(text), ',', nullptr, 0, nullptr, nullptr, &next)) {
            ++count;
        }
        return count == text.size() / 5;
    });
    const auto splitLine = [](const std::string& text) {
        int count = 0;
        char** vector = nullptr;
        if (ParseCommandLineIntoArgV(text.c_str(), &count, &vector) != 0) return false;
        FreeCommandLineArgV(vector);
        return count > 0;
    };
    addText("ParseCommandLineIntoArgV", "", "a 'b c' ", "", splitLine);
    addText("ParseCommandLineIntoArgV: one argument", "", "a\"b\"", "", splitLine);
    addText("ParseCommandLineIntoArgV: continued lines", "", "\\\n", "a", splitLine);
}

// n characters that match the start of a pattern of n / 4 characters nearly everywhere.
struct Search {
    std::string text;
    std::string pattern;
};

template <typename Find>
void addSearch(const char* row, Find find) {
    addGrowth(
        row, kMost,
        [](std::size_t n) {
            std::string pattern(n / 4, 'a');
            pattern.front() = pattern.back() = 'b';
            return Search{std::string(n, 'a'), pattern};
        },
        [find](const Search& search) { return find(search) == nullptr; });
}

// Each place of a pattern in a NUL-terminated text.
template <typename Find>
void addPlaces(const char* row, Find find) {
    addText(row, "", "abcdefgX", "", [find](const std::string& text) {
        std::size_t count = 0;
        const char* place = text.c_str();
        while ((place = find(place)) != nullptr) {
            ++count;
            ++place;
        }
        return count == text.size() / 8;
    });
}

void addSearchRows() {
    addSearch("BoyerMooreSearch: nearly everywhere", [](const Search& search) {
        return BoyerMooreSearch(search.text.data(), search.text.size(), search.pattern.data(),
                                search.pattern.size());
    });
    addSearch("stristr: nearly everywhere", [](const Search& search) {
        return stristr(search.text.c_str(), search.pattern.c_str());
    });
    addSearch("strncasestr: nearly everywhere", [](const Search& search) {
        return strncasestr(search.text.c_str(), SIZE_MAX, search.pattern.c_str());
    });
    addPlaces("BoyerMooreSearch: each place", [](const char* text) {
        return static_cast<const char*>(BoyerMooreSearch(text, SIZE_MAX, "gX", SIZE_MAX));
    });
    addPlaces("stristr: each place",
              [](const char* text) -> const char* { return stristr(text, "gx"); });
    addPlaces("strncasestr: each place",
              [](const char* text) -> const char* { return strncasestr(text, SIZE_MAX, "gx"); });
    addText("strnspn", "", "ab", "", [](const std::string& text) {
        return strnspn(text.c_str(), SIZE_MAX, "ab") == text.size();
    });
}

// Makes a call at each 8th character of a NUL-terminated text. The call need not read to the end of
// the text.
template <typename Look>
void addLooks(const char* row, Look look) {
    addText(
        row, "", "abcdefg ", "",
        [look](const std::string& text) {
            bool all = true;
            for (std::size_t i = 0; i < text.size(); i += 8) all &= look(text.c_str() + i);
            return all;
        },
        65536);
}

void addCompareRows() {
    addLooks("strnicmp_prefix, at each word",
             [](const char* text) { return strnicmp_prefix(text, SIZE_MAX, "ABCDEFG") == 0; });
    addLooks("strncmpx, at each word",
             [](const char* text) { return strncmpx(text, SIZE_MAX, "abcdefg") > 0; });
    addLooks("strnspn, at each word",
             [](const char* text) { return strnspn(text, SIZE_MAX, "abcdefg") == 7; });
    addLooks("TextCompareNatural, at each word", [](const char* text) {
        return TextCompareNatural(text, SIZE_MAX, "b", SIZE_MAX, true) < 0;
    });
    addLooks("TruncateUTF8, at each word",
             [](const char* text) { return TruncateUTF8(text, SIZE_MAX, 4) == 4; });
    const auto compare = [](const std::string& text) {
        return TextCompareNatural(text.c_str(), SIZE_MAX, text.c_str(), SIZE_MAX, false) == 0;
    };
    addText("TextCompareNatural: numbers", "", "a07", "", compare);
    addText("TextCompareNatural: one number", "", "7", "", compare);
    addText("TextCompareNatural: leading zeros", "", "0", "7", compare);
    addText("strnicmp_suffix", "", "a", "b", [](const std::string& text) {
        return strnicmp_suffix(text.c_str(), SIZE_MAX, "B") == 0;
    });
    addText("memicmp", "", "aB", "", [](const std::string& text) {
        return memicmp(text.data(), text.data(), text.size()) == 0;
    });
}

void addCleanRows() {
    addText("CleanseDiskString", "", "a\t", "b", [](const std::string& text) {
        std::string buffer(text.size() + 1, '\0');
        CleanseDiskString(text.c_str(), SIZE_MAX, buffer.data(), buffer.size());
        return buffer[0] == 'a';
    });
    addText("CleanseDiskString: blanks", "", " ", "b", [](const std::string& text) {
        std::string buffer(text.size() + 1, '\0');
        CleanseDiskString(text.c_str(), SIZE_MAX, buffer.data(), buffer.size());
        return buffer[0] == 'b';
    });
    addText("CleanseHFSVolumeName", "a", "\xE2\x82\xAC", "", [](const std::string& text) {
        std::string buffer(text.size() + 1, '\0');
        CleanseHFSVolumeName(text.c_str(), SIZE_MAX, buffer.data(), buffer.size() / 2);
        return buffer[0] == 'a';
    });
    addText("IsASCII7PrintableString", "", "a", "", [](const std::string& text) {
        return IsASCII7PrintableString(text.c_str(), SIZE_MAX);
    });
    addText("ConvertUTF8StringToRFC1034LabelString", "", " ", "a", [](const std::string& text) {
        std::array<char, kDNSLabelBufferSize> label{};
        ConvertUTF8StringToRFC1034LabelString(text.c_str(), label.data());
        return true;
    });
    addText("ValidDNSName", "", "a.", "",
            [](const std::string& text) { return ValidDNSName(text.c_str()) != 1; });
    addText("TruncateUTF8", "", "\x80", "", [](const std::string& text) {
        return TruncateUTF8(text.c_str(), SIZE_MAX, text.size() - 1) < text.size();
    });
    addText("isUtf8", "", "\xE2\x82\xAC", "",
            [](const std::string& text) { return halvane::isUtf8(text); });
    addText("utf16Length: bad bytes", "", "\xE2\x82", "",
            [](const std::string& text) { return halvane::utf16Length(text) == text.size(); });
    addText("tolowerstr", "", "A", "", [](const std::string& text) {
        auto copy = text;
        return tolowerstr(copy.data(), SIZE_MAX)[0] == 'a';
    });
    addText("XMLEscapeCopy", "", "<&", "", [](const std::string& text) {
        char* copy = nullptr;
        const bool done = XMLEscapeCopy(text.c_str(), SIZE_MAX, &copy, nullptr) == 0;
        std::free(copy);
        return done;
    });
}

void addNameRows() {
    addText("RemoveNumericSuffix", "name-", "7", "", [](const std::string& text) {
        std::size_t length = 0;
        return RemoveNumericSuffix(text.c_str(), SIZE_MAX, false, &length) == UINT64_MAX;
    });
    addText("RemoveNumericSuffix: parentheses", "name (", "7", ")", [](const std::string& text) {
        std::size_t length = 0;
        return RemoveNumericSuffix(text.c_str(), SIZE_MAX, true, &length) == UINT64_MAX;
    });
    addText("IncrementNumericSuffix: blanks", "name", " ", "", [](const std::string& text) {
        auto copy = text + std::string(16, '\0');
        std::size_t length = 0;
        return IncrementNumericSuffix(copy.data(), text.size(), copy.size(), true, &length) == 0;
    });
    addText("MIMETypeToExtension", "image/", "j", "",
            [](const std::string& text) { return *MIMETypeToExtension(text.c_str()) == '\0'; });
    addText("GetFileExtensionFromString", "", "a.", "b", [](const std::string& text) {
        return *GetFileExtensionFromString(text.c_str()) == 'b';
    });
    addText("ReplaceDifferentString", "", "a", "", [](const std::string& text) {
        char* held = nullptr;
        const bool done = ReplaceDifferentString(&held, text.c_str()) == 1 &&
                          ReplaceDifferentString(&held, text.c_str()) == 0;
        std::free(held);
        return done;
    });
}

}  // namespace

void addTextRows() {
    addSplitRows();
    addQuoteRows();
    addSearchRows();
    addCompareRows();
    addCleanRows();
    addNameRows();
}

}  // namespace bench
