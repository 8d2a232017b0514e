#include "tools/halvane/input/hex_dump.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/mac_address.h"
#include "halvane/ie/fancy_formatting.h"

namespace halvane::tool {

namespace {

using DumpResult = Result<HexDump, std::string>;

// --- Text ---

bool isBlank(char character) {
    return character == ' ' || character == '\t';
}

std::size_t blanksAt(std::string_view text) {
    const auto end = std::ranges::find_if_not(text, isBlank);
    return static_cast<std::size_t>(end - text.begin());
}

std::size_t digitsAt(std::string_view text, unsigned base) {
    const auto end = std::ranges::find_if_not(
        text, [base](char character) { return digitValue(character) < base; });
    return static_cast<std::size_t>(end - text.begin());
}

// Splits off the first line, which a line feed, a carriage return or both end.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
    while (!line.empty() && isSpace(line.back())) line.remove_suffix(1);
    return line;
}

void appendPairs(std::vector<std::uint8_t>& octets, std::string_view digits) {
    for (; digits.size() >= 2; digits.remove_prefix(2)) {
        octets.push_back(
            static_cast<std::uint8_t>(digitValue(digits[0]) << 4 | digitValue(digits[1])));
    }
}

std::string atLine(std::size_t number, const std::string& problem) {
    return "line " + std::to_string(number) + ": " + problem;
}

// --- Dumps with a column of offsets ---

struct DumpFormat {
    std::string_view name;
    std::string_view prefix;  // of an offset
    std::size_t minDigits;
    std::size_t maxDigits;
    std::string_view suffix;
    std::size_t minGap;      // blanks between the offset and the octets
    std::size_t maxGap;      // blanks between octets; more of them end the octets
    unsigned base = 16;      // of an offset
    bool hasTitles = false;  // lines without an offset belong to the format
    bool hasWords = true;    // false: several octets together are a word of the machine
};

constexpr std::size_t kAnyGap = 64;

constexpr DumpFormat kFormats[] = {
    {"tcpdump -x", "0x", 4, 8, ":", 1, 1, 16, true},
    {"xxd", "", 4, 16, ":", 1, 1},
    {"hexdump", "", 4, 8, "", 2, 2},
    {"od", "", 7, 7, "", 1, kAnyGap, 8, false, false},   // without -A
    {"od", "", 7, 7, "", 1, kAnyGap, 10, false, false},  // -A d
    {"od", "", 6, 6, "", 1, kAnyGap, 16, false, false},  // -A x
};

// Takes the offset at the start of a line and the blanks after it; absent if there is none.
std::optional<std::size_t> takeOffset(std::string_view& line, const DumpFormat& format) {
    std::string_view rest = line;
    if (!rest.starts_with(format.prefix)) return std::nullopt;
    rest.remove_prefix(format.prefix.size());
    const std::size_t digits = digitsAt(rest, format.base);
    if (digits < format.minDigits || digits > format.maxDigits) return std::nullopt;
    std::size_t offset = 0;
    for (const char digit : rest.substr(0, digits)) {
        offset = offset * format.base + digitValue(digit);
    }
    rest.remove_prefix(digits);
    if (!rest.starts_with(format.suffix)) return std::nullopt;
    rest.remove_prefix(format.suffix.size());
    const std::size_t gap = blanksAt(rest);
    if (gap < format.minGap && !rest.empty()) return std::nullopt;
    line = rest.substr(gap);
    return offset;
}

// Appends the octets up to the column of letters. Returns false for anything else in their place.
bool appendGroups(std::vector<std::uint8_t>& octets, std::string_view line, std::size_t maxGap) {
    while (!line.empty() && line.front() != '|' && line.front() != '>') {
        const std::size_t digits = digitsAt(line, 16);
        if (digits == 0 || digits % 2 != 0) return false;
        appendPairs(octets, line.substr(0, digits));
        line.remove_prefix(digits);
        const std::size_t gap = blanksAt(line);
        if (gap > maxGap) return true;
        if (gap == 0 && !line.empty()) return false;
        line.remove_prefix(gap);
    }
    return true;
}

bool beginsWithWord(std::string_view line) {
    const std::size_t digits = digitsAt(line, 16);
    return digits == 4 || digits == 8 || digits == 16;
}

// Absent if the text has no line of the format.
std::optional<DumpResult> readFormat(std::string_view text, const DumpFormat& format) {
    HexDump dump{.octets = {}, .format = format.name};
    for (std::size_t number = 1; !text.empty(); ++number) {
        std::string_view line = takeLine(text);
        line.remove_prefix(blanksAt(line));
        if (line.empty()) continue;
        const auto offset = takeOffset(line, format);
        if (!offset) {
            if (format.hasTitles && dump.lines == 0) continue;
            if (dump.lines == 0) return std::nullopt;
            const char* const problem =
                format.hasTitles ? "another packet begins here; give one" : "has no offset";
            return Unexpected(atLine(number, problem));
        }
        if (*offset != dump.octets.size()) {
            if (dump.lines == 0) return std::nullopt;
            return Unexpected(atLine(number, "its offset is " + std::to_string(*offset) + ", but " +
                                                 std::to_string(dump.octets.size()) +
                                                 " octets stand before it"));
        }
        if (!format.hasWords && beginsWithWord(line)) {
            return Unexpected(
                atLine(number, "words have no known order of octets; print single octets"));
        }
        if (!appendGroups(dump.octets, line, format.maxGap)) {
            if (dump.lines == 0) return std::nullopt;
            return Unexpected(atLine(number, "holds something else than pairs of digits"));
        }
        // The last line may be the offset of the end.
        if (dump.octets.size() > *offset) ++dump.lines;
    }
    if (dump.lines == 0) return std::nullopt;
    return dump;
}

// --- The order of octets in the groups of xxd ---

// A line of xxd: groups of octets, and their letters in the order of memory.
struct LetteredLine {
    std::vector<std::vector<std::uint8_t>> groups{};
    std::string_view letters{};
};

// Takes a group and the blanks after it; empty if there is none.
std::string_view takeGroup(std::string_view& line) {
    const std::string_view group = line.substr(0, digitsAt(line, 16));
    if (group.empty() || group.size() % 2 != 0) return {};
    line.remove_prefix(group.size());
    return group;
}

// Whether a short last group follows, which stands at the right end of its place.
bool isShortGroupNext(std::string_view line, std::size_t groupDigits) {
    const std::size_t gap = blanksAt(line);
    line.remove_prefix(gap);
    const std::size_t digits = digitsAt(line, 16);
    line.remove_prefix(digits);
    return digits > 0 && gap > 1 && gap - 1 + digits == groupDigits && blanksAt(line) > 1;
}

LetteredLine letteredLineOf(std::string_view line) {
    LetteredLine lettered;
    std::size_t groupDigits = 0;
    while (true) {
        const std::string_view group = takeGroup(line);
        if (group.empty()) break;
        groupDigits = std::max(groupDigits, group.size());
        appendPairs(lettered.groups.emplace_back(), group);
        const std::size_t gap = blanksAt(line);
        if (gap != 1 && !isShortGroupNext(line, groupDigits)) break;
        line.remove_prefix(gap);
    }
    line.remove_prefix(blanksAt(line));
    lettered.letters = line;
    return lettered;
}

constexpr char letterOf(std::uint8_t octet) {
    return octet >= 0x20 && octet < 0x7F ? static_cast<char>(octet) : '.';
}

// Blanks at the end of a line are not known.
bool fits(std::string_view letters, const std::vector<std::uint8_t>& octets) {
    for (std::size_t i = 0; i < octets.size(); ++i) {
        if (letterOf(octets[i]) != (i < letters.size() ? letters[i] : ' ')) return false;
    }
    return true;
}

std::vector<std::uint8_t> octetsOf(LetteredLine line, bool isReversed) {
    std::vector<std::uint8_t> octets;
    for (auto& group : line.groups) {
        if (isReversed) std::ranges::reverse(group);
        octets.insert(octets.end(), group.begin(), group.end());
    }
    return octets;
}

// The number of the first line of xxd whose letters fit the octets of each group in the opposite
// order only; 0 if there is none.
std::size_t firstReversedLine(std::string_view text, const DumpFormat& format) {
    for (std::size_t number = 1; !text.empty(); ++number) {
        std::string_view line = takeLine(text);
        line.remove_prefix(blanksAt(line));
        if (!takeOffset(line, format)) continue;
        const LetteredLine lettered = letteredLineOf(line);
        if (fits(lettered.letters, octetsOf(lettered, false))) continue;
        if (fits(lettered.letters, octetsOf(lettered, true))) return number;
    }
    return 0;
}

// --- iw -u ---

// The element of a body that `data` goes on with; absent if that is no pairs of digits.
std::optional<std::vector<std::uint8_t>> elementOf(std::uint8_t id, std::vector<std::uint8_t> body,
                                                   std::string_view data) {
    constexpr std::size_t kMaxBody = 255;
    data.remove_prefix(blanksAt(data));
    if (!appendGroups(body, data, 1) || body.size() > kMaxBody) return std::nullopt;
    std::vector<std::uint8_t> element = {id, static_cast<std::uint8_t>(body.size())};
    element.insert(element.end(), body.begin(), body.end());
    return element;
}

// What stands before the data of an element, around one number.
struct ScanHead {
    std::string_view before;
    std::string_view after;
    std::string_view prefix;  // digits of the octets before the number in the body
    unsigned base;
    std::optional<std::uint8_t> id{};  // absent: the number is that of the element
};

constexpr ScanHead kScanHeads[] = {
    {"Unknown IE (", "):", "", 10},
    {"Unknown Extension ID (", "):", "", 10, 255},
    {"MS/WiFi 0x", ", data:", "0050f2", 16, 221},
    {"WFA 0x", ", data:", "506f9a", 16, 221},
};

// "Unknown IE (216): 01 02" and its like.
std::optional<std::vector<std::uint8_t>> numberedElement(std::string_view line,
                                                         const ScanHead& head) {
    constexpr std::size_t kMaxDigits = 3;
    if (!line.starts_with(head.before)) return std::nullopt;
    line.remove_prefix(head.before.size());
    const std::size_t digits = digitsAt(line, head.base);
    unsigned number = 0;
    for (const char digit : line.substr(0, std::min(digits, kMaxDigits))) {
        number = number * head.base + digitValue(digit);
    }
    line.remove_prefix(digits);
    if (digits == 0 || digits > kMaxDigits || number > 255 || !line.starts_with(head.after)) {
        return std::nullopt;
    }
    line.remove_prefix(head.after.size());
    const auto octet = static_cast<std::uint8_t>(number);
    std::vector<std::uint8_t> body;
    appendPairs(body, head.prefix);
    if (head.id) body.push_back(octet);
    return elementOf(head.id.value_or(octet), std::move(body), line);
}

// "Vendor specific: OUI 00:11:22, data: 01 02".
std::optional<std::vector<std::uint8_t>> vendorElement(std::string_view line) {
    constexpr std::string_view kBefore = "Vendor specific: OUI ";
    constexpr std::string_view kAfter = ", data:";
    constexpr std::size_t kOuiText = 8;
    if (!line.starts_with(kBefore)) return std::nullopt;
    line.remove_prefix(kBefore.size());
    if (line.find(kAfter) != kOuiText) return std::nullopt;
    std::vector<std::uint8_t> oui;
    for (std::size_t i = 0; i < kOuiText; i += 3) appendPairs(oui, line.substr(i, 2));
    return elementOf(221, std::move(oui), line.substr(kOuiText + kAfter.size()));
}

std::optional<std::vector<std::uint8_t>> elementOfLine(std::string_view line) {
    for (const ScanHead& head : kScanHeads) {
        if (auto element = numberedElement(line, head)) return element;
    }
    return vendorElement(line);
}

// The address of "BSS 02:00:00:00:00:01(on wlan0)", with which the lines of a network begin.
std::optional<MacAddress> bssOfLine(std::string_view line) {
    constexpr std::string_view kBefore = "BSS ";
    constexpr std::size_t kAddressText = 17;
    if (!line.starts_with(kBefore)) return std::nullopt;
    return MacAddress::fromText(line.substr(kBefore.size(), kAddressText));
}

// Ends the octets of the part before. A part without octets goes.
void beginPart(HexDump& dump, std::string bssid) {
    const std::size_t start = dump.octets.size();
    if (dump.parts.empty() && start > 0) dump.parts.push_back({{}, 0});
    if (!dump.parts.empty() && dump.parts.back().start == start) dump.parts.pop_back();
    dump.parts.push_back({std::move(bssid), start});
}

std::optional<DumpResult> readScan(std::string_view text) {
    HexDump dump{.octets = {}, .format = "iw -u"};
    while (!text.empty()) {
        std::string_view line = takeLine(text);
        if (const auto bssid = bssOfLine(line)) {
            beginPart(dump, FancyFormatting::formattedMAC(bssid->buffer()));
            continue;
        }
        line.remove_prefix(blanksAt(line));
        const auto element = elementOfLine(line);
        if (!element) continue;
        dump.octets.insert(dump.octets.end(), element->begin(), element->end());
        ++dump.lines;
    }
    if (dump.lines == 0) return std::nullopt;
    if (!dump.parts.empty() && dump.parts.back().start == dump.octets.size()) dump.parts.pop_back();
    return dump;
}

// --- Plain text ---

bool isSeparator(char character) {
    constexpr std::string_view kSeparators = ":-,;\"'{}()\\";
    return isSpace(character) || kSeparators.find(character) != std::string_view::npos;
}

DumpResult readPlain(std::string_view text) {
    HexDump dump;
    for (std::size_t number = 1; !text.empty(); ++number) {
        std::string_view line = takeLine(text);
        const std::size_t before = dump.octets.size();
        while (!line.empty()) {
            if (isSeparator(line.front())) {
                line.remove_prefix(1);
                continue;
            }
            if (line.starts_with("0x") || line.starts_with("0X")) {
                line.remove_prefix(2);
            } else if (line.front() == 'x') {
                line.remove_prefix(1);
            }
            const std::size_t digits = digitsAt(line, 16);
            if (digits == 0) {
                return Unexpected(
                    atLine(number, "'" + std::string(1, line.empty() ? ' ' : line.front()) +
                                       "' is no hexadecimal digit"));
            }
            if (digits % 2 != 0) {
                return Unexpected(atLine(number, "'" + std::string(line.substr(0, digits)) +
                                                     "' has an odd number of digits"));
            }
            appendPairs(dump.octets, line.substr(0, digits));
            line.remove_prefix(digits);
        }
        if (dump.octets.size() > before) ++dump.lines;
    }
    return dump;
}

// --- Arrays of C ---

// Keeps the ends of lines, so that the numbers of lines stay.
void blank(std::string& text, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < std::min(end, text.size()); ++i) {
        if (text[i] != '\n' && text[i] != '\r') text[i] = ' ';
    }
}

