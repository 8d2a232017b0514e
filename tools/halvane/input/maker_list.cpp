#include "tools/halvane/input/maker_list.h"

#include <algorithm>
#include <cstdlib>
#include <span>

#include "tools/halvane/input/input_stream.h"

namespace halvane::tool {

namespace {

constexpr int kAddressBits = 48;
// Far above the registers of today, 5 MiB the largest.
constexpr std::size_t kLargestRegister = std::size_t{64} << 20;

// A range that the registers divide among makers stands in oui.txt by this name.
constexpr std::string_view kDivided = "IEEE Registration Authority";

constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

std::optional<unsigned> hexDigit(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    if (letter >= 'A' && letter <= 'F') return letter - 'A' + 10;
    if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
    return std::nullopt;
}

// Takes six hexadecimal digits off the front, with a hyphen behind each pair but the last if
// `isSpaced`.
std::optional<std::uint32_t> takeSixDigits(std::string_view& text, bool isSpaced) {
    std::uint32_t value = 0;
    std::string_view rest = text;
    for (int i = 0; i < 6; ++i) {
        if (isSpaced && i > 0 && i % 2 == 0) {
            if (!rest.starts_with('-')) return std::nullopt;
            rest.remove_prefix(1);
        }
        const auto digit = rest.empty() ? std::nullopt : hexDigit(rest.front());
        if (!digit) return std::nullopt;
        value = value << 4 | *digit;
        rest.remove_prefix(1);
    }
    text = rest;
    return value;
}

// What stands behind blanks and `mark` in a line; absent if they do not stand there.
std::optional<std::string_view> nameBehind(std::string_view mark, std::string_view rest) {
    rest = trimmed(rest);
    if (!rest.starts_with(mark)) return std::nullopt;
    return trimmed(rest.substr(mark.size()));
}

// Reads lines, of which two make an entry: "00-50-C2   (hex)  NAME" tells the first 24 bits, and
// "7D5000-7D5FFF     (base 16)  NAME" the range of the others. For whole 24 bits, the second line
// repeats the digits instead of a range.
class RegisterReader {
  public:
    struct Range {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::string_view name;
    };

    // Returns the entry that the line completes.
    std::optional<Range> read(std::string_view line) {
        if (line.empty() || !hexDigit(line.front())) return std::nullopt;
        std::string_view rest = line;
        if (const auto block = takeSixDigits(rest, true)) {
            if (nameBehind("(hex)", rest)) block_ = *block;
            return std::nullopt;
        }
        const auto first = takeSixDigits(rest, false);
        if (!first) return std::nullopt;
        return rest.starts_with('-') ? part(*first, rest.substr(1)) : whole(*first, rest);
    }

  private:
    static std::optional<Range> whole(std::uint32_t block, std::string_view rest) {
        const auto name = nameBehind("(base 16)", rest);
        if (!name || name->empty()) return std::nullopt;
        const std::uint64_t first = std::uint64_t{block} << 24;
        return Range{first, first | 0xFFFFFF, *name};
    }

    std::optional<Range> part(std::uint32_t first, std::string_view rest) const {
        const auto last = takeSixDigits(rest, false);
        const auto name = nameBehind("(base 16)", rest);
        if (!block_ || !last || !name || name->empty()) return std::nullopt;
        const std::uint64_t block = std::uint64_t{*block_} << 24;
        return Range{block | first, block | *last, *name};
    }

    std::optional<std::uint32_t> block_;
};

std::uint64_t numberOf(const MacAddress& address) {
    std::uint64_t number = 0;
    for (const std::uint8_t octet : address.octets()) number = number << 8 | octet;
    return number;
}

}  // namespace

MakerList MakerList::read(const std::filesystem::path& folder) {
    MakerList list;
    for (const char* const name : {"oui.txt", "mam.txt", "oui36.txt", "iab.txt"}) {
        auto stream = InputStream::open((folder / name).string());
        if (!stream) continue;
        const auto octets = stream->peek(static_cast<std::size_t>(
            std::min<std::uint64_t>(stream->fileSize().value_or(0), kLargestRegister)));
        list.parse({reinterpret_cast<const char*>(octets.data()), octets.size()});
    }
    list.sort();
    return list;
}

const MakerList& MakerList::ofSystem() {
    static const MakerList list = [] {
        const char* const folder = std::getenv("HALVANE_IEEE_DATA");
        return read(folder != nullptr ? folder : "/usr/share/ieee-data");
    }();
    return list;
}

void MakerList::add(std::string_view text) {
    parse(text);
    sort();
}

void MakerList::parse(std::string_view text) {
    RegisterReader reader;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (const auto range = reader.read(line)) addRange(range->first, range->last, range->name);
    }
}

// Ranges of other sizes are in no register.
void MakerList::addRange(std::uint64_t first, std::uint64_t last, std::string_view name) {
    for (Register& each : registers_) {
        const int otherBits = kAddressBits - each.bits;
        const std::uint64_t span = std::uint64_t{1} << otherBits;
        if (last - first != span - 1 || first % span != 0) continue;
        each.entries.push_back({first >> otherBits, static_cast<std::uint32_t>(names_.size()),
                                static_cast<std::uint32_t>(name.size())});
        names_ += name;
    }
}

void MakerList::sort() {
    for (Register& each : registers_) std::ranges::stable_sort(each.entries, {}, &Entry::prefix);
}

std::optional<std::string_view> MakerList::find(const MacAddress& address) const {
    if (address.isLocal() || address.isGroup()) return std::nullopt;
    const std::uint64_t number = numberOf(address);
    for (const Register& each : registers_) {
        const std::uint64_t prefix = number >> (kAddressBits - each.bits);
        const auto entry = std::ranges::lower_bound(each.entries, prefix, {}, &Entry::prefix);
        if (entry == each.entries.end() || entry->prefix != prefix) continue;
        const auto name = std::string_view(names_).substr(entry->nameStart, entry->nameSize);
        if (name != kDivided) return name;
    }
    return std::nullopt;
}

std::string MakerList::cell(const MacAddress& address, std::size_t cells) const {
    if (address.isGroup()) return "(group)";
    if (address.isLocal()) return "(local)";
    const auto name = find(address);
    const std::string text = name ? shortMakerName(*name, cells) : "";
    return text.empty() ? "-" : text;
}

std::size_t MakerList::size() const {
    std::size_t count = 0;
    for (const Register& each : registers_) count += each.entries.size();
    return count;
}

}  // namespace halvane::tool
