#include "tools/halvaned/hostapd/control_message.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <system_error>
#include <type_traits>
#include <utility>

namespace halvane::hosting {

namespace {

using Kind = ControlEvent::Kind;

// --- Words and lines ---

// Takes what stands before the first `end`, and `end` itself.
std::string_view takeUntil(std::string_view& text, char end) {
    const std::size_t at = std::min(text.find(end), text.size());
    const auto taken = text.substr(0, at);
    text.remove_prefix(std::min(at + 1, text.size()));
    return taken;
}

std::string_view withoutLineEnd(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

// The message behind "<3>".
std::string_view behindLevel(std::string_view message) {
    if (!isEvent(message)) return message;
    const std::size_t end = message.find('>');
    return end == std::string_view::npos ? std::string_view() : message.substr(end + 1);
}

// Absent unless all of the text is a number that the type holds. "0x" makes it hexadecimal.
template <typename Integer>
std::optional<Integer> numberIn(std::string_view text) {
    int base = 10;
    if (text.starts_with("0x")) {
        base = 16;
        text.remove_prefix(2);
    }
    Integer number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::optional<std::uint8_t> octetIn(std::string_view digits) {
    std::uint8_t octet = 0;
    if (digits.size() != 2) return std::nullopt;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + 2, octet, 16);
    if (error != std::errc() || end != digits.data() + 2) return std::nullopt;
    return octet;
}

// --- Events ---

struct EventName {
    std::string_view name;
    Kind kind;
    bool hasStation;
};
constexpr EventName kEvents[] = {
    {"AP-STA-CONNECTED", Kind::StationConnected, true},
    {"AP-STA-DISCONNECTED", Kind::StationDisconnected, true},
    {"CTRL-EVENT-EAP-SUCCESS", Kind::Authenticated, true},
    {"CTRL-EVENT-EAP-SUCCESS2", Kind::Authenticated, true},
    {"CTRL-EVENT-EAP-FAILURE", Kind::Rejected, true},
    {"CTRL-EVENT-EAP-FAILURE2", Kind::Rejected, true},
    {"EAPOL-4WAY-HS-COMPLETED", Kind::KeysInstalled, true},
    {"AP-ENABLED", Kind::Enabled, false},
    {"AP-DISABLED", Kind::Disabled, false},
    {"INTERFACE-DISABLED", Kind::Disabled, false},
    {"CTRL-EVENT-TERMINATING", Kind::Terminating, false},
};

// --- Replies ---

constexpr std::pair<std::string_view, ControlReply> kReplies[] = {
    {"OK", ControlReply::OK},
    {"FAIL", ControlReply::Fail},
    {"UNKNOWN COMMAND", ControlReply::UnknownCommand},
    {"PONG", ControlReply::Pong},
};

// --- Stations ---

// Elements of the association request as hostapd tells them: octets as pairs of digits, with or
// without blanks between. Absent for anything else, and beyond the size of an element.
std::optional<std::vector<std::uint8_t>> octetsIn(std::string_view text) {
    constexpr std::size_t kMost = 255;
    std::vector<std::uint8_t> octets;
    for (;;) {
        while (text.starts_with(' ')) text.remove_prefix(1);
        if (text.empty()) return octets;
        const auto octet = octetIn(text.substr(0, 2));
        if (!octet || octets.size() == kMost) return std::nullopt;
        octets.push_back(*octet);
        text.remove_prefix(2);
    }
}

void append(std::vector<std::uint8_t>& elements, std::uint8_t id, const std::uint8_t* octets,
            std::size_t size) {
    if (size == 0) return;
    elements.push_back(id);
    elements.push_back(static_cast<std::uint8_t>(size));
    elements.insert(elements.end(), octets, octets + size);
}

// What is read of the lines that become elements.
struct ElementLines {
    std::vector<std::uint8_t> rates;
    std::vector<std::uint8_t> extendedCapabilities;
};

// IEEE 802.11-2020, 9.4.2.3 and 9.4.2.13: eight rates, and the others in a second element.
std::vector<std::uint8_t> elementsOf(const ElementLines& lines) {
    constexpr std::uint8_t kRates = 1, kMoreRates = 50, kExtendedCapabilities = 127;
    constexpr std::size_t kFirstRates = 8;
    std::vector<std::uint8_t> elements;
    const std::size_t first = std::min(lines.rates.size(), kFirstRates);
    append(elements, kRates, lines.rates.data(), first);
    append(elements, kMoreRates, lines.rates.data() + first, lines.rates.size() - first);
    append(elements, kExtendedCapabilities, lines.extendedCapabilities.data(),
           lines.extendedCapabilities.size());
    return elements;
}

void readFlags(StationRecord& station, std::string_view value) {
    const auto has = [value](std::string_view flag) {
        return value.find(flag) != std::string_view::npos;
    };
    station.isAuthenticated = has("[AUTH]");
    station.isAssociated = has("[ASSOC]");
    station.isAuthorized = has("[AUTHORIZED]");
}

template <auto field>
void readNumber(StationRecord& station, std::string_view value) {
    using Integer = typename std::remove_reference_t<decltype(station.*field)>::value_type;
    if (const auto number = numberIn<Integer>(value)) station.*field = *number;
}

// The rate stands before words about its modulation.
template <auto field>
void readRate(StationRecord& station, std::string_view value) {
    readNumber<field>(station, takeUntil(value, ' '));
}

void readAid(StationRecord& station, std::string_view value) {
    constexpr std::uint16_t kGreatest = 2007;
    const auto number = numberIn<std::uint16_t>(value);
    if (number && *number >= 1 && *number <= kGreatest) station.aid = *number;
}

struct StationLine {
    std::string_view key;
    void (*read)(StationRecord&, std::string_view);
};
constexpr StationLine kStationLines[] = {
    {"flags", readFlags},
    {"aid", readAid},
    {"capability", readNumber<&StationRecord::capabilities>},
    {"listen_interval", readNumber<&StationRecord::listenInterval>},
    {"signal", readNumber<&StationRecord::signal>},
    {"rx_rate_info", readRate<&StationRecord::receiveRate>},
    {"tx_rate_info", readRate<&StationRecord::transmitRate>},
    {"rx_packets", readNumber<&StationRecord::receivedPackets>},
    {"tx_packets", readNumber<&StationRecord::transmittedPackets>},
    {"rx_bytes", readNumber<&StationRecord::receivedBytes>},
    {"tx_bytes", readNumber<&StationRecord::transmittedBytes>},
    {"connected_time", readNumber<&StationRecord::connectedTime>},
    {"inactive_msec", readNumber<&StationRecord::inactiveTime>},
};

void readElementLine(ElementLines& lines, std::string_view key, std::string_view value) {
    auto* const octets = key == "supported_rates" ? &lines.rates
                         : key == "ext_capab"     ? &lines.extendedCapabilities
                                                  : nullptr;
    if (octets == nullptr) return;
    if (auto read = octetsIn(value)) *octets = *std::move(read);
}

}  // namespace

bool isEvent(std::string_view message) noexcept {
    return message.starts_with('<');
}

ControlEvent readEvent(std::string_view message) noexcept {
    ControlEvent event;
    event.text = withoutLineEnd(behindLevel(message));
    std::string_view rest = event.text;
    const auto name = takeUntil(rest, ' ');
    event.station = MacAddress::fromText(takeUntil(rest, ' '));
    const auto* const found = std::ranges::find(kEvents, name, &EventName::name);
    if (found != std::end(kEvents)) {
        if (event.station || !found->hasStation) event.kind = found->kind;
    } else if (name.starts_with("WPS-")) {
        event.kind = Kind::WPS;
    }
    return event;
}

ControlReply readReply(std::string_view message) noexcept {
    const auto text = withoutLineEnd(message);
    for (const auto& [word, reply] : kReplies) {
        if (text == word) return reply;
    }
    return ControlReply::Text;
}

std::optional<std::string_view> valueIn(std::string_view message, std::string_view key) noexcept {
    while (!message.empty()) {
        auto value = takeUntil(message, '\n');
        if (!value.starts_with(key)) continue;
        value.remove_prefix(key.size());
        if (value.starts_with('=')) return value.substr(1);
    }
    return std::nullopt;
}

std::optional<StationRecord> readStation(std::string_view message) {
    const auto address = MacAddress::fromText(withoutLineEnd(takeUntil(message, '\n')));
    if (!address) return std::nullopt;
    StationRecord station{.address = *address};
    ElementLines lines;
    while (!message.empty()) {
        auto value = withoutLineEnd(takeUntil(message, '\n'));
        if (value.find('=') == std::string_view::npos) continue;
        const auto key = takeUntil(value, '=');
        const auto* const found = std::ranges::find(kStationLines, key, &StationLine::key);
        if (found != std::end(kStationLines)) found->read(station, value);
        readElementLine(lines, key, value);
    }
    station.elements = elementsOf(lines);
    return station;
}

}  // namespace halvane::hosting
