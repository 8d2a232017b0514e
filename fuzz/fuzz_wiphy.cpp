// A message of nl80211 about radios, with attributes nested in any way, most of them whole: what it
// tells adds up to itself, and fits together.
#include <cstddef>
#include <cstdint>
#include <linux/nl80211.h>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/air/channel.h"

#include "fuzz/byte_source.h"
#include "fuzz/netlink_source.h"
#include "fuzz/require.h"
#include "tools/halvane/input/nl80211_message.h"
#include "tools/halvaned/radio/device_list.h"
#include "tools/halvaned/radio/device_records.h"
#include "tools/halvaned/radio/radio.h"
#include "tools/halvaned/radio/radio_event.h"
#include "tools/halvaned/radio/radio_interface.h"
#include "tools/halvaned/radio/radio_message.h"
#include "tools/halvaned/radio/regulatory_domain.h"

using halvane::fuzzing::ByteSource;
using halvane::fuzzing::putAttribute;
using namespace halvane::hosting;
namespace air = halvane::air;

namespace {

using Bytes = std::vector<std::uint8_t>;
using View = std::span<const std::uint8_t>;

constexpr int kDeepest = 6;  // as deep as a channel stands, and one more

// Attributes of any types. Those of the message itself are ones that have a meaning.
void addAttributes(ByteSource& source, Bytes& bytes, int depth) {
    constexpr std::uint16_t kOuter[] = {
        NL80211_ATTR_WIPHY,           NL80211_ATTR_WIPHY_NAME,
        NL80211_ATTR_WIPHY_BANDS,     NL80211_ATTR_SUPPORTED_IFTYPES,
        NL80211_ATTR_CIPHER_SUITES,   NL80211_ATTR_INTERFACE_COMBINATIONS,
        NL80211_ATTR_IFINDEX,         NL80211_ATTR_IFNAME,
        NL80211_ATTR_REG_ALPHA2,      NL80211_ATTR_WIPHY_ANTENNA_AVAIL_TX,
        NL80211_ATTR_REG_INITIATOR,   NL80211_ATTR_WIPHY_ANTENNA_AVAIL_RX,
        NL80211_ATTR_MAX_AP_ASSOC_STA};
    const std::size_t count = source.below(8);
    for (std::size_t i = 0; i < count && !source.empty(); ++i) {
        const auto type =
            depth == 0 ? source.oneOf(kOuter) : static_cast<std::uint16_t>(source.below(24));
        if (depth == kDeepest || source.flag()) {
            putAttribute(source, bytes, type, source.bytes(24));
        } else {
            Bytes nested;
            addAttributes(source, nested, depth + 1);
            if (nested.size() > 60000) return;
            putAttribute(source, bytes, type, nested);
        }
    }
}

Bytes messageFrom(ByteSource& source) {
    constexpr std::uint8_t kCommands[] = {NL80211_CMD_NEW_WIPHY, NL80211_CMD_NEW_INTERFACE,
                                          NL80211_CMD_GET_REG, NL80211_CMD_REG_CHANGE};
    Bytes bytes = {source.oneOf(kCommands), 1, 0, 0};
    while (!source.empty() && bytes.size() < 30000) addAttributes(source, bytes, 0);
    return bytes;
}

void checkBand(const RadioBand& band) {
    for (const auto& [place, channel] : band.channels) {
        REQUIRE(place == channel.kilohertz());
        const auto number = channel.channel();
        if (number) REQUIRE(air::centerFrequencyOf(*number) == static_cast<int>(channel.frequency));
        REQUIRE(!band.allows80(channel) || band.allows40(channel));
        REQUIRE(!band.allows40(channel) || (number && !channel.isDisabled));
    }
    REQUIRE(!band.streams || (*band.streams >= 1 && *band.streams <= 8));
}

void checkRadio(const Radio& radio, View message) {
    for (const auto& [number, band] : radio.bands) checkBand(band);
    REQUIRE(radio.chains() >= 1 && radio.chains() <= 32);
    REQUIRE(radio.canHost() == (radio.mostNetworks() > 0));
    REQUIRE(radio.ciphers.size() <= message.size() / 4);
    REQUIRE(radio.name.find('\0') == std::string::npos);

    Radio joined{.index = radio.index};
    joined.join(radio);
    REQUIRE(joined == radio);
    joined.join(radio);
    REQUIRE(joined == radio);

    DeviceList devices;
    devices.radios = {radio};
    const DeviceInterface interface { .name = "wlan0", .index = 1, .radio = radio.index };
    devices.interfaces = {interface};
    for (const auto& record : channelRecords(devices, interface)) {
        REQUIRE(record.channelNumber() > 0 && record.channelFrequency() > 0);
    }
    REQUIRE(deviceRecords(devices).size() == 1);
}

template <typename Told>
void checkFault(const halvane::tool::ToldBy<Told>& told) {
    REQUIRE(told || !told.error().empty());
}

void check(View message) {
    const auto radio = readRadio(message);
    checkFault(radio);
    if (radio && *radio) checkRadio(**radio, message);

    std::vector<std::string> faults;
    const Bytes copy(message.begin(), message.end());
    const auto radios = joinedRadios(std::vector{copy, copy}, faults);
    REQUIRE(faults.size() == (radio ? 0U : 2U));
    REQUIRE(radios.size() == (radio && *radio ? 1U : 0U));
    if (!radios.empty()) REQUIRE(radios[0] == **radio);

    const auto interface = readRadioInterface(message);
    checkFault(interface);
    REQUIRE(!interface || !*interface || !(*interface)->name.empty());
    const auto domain = readRegulatoryDomain(message);
    checkFault(domain);
    REQUIRE(!domain || !*domain || (*domain)->country.size() == 2);
    const auto event = readRadioEvent(message);
    checkFault(event);
    REQUIRE(!event || !*event || !(*event)->country || (*event)->country->size() == 2);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    check(View(data, size));
    ByteSource source(data, size);
    check(messageFrom(source));
    return 0;
}
