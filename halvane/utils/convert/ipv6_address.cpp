#include "halvane/utils/convert/ipv6_address.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>
#include <net/if.h>
#include <optional>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/convert/ipv4_address.h"
#include "halvane/utils/convert/ipv4_address_internal.h"
#include "halvane/utils/text/cursor_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kGroupCount = 8;

using Groups = std::array<std::uint16_t, kGroupCount>;

// Preserves errno while the system is asked about interfaces.
class ErrnoKeeper {
  public:
    ErrnoKeeper() = default;
    ErrnoKeeper(const ErrnoKeeper&) = delete;
    ErrnoKeeper& operator=(const ErrnoKeeper&) = delete;
    ~ErrnoKeeper() { errno = saved_; }

  private:
    int saved_ = errno;
};

// --- From text ---

// The groups of an address during reading, and the position of the run of zeros among them.
class GroupReader {
  public:
    explicit GroupReader(TextCursor& text) : text_(text) {}

    HalvaneStatus read() {
        if (!isHexDigit(text_.peek()) && text_.peek() != ':') return kStatusTooFew;
        while (!isDone_) {
            HalvaneStatus status = separator();
            if (status == kStatusOK && !isDone_) status = group();
            if (status != kStatusOK) return status;
        }
        return isGapSet() || count_ == kGroupCount ? kStatusOK : kStatusTooFew;
    }

    // REQUIRES: read() returned kStatusOK
    Groups groups() const {
        Groups groups{};
        const std::size_t before = gap_.value_or(count_);
        std::copy_n(read_.begin(), before, groups.begin());
        std::copy_backward(read_.begin() + before, read_.begin() + count_, groups.end());
        return groups;
    }

  private:
    bool isGapSet() const { return gap_.has_value(); }

    // The number of groups that may still follow. A run of zeros replaces at least one group.
    std::size_t room() const { return kGroupCount - count_ - (isGapSet() ? 1 : 0); }

    // Reads the separator before a group. An address may end after "::", but not after a ':'.
    HalvaneStatus separator() {
        if (text_.peek() != ':') {
            isDone_ = count_ > 0;
            return kStatusOK;
        }
        if (text_.peek(1) != ':') {
            text_.skip(1);
            return count_ > 0 ? kStatusOK : kStatusMalformed;
        }
        if (isGapSet() || room() == 0 || text_.peek(2) == ':') return kStatusMalformed;
        text_.skip(2);
        gap_ = count_;
        isDone_ = !isHexDigit(text_.peek());
        return kStatusOK;
    }

    // Reads a group, or the IPv4 address that begins where a group would. Consuming nothing before
    // that is known saves a copy of the cursor, on which the processor would wait.
    HalvaneStatus group() {
        if (room() == 0) return kStatusMalformed;
        constexpr std::size_t kDigitsMax = 4;
        unsigned value = 0;
        std::size_t digits = 0;
        for (; isHexDigit(text_.peek(digits)); ++digits) {
            value = value << 4 | digitValue(text_.peek(digits));
            if (value > UINT16_MAX) return kStatusOutOfRange;
            if (digits == kDigitsMax) return kStatusMalformed;
        }
        if (digits == 0) return kStatusMalformed;
        if (text_.peek(digits) == '.') return dotted();
        text_.skip(digits);
        read_[count_++] = static_cast<std::uint16_t>(value);
        return kStatusOK;
    }

    HalvaneStatus dotted() {
        if (room() < 2) return kStatusMalformed;
        std::uint32_t address = 0;
        const HalvaneStatus status = readIPv4Address(text_, address);
        read_[count_++] = static_cast<std::uint16_t>(address >> 16);
        read_[count_++] = static_cast<std::uint16_t>(address);
        isDone_ = true;
        return status;
    }

    TextCursor& text_;
    Groups read_{};
    std::size_t count_ = 0;
    std::optional<std::size_t> gap_;
    bool isDone_ = false;
};

bool isScopeCharacter(char next) {
    return next != '\0' && next != '/' && next != ':' && next != ']' && !isSpace(next);
}

// The usual characters in names of interfaces. Other characters count only if the system knows the
// name.
bool isUsualNameCharacter(char next) {
    return digitValue(next) != kNoDigit || next == '.' || next == '-' || next == '_' || next == '@';
}

