#include "halvane/ie/mac.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "halvane/ie/link_quality.h"

#include "tests/support/capability_bits.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/peak_memory.h"
#include "tests/support/replaced_system.h"
#include "tests/support/scarce_memory.h"

using halvane::ByteBuffer;
using halvane::HalvaneMAC;
using halvane::Number;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using namespace halvane::testing;

namespace {

const ByteBuffer kAddress = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
constexpr std::uint16_t kESS = 0x0001;
constexpr std::uint16_t kPrivacy = 0x0010;
const Bytes kRates = {1, 4, 0x82, 0x84, 0x8B, 0x96};

// The beacon of a WPA2-PSK network on channel 6 as it stands in the air, without its header.
const Bytes kBeacon = {
    0x00, 0x07, 'C',  'o',  'h',  'e',  'r',  'e',  'r',         // SSID "Coherer"
    0x01, 0x08, 0x82, 0x84, 0x8B, 0x96, 0x24, 0x30, 0x48, 0x6C,  // 1 to 54 Mbit/s
    0x03, 0x01, 0x01,                                            // DS Parameter Set: channel 1
    0x05, 0x04, 0x00, 0x01, 0x00, 0x00,                          // TIM
    0x2A, 0x01, 0x02,                                            // ERP
    0x30, 0x18, 0x01, 0x00,                                      // RSN, version 1
    0x00, 0x0F, 0xAC, 0x02,                                      // group cipher TKIP
    0x02, 0x00, 0x00, 0x0F, 0xAC, 0x04, 0x00, 0x0F, 0xAC, 0x02,  // CCMP, TKIP
    0x01, 0x00, 0x00, 0x0F, 0xAC, 0x02,                          // PSK
    0x00, 0x00,                                                  // no capabilities
    0x32, 0x04, 0x0C, 0x12, 0x18, 0x60,                          // 6, 9, 12, 48 Mbit/s
};

HalvaneMAC recordOf(const Bytes& elements, std::uint16_t capabilities = kESS) {
    auto record = HalvaneMAC::initWithMAC(kAddress);
    record.setCapabilityField(capabilities);
    record.setInformationElements(ByteBuffer(elements));
    return record;
}

std::vector<Number> numbers(std::initializer_list<double> values) {
    return {values.begin(), values.end()};
}

// Makes the stages of the walk public, which are for subclasses.
class Station : public HalvaneMAC {
  public:
    Station() : HalvaneMAC(kAddress) {}
    using HalvaneMAC::cleanupIEs;
    using HalvaneMAC::parseInformationElement;
    using HalvaneMAC::parseInformationElements;
    using HalvaneMAC::parseInformationElementSSID;
    using HalvaneMAC::parseInformationElementSupportedRates_withMaximumLength;
    using HalvaneMAC::parseInformationElementVendorSpecific;
};

TEST(MAC, IsEmptyButForItsAddressAtFirst) {
    const auto record = HalvaneMAC::initWithMAC(kAddress);
    EXPECT_EQ(record.mac(), kAddress);
    EXPECT_EQ(record.lastUpdated(), 0u);
    EXPECT_EQ(record.capabilities(), 0);
    EXPECT_FALSE(record.channel() || record.noise() || record.RSSI() || record.beaconInterval());
    EXPECT_FALSE(record.ieBuffer() || record.invalidIEs() || record.SSID());
    EXPECT_FALSE(record.supportedRates() || record.maxPHYRate() || record.channelWidth());
    EXPECT_FALSE(record.securityFriendlyName() || record.averageRate() || record.maxClientRate());
    EXPECT_TRUE(record.IEs().empty());
    EXPECT_TRUE(record.linkQualityHistory().empty());
}

TEST(MAC, StampsCreationAndChangesButNotMeasurements) {
    halvane::ScopedUpTime clock;
    clock.set(5'000'000'000);
    auto record = HalvaneMAC::initWithMAC(kAddress);
    EXPECT_EQ(record.firstAdded(), 5'000'000u);
    clock.set(6'000'000'000);
    record.setChannel(Number(6));
    record.setNoise(Number(-95));
    record.setRSSI(Number(-61));
    record.setBeaconInterval(Number(100));
    EXPECT_EQ(record.lastUpdated(), 0u);
    record.setCapabilityField(0);
    EXPECT_EQ(record.lastUpdated(), 6'000'000u);
    clock.set(7'000'000'000);
    record.setInformationElements(ByteBuffer());
    EXPECT_EQ(record.lastUpdated(), 7'000'000u);
    EXPECT_EQ(record.firstAdded(), 5'000'000u);
}

TEST(MAC, DecodesEachCapabilityBitAlone) {
    for (unsigned bit = 0; bit < 16; ++bit) {
        auto record = HalvaneMAC::initWithMAC(kAddress);
        record.setCapabilityField(static_cast<std::uint16_t>(1u << bit));
        EXPECT_EQ(record.capabilities(), 1u << bit);
        for (const auto& row : kCapabilityBits) {
            EXPECT_EQ((record.*row.isSet)(), row.bit == bit) << bit;
        }
    }
}

TEST(MAC, DecodesABeacon) {
    const auto record = recordOf(kBeacon, 0x0411);
    EXPECT_EQ(record.ieBuffer(), ByteBuffer(kBeacon));
    EXPECT_EQ(record.IEs().size(), 7u);
    EXPECT_EQ(record.IEs()[2], (ByteBuffer{3, 1, 1}));
    EXPECT_FALSE(record.invalidIEs());
    EXPECT_EQ(record.SSID(), ByteBuffer::fromText("Coherer"));
    EXPECT_EQ(record.supportedRates(), numbers({1, 2, 5.5, 6, 9, 11, 12, 18, 24, 36, 48, 54}));
    ASSERT_TRUE(record.rsn());
    EXPECT_TRUE(record.rsn()->isValid());
    EXPECT_TRUE(record.rsn()->allowKeyManagementPSK());
    EXPECT_EQ(record.maxPHYRate(), Number(54));
    EXPECT_EQ(record.channelWidth(), Number(20));
    EXPECT_EQ(record.securityFriendlyName(), "WPA Personal");
}

TEST(MACWalk, OfNothingDerivesNothing) {
    const auto record = recordOf({});
    EXPECT_EQ(record.ieBuffer(), ByteBuffer());
    EXPECT_TRUE(record.IEs().empty());
    EXPECT_FALSE(record.invalidIEs() || record.supportedRates() || record.maxPHYRate());
    EXPECT_FALSE(record.channelWidth() || record.securityFriendlyName());
}

TEST(MACWalk, KeepsTheTrailingBytesThatFormNoElement) {
    struct Row {
        const char* what;
        Bytes tail;
    };
    const Row rows[] = {
        {"one stray byte", {0x30}},
        {"a length past the end", {0x30, 0x05, 1, 2, 3, 4}},
        {"a header whose body is missing", {0x00, 0x01}},
        {"a length byte of 254", {0xDD, 254, 1, 2, 3}},
    };
    for (const Row& row : rows) {
        const auto record = recordOf(joined({ssidElement("a"), kRates, row.tail}));
        EXPECT_EQ(record.IEs().size(), 2u) << row.what;
        EXPECT_EQ(record.invalidIEs(), ByteBuffer(row.tail)) << row.what;
        EXPECT_EQ(record.SSID(), ByteBuffer{'a'}) << row.what;
        EXPECT_EQ(record.maxPHYRate(), Number(11)) << row.what;
    }
}

TEST(MACWalk, TakesALengthByteOf255AsAOneByteElement) {
    const auto record = recordOf({7, 255, 1, 0x07, 0x00, 0x01, 'a'});
    // The next attempt starts at FF 01 07, which has the size 3. Then comes 00 01 'a'.
    ASSERT_EQ(record.IEs().size(), 3u);
    EXPECT_EQ(record.IEs()[0], ByteBuffer{7});
    EXPECT_EQ(record.IEs()[1], (ByteBuffer{255, 1, 7}));
    EXPECT_EQ(record.SSID(), ByteBuffer{'a'});
    EXPECT_FALSE(record.invalidIEs());
}

TEST(MACWalk, CutsExactlyAtEveryTruncation) {
    std::vector<std::size_t> ends = {0};
    const auto whole = recordOf(kBeacon);
    for (const auto& element : whole.IEs()) ends.push_back(ends.back() + element.size());
    forEachPrefix(kBeacon, [&](const ByteBuffer& prefix) {
        auto record = HalvaneMAC::initWithMAC(kAddress);
        record.setInformationElements(prefix);
        const auto last = std::upper_bound(ends.begin(), ends.end(), prefix.size()) - 1;
        EXPECT_EQ(record.IEs().size(), static_cast<std::size_t>(last - ends.begin()));
        const bool isWhole = *last == prefix.size();
        EXPECT_EQ(record.invalidIEs().has_value(), !isWhole);
        if (!isWhole) {
            EXPECT_EQ(record.invalidIEs(), prefix.slice(*last));
        }
    });
}

TEST(MACWalk, SurvivesEveryLengthByte) {
    forEachHostileForm(kBeacon, {1, 10, 20, 23, 29, 32, 58}, [](const ByteBuffer& bytes) {
        auto record = HalvaneMAC::initWithMAC(kAddress);
        record.setInformationElements(bytes);
        std::size_t total = record.invalidIEs() ? record.invalidIEs()->size() : 0;
        for (const auto& element : record.IEs()) total += element.size();
        EXPECT_EQ(total, bytes.size());
        EXPECT_FALSE(record.description().empty());
    });
}

TEST(MACWalk, CountsTheBufferIn16Bits) {
    Bytes bytes;
    while (bytes.size() < 65536) bytes.insert(bytes.end(), {200, 0});
    EXPECT_TRUE(recordOf(bytes).IEs().empty());
    EXPECT_FALSE(recordOf(bytes).invalidIEs());

    bytes.insert(bytes.end(), {200, 0, 200});
    const auto record = recordOf(bytes);
    EXPECT_EQ(record.IEs().size(), 1u);
    EXPECT_EQ(record.invalidIEs(), ByteBuffer{200});
    EXPECT_EQ(record.ieBuffer()->size(), 65539u);
}

TEST(MACWalk, ReplacesWhatEarlierElementsGave) {
    auto record = recordOf(joined({ssidElement("first"), kRates, rsnElement(2)}), kPrivacy);
    record.setInformationElements(ByteBuffer(joined({ssidElement("second"), {9}})));
    EXPECT_EQ(record.SSID(), ByteBuffer::fromText("second"));
    EXPECT_FALSE(record.rsn() || record.supportedRates() || record.maxPHYRate());
    EXPECT_EQ(record.invalidIEs(), ByteBuffer{9});
    // The element list has no rate, so width and label stay as before.
    EXPECT_EQ(record.channelWidth(), Number(20));
    EXPECT_EQ(record.securityFriendlyName(), "WPA Personal");
    record.setInformationElements(ByteBuffer(ssidElement("third")));
    EXPECT_FALSE(record.invalidIEs());
}

TEST(MACWalk, KeepsTheLastElementOfAKind) {
    const auto record =
        recordOf(joined({rsnElement(2), rsnElement(1), ssidElement("a"), ssidElement("b")}));
    EXPECT_TRUE(record.rsn()->allowKeyManagement8021X());
    EXPECT_FALSE(record.rsn()->allowKeyManagementPSK());
    EXPECT_EQ(record.SSID(), ByteBuffer{'b'});
    EXPECT_EQ(record.IEs().size(), 4u);
}

TEST(MACWalk, DispatchesEachKnownElement) {
    const auto record = recordOf(joined({
        element(7, {'D', 'E', ' ', 1, 13, 20}),
        htCapabilitiesElement(0, 1),
        htOperationElement(6, 0),
        rsnElement(2),
        wpaElement(2),
        wpsElement(),
        element(221, {0x0A, 0x7E, 0x55, 1, 0, 0, 2, 0, 0, 0, 5}),
        element(221, {0x0A, 0x7E, 0x56, 1, 3, 0x01, 0xFF}),
    }));
    EXPECT_EQ(record.countryIE()->countryCode(), ByteBuffer::fromText("DE "));
    EXPECT_TRUE(record.HTCaps()->isValid());
    EXPECT_EQ(record.HTOperation()->primaryChannel(), 6);
    EXPECT_TRUE(record.rsn()->allowUnicastCipherCCMP());
    EXPECT_TRUE(record.wpa()->allowUnicastCipherTKIP());
    EXPECT_EQ(record.wpsIE()->tlvs()->version(), Number(1.0));
    EXPECT_EQ(record.dwdsIE()->DWDSRole(), "Relay");
    EXPECT_TRUE(record.tessicIE()->isSAWCapable());
}

TEST(MACWalk, ForgetsEveryElementBeforeTheNextOnes) {
    auto record = recordOf(joined({
        ssidElement("a"),
        kRates,
        element(7, {'D', 'E', ' '}),
        htCapabilitiesElement(0, 1),
        htOperationElement(6, 0),
        rsnElement(2),
        wpaElement(2),
        wpsElement(),
        element(221, {0x0A, 0x7E, 0x55, 1, 0, 0, 2}),
        element(221, {0x0A, 0x7E, 0x56, 1}),
    }));
    ASSERT_TRUE(record.SSID() && record.supportedRates() && record.countryIE() && record.HTCaps());
    ASSERT_TRUE(record.HTOperation() && record.rsn() && record.wpa() && record.wpsIE());
    ASSERT_TRUE(record.dwdsIE() && record.tessicIE());
    record.setInformationElements(ByteBuffer());
    EXPECT_FALSE(record.SSID() || record.supportedRates() || record.countryIE());
    EXPECT_FALSE(record.HTCaps() || record.HTOperation() || record.rsn() || record.wpa());
    EXPECT_FALSE(record.wpsIE() || record.dwdsIE() || record.tessicIE());
}

TEST(MACWalk, TakesAVendorGeneralElementOfAnyType) {
    for (const std::uint8_t type : Bytes{0, 1, 4, 255}) {
        const auto record = recordOf(element(221, {0x0A, 0x7E, 0x56, type, 3, 0, 0}));
        ASSERT_TRUE(record.tessicIE());
        EXPECT_EQ(record.tessicIE()->TessicVersion(), Number(type));
    }
}

TEST(MACWalk, IgnoresUnknownElementsAndVendors) {
    const auto record = recordOf(joined({
        element(2, {1, 2, 3}),
        element(221, {0x00, 0x50, 0xF2, 2, 1, 1}),  // WMM
        element(221, {0x0A, 0x7E, 0x55, 5}),        // ours, but no DWDS
        element(221, {0x50, 0x6F, 0x9A, 9}),
        element(221, {0x00, 0x50, 0xF2}),  // 5 bytes: no type
        element(221, {}),
    }));
    EXPECT_EQ(record.IEs().size(), 6u);
    EXPECT_FALSE(record.wpa() || record.wpsIE() || record.dwdsIE() || record.tessicIE());
}

TEST(MACWalk, StoresElementsThatAreNotValid) {
    const auto record = recordOf(joined({element(48, {1}), element(45, {1, 2}), element(61, {}),
                                         element(221, {0x0A, 0x7E, 0x56, 1})}));
    ASSERT_TRUE(record.rsn() && record.HTCaps() && record.HTOperation() && record.tessicIE());
    EXPECT_FALSE(record.rsn()->isValid());
    EXPECT_FALSE(record.HTCaps()->isValid());
    EXPECT_FALSE(record.HTOperation()->isValid());
    EXPECT_FALSE(record.tessicIE()->isValid());
}

TEST(MACWalk, ChangesNothingWhereMemoryIsShort) {
    const Bytes before = joined({ssidElement("a name of more than 16 bytes"),
                                 kRates,
                                 rsnElement(2),
                                 element(7, Bytes(40, 1)),
                                 {0}});
    const Bytes after = joined({ssidElement("another name, of even more bytes"),
                                rsnElement(1),
                                wpaElement(1),
                                kRates,
                                element(7, Bytes(60, 2)),
                                element(221, {0x00, 0x50, 0xF2, 4,     // WPS
                                              0x10, 0x4A, 0, 1, 0x10,  // version
                                              0x10, 0x44, 0, 1, 2,     // state
                                              0x10, 0x57, 0, 1, 1}),   // AP setup locked
                                {1, 9}});
    auto record = recordOf(before, kESS | kPrivacy);
    const auto old = record;
    const ByteBuffer elements(after);
    const auto expectOld = [&] {
        EXPECT_EQ(record, old);
        EXPECT_EQ(record.invalidIEs(), old.invalidIEs());
        EXPECT_EQ(record.SSID(), old.SSID());
        EXPECT_EQ(record.supportedRates(), old.supportedRates());
        EXPECT_EQ(record.maxPHYRate(), old.maxPHYRate());
        EXPECT_EQ(record.securityFriendlyName(), "WPA Personal");
        ASSERT_TRUE(record.countryIE() && record.rsn());
        EXPECT_EQ(record.countryIE()->rawIE(), old.countryIE()->rawIE());
        EXPECT_FALSE(record.wpa().has_value());
    };
    const auto set = [&] { record.setInformationElements(elements); };
    EXPECT_GT(withEachAllocationFailing(set, expectOld), 3u);
    EXPECT_EQ(record.securityFriendlyName(), "WPA Enterprise");
    EXPECT_EQ(record.IEs().size(), 6u);
    EXPECT_EQ(record.invalidIEs(), (ByteBuffer{1, 9}));
}

TEST(MAC, TakesNoMemoryForWhatAnEmptySkeletonHolds) {
    const PropertyListDictionary nothing;
    const ScarceMemory memory(0);
    const auto record = HalvaneMAC::initWithSkeletonRepresentation(nothing);
    const auto copy = record;
    EXPECT_TRUE(copy.mac().empty());
    EXPECT_EQ(copy.ieBuffer(), ByteBuffer());
    EXPECT_FALSE(copy.rsn() || copy.SSID() || copy.channel() || copy.averageRate());
    EXPECT_TRUE(copy == record);
    static_assert(sizeof(HalvaneMAC) <= 16);
}

TEST(MAC, IsThatOfAnEmptySkeletonWhenMovedFrom) {
    auto record = recordOf(kBeacon);
    const auto copy = record;
    const auto taken = std::move(record);
    EXPECT_EQ(taken, copy);
    EXPECT_EQ(taken.supportedRates(), copy.supportedRates());
    EXPECT_EQ(record, HalvaneMAC::initWithSkeletonRepresentation({}));
    record.setInformationElements(ByteBuffer(kBeacon));
    EXPECT_EQ(record.IEs(), copy.IEs());
}

TEST(MACSSID, IsAbsentWhenEmptyOrAllZeros) {
    EXPECT_FALSE(recordOf(element(0, {})).SSID());
    EXPECT_FALSE(recordOf(element(0, {0})).SSID());
    EXPECT_FALSE(recordOf(element(0, Bytes(32, 0))).SSID());
    EXPECT_EQ(recordOf(element(0, {0, 'a', 0})).SSID(), (ByteBuffer{0, 'a', 0}));
    EXPECT_EQ(recordOf(element(0, Bytes(200, 'x'))).SSID(), ByteBuffer(Bytes(200, 'x')));
}

TEST(MACSSID, StaysWhenAHiddenOneFollows) {
    for (const Bytes& hidden : {element(0, {}), element(0, {0, 0})}) {
        EXPECT_EQ(recordOf(joined({ssidElement("named"), hidden})).SSID(),
                  ByteBuffer::fromText("named"));
    }
}

TEST(MACRates, AreSortedAndKeepDuplicates) {
    const auto record =
        recordOf(joined({element(1, {0x6C, 0x02}), element(50, {0x0C, 0x82, 0x6C})}));
    EXPECT_EQ(record.supportedRates(), numbers({1, 1, 6, 54, 54}));
    EXPECT_TRUE(record.supportedRates()->front().isReal());
}

TEST(MACRates, StaySortedOverManyElements) {
    Bytes elements;
    std::uint8_t octet = 0;
    for (int i = 0; i < 250; ++i) {
        Bytes body;
        for (int j = 0; j < 250; ++j) body.push_back(octet = static_cast<std::uint8_t>(octet + 89));
        elements = joined({elements, element(50, body)});
    }
    const auto record = recordOf(elements);
    const auto& rates = *record.supportedRates();
    EXPECT_EQ(rates.size(), 250u * 250);
    EXPECT_TRUE(std::is_sorted(rates.begin(), rates.end(),
                               [](const Number& a, const Number& b) { return a < b; }));
    EXPECT_EQ(record.maxPHYRate(), Number(63.5));
}

// The number of allocations for a record of `count` elements with one rate each.
std::size_t allocationsOfRates(std::size_t count) {
    Bytes elements;
    for (std::size_t i = 0; i < count; ++i) {
        elements.insert(elements.end(), {1, 1, static_cast<std::uint8_t>(127 - i % 128)});
    }
    const ByteBuffer buffer(elements);
    auto record = HalvaneMAC::initWithMAC(kAddress);
    const ScarceMemory memory;
    record.setInformationElements(buffer);
    return memory.allocations();
}

// A record that merged the rates after each element would allocate for each.
TEST(MACRates, OfAllElementsArePutInOrderAtOnce) {
    EXPECT_LT(allocationsOfRates(20'000), allocationsOfRates(20) + 20);
}

TEST(MACRates, AreInOrderAfterEachStage) {
    Station station;
    const auto give = [&station](const Bytes& body, unsigned maximum) {
        station.parseInformationElementSupportedRates_withMaximumLength(
            ByteBuffer(element(1, body)), maximum);
    };
    give({0x6C, 0x02}, 8);
    EXPECT_EQ(station.supportedRates(), numbers({1, 54}));
    give({0x04, 0x84}, 2);
    EXPECT_EQ(station.supportedRates(), numbers({1, 2, 2, 54}));
    give({0x04, 0x84}, 1);
    EXPECT_EQ(station.supportedRates(), numbers({1, 2, 2, 54}));
    station.parseInformationElement(ByteBuffer(element(50, {0xFF})));
    EXPECT_EQ(station.supportedRates(), numbers({1, 2, 2, 54, 63.5}));
}

TEST(MACRates, DropTheBasicRateBit) {
    EXPECT_EQ(recordOf(element(1, {0x82, 0x6C, 0x0B, 0xFF, 0x80})).supportedRates(),
              numbers({0, 1, 5.5, 54, 63.5}));
}

TEST(MACRates, HaveAMaximumForEachElement) {
    EXPECT_EQ(recordOf(element(1, Bytes(8, 2))).supportedRates()->size(), 8u);
    EXPECT_FALSE(recordOf(element(1, Bytes(9, 2))).supportedRates());
    EXPECT_EQ(recordOf(element(50, Bytes(9, 2))).supportedRates()->size(), 9u);
    EXPECT_EQ(recordOf(element(50, Bytes(253, 2))).supportedRates()->size(), 253u);
    Station station;
    station.parseInformationElementSupportedRates_withMaximumLength(
        ByteBuffer(joined({{50, 255}, Bytes(255, 2)})), 255);
    EXPECT_EQ(station.supportedRates()->size(), 255u);
}

TEST(MACRates, OfAnEmptyElementExistButGiveNoMaximum) {
    const auto record = recordOf(element(1, {}));
    EXPECT_EQ(record.supportedRates(), std::vector<Number>{});
    EXPECT_FALSE(record.maxPHYRate());
}

struct RateCase {
    const char* what;
    std::uint16_t capabilities;
    std::uint8_t information;
    double rate;
    int width;
};

TEST(MACRates, FollowTheHTElements) {
    const RateCase rows[] = {
        {"40 MHz, short GI at 40", 0x0042, 0x04, 300, 40},
        {"40 MHz, short GI at 20 only", 0x0022, 0x04, 270, 40},
        {"40 MHz capable, operating at 20", 0x0062, 0x00, 144.4, 20},
        {"40 MHz capable, operating at 20 without short GI there", 0x0042, 0x00, 130, 20},
        {"20 MHz only, operation says 40", 0x0060, 0x04, 144.4, 20},
        {"20 MHz only, long GI", 0x0040, 0x04, 130, 20},
    };
    for (const RateCase& row : rows) {
        const auto record = recordOf(joined({kRates, htCapabilitiesElement(row.capabilities, 2),
                                             htOperationElement(6, row.information)}));
        EXPECT_EQ(record.maxPHYRate(), Number(row.rate)) << row.what;
        EXPECT_EQ(record.channelWidth(), Number(row.width)) << row.what;
    }
}

TEST(MACRates, NeedBothHTElements) {
    for (const auto& only : {htCapabilitiesElement(0x42, 2), htOperationElement(6, 4)}) {
        const auto record = recordOf(joined({kRates, only}));
        EXPECT_EQ(record.maxPHYRate(), Number(11));
        EXPECT_EQ(record.channelWidth(), Number(20));
    }
}

TEST(MACRates, AreZeroWhenTheHTOperationElementIsBroken) {
    const auto record =
        recordOf(joined({kRates, htCapabilitiesElement(0x42, 2), element(61, {6, 4})}));
    EXPECT_EQ(record.maxPHYRate(), Number(0));
    EXPECT_EQ(record.channelWidth(), Number(0));
    EXPECT_EQ(record.securityFriendlyName(), "Open");
}

TEST(MACRates, AreThoseOf20MHzWhenABrokenHTOperationElementIsNotAsked) {
    const auto record =
        recordOf(joined({kRates, htCapabilitiesElement(0x20, 2), element(61, {6, 4})}));
    EXPECT_EQ(record.maxPHYRate(), Number(144.4));
    EXPECT_EQ(record.channelWidth(), Number(20));
}

TEST(MACRates, AreZeroWhenTheHTCapabilitiesElementIsBroken) {
    const auto record = recordOf(joined({kRates, element(45, {1}), htOperationElement(6, 4)}));
    EXPECT_EQ(record.maxPHYRate(), Number(0));
    EXPECT_EQ(record.channelWidth(), Number(20));
}

TEST(MACSecurity, TakesTheFirstLabelThatHolds) {
    struct Row {
        const char* what;
        std::uint16_t capabilities;
        Bytes elements;
        std::optional<std::string> label;
    };
    const Row rows[] = {
        {"open", kESS, {}, "Open"},
        {"privacy alone", kPrivacy, {}, "WEP"},
        {"RSN with PSK", kPrivacy, rsnElement(2), "WPA Personal"},
        {"RSN with 802.1X", kPrivacy, rsnElement(1), "WPA Enterprise"},
        {"WPA with PSK", kPrivacy, wpaElement(2), "WPA Personal"},
        {"WPA with 802.1X", kPrivacy, wpaElement(1), "WPA Enterprise"},
        {"both kinds", kPrivacy, joined({rsnElement(2), wpaElement(1)}), "WPA Enterprise"},
        {"WPS without privacy", kESS, wpsElement(), "WPS"},
        {"WPS with privacy", kPrivacy, wpsElement(), "WEP"},
        {"WPS and RSN", kPrivacy, joined({wpsElement(), rsnElement(2)}), "WPA Personal"},
        {"RSN without privacy", kESS, rsnElement(2), "Open"},
        {"SAE alone", kPrivacy, rsnElement(8), std::nullopt},
        {"SAE and WPS", kPrivacy, joined({rsnElement(8), wpsElement()}), "WPS"},
    };
    for (const Row& row : rows) {
        const auto record = recordOf(joined({kRates, row.elements}), row.capabilities);
        EXPECT_EQ(record.securityFriendlyName(), row.label) << row.what;
    }
}

TEST(MACSecurity, KeepsTheLabelWhenNoneHolds) {
    auto record = recordOf(kRates, kPrivacy);
    EXPECT_EQ(record.securityFriendlyName(), "WEP");
    record.setInformationElements(ByteBuffer(joined({kRates, rsnElement(8)})));
    EXPECT_EQ(record.securityFriendlyName(), "WEP");
    EXPECT_FALSE(record.doesSupportSecurityWEP());
}

TEST(MACSecurity, KeepsItsLabelWhenTheCapabilityFieldChanges) {
    auto record = recordOf(kRates, kPrivacy);
    record.setCapabilityField(kESS);
    EXPECT_TRUE(record.doesSupportSecurityOpen());
    EXPECT_EQ(record.securityFriendlyName(), "WEP");
}

TEST(MACSecurity, AnswersEachPredicate) {
    const auto wps = recordOf(wpsElement(), kPrivacy);
    EXPECT_TRUE(wps.doesSupportSecurityWPS());
    EXPECT_TRUE(wps.doesSupportSecurityWEP());
    EXPECT_FALSE(wps.doesSupportSecurityOpen());
    const auto both = recordOf(joined({rsnElement(1), wpaElement(2)}), kPrivacy);
    EXPECT_TRUE(both.doesSupportSecurityWPAEnterprise());
    EXPECT_TRUE(both.doesSupportSecurityWPAPersonal());
    EXPECT_FALSE(both.doesSupportSecurityWEP());
    EXPECT_FALSE(both.doesSupportSecurityWPS());
    const auto open = recordOf(joined({rsnElement(1), wpaElement(2)}), 0);
    EXPECT_TRUE(open.doesSupportSecurityOpen());
    EXPECT_FALSE(open.doesSupportSecurityWPAEnterprise() || open.doesSupportSecurityWPAPersonal());
}

TEST(MACMerge, IgnoresAnotherAddress) {
    auto record = HalvaneMAC::initWithMAC(kAddress);
    auto other = HalvaneMAC::initWithMAC(kAddress.slice(0, 5));
    other.setChannel(Number(11));
    other.setInformationElements(ByteBuffer(kBeacon));
    record.mergeEntries(other);
    EXPECT_FALSE(record.channel() || record.SSID());
    EXPECT_EQ(record.lastUpdated(), 0u);
}

TEST(MACMerge, TakesOverTheNumbersThatTheOtherHas) {
    halvane::ScopedUpTime clock;
    clock.set(1'000'000'000);
    auto record = recordOf(kRates);
    record.setChannel(Number(1));
    record.setNoise(Number(-90));
    record.setRSSI(Number(-50));
    auto other = recordOf(kRates, kPrivacy);
    other.setChannel(Number(6));
    other.setRSSI(Number(-60));
    other.setBeaconInterval(Number(200));
    clock.set(9'000'000'000);
    record.mergeEntries(other);
    EXPECT_EQ(record.channel(), Number(6));
    EXPECT_EQ(record.noise(), Number(-90));
    EXPECT_EQ(record.RSSI(), Number(-60));
    EXPECT_EQ(record.beaconInterval(), Number(200));
    EXPECT_EQ(record.capabilities(), kPrivacy);
    EXPECT_EQ(record.lastUpdated(), 9'000'000u);
    EXPECT_EQ(record.firstAdded(), 1'000'000u);
}

TEST(MACMerge, TakesOverNoise) {
    auto record = recordOf(kRates);
    record.setNoise(Number(-90));
    auto other = recordOf(kRates);
    other.setNoise(Number(-80));
    record.mergeEntries(other);
    EXPECT_EQ(record.noise(), Number(-80));
}

TEST(MACMerge, IsAChangeEvenWhenNothingDiffers) {
    halvane::ScopedUpTime clock;
    auto record = recordOf(kRates);
    record.setChannel(Number(6));
    auto other = recordOf(kRates);
    other.setChannel(Number(6.0));
    clock.set(4'000'000'000);
    record.mergeEntries(other);
    EXPECT_EQ(record.lastUpdated(), 4'000'000u);
    EXPECT_FALSE(record.channel()->isReal());  // equal, so kept as it was
}

TEST(MACMerge, AdoptsNothingFromARecordWithoutElements) {
    Station other;
    other.parseInformationElementSSID(ByteBuffer(ssidElement("alone")));
    ASSERT_TRUE(other.SSID() && !other.ieBuffer());
    auto record = recordOf(kRates);
    record.mergeEntries(other);
    EXPECT_FALSE(record.SSID());
    EXPECT_EQ(record.ieBuffer(), ByteBuffer(kRates));
}

TEST(MACMerge, AdoptsTheElementsThatRevealAHiddenSSID) {
    auto hidden = recordOf(joined({element(0, Bytes(7, 0)), kRates}));
    const auto revealing = recordOf(joined({ssidElement("Coherer"), kRates, {9}}));
    hidden.mergeEntries(revealing);
    EXPECT_EQ(hidden.SSID(), ByteBuffer::fromText("Coherer"));
    EXPECT_EQ(hidden.ieBuffer(), revealing.ieBuffer());
    EXPECT_EQ(hidden.invalidIEs(), ByteBuffer{9});
}

TEST(MACMerge, KeepsItsElementsOtherwise) {
    const auto with = recordOf(joined({ssidElement("one"), kRates}));
    const auto changed = recordOf(joined({ssidElement("two"), kRates, wpsElement()}));
    auto record = with;
    record.mergeEntries(changed);
    EXPECT_EQ(record.ieBuffer(), with.ieBuffer());
    EXPECT_EQ(record.SSID(), ByteBuffer::fromText("one"));

    auto hidden = recordOf(joined({element(0, {}), kRates}));
    hidden.mergeEntries(recordOf(joined({element(0, {0}), wpsElement()})));
    EXPECT_EQ(hidden.ieBuffer(), ByteBuffer(joined({element(0, {}), kRates})));
}

TEST(MACLinkQuality, KeepsTheNewest256Samples) {
    halvane::ScopedUpTime clock;
    auto record = HalvaneMAC::initWithMAC(kAddress);
    for (int i = 0; i < 257; ++i) {
        clock.set(static_cast<std::uint64_t>(i) * 1'000'000'000);
        record.updateLinkQuality_withTxRate(Number(-60), Number(i));
    }
    const auto& history = record.linkQualityHistory();
    ASSERT_EQ(history.size(), 256u);
    EXPECT_EQ(history.front().rssi(), Number(-60));
    EXPECT_EQ(history.front().txRate(), Number(1));
    EXPECT_EQ(history.back().txRate(), Number(256));
    EXPECT_EQ(history.back().timestamp(), Number(256'000'000u));
}

// A list of elements that grows during the walk takes two or three times as much.
TEST(MACElements, TakeTheirRoomOnce) {
    constexpr std::size_t kElements = 32'000;
    const ByteBuffer elements(std::vector<std::uint8_t>(2 * kElements));
    auto record = HalvaneMAC::initWithMAC(kAddress);
    std::size_t most = 0;
    {
        const halvane::testing::PeakMemory memory;
        record.setInformationElements(elements);
        most = memory.bytes();
    }
    EXPECT_EQ(record.IEs().size(), kElements);
    EXPECT_LT(most, kElements * sizeof(ByteBuffer) + 4096);
}

// The history reads as an array, although a ring stores it.
TEST(MACLinkQuality, GoesThroughItsSamplesFromTheOldestOn) {
    auto record = HalvaneMAC::initWithMAC(kAddress);
    EXPECT_EQ(record.linkQualityHistory().begin(), record.linkQualityHistory().end());
    for (int i = 0; i < 300; ++i) record.updateLinkQuality_withTxRate(Number(-60), Number(i));
    int next = 300 - 256;
    for (const auto& sample : record.linkQualityHistory()) {
        EXPECT_EQ(sample.txRate(), Number(next++));
    }
    EXPECT_EQ(next, 300);
    for (auto at = record.linkQualityHistory().end(); next > 300 - 256;) {
        EXPECT_EQ((*--at).txRate(), Number(--next));
    }
    EXPECT_EQ(next, 300 - 256);
    EXPECT_EQ(std::ranges::count(record.linkQualityHistory(), Number(-60),
                                 &halvane::HalvaneLinkQuality::rssi),
              256);
}

TEST(MACLinkQuality, BeginsAnewWhereItWasMovedFrom) {
    using halvane::HalvaneLinkQuality;
    const auto sampleOf = [](int rate) {
        return HalvaneLinkQuality::initWithRSSI_withTxRate(Number(-60), Number(rate));
    };
    halvane::HalvaneLinkQualityHistory from, to;
    for (int i = 0; i < 300; ++i) from.add(sampleOf(i));
    to.add(sampleOf(7));
    to = std::move(from);
    EXPECT_EQ(to.size(), 256u);
    EXPECT_EQ(to.front().txRate(), Number(44));
    EXPECT_TRUE(from.empty());
    for (const int rate : {10, 20, 30}) from.add(sampleOf(rate));
    EXPECT_EQ(from.averageRate(), 20);
    EXPECT_EQ(from.front().txRate(), Number(10));
    EXPECT_EQ(from.back().txRate(), Number(30));
}

TEST(MACLinkQuality, AveragesTheSamplesOfTheLast30Seconds) {
    halvane::ScopedUpTime clock;
    auto record = HalvaneMAC::initWithMAC(kAddress);
    const auto sampleAt = [&](std::uint64_t microseconds, double rate) {
        clock.set(microseconds * 1000);
        record.updateLinkQuality_withTxRate(Number(-60), Number(rate));
        return record.averageRate();
    };
    EXPECT_EQ(sampleAt(5, 10), Number(10));  // up for less than the period
    EXPECT_EQ(sampleAt(6, 20), Number(15));
    EXPECT_EQ(sampleAt(30'000'004, 30), Number(20));  // the first is 29.999999 s old
    EXPECT_EQ(sampleAt(30'000'005, 40), Number(30));  // and now exactly 30
    EXPECT_EQ(sampleAt(90'000'000, 5.5), Number(5.5));
    EXPECT_TRUE(record.averageRate()->isReal());
}

// Equal in every bit, however the sum is rounded, and also after samples have left.
TEST(MACLinkQuality, AveragesAsTheSumFromTheNewestToTheOldestDoes) {
    struct Sample {
        std::uint64_t microseconds;
        double rate;
    };
    constexpr std::array<double, 9> kUneven = {6.5, 7.2, 300, 0.1, 1e17, 13.5, -2, 1e-9, 86.7};
    halvane::ScopedUpTime clock;
    auto record = HalvaneMAC::initWithMAC(kAddress);
    std::vector<Sample> samples;
    for (std::uint64_t i = 0; i < 3000; ++i) {
        // First more samples than the history keeps, later fewer; and some runs without rounding.
        const std::uint64_t pause = i < 1500 ? 1'000 + i : 200'000 + i * 1'000;
        const double rate = i % 700 < 300 ? double(i % 16) / 2 : kUneven[i % kUneven.size()];
        const std::uint64_t now = (samples.empty() ? 0 : samples.back().microseconds) + pause;
        samples.push_back({now, rate});
        if (samples.size() > 256) samples.erase(samples.begin());
        clock.set(now * 1000);
        record.updateLinkQuality_withTxRate(Number(-60), Number(rate));

        double sum = 0;
        double count = 0;
        for (auto sample = samples.rbegin(); sample != samples.rend(); ++sample) {
            if (now - sample->microseconds >= 30'000'000) continue;
            sum += sample->rate;
            ++count;
        }
        ASSERT_EQ(record.averageRate()->real(), sum / count) << i;
        ASSERT_EQ(record.linkQualityHistory().size(), samples.size());
        ASSERT_EQ(record.linkQualityHistory().front().txRate().real(), samples.front().rate);
        ASSERT_EQ(record.linkQualityHistory().back().txRate().real(), rate);
    }
}

TEST(MACClientRate, IsTheSmallerOfTheTwo) {
    auto record = recordOf(kBeacon);
    record.determineMaximumClientRate(Number(300));
    EXPECT_EQ(record.maxClientRate(), Number(54));
    record.determineMaximumClientRate(Number(54));
    EXPECT_EQ(record.maxClientRate(), Number(54));
    record.determineMaximumClientRate(Number(11));
    EXPECT_EQ(record.maxClientRate(), Number(11));
    EXPECT_TRUE(record.maxClientRate()->isReal());
    auto empty = HalvaneMAC::initWithMAC(kAddress);
    empty.determineMaximumClientRate(Number(11));
    EXPECT_EQ(empty.maxClientRate(), Number(11));
}

TEST(MACStages, AreThereForSubclasses) {
    Station station;
    station.parseInformationElement(ByteBuffer());
    station.parseInformationElement(ByteBuffer{0});
    station.parseInformationElement(ByteBuffer{1});
    EXPECT_FALSE(station.SSID() || station.supportedRates());
    station.parseInformationElementSSID(ByteBuffer(ssidElement("a")));
    station.parseInformationElementVendorSpecific(ByteBuffer(wpsElement()));
    EXPECT_EQ(station.SSID(), ByteBuffer{'a'});
    EXPECT_TRUE(station.wpsIE());
    station.cleanupIEs();
    EXPECT_FALSE(station.SSID() || station.wpsIE());
}

TEST(MACStages, CleanupKeepsWhatWasDerived) {
    Station station;
    station.setInformationElements(ByteBuffer(kBeacon));
    station.cleanupIEs();
    EXPECT_FALSE(station.SSID() || station.supportedRates() || station.rsn());
    EXPECT_EQ(station.maxPHYRate(), Number(54));
    EXPECT_EQ(station.channelWidth(), Number(20));
    EXPECT_EQ(station.securityFriendlyName(), "Open");
    station.parseInformationElements();
    EXPECT_EQ(station.SSID(), ByteBuffer::fromText("Coherer"));
}

TEST(MACSkeleton, WritesWhatIsPresent) {
    halvane::ScopedUpTime clock;
    clock.set(3'000'000'000);
    auto record = recordOf(joined({ssidElement("a"), {9}}), 0x8001);
    record.setChannel(Number(6));
    record.setNoise(Number(-95));
    record.setRSSI(Number(-61));
    record.setBeaconInterval(Number(100));
    PropertyListDictionary expected;
    expected.set("MAC", kAddress);
    expected.set("RawIEBuffer", (ByteBuffer{0, 1, 'a', 9}));
    expected.set("IEs", PropertyListArray{ByteBuffer{0, 1, 'a'}});
    expected.set("LastUpdated", 3'000'000u);
    expected.set("FirstUpdated", 3'000'000u);
    expected.set("Capabilities", 0x8001u);
    expected.set("Channel", 6);
    expected.set("Noise", -95);
    expected.set("RSSI", -61);
    expected.set("BeaconInterval", 100);
    EXPECT_EQ(record.skeletonRepresentation(), expected);

    PropertyListDictionary bare;
    bare.set("MAC", kAddress);
    bare.set("LastUpdated", 0u);
    bare.set("FirstUpdated", 3'000'000u);
    bare.set("Capabilities", 0u);
    EXPECT_EQ(HalvaneMAC::initWithMAC(kAddress).skeletonRepresentation(), bare);
}

TEST(MACSkeleton, RoundTripsAndDecodesAgain) {
    auto record = recordOf(joined({kBeacon, {9}}), 0x0411);
    record.setChannel(Number(6));
    record.setRSSI(Number(-61));
    record.setNoise(Number(-95));
    record.setBeaconInterval(Number(100));
    const auto skeleton = record.skeletonRepresentation();
    const auto back = HalvaneMAC::initWithSkeletonRepresentation(skeleton);
    EXPECT_EQ(back.skeletonRepresentation(), skeleton);
    EXPECT_EQ(back.channel(), Number(6));
    EXPECT_EQ(back.RSSI(), Number(-61));
    EXPECT_EQ(back.noise(), Number(-95));
    EXPECT_EQ(back.beaconInterval(), Number(100));
    EXPECT_EQ(back.SSID(), record.SSID());
    EXPECT_EQ(back.supportedRates(), record.supportedRates());
    EXPECT_EQ(back.securityFriendlyName(), "WPA Personal");
    EXPECT_EQ(back.lastUpdated(), record.lastUpdated());
    EXPECT_EQ(back.firstAdded(), record.firstAdded());
    // The raw buffer is kept, and not parsed again.
    EXPECT_EQ(back.ieBuffer(), record.ieBuffer());
    EXPECT_FALSE(back.invalidIEs());
}

TEST(MACSkeleton, ReadsMissingKeysAsNothing) {
    const auto record = HalvaneMAC::initWithSkeletonRepresentation({});
    EXPECT_EQ(record.mac(), ByteBuffer());
    EXPECT_EQ(record.ieBuffer(), ByteBuffer());
    EXPECT_TRUE(record.IEs().empty());
    EXPECT_EQ(record.lastUpdated(), 0u);
    EXPECT_EQ(record.firstAdded(), 0u);
    EXPECT_EQ(record.capabilities(), 0);
    EXPECT_FALSE(record.channel() || record.noise() || record.RSSI() || record.beaconInterval());
}

TEST(MACSkeleton, SurvivesValuesOfTheWrongKind) {
    for (const char* key : {"MAC", "RawIEBuffer", "IEs", "LastUpdated", "FirstUpdated",
                            "Capabilities", "Channel", "Noise", "RSSI", "BeaconInterval"}) {
        for (const halvane::PropertyListValue& value :
             {halvane::PropertyListValue(), halvane::PropertyListValue("text"),
              halvane::PropertyListValue(-1), halvane::PropertyListValue(1e300),
              halvane::PropertyListValue(true),
              halvane::PropertyListValue(PropertyListArray{1, ByteBuffer(), ByteBuffer{0}, "x"}),
              halvane::PropertyListValue(PropertyListDictionary())}) {
            auto skeleton = recordOf(kBeacon).skeletonRepresentation();
            skeleton.set(key, value);
            const auto record = HalvaneMAC::initWithSkeletonRepresentation(skeleton);
            EXPECT_FALSE(record.description().empty());
        }
    }
}

TEST(MACSkeleton, ReadsACapabilityFieldOutOfRangeAsTheNearest) {
    const auto read = [](const Number& field) {
        PropertyListDictionary skeleton;
        skeleton.set("Capabilities", field);
        return HalvaneMAC::initWithSkeletonRepresentation(skeleton).capabilities();
    };
    EXPECT_EQ(read(0xFFFF), 0xFFFF);
    EXPECT_EQ(read(0x10000), 0xFFFF);
    EXPECT_EQ(read(UINT64_MAX), 0xFFFF);
    EXPECT_EQ(read(1e300), 0xFFFF);
    EXPECT_EQ(read(-1), 0);
    EXPECT_EQ(read(INT64_MIN), 0);
    EXPECT_EQ(read(-1e300), 0);
    EXPECT_EQ(read(1041.9), 1041);
}

// The record that is read back from the record's skeleton.
HalvaneMAC readBack(const HalvaneMAC& record) {
    return HalvaneMAC::initWithSkeletonRepresentation(record.skeletonRepresentation());
}

TEST(MACEquality, SeesEveryKeyOfASkeleton) {
    auto record = recordOf(kBeacon);
    record.setChannel(Number(6));
    record.setNoise(Number(-95));
    record.setRSSI(Number(-61));
    record.setBeaconInterval(Number(100));
    EXPECT_EQ(readBack(record), record);
    const PropertyListDictionary skeleton = record.skeletonRepresentation();
    EXPECT_EQ(skeleton.size(), 10u);
    for (const auto& [key, value] : skeleton) {
        auto other = skeleton;
        other.erase(key);
        EXPECT_NE(HalvaneMAC::initWithSkeletonRepresentation(other), record) << key;
    }
}

TEST(MACEquality, DoesNotSeeALabelThatTheCapabilityFieldOutlived) {
    auto record = recordOf(kRates, kPrivacy);
    record.setCapabilityField(kESS);
    EXPECT_EQ(record.securityFriendlyName(), "WEP");
    EXPECT_EQ(readBack(record).securityFriendlyName(), "Open");
    EXPECT_EQ(readBack(record), record);
}

TEST(MACEquality, DoesNotSeeWhatEarlierElementsLeft) {
    auto record = recordOf(kRates);
    record.setInformationElements(ByteBuffer());
    EXPECT_EQ(record.channelWidth(), Number(20));
    EXPECT_EQ(record.securityFriendlyName(), "Open");
    EXPECT_FALSE(readBack(record).channelWidth() || readBack(record).securityFriendlyName());
    EXPECT_EQ(readBack(record), record);
}

TEST(MACEquality, DoesNotSeeTrailingBytesApartNorTheHistory) {
    auto record = recordOf(joined({kRates, {9}}));
    record.updateLinkQuality_withTxRate(-61, 54);
    record.determineMaximumClientRate(54);
    EXPECT_TRUE(record.invalidIEs() && !readBack(record).invalidIEs());
    EXPECT_EQ(readBack(record), record);
}

TEST(MACEquality, TakesAnAbsentElementBufferForAnEmptyOne) {
    const auto record = HalvaneMAC::initWithMAC(kAddress);
    EXPECT_FALSE(record.ieBuffer());
    EXPECT_EQ(readBack(record).ieBuffer(), ByteBuffer());
    EXPECT_EQ(readBack(record), record);
}

TEST(MACEquality, OfARecordThatHoldsANaNIsWithNothing) {
    using Setter = void (HalvaneMAC::*)(std::optional<Number>);
    for (const Setter set :
         {Setter{&HalvaneMAC::setChannel}, Setter{&HalvaneMAC::setNoise},
          Setter{&HalvaneMAC::setRSSI}, Setter{&HalvaneMAC::setBeaconInterval}}) {
        auto record = recordOf(kBeacon);
        (record.*set)(Number(std::numeric_limits<double>::quiet_NaN()));
        const auto copy = record;
        EXPECT_NE(copy, record);
    }
}

TEST(MACDescription, OfABareRecord) {
    halvane::ScopedUpTime clock;
    clock.set(0);
    const auto record = HalvaneMAC::initWithMAC(kAddress);
    clock.set(3'999'999'999);
    EXPECT_EQ(record.description(),
              "MAC                  : 02:1A:2B:3C:4D:5E\n"
              "Cache Time           : 3 secs\n"
              "Last Update          : 3 secs\n"
              "Channel              : (null) ((null) MHz wide)\n"
              "RSSI                 : (null)\n"
              "Noise                : (null)\n"
              "Beacon Interval      : (null) (ms)\n"
              "Maximum PHY Rate     : (null) Mbps\n"
              "Security              : (null)\n"
              "ESS                  : NO\n"
              "IBSS                 : NO\n"
              "CF Pollable          : NO\n"
              "CF Poll Request      : NO\n"
              "Privacy              : NO\n"
              "Short Preamble       : NO\n"
              "PBCC                 : NO\n"
              "Channel Agility      : NO\n"
              "Spectrum Management  : NO\n"
              "QoS                  : NO\n"
              "Short Time Slot      : NO\n"
              "APSD                 : NO\n"
              "DSS OFDM             : NO\n"
              "Delayed Block-Ack    : NO\n"
              "Immediate Block-Ack  : NO\n"
              "\n"
              "IE Buffer            : \n(null)\n"
              "\n");
}

TEST(MACDescription, ShowsEverythingThatIsThere) {
    halvane::ScopedUpTime clock;
    clock.set(0);
    auto record = recordOf(joined({ssidElement("a\x01"),
                                   kRates,
                                   htOperationElement(6, 4),
                                   rsnElement(2),
                                   wpaElement(2),
                                   element(7, {'D', 'E', ' ', 1, 13, 20}),
                                   wpsElement(),
                                   element(221, {0x0A, 0x7E, 0x55, 1, 0, 0, 2, 0, 0, 0, 5}),
                                   element(221, {0x0A, 0x7E, 0x56, 1, 3, 0x01, 0xFF}),
                                   htCapabilitiesElement(2, 1),
                                   {9}}),
                           0xEFFF);
    record.setChannel(Number(6));
    record.setRSSI(Number(-61));
    record.setNoise(Number(-95));
    record.setBeaconInterval(Number(100));
    record.determineMaximumClientRate(Number(6.5));
    record.updateLinkQuality_withTxRate(Number(-60), Number(54));
    clock.set(61'000'000'000);
    const std::string text = record.description();

    const std::string head =
        "MAC                  : 02:1A:2B:3C:4D:5E\n"
        "Cache Time           : 61 secs\n"
        "Last Update          : 61 secs\n"
        "Channel              : 6 (40 MHz wide)\n"
        "RSSI                 : -61\n"
        "Noise                : -95\n"
        "Beacon Interval      : 100 (ms)\n"
        "Maximum PHY Rate     : 135 Mbps\n"
        "Maximum Client Rate  : 6.5 Mbps\n"
        "Average PHY Rate     : 54 Mbps\n"
        "Security              : WPA Personal\n"
        "ESS                  : YES\n";
    EXPECT_EQ(text.substr(0, head.size()), head);

    // The later lines and blocks appear in this order.
    std::size_t position = head.size();
    const std::string blocks[] = {
        "Immediate Block-Ack  : YES\n\nIE Buffer            : \n00 02 61 01 01 04 82 84 8B 96 3D ",
        "\nInvalid IE Chunk     : \n09 \nIE                   : 00 02 61 01 \n"
        "IE                   : 01 04 82 84 8B 96 \n",
        "\nIE                   : DD 07 0A 7E 56 01 03 01 FF \n",
        "\n\nSSID                 : 6101  |  a.\n\n"
        "Supported Rates      : 1 2 5.5 11 \n\n"
        "RSN\n    IE                    : 30 14 ",
        "\n\n\nWPA\n    IE                    : DD 16 ",
        "\n\n\nCountry\n    IE                       : 07 06 ",
        "\n\n\nTessic General\n    IE                       : DD 07 ",
        "\n\n\nDWDS\n    IE                  : DD 0B ",
        "\n\n\nWPS\n    IE                    : DD 09 ",
        "\n\n\nHT Capabilities\n    IE                                : 2D 1A ",
        "\n\n\nHT Operation\n    IE                                : 3D 16 ",
    };
    for (const std::string& block : blocks) {
        const auto found = text.find(block, position);
        ASSERT_NE(found, std::string::npos) << block << "\nmissing from\n" << text;
        position = found + block.size();
    }
    EXPECT_TRUE(text.ends_with("\n\n\n"));
}

TEST(MACDescription, TellsTheAgesApart) {
    halvane::ScopedUpTime clock;
    clock.set(0);
    auto record = HalvaneMAC::initWithMAC(kAddress);
    clock.set(20'000'000'000);
    record.setCapabilityField(0);
    clock.set(25'000'000'000);
    EXPECT_NE(record.description().find("Cache Time           : 25 secs\n"
                                        "Last Update          : 5 secs\n"),
              std::string::npos);
}

TEST(MACDescription, PrintsEachCapabilityBitOnItsOwnLine) {
    const std::pair<unsigned, const char*> rows[] = {
        {0, "ESS                 "},  {1, "IBSS                "},  {2, "CF Pollable         "},
        {3, "CF Poll Request     "},  {4, "Privacy             "},  {5, "Short Preamble      "},
        {6, "PBCC                "},  {7, "Channel Agility     "},  {8, "Spectrum Management "},
        {9, "QoS                 "},  {10, "Short Time Slot     "}, {11, "APSD                "},
        {13, "DSS OFDM            "}, {14, "Delayed Block-Ack   "}, {15, "Immediate Block-Ack "},
    };
    for (const auto& [bit, label] : rows) {
        auto record = HalvaneMAC::initWithMAC(kAddress);
        record.setCapabilityField(static_cast<std::uint16_t>(1u << bit));
        const auto text = record.description();
        EXPECT_NE(text.find(std::string("\n") + label + " : YES\n"), std::string::npos) << label;
        EXPECT_EQ(text.find("YES"), text.rfind("YES")) << label;
    }
}

TEST(MACDescription, LeavesOutRatesThatAreNotAboveZero) {
    auto record = HalvaneMAC::initWithMAC(kAddress);
    record.determineMaximumClientRate(Number(0));
    record.updateLinkQuality_withTxRate(Number(-60), Number(0));
    EXPECT_EQ(record.description().find("Client Rate"), std::string::npos);
    EXPECT_EQ(record.description().find("Average"), std::string::npos);
}

TEST(MACDescription, ShowsNoAgeForAStampThatLiesAhead) {
    halvane::ScopedUpTime clock;
    clock.set(0);
    PropertyListDictionary skeleton;
    skeleton.set("FirstUpdated", 5'000'000u);
    skeleton.set("LastUpdated", 5'000'000u);
    const auto text = HalvaneMAC::initWithSkeletonRepresentation(skeleton).description();
    EXPECT_NE(text.find("Cache Time           : 0 secs\nLast Update          : 0 secs\n"),
              std::string::npos);
}

}  // namespace
