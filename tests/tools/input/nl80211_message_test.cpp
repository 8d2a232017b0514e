#include "tools/halvane/input/nl80211_message.h"

#include <bit>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"

#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"

using halvane::ByteBuffer;
using halvane::MacAddress;
using halvane::testing::Bytes;
using halvane::testing::forEachPrefix;
using halvane::testing::forEachValueAt;
using halvane::testing::NetlinkMessage;
using ::testing::Optional;
using namespace halvane::tool;
using namespace std::chrono_literals;

namespace {

const MacAddress kBSSID({0x02, 0, 0, 0, 0, 0x01});
const Bytes kBSSIDOctets = {0x02, 0, 0, 0, 0, 0x01};
const Bytes kNamed = {0x00, 0x01, 'a', 0x01, 0x01, 0x82};
const Bytes kHidden = {0x00, 0x01, 0x00, 0x01, 0x01, 0x82};

// As the kernel lays out what it tells of a network, octet by octet.
const Bytes kMessage = {
    0x22, 0x01, 0x00, 0x00,                                                  // new scan results
    0x08, 0x00, 0x2E, 0x00, 0x07, 0x00, 0x00, 0x00,                          // generation 7
    0x08, 0x00, 0x03, 0x00, 0x05, 0x00, 0x00, 0x00,                          // interface 5
    0x0C, 0x00, 0x99, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // device 1
    0x88, 0x00, 0x2F, 0x00,                                                  // the network
    0x0A, 0x00, 0x01, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00,  // BSSID
    0x04, 0x00, 0x0E, 0x00,                                                  // a probe response's
    0x0A, 0x00, 0x06, 0x00, 0x00, 0x01, 0x61, 0x01, 0x01, 0x82, 0x00, 0x00,  // elements
    0x0C, 0x00, 0x03, 0x00, 0x15, 0xCD, 0x5B, 0x07, 0x00, 0x00, 0x00, 0x00,  // TSF
    0x0A, 0x00, 0x0B, 0x00, 0x00, 0x01, 0x00, 0x01, 0x01, 0x82, 0x00, 0x00,  // a beacon's elements
    0x0C, 0x00, 0x0D, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00,  // a beacon's TSF
    0x06, 0x00, 0x04, 0x00, 0x64, 0x00, 0x00, 0x00,                          // 100 TU
    0x06, 0x00, 0x05, 0x00, 0x11, 0x04, 0x00, 0x00,                          // capability
    0x08, 0x00, 0x02, 0x00, 0x3C, 0x14, 0x00, 0x00,                          // 5180 MHz
    0x08, 0x00, 0x0C, 0x00, 0x00, 0x00, 0x00, 0x00,                          // scanned 20 MHz wide
    0x08, 0x00, 0x0A, 0x00, 0xE8, 0x03, 0x00, 0x00,                          // 1000 ms ago
    0x0C, 0x00, 0x0F, 0x00, 0x00, 0xCA, 0x9A, 0x3B, 0x00, 0x00, 0x00, 0x00,  // 1 s after boot
    0x08, 0x00, 0x07, 0x00, 0xE4, 0xF3, 0xFF, 0xFF,                          // -31 dBm
    0x08, 0x00, 0x09, 0x00, 0x01, 0x00, 0x00, 0x00,                          // associated
};
constexpr std::size_t kStartOfNetwork = 36;

ScannedNetwork networkOfMessage() {
    ScannedNetwork network;
    network.interface = 5;
    network.bssid = kBSSID;
    network.frequency = 5180;
    network.signal = -3100;
    network.seenAgo = 1000;
    network.lastSeen = 1'000'000'000;
    network.tsf = 123'456'789;
    network.beaconTSF = std::uint64_t{1} << 32;
    network.beaconInterval = 100;
    network.capability = 0x0411;
    network.status = ScannedStatus::Associated;
    network.probeResponseElements = kNamed;
    network.beaconElements = kHidden;
    return network;
}

// A message about a network with what `add` adds.
Bytes messageWith(const std::function<void(NetlinkMessage&)>& add) {
    NetlinkMessage message(NL80211_CMD_NEW_SCAN_RESULTS);
    message.addU32(NL80211_ATTR_IFINDEX, 5).begin(NL80211_ATTR_BSS);
    message.add(NL80211_BSS_BSSID, kBSSIDOctets);
    add(message);
    return message.end().bytes();
}

ScannedNetwork read(const Bytes& message) {
    const auto network = readScannedNetwork(message);
    EXPECT_TRUE(network) << network.error();
    EXPECT_TRUE(network && *network);
    return network && *network ? **network : ScannedNetwork();
}

std::string faultOf(const Bytes& message) {
    const auto network = readScannedNetwork(message);
    EXPECT_FALSE(network);
    return network ? "" : network.error();
}

TEST(ScannedNetwork, IsReadFromTheKernelsOctets) {
    if (std::endian::native != std::endian::little) GTEST_SKIP() << "octets of another machine";
    EXPECT_EQ(read(kMessage), networkOfMessage());
}

TEST(ScannedNetwork, IsReadFromLibnlsMessages) {
    const Bytes message = messageWith([](NetlinkMessage& network) {
        network.addFlag(NL80211_BSS_PRESP_DATA);
        network.add(NL80211_BSS_INFORMATION_ELEMENTS, kNamed);
        network.addU64(NL80211_BSS_TSF, 123'456'789);
        network.add(NL80211_BSS_BEACON_IES, kHidden);
        network.addU64(NL80211_BSS_BEACON_TSF, std::uint64_t{1} << 32);
        network.addU16(NL80211_BSS_BEACON_INTERVAL, 100);
        network.addU16(NL80211_BSS_CAPABILITY, 0x0411);
        network.addU32(NL80211_BSS_FREQUENCY, 5180);
        network.addU32(NL80211_BSS_SEEN_MS_AGO, 1000);
        network.addU64(NL80211_BSS_LAST_SEEN_BOOTTIME, 1'000'000'000);
        network.addU32(NL80211_BSS_SIGNAL_MBM, static_cast<std::uint32_t>(-3100));
        network.addU32(NL80211_BSS_STATUS, NL80211_BSS_STATUS_ASSOCIATED);
    });
    EXPECT_EQ(read(message), networkOfMessage());
}

TEST(ScannedNetwork, NeedsItsBSSIDAlone) {
    ScannedNetwork expected;
    expected.interface = 5;
    expected.bssid = kBSSID;
    EXPECT_EQ(read(messageWith([](NetlinkMessage&) {})), expected);
    NetlinkMessage without(NL80211_CMD_NEW_SCAN_RESULTS);
    without.begin(NL80211_ATTR_BSS).addU32(NL80211_BSS_FREQUENCY, 2412).end();
    EXPECT_EQ(faultOf(without.bytes()), "it tells no BSSID");
}

TEST(ScannedNetwork, KeepsWhatFewTell) {
    const auto network = read(messageWith([](NetlinkMessage& message) {
        message.addU8(NL80211_BSS_SIGNAL_UNSPEC, 80);
        message.addU32(NL80211_BSS_FREQUENCY, 903);
        message.addU32(NL80211_BSS_FREQUENCY_OFFSET, 500);
        message.addU64(NL80211_BSS_PARENT_TSF, 77);
        message.add(NL80211_BSS_PARENT_BSSID, {0x02, 0, 0, 0, 0, 0x09});
        message.addU32(NL80211_BSS_STATUS, NL80211_BSS_STATUS_IBSS_JOINED);
        message.addU32(999, 1);  // of a later kernel
    }));
    EXPECT_EQ(network.signal, std::nullopt);
    EXPECT_THAT(network.unspecifiedSignal, Optional(80));
    EXPECT_THAT(network.frequency, Optional(903U));
    EXPECT_EQ(network.frequencyOffset, 500U);
    EXPECT_EQ(network.parentTime, (ParentTime{77, MacAddress({0x02, 0, 0, 0, 0, 0x09})}));
    EXPECT_EQ(network.status, ScannedStatus::JoinedAdHoc);
}

// What the kernel sends, and what it means.
TEST(ScannedNetwork, TellsElementsOfProbeResponsesFromThoseOfBeacons) {
    struct Case {
        bool isProbeResponse;
        bool hasBeacon;
        const Bytes& elements;
        std::optional<Bytes> probeResponse;
        std::optional<Bytes> beacon;
    };
    const Case cases[] = {
        {true, false, kNamed, kNamed, std::nullopt},
        {true, true, kNamed, kNamed, kHidden},
        {true, true, kHidden, kHidden, kHidden},
        {false, true, kHidden, std::nullopt, kHidden},
        {false, false, kNamed, std::nullopt, kNamed},
        {false, true, kNamed, kNamed, kHidden},  // older kernels
    };
    for (const Case& one : cases) {
        const auto network = read(messageWith([&one](NetlinkMessage& message) {
            message.add(NL80211_BSS_INFORMATION_ELEMENTS, one.elements);
            if (one.isProbeResponse) message.addFlag(NL80211_BSS_PRESP_DATA);
            if (one.hasBeacon) message.add(NL80211_BSS_BEACON_IES, kHidden);
        }));
        EXPECT_EQ(network.probeResponseElements, one.probeResponse);
        EXPECT_EQ(network.beaconElements, one.beacon);
    }
}

TEST(ScannedNetwork, HasAnAge) {
    ScannedNetwork network;
    EXPECT_EQ(network.age(5s), std::nullopt);
    network.seenAgo = 300;
    EXPECT_EQ(network.age(5s), 300ms);
    network.lastSeen = 1'500'000'000;
    EXPECT_EQ(network.age(5s), 3500ms);
    EXPECT_EQ(network.age(1s), 300ms);  // a time that has not come
    network.lastSeen = 0;
    EXPECT_EQ(network.age(5s), 300ms);
}

TEST(ScannedNetwork, RefusesValuesOfAnotherSize) {
    struct Sized {
        int type;
        std::size_t size;
        const char* name;
    };
    const Sized attributes[] = {
        {NL80211_BSS_BSSID, 6, "BSSID"},
        {NL80211_BSS_FREQUENCY, 4, "frequency"},
        {NL80211_BSS_TSF, 8, "TSF"},
        {NL80211_BSS_BEACON_INTERVAL, 2, "beacon interval"},
        {NL80211_BSS_CAPABILITY, 2, "capability"},
        {NL80211_BSS_SIGNAL_MBM, 4, "signal"},
        {NL80211_BSS_SIGNAL_UNSPEC, 1, "signal"},
        {NL80211_BSS_STATUS, 4, "status"},
        {NL80211_BSS_SEEN_MS_AGO, 4, "age"},
        {NL80211_BSS_BEACON_TSF, 8, "beacon's TSF"},
        {NL80211_BSS_LAST_SEEN_BOOTTIME, 8, "time"},
        {NL80211_BSS_PARENT_TSF, 8, "parent's TSF"},
        {NL80211_BSS_PARENT_BSSID, 6, "parent's BSSID"},
        {NL80211_BSS_FREQUENCY_OFFSET, 4, "frequency's offset"},
    };
    for (const Sized& attribute : attributes) {
        for (std::size_t size = 0; size <= 12; ++size) {
            const Bytes message = messageWith([&attribute, size](NetlinkMessage& network) {
                network.add(attribute.type, Bytes(size, 1));
            });
            if (size == attribute.size) {
                EXPECT_TRUE(readScannedNetwork(message)) << attribute.name;
            } else {
                EXPECT_EQ(faultOf(message), std::string("its ") + attribute.name + " has " +
                                                std::to_string(size) + " octets");
            }
        }
    }
}

TEST(ScannedNetwork, IsOfOneKindOfMessage) {
    Bytes other = kMessage;
    other[0] = NL80211_CMD_NEW_INTERFACE;
    const auto network = readScannedNetwork(other);
    ASSERT_TRUE(network);
    EXPECT_FALSE(*network);
    // The event that a scan has ended.
    const auto event = readScannedNetwork(
        NetlinkMessage(NL80211_CMD_NEW_SCAN_RESULTS).addU32(NL80211_ATTR_IFINDEX, 5).bytes());
    ASSERT_TRUE(event);
    EXPECT_FALSE(*event);
}

TEST(ScannedNetwork, IsNotReadFromAPartOfItsMessage) {
    if (std::endian::native != std::endian::little) GTEST_SKIP() << "octets of another machine";
    forEachPrefix(kMessage, [](const ByteBuffer& prefix) {
        const auto network = readScannedNetwork(prefix.bytes());
        const std::size_t size = prefix.size();
        const bool isBetweenAttributes = size == 4 || size == 12 || size == 20 || size == 32;
        EXPECT_EQ(network.has_value(), isBetweenAttributes || size == kMessage.size()) << size;
        EXPECT_EQ(network && *network, size == kMessage.size()) << size;
    });
}

TEST(ScannedNetwork, SurvivesEveryLength) {
    if (std::endian::native != std::endian::little) GTEST_SKIP() << "octets of another machine";
    std::vector<std::size_t> offsets = {4, 5, 12, 13, 20, 21, 32, 33};
    std::size_t attribute = kStartOfNetwork;
    while (attribute < kMessage.size()) {
        offsets.push_back(attribute);
        offsets.push_back(attribute + 1);
        attribute += (kMessage[attribute] + 3U) / 4 * 4;
    }
    ASSERT_EQ(attribute, kMessage.size());
    forEachValueAt(kMessage, offsets, [](const ByteBuffer& form) {
        const auto network = readScannedNetwork(form.bytes());
        EXPECT_TRUE(network || !network.error().empty());
    });
}

TEST(ScannedNetwork, RefusesNestedGarbage) {
    for (const std::uint8_t filling : Bytes{0x00, 0x01, 0x7F, 0xFF}) {
        for (std::size_t size = 1; size <= 64; ++size) {
            NetlinkMessage message(NL80211_CMD_NEW_SCAN_RESULTS);
            message.add(NL80211_ATTR_BSS, Bytes(size, filling));
            EXPECT_NE(faultOf(message.bytes()), "");
        }
    }
    NetlinkMessage empty(NL80211_CMD_NEW_SCAN_RESULTS);
    empty.add(NL80211_ATTR_BSS, {});
    EXPECT_EQ(faultOf(empty.bytes()), "it tells no BSSID");
}

TEST(WirelessInterfaceMessage, TellsNameIndexAndMode) {
    NetlinkMessage message(NL80211_CMD_NEW_INTERFACE);
    message.addU32(NL80211_ATTR_IFINDEX, 3).addText(NL80211_ATTR_IFNAME, "wlan1mon");
    message.addU32(NL80211_ATTR_WIPHY, 0).addU32(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_MONITOR);
    const auto interface = readInterface(message.bytes());
    ASSERT_TRUE(interface && *interface);
    EXPECT_EQ((*interface)->name, "wlan1mon");
    EXPECT_EQ((*interface)->index, 3U);
    EXPECT_EQ((*interface)->mode, InterfaceMode::Monitor);
}

TEST(WirelessInterfaceMessage, MayBeOfADeviceWithoutAnInterface) {
    NetlinkMessage message(NL80211_CMD_NEW_INTERFACE);
    message.addU64(NL80211_ATTR_WDEV, 1).addU32(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_P2P_DEVICE);
    const auto interface = readInterface(message.bytes());
    ASSERT_TRUE(interface);
    EXPECT_FALSE(*interface);
}

TEST(WirelessInterfaceMessage, IsCheckedToo) {
    EXPECT_FALSE(readInterface({}));
    NetlinkMessage wrong(NL80211_CMD_NEW_INTERFACE);
    wrong.addU16(NL80211_ATTR_IFINDEX, 3);
    EXPECT_THAT(readInterface(wrong.bytes()).error(), "its interface has 2 octets");
    // A name without its NUL.
    NetlinkMessage open(NL80211_CMD_NEW_INTERFACE);
    open.addU32(NL80211_ATTR_IFINDEX, 3).add(NL80211_ATTR_IFNAME, {'w', 'l'});
    forEachPrefix(open.bytes(), [](const ByteBuffer& prefix) {
        const auto interface = readInterface(prefix.bytes());
        EXPECT_TRUE(!interface || !*interface || (*interface)->name == "wl");
    });
}

TEST(ScanEvent, IsThatOfTheInterface) {
    const auto event = [](std::uint8_t command, std::uint32_t interface) {
        return readScanEvent(
            NetlinkMessage(command).addU32(NL80211_ATTR_IFINDEX, interface).bytes(), 5);
    };
    EXPECT_EQ(*event(NL80211_CMD_NEW_SCAN_RESULTS, 5), ScanEvent::Done);
    EXPECT_EQ(*event(NL80211_CMD_SCAN_ABORTED, 5), ScanEvent::Aborted);
    EXPECT_EQ(*event(NL80211_CMD_NEW_SCAN_RESULTS, 6), std::nullopt);
    EXPECT_EQ(*event(NL80211_CMD_TRIGGER_SCAN, 5), std::nullopt);
    EXPECT_FALSE(readScanEvent(Bytes{1, 2, 3}, 5));
}

}  // namespace