// Returns the next characters that satisfy `isPart`, up to the greatest length of an interface
// name. If there are too many, it returns one more.
template <typename IsPart>
std::string_view nameAhead(TextCursor text, IsPart isPart) {
    const char* const start = text.position();
    std::size_t size = 0;
    for (; size < IF_NAMESIZE && isPart(text.peek()); ++size) text.skip(1);
    return {start, size};
}

// Returns the index of the interface of that name; 0 if there is none.
std::uint32_t indexOf(std::string_view name) {
    if (name.empty() || name.size() >= IF_NAMESIZE) return 0;
    const ErrnoKeeper keeper;
    char terminated[IF_NAMESIZE] = {};
    std::ranges::copy(name, terminated);
    return ::if_nametoindex(terminated);
}

// Consumes the name of an interface, otherwise a decimal index. The longest name is tried first,
// and names before numbers, since a name may consist of any characters.
HalvaneStatus takeScope(TextCursor& text, std::uint32_t& index) {
    const std::string_view whole = nameAhead(text, isScopeCharacter);
    const std::string_view usual = nameAhead(text, isUsualNameCharacter);
    if (whole.empty()) return kStatusMalformed;
    for (const std::string_view name : {whole, usual}) {
        if (const std::uint32_t known = indexOf(name); known != 0) {
            index = known;
            text.skip(name.size());
            return kStatusOK;
        }
    }
    std::uint32_t number = 0;
    const HalvaneStatus status = text.decimal(UINT32_MAX, number);
    if (status == kStatusOutOfRange) return status;
    if (status != kStatusOK || isUsualNameCharacter(text.peek())) return kStatusUnsupported;
    index = number;
    return kStatusOK;
}

// The optional parts after an address.
class Suffix {
  public:
    Suffix(TextCursor& text, std::uint32_t flags, bool isBracketed)
        : text_(text), flags_(flags), isBracketed_(isBracketed), isOpen_(isBracketed) {}

    HalvaneStatus read() {
        HalvaneStatus status = kStatusOK;
        while (status == kStatusOK && isPartNext()) status = part();
        if (status != kStatusOK) return status;
        return isOpen_ ? kStatusMalformed : kStatusOK;
    }

    const auto& scope() const { return scope_; }
    const auto& prefix() const { return prefix_; }
    const auto& port() const { return port_; }

  private:
    bool isPartNext() const {
        switch (text_.peek()) {
            case ']':
                return isOpen_;
            case '%':
                return !scope_.isThere;
            case '/':
                return !prefix_.isThere;
            case ':':
                return isBracketed_ && !isOpen_ && !port_.isThere;
            default:
                return false;
        }
    }

    HalvaneStatus part() {
        const char mark = text_.peek();
        text_.skip(1);
        switch (mark) {
            case '%':
                return isForbidden(kIPv6AddressFlagNoScope) ? kStatusForbidden : readScope();
            case '/':
                return number(kIPv6AddressFlagNoPrefix, kIPv6PrefixMax, prefix_);
            case ':':
                return number(kIPv6AddressFlagNoPort, kIPPortMax, port_);
            default:
                isOpen_ = false;
                return kStatusOK;
        }
    }

    bool isForbidden(std::uint32_t flag) const { return (flags_ & flag) != 0; }

    HalvaneStatus number(std::uint32_t flag, std::uint32_t max, AddressPart& part) {
        if (isForbidden(flag)) return kStatusForbidden;
        return part.read(text_, max);
    }

    HalvaneStatus readScope() {
        scope_.isThere = true;
        return takeScope(text_, scope_.value);
    }

    TextCursor& text_;
    std::uint32_t flags_;
    bool isBracketed_;
    bool isOpen_;
    AddressPart scope_;
    AddressPart prefix_;
    AddressPart port_;
};

void storeGroups(std::uint8_t* address, const Groups& groups) {
    for (const std::uint16_t group : groups) {
        *address++ = static_cast<std::uint8_t>(group >> CHAR_BIT);
        *address++ = static_cast<std::uint8_t>(group);
    }
}

// --- To text ---

Groups groupsOf(const std::uint8_t* address) {
    Groups groups;
    for (std::size_t i = 0; i < kGroupCount; ++i) {
        groups[i] = static_cast<std::uint16_t>(address[2 * i] << CHAR_BIT | address[2 * i + 1]);
    }
    return groups;
}