void blankComments(std::string& text) {
    for (std::size_t at = 0; (at = text.find('/', at)) != std::string::npos; ++at) {
        const std::string_view rest = std::string_view(text).substr(at);
        if (rest.starts_with("/*")) {
            const std::size_t end = text.find("*/", at + 2);
            blank(text, at, end == std::string::npos ? end : end + 2);
        } else if (rest.starts_with("//")) {
            blank(text, at, text.find_first_of("\r\n", at));
        }
    }
}

// Returns the items of the one array, with blanks in place of all else; absent if there is none.
std::optional<std::string> arrayItemsOf(std::string_view text) {
    std::string items(text);
    blankComments(items);
    const std::size_t open = items.find('{');
    const std::size_t end = items.find('}');
    if (end == std::string::npos || open > end) return std::nullopt;
    if (items.find('{', open + 1) != std::string::npos) return std::nullopt;
    blank(items, 0, open);
    blank(items, end, items.size());
    return items;
}

}  // namespace

DumpResult readHexDump(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    std::optional<DumpResult> dump = readScan(text);
    // A text may begin as in one format and go on as in another.
    for (const DumpFormat& format : kFormats) {
        if (dump && *dump) break;
        auto read = readFormat(text, format);
        if (const std::size_t line = read ? firstReversedLine(text, format) : 0; line != 0) {
            return Unexpected(
                atLine(line, "its groups are little-endian (xxd -e); print single octets"));
        }
        if (read && (!dump || *read)) dump = std::move(read);
    }
    if (dump) return *std::move(dump);
    auto plain = readPlain(text);
    if (plain) return plain;
    const auto items = arrayItemsOf(text);
    return items ? readPlain(*items) : std::move(plain);
}

}  // namespace halvane::tool
