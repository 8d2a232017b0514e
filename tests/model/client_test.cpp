#include "halvane/model/client.h"

#include <cfloat>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "halvane/base/number.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

#include "tests/model/test_support.h"
#include "tests/support/replaced_system.h"
#include "tests/support/scarce_memory.h"
#include "tests/support/skeletons.h"

using namespace halvane;
using namespace halvane::testing;

namespace {

const ByteBuffer kAddress = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
const ByteBuffer kElements = {0,    2,    'h',  'i',         // SSID
                              1,    4,    0x82, 0x84, 0x8B,  // 1, 2, 5.5 and
                              0x96, 0xDD, 0};                // 11 Mbit/s, an empty vendor element

HalvaneClient freshClient() {
    const ScopedUpTime clock(7'000'000'000);
    return HalvaneClient::initWithMAC(kAddress);
}

HalvaneClient wholeClient() {
    auto client = freshClient();
    const ScopedUpTime clock(8'000'000'000);
    client.setCapabilityField(0x0411);
    client.setInformationElements(kElements);
    client.setChannel(Number(6));
    client.setNoise(Number(-95));
    client.setRSSI(Number(-61));
    client.setBeaconInterval(Number(100));
    client.setIsAssociated(true);
    client.setCreateTime(1);
    client.setJoinTime(std::uint64_t{1} << 63);
    client.setLeftTime(UINT64_MAX);
    client.setDeauthReason(UINT64_MAX - 1);
    return client;
}

HalvaneClient read(const PropertyListDictionary& skeleton) {
    return HalvaneClient::initWithSkeletonRepresentation(skeleton);
}

// The caller knows only the base class.
TEST(Client, GivesItsWholeRecordThroughItsBase) {
    const auto client = wholeClient();
    const HalvaneMAC& record = client;
    EXPECT_EQ(record.description(), client.description());
    EXPECT_TRUE(record.description().starts_with("isAssociated         : YES\n"));
    EXPECT_EQ(record.skeletonRepresentation(), client.skeletonRepresentation());
    EXPECT_NE(record.skeletonRepresentation().find("deauthReason"), nullptr);
}

TEST(Client, GivesItsWholeRecordThroughAPointerThatOwnsIt) {
    const std::unique_ptr<HalvaneMAC> record = std::make_unique<HalvaneClient>(wholeClient());
    EXPECT_EQ(record->description(), wholeClient().description());
}

// A HalvaneMAC copied from a client holds only the part of HalvaneMAC.
TEST(Client, LeavesItsOwnFieldsBehindWhereItIsCopiedIntoARecord) {
    const auto client = wholeClient();
    const HalvaneMAC record = client;
    EXPECT_EQ(record, static_cast<const HalvaneMAC&>(client));
    EXPECT_EQ(record.skeletonRepresentation().find("isAssociated"), nullptr);
    EXPECT_TRUE(record.description().starts_with("MAC                  : "));
    EXPECT_TRUE(client.description().ends_with(record.description() + "\n"));
}

TEST(Client, KeepsItsOwnFieldsWhereARecordIsAssignedToItsBase) {
    auto client = wholeClient();
    HalvaneMAC& record = client;
    record = HalvaneMAC::initWithMAC({1, 2, 3, 4, 5, 6});
    EXPECT_EQ(client.mac(), ByteBuffer({1, 2, 3, 4, 5, 6}));
    EXPECT_TRUE(client.isAssociated());
    EXPECT_TRUE(record.description().starts_with("isAssociated         : YES\n"));
}

// The size matters because every few bytes of a reply may make a record.
TEST(Client, IsAsSmallAsItsBoxes) {
    EXPECT_LE(sizeof(HalvaneMAC), 2 * sizeof(void*));
    EXPECT_LE(sizeof(HalvaneClient), 3 * sizeof(void*));
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<HalvaneMAC>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<HalvaneMAC>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<HalvaneClient>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<HalvaneClient>);
}

TEST(Client, IsCreatedNowAndNotAssociated) {
    const auto client = freshClient();
    EXPECT_EQ(client.mac(), kAddress);
    EXPECT_EQ(client.firstAdded(), 7'000'000u);
    EXPECT_FALSE(client.isAssociated());
    EXPECT_EQ(client.createTime(), 7'000'000u);
    EXPECT_EQ(client.joinTime(), 0u);
    EXPECT_EQ(client.leftTime(), 0u);
    EXPECT_EQ(client.deauthReason(), 1u);
}

TEST(Client, IsAStationAsSeenInTheAir) {
    auto client = wholeClient();
    EXPECT_EQ(client.SSID(), (ByteBuffer{'h', 'i'}));
    EXPECT_EQ(client.maxPHYRate(), Number(11));
    EXPECT_EQ(client.securityFriendlyName(), "WEP");
    HalvaneMAC& record = client;
    record.setRSSI(Number(-40));
    EXPECT_EQ(client.RSSI(), Number(-40));
}

TEST(ClientSkeleton, AddsItsKeysToThoseOfItsBase) {
    const auto client = wholeClient();
    PropertyListDictionary expected = HalvaneMAC(client).skeletonRepresentation();
    EXPECT_EQ(expected.size(), 10u);
    expected.set("isAssociated", true);
    expected.set("createTime", 1u);
    expected.set("joinTime", std::uint64_t{1} << 63);
    expected.set("leftTime", UINT64_MAX);
    expected.set("deauthReason", UINT64_MAX - 1);
    EXPECT_EQ(client.skeletonRepresentation(), expected);
}

TEST(ClientSkeleton, OfAFreshClientHoldsAllFiveKeys) {
    PropertyListDictionary expected;
    expected.set("MAC", kAddress);
    expected.set("LastUpdated", 0u);
    expected.set("FirstUpdated", 7'000'000u);
    expected.set("Capabilities", 0u);
    expected.set("isAssociated", false);
    expected.set("createTime", 7'000'000u);
    expected.set("joinTime", 0u);
    expected.set("leftTime", 0u);
    expected.set("deauthReason", 1u);
    EXPECT_EQ(freshClient().skeletonRepresentation(), expected);
}

TEST(ClientSkeleton, ComesThroughXmlEqual) {
    for (const auto& client : {wholeClient(), freshClient()}) {
        const auto skeleton = throughXml(client.skeletonRepresentation());
        EXPECT_EQ(skeleton, client.skeletonRepresentation());
        EXPECT_EQ(read(skeleton), client);
    }
    const auto skeleton = wholeClient().skeletonRepresentation();
    EXPECT_EQ(read(throughXml(skeleton)).skeletonRepresentation(), skeleton);
}

TEST(ClientSkeleton, DecodesTheElementsAgain) {
    const auto client = read(wholeClient().skeletonRepresentation());
    EXPECT_EQ(client.SSID(), (ByteBuffer{'h', 'i'}));
    EXPECT_EQ(client.maxPHYRate(), Number(11));
    EXPECT_EQ(client.lastUpdated(), 8'000'000u);
    EXPECT_TRUE(client.isPrivacy());
}

TEST(ClientSkeleton, ReadsMissingKeysAsNothing) {
    const auto client = read({});
    EXPECT_EQ(client.mac(), ByteBuffer());
    EXPECT_FALSE(client.isAssociated());
    EXPECT_EQ(client.createTime(), 0u);
    EXPECT_EQ(client.joinTime(), 0u);
    EXPECT_EQ(client.leftTime(), 0u);
    EXPECT_EQ(client.deauthReason(), 0u);
}

TEST(ClientSkeleton, ReadsValuesOfTheWrongKindAsMissing) {
    for (const char* key : {"isAssociated", "createTime", "joinTime", "leftTime", "deauthReason"}) {
        auto without = wholeClient().skeletonRepresentation();
        without.erase(key);
        for (const auto& value : valuesThatAreNoNumber()) {
            auto skeleton = without;
            skeleton.set(key, value);
            EXPECT_EQ(read(skeleton), read(without)) << key;
        }
    }
}

TEST(ClientSkeleton, ReadsBaseKeysOfTheWrongKindAsTheirDefaults) {
    const auto readWith = [](const char* key, const PropertyListValue& value) {
        auto skeleton = wholeClient().skeletonRepresentation();
        skeleton.set(key, value);
        return read(skeleton);
    };
    for (const auto& value : valuesOfOtherKinds<ByteBuffer>()) {
        EXPECT_EQ(readWith("MAC", value).mac(), ByteBuffer());
        EXPECT_EQ(readWith("RawIEBuffer", value).ieBuffer(), ByteBuffer());
    }
    for (const auto& value : valuesOfOtherKinds<PropertyListArray>()) {
        EXPECT_EQ(readWith("IEs", value).IEs(), std::vector<ByteBuffer>());
        EXPECT_EQ(readWith("IEs", value).SSID(), std::nullopt);
    }
    for (const auto& value : valuesThatAreNoNumber()) {
        EXPECT_EQ(readWith("LastUpdated", value).lastUpdated(), 0u);
        EXPECT_EQ(readWith("FirstUpdated", value).firstAdded(), 0u);
        EXPECT_EQ(readWith("Capabilities", value).capabilities(), 0);
        EXPECT_EQ(readWith("Channel", value).channel(), std::nullopt);
        EXPECT_EQ(readWith("Noise", value).noise(), std::nullopt);
        EXPECT_EQ(readWith("RSSI", value).RSSI(), std::nullopt);
        EXPECT_EQ(readWith("BeaconInterval", value).beaconInterval(), std::nullopt);
    }
}

TEST(ClientSkeleton, CarriesMeasuredNumbersAtTheirLimitsThroughXml) {
    for (const Number& number :
         {Number(0), Number(-1), Number(INT64_MIN), Number(INT64_MAX), Number(UINT64_MAX),
          Number(-61.25), Number(0.1), Number(DBL_MAX), Number(-DBL_MAX), Number(DBL_TRUE_MIN)}) {
        auto client = freshClient();
        client.setChannel(number);
        client.setNoise(number);
        client.setRSSI(number);
        client.setBeaconInterval(number);
        const auto back = read(throughXml(client.skeletonRepresentation()));
        for (const auto& read :
             {back.channel(), back.noise(), back.RSSI(), back.beaconInterval()}) {
            ASSERT_TRUE(read);
            EXPECT_EQ(*read, number) << number.description();
            EXPECT_EQ(read->isReal(), number.isReal()) << number.description();
        }
    }
}

TEST(ClientSkeleton, NumbersAndBooleansStandInForEachOther) {
    auto skeleton = wholeClient().skeletonRepresentation();
    skeleton.set("isAssociated", 2.5);
    skeleton.set("joinTime", true);
    skeleton.set("leftTime", -1);
    skeleton.set("deauthReason", 2.9);
    const auto client = read(skeleton);
    EXPECT_TRUE(client.isAssociated());
    EXPECT_EQ(client.joinTime(), 1u);
    EXPECT_EQ(client.leftTime(), 0u);
    EXPECT_EQ(client.deauthReason(), 2u);
    skeleton.set("isAssociated", 0);
    EXPECT_FALSE(read(skeleton).isAssociated());
}

TEST(ClientDescription, StandsBeforeThatOfItsBase) {
    const auto client = wholeClient();
    const auto fresh = freshClient();
    const ScopedUpTime clock(9'000'000'000);
    EXPECT_EQ(client.description(),
              "isAssociated         : YES\n"
              "Last Deauth Reason   : 18446744073709551614\n"
              "Lifetime             : 1\n"
              "Joined               : 9223372036854775808\n"
              "Left                 : 18446744073709551615\n" +
                  HalvaneMAC(client).description() + "\n");
    EXPECT_TRUE(
        fresh.description().starts_with("isAssociated         : NO\n"
                                        "Last Deauth Reason   : 1\n"
                                        "Lifetime             : 7000000\n"
                                        "Joined               : 0\n"
                                        "Left                 : 0\n"
                                        "MAC                  : 02:1A:2B:"));
}

TEST(ClientEquality, SeesEveryFieldThatASkeletonCarries) {
    const auto client = wholeClient();
    EXPECT_EQ(client, wholeClient());
    EXPECT_NE(client, freshClient());
    const PropertyListDictionary skeleton = client.skeletonRepresentation();
    for (const auto& [key, value] : skeleton) {
        auto other = skeleton;
        other.erase(key);
        EXPECT_NE(read(other), client) << key;
    }
}

TEST(ClientEquality, TakesAnAbsentElementBufferForAnEmptyOne) {
    auto client = freshClient();
    const auto before = client;
    const ScopedUpTime clock;
    client.setInformationElements(ByteBuffer());
    EXPECT_EQ(client, before);
    EXPECT_TRUE(client.ieBuffer());
    EXPECT_FALSE(before.ieBuffer());
}

TEST(RecordsOfAReply, TakeNoMemoryForWhatIsNone) {
    const PropertyListArray items(100, PropertyListValue(true));
    const ScarceMemory memory(0);
    EXPECT_TRUE(skeleton::recordsOf<HalvaneClient>(items).empty());
    EXPECT_TRUE(skeleton::recordsOf<HalvaneBSSConfig>(items).empty());
    EXPECT_TRUE(skeleton::recordsOf<HalvaneInterface>(items).empty());
}

template <typename Record>
void expectFewBytesAnEmptySkeleton() {
    static_assert(sizeof(Record) <= 24);
    const PropertyListArray items(100, PropertyListValue(PropertyListDictionary()));
    const ScarceMemory memory(1);  // the list
    EXPECT_EQ(skeleton::recordsOf<Record>(items).size(), 100u);
}

TEST(RecordsOfAReply, TakeAFewBytesForAnEmptySkeleton) {
    expectFewBytesAnEmptySkeleton<HalvaneClient>();
    expectFewBytesAnEmptySkeleton<HalvaneBSSConfig>();
    expectFewBytesAnEmptySkeleton<HalvaneDevice>();
    expectFewBytesAnEmptySkeleton<HalvaneChannel>();
    const PropertyListArray items(100, PropertyListValue(PropertyListDictionary()));
    const ScarceMemory memory(0);
    EXPECT_TRUE(skeleton::recordsOf<HalvaneInterface>(items).empty());
}

TEST(RecordsOfAReply, EmptyAListThatIsMovedFrom) {
    PropertyListArray items = {wholeClient().skeletonRepresentation(), true};
    EXPECT_EQ(skeleton::recordsOf<HalvaneClient>(items), std::vector{wholeClient()});
    EXPECT_FALSE(items[0].isNull());
    EXPECT_EQ(skeleton::recordsOf<HalvaneClient>(std::move(items)), std::vector{wholeClient()});
    EXPECT_TRUE(items[0].isNull());
    EXPECT_EQ(items[1], PropertyListValue(true));
}

}  // namespace