std::uint32_t lastTwo(const Groups& groups) {
    return std::uint32_t{groups[6]} << 16 | groups[7];
}

struct Run {
    std::size_t start = 0;
    std::size_t length = 0;
};

// Returns the first of the longest runs of zero groups; its length is 0 if no group is zero.
Run longestZeroRun(const Groups& groups) {
    Run best;
    Run current;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        current = groups[i] != 0 ? Run{i + 1, 0} : Run{current.start, current.length + 1};
        if (current.length > best.length) best = current;
    }
    return best;
}

char* putText(char* to, std::string_view text) {
    return std::ranges::copy(text, to).out;
}

char* putGroup(char* to, unsigned group) {
    if (group > 0xFFF) *to++ = halvane::kLowerHexDigits[group >> 12];
    if (group > 0xFF) *to++ = halvane::kLowerHexDigits[group >> 8 & 0xF];
    if (group > 0xF) *to++ = halvane::kLowerHexDigits[group >> 4 & 0xF];
    *to++ = halvane::kLowerHexDigits[group & 0xF];
    return to;
}

// Unlike RFC 5952, this also shortens a run of a single zero group.
char* putGroups(char* to, const Groups& groups) {
    const Run run = longestZeroRun(groups);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (run.length > 0 && i == run.start) {
            to = putText(to, "::");
            i += run.length - 1;
            continue;
        }
        if (i > 0 && (run.length == 0 || i != run.start + run.length)) *to++ = ':';
        to = putGroup(to, groups[i]);
    }
    return to;
}

// Handles ::ffff:a.b.c.d (RFC 4291 clause 2.5.5.2) and ::a.b.c.d (clause 2.5.5.1). The unspecified
// and the loopback address are not among the latter.
char* putAddress(char* to, const Groups& groups) {
    const bool beginsWithZeros =
        std::all_of(groups.begin(), groups.begin() + 5, [](auto group) { return group == 0; });
    const bool isMapped = beginsWithZeros && groups[5] == UINT16_MAX;
    const bool isCompatible = beginsWithZeros && groups[5] == 0 && lastTwo(groups) > 1;
    if (!isMapped && !isCompatible) return putGroups(to, groups);
    return putIPv4Address(putText(to, isMapped ? "::ffff:" : "::"), lastTwo(groups));
}

// Writes an interface name, or the index if the system knows no name.
char* putScope(char* to, std::uint32_t scope) {
    const ErrnoKeeper keeper;
    *to++ = '%';
    char name[IF_NAMESIZE] = {};
    if (::if_indextoname(scope, name) != nullptr) return putText(to, name);
    return std::to_chars(to, to + 10, scope).ptr;
}

// "[", eight groups, a scope, "]", a port of 31 bits, and the terminator.
static_assert(kIPv6AddressTextSize == 1 + 39 + (1 + IF_NAMESIZE - 1) + 1 + 11 + 1);

}  // namespace

}  // namespace halvane

HalvaneStatus StringToIPv6Address(const char* text, std::uint32_t flags, std::uint8_t* address,
                                  std::uint32_t* scope, int* prefix, int* port, const char** end) {
    if (text == nullptr) return kStatusUnsupported;
    halvane::TextCursor cursor(text, SIZE_MAX);
    halvane::Suffix suffix(cursor, flags, cursor.skipIf('['));
    halvane::GroupReader reader(cursor);
    HalvaneStatus status = reader.read();
    if (status == kStatusOK) status = suffix.read();
    if (status != kStatusOK) return status;

    if (address != nullptr) halvane::storeGroups(address, reader.groups());
    suffix.scope().storeAt(scope);
    suffix.prefix().storeAt(prefix);
    suffix.port().storeAt(port);
    if (end != nullptr) *end = cursor.position();
    return kStatusOK;
}

char* IPv6AddressToCString(const std::uint8_t* address, std::uint32_t scope, int port,
                           char* buffer) {
    char* to = buffer;
    if (port > 0) *to++ = '[';
    to = halvane::putAddress(to, halvane::groupsOf(address));
    if (scope != 0) to = halvane::putScope(to, scope);
    if (port > 0) {
        *to++ = ']';
        to = halvane::putPort(to, port);
    }
    *to = '\0';
    return buffer;
}
