#include "halvane/ie/wps_tlvs.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <ios>
#include <numeric>
#include <set>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/describe.h"
#include "halvane/base/number.h"

#include "tests/support/hostile_bytes.h"
#include "tests/support/peak_memory.h"

using halvane::ByteBuffer;
using halvane::describe;
using halvane::HalvaneWPSTLVs;
using halvane::Number;
using DeviceType = halvane::HalvaneWPSDeviceType;
using halvane::testing::Bytes;
using halvane::testing::PeakMemory;

namespace {

// The lengths in bytes that a row accepts, both ends included.
struct Lengths {
    std::size_t shortest, longest;
    bool accept(std::size_t length) const { return length >= shortest && length <= longest; }
};
constexpr Lengths exactly(std::size_t size) {
    return {size, size};
}
constexpr Lengths below(std::size_t bound) {
    return {0, bound - 1};
}
constexpr std::size_t kMaxAttributeLength = 0xFFFF;
constexpr Lengths kAnyLength = {0, kMaxAttributeLength};

std::string expectedText(const Bytes& value, const std::optional<Number>&) {
    std::uint64_t number = 0;
    for (const std::uint8_t byte : value) number = number * 256 + byte;
    return value.empty() ? "(null)" : std::to_string(number);
}

std::string expectedText(const Bytes& value, const std::optional<ByteBuffer>&) {
    return ByteBuffer(value).description();
}

struct Row {
    std::uint16_t type;
    Lengths lengths;
    void (HalvaneWPSTLVs::*parse)(const std::uint8_t*, std::size_t);
    std::function<std::string(const HalvaneWPSTLVs&)> propertyText;
    std::function<std::string(const Bytes&)> expected;
};

#define ROW(type, lengths, name, property)                                                      \
    Row {                                                                                       \
        type, lengths, &HalvaneWPSTLVs::parseDataElement##name##_withLength,                    \
            [](const HalvaneWPSTLVs& tlvs) { return describe(tlvs.property()); },               \
            [](const Bytes& value) { return expectedText(value, HalvaneWPSTLVs().property()); } \
    }

// The attributes that fill a property of a number or of bytes; the four others have separate tests.
// The list is independent of the library's table, so that the two check each other.
const std::vector<Row> kRows = {
    ROW(0x1001, exactly(2), APChannel, apChannel),
    ROW(0x1002, exactly(2), AssociationState, associationState),
    ROW(0x1003, exactly(2), AuthenticationType, authenticationType),
    ROW(0x1004, exactly(2), AuthenticationTypeFlags, authenticationTypeFlags),
    ROW(0x1005, exactly(8), Authenticator, authenticator),
    ROW(0x1008, exactly(2), ConfigMethods, configMethods),
    ROW(0x1009, exactly(2), ConfigurationError, configurationError),
    ROW(0x100A, below(65), ConfirmationURL4, confirmationURL4),
    ROW(0x100B, below(77), ConfirmationURL6, confirmationURL6),
    ROW(0x100C, exactly(1), ConnectionType, connectionType),
    ROW(0x100D, exactly(1), ConnectionTypeFlags, connectionTypeFlags),
    ROW(0x100E, kAnyLength, Credential, credential),
    ROW(0x100F, exactly(2), EncryptionType, encryptionType),
    ROW(0x1010, exactly(2), EncryptionTypeFlags, encryptionTypeFlags),
    ROW(0x1011, below(33), DeviceName, deviceName),
    ROW(0x1012, exactly(2), DevicePasswordID, devicePasswordID),
    ROW(0x1014, exactly(32), EHash1, enrolleeHash1),
    ROW(0x1015, exactly(32), EHash2, enrolleeHash2),
    ROW(0x1016, exactly(16), ESNonce1, enrolleeSNonce1),
    ROW(0x1017, exactly(16), ESNonce2, enrolleeSNonce2),
    ROW(0x1018, kAnyLength, EncryptedSettings, encryptedSettings),
    ROW(0x101A, exactly(16), EnrolleeNonce, enrolleeNonce),
    ROW(0x101B, exactly(4), FeatureID, featureID),
    ROW(0x101C, below(81), Identity, identity),
    ROW(0x101D, kAnyLength, IdentityProof, identityProof),
    ROW(0x101E, exactly(8), KeyWrapAuthenticator, keyWrapAuthenticator),
    ROW(0x101F, exactly(16), KeyIdentifier, keyIdentifier),
    ROW(0x1020, exactly(6), MACAddress, MACAddress),
    ROW(0x1021, below(65), Manufacturer, manufacturer),
    ROW(0x1022, below(2), MessageType, messageType),
    ROW(0x1023, below(33), ModelName, modelName),
    ROW(0x1024, below(33), ModelNumber, modelNumber),
    ROW(0x1026, exactly(1), NetworkIndex, networkIndex),
    ROW(0x1027, below(2), NetworkKey, networkKey),
    ROW(0x1028, exactly(1), NetworkKeyIndex, networkKeyIndex),
    ROW(0x1029, below(33), NewDeviceName, updatedDeviceName),
    ROW(0x102A, below(65), NewPassword, updatedPassword),
    ROW(0x102C, below(59), OOBDevicePassword, oobDevicePassword),
    ROW(0x102D, exactly(4), OSVersion, osVersion),
    ROW(0x102F, exactly(1), PowerLevel, powerLevel),
    ROW(0x1030, exactly(1), PSKCurrent, pskCurrent),
    ROW(0x1031, exactly(1), PSKMax, pskMax),
    ROW(0x1032, exactly(192), PublicKey, publicKey),
    ROW(0x1033, exactly(1), RadioEnabled, radioEnabled),
    ROW(0x1034, exactly(1), Reboot, rebootRequest),
    ROW(0x1035, exactly(1), RegistrarCurrent, registrarCurrent),
    ROW(0x1036, exactly(1), RegistrarEstablished, registrarEstablished),
    ROW(0x1037, below(513), RegistrarList, registrarList),
    ROW(0x1038, exactly(1), RegistrarMax, registrarMax),
    ROW(0x1039, exactly(16), RegistrarNonce, registrarNonce),
    ROW(0x103A, exactly(1), RequestType, requestType),
    ROW(0x103B, exactly(1), ResponseType, responseType),
    ROW(0x103C, exactly(1), RFBands, rfBands),
    ROW(0x103D, exactly(32), RHash1, registrarHash1),
    ROW(0x103E, exactly(32), RHash2, registrarHash2),
    ROW(0x103F, exactly(16), RSNonce1, registrarSNonce1),
    ROW(0x1040, exactly(16), RSNonce2, registrarSNonce2),
    ROW(0x1041, exactly(1), SelectedRegistrar, selectedRegistrar),
    ROW(0x1042, below(33), SerialNumber, serialNumber),
    ROW(0x1044, exactly(1), WiFiProtectedSetupState, wpsSetupState),
    ROW(0x1045, below(33), SSID, ssid),
    ROW(0x1046, exactly(1), TotalNetworks, totalNetworks),
    ROW(0x1047, exactly(16), UUIDE, enrolleeUUID),
    ROW(0x1048, exactly(16), UUIDR, registrarUUID),
    ROW(0x104B, kAnyLength, X509CertificateRequest, x509CertificateRequest),
    ROW(0x104C, kAnyLength, X509Certificate, x509Certificate),
    ROW(0x104D, below(65), EAPIdentitity, EAPIdentity),
    ROW(0x104E, exactly(8), MessageCounter, messageCounter),
    ROW(0x104F, exactly(20), PublicKeyHash, publicKeyHash),
    ROW(0x1050, exactly(32), RekeyKey, rekeyKey),
    ROW(0x1051, exactly(4), KeyLifetime, keyLifetime),
    ROW(0x1052, exactly(2), PermittedConfigMethods, permittedConfigMethods),
    ROW(0x1053, exactly(2), SelectedRegistrarConfigMethods, selectedRegistrarConfigMethods),
    ROW(0x1056, exactly(1), PortableDevice, portableDevice),
    ROW(0x1057, exactly(1), APSetupLocked, apSetupLocked),
    ROW(0x1058, below(513), ApplicationExtension, applicationExtension),
    ROW(0x1059, below(9), EAPType, EAPType),
    ROW(0x1060, exactly(32), InitializationVector, initializationVector),
    ROW(0x1061, exactly(1), KeyProvidedAutomatically, keyProvidedAutomatically),
    ROW(0x1062, exactly(1), 8021XEnabled, enabled8021X),
    ROW(0x1063, below(129), AppSessionKey, appSessionKey),
    ROW(0x1064, exactly(1), WEPTransmitKey, wepTransmitKey),
};

constexpr std::uint16_t kVendorExtension = 0x1049;
constexpr std::uint16_t kVersion = 0x104A;
constexpr std::uint16_t kPrimaryDeviceType = 0x1054;
constexpr std::uint16_t kSecondaryDeviceTypeList = 0x1055;

const std::set<std::uint16_t> kUnassigned = {0x1006, 0x1007, 0x1013, 0x1019, 0x1025,
                                             0x102B, 0x102E, 0x1043, 0x105A, 0x105B,
                                             0x105C, 0x105D, 0x105E, 0x105F};

const ByteBuffer kAccessPoint = {0x00, 0x06, 0x00, 0x50, 0xF2, 0x04, 0x00, 0x01};
const ByteBuffer kUnknownSMI = {0x00, 0x01, 0xAA, 0xBB, 0xCC, 0xDD, 0x00, 0x02};

std::uint8_t byteOf(std::size_t value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}

Bytes attribute(std::uint16_t type, const Bytes& value) {
    Bytes bytes = {byteOf(type >> 8u), byteOf(type), byteOf(value.size() >> 8),
                   byteOf(value.size())};
    bytes.insert(bytes.end(), value.begin(), value.end());
    return bytes;
}

Bytes joined(std::initializer_list<Bytes> parts) {
    Bytes bytes;
    for (const Bytes& part : parts) bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

// 0x81, 0x82 and so on: no two neighbours equal, and the high bit set.
Bytes sampleValue(std::size_t length) {
    Bytes bytes(length);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0x81});
    return bytes;
}

Bytes repeated(const ByteBuffer& value, std::size_t times) {
    Bytes bytes;
    for (std::size_t i = 0; i < times; ++i) {
        bytes.insert(bytes.end(), value.bytes().begin(), value.bytes().end());
    }
    return bytes;
}

HalvaneWPSTLVs walk(const Bytes& bytes) {
    return HalvaneWPSTLVs::initWithData(halvane::testing::exactHeapCopy(bytes));
}

// Adds a stray byte at the end. The flag then stays as a rejected value has left it.
HalvaneWPSTLVs walkWithTail(Bytes bytes) {
    bytes.push_back(0x00);
    return walk(bytes);
}

// Counts the lines: each property that is present prints one, except device types.
std::size_t presentProperties(const HalvaneWPSTLVs& tlvs) {
    const auto text = tlvs.description();
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

// The lengths on both sides of every limit.
std::set<std::size_t> lengthsToTry(const Lengths& lengths) {
    std::set<std::size_t> tried = {0, 1, 2, 4, 8, 255};
    for (const std::size_t limit : {lengths.shortest, lengths.longest}) {
        if (limit > 0) tried.insert(limit - 1);
        tried.insert(limit);
        if (limit < kMaxAttributeLength) tried.insert(limit + 1);
    }
    return tried;
}

TEST(WPSTLVs, IsEmptyAtFirst) {
    HalvaneWPSTLVs tlvs;
    EXPECT_FALSE(tlvs.isValid());
    EXPECT_FALSE(tlvs.rawTLVs());
    for (const Row& row : kRows) EXPECT_EQ(row.propertyText(tlvs), "(null)");
    tlvs.setApChannel(6);
    EXPECT_EQ(tlvs.description(), "");
}

TEST(WPSTLVs, WithoutABufferIsThatOfAnEmptyOne) {
    for (const auto& data : {std::optional<ByteBuffer>(), std::optional(ByteBuffer())}) {
        const auto tlvs = HalvaneWPSTLVs::initWithData(data);
        EXPECT_TRUE(tlvs.isValid());
        EXPECT_EQ(tlvs.rawTLVs(), ByteBuffer());
        EXPECT_EQ(tlvs.description(), "");
    }
}

TEST(WPSTLVs, EveryTypeIsEitherTestedOrUnassigned) {
    std::set<std::uint16_t> types = kUnassigned;
    for (const Row& row : kRows) EXPECT_TRUE(types.insert(row.type).second) << row.type;
    types.insert({kVendorExtension, kVersion, kPrimaryDeviceType, kSecondaryDeviceTypeList});
    EXPECT_EQ(types.size(), 0x64u);
    EXPECT_EQ(*types.begin(), 0x1001);
    EXPECT_EQ(*types.rbegin(), 0x1064);
}

TEST(WPSTLVs, WalkAcceptsExactlyTheLengthsOfEachType) {
    for (const Row& row : kRows) {
        for (const std::size_t length : lengthsToTry(row.lengths)) {
            SCOPED_TRACE(::testing::Message() << std::hex << row.type << std::dec << " " << length);
            const Bytes value = sampleValue(length);
            const auto tlvs = walkWithTail(attribute(row.type, value));
            const bool accepted = row.lengths.accept(length);
            EXPECT_EQ(tlvs.isValid(), accepted);
            EXPECT_EQ(row.propertyText(tlvs), accepted ? row.expected(value) : "(null)");
            const bool present = row.propertyText(tlvs) != "(null)";
            const std::size_t filledByOne = row.type == 0x1003 ? 2 : 1;
            EXPECT_EQ(presentProperties(tlvs), present ? filledByOne : 0);
        }
    }
}

TEST(WPSTLVs, ParsersFileOnTheirOwnAsTheWalkDoes) {
    for (const Row& row : kRows) {
        for (const std::size_t length : lengthsToTry(row.lengths)) {
            SCOPED_TRACE(::testing::Message() << std::hex << row.type << std::dec << " " << length);
            const Bytes value = sampleValue(length);
            auto tlvs = walk({});
            (tlvs.*row.parse)(value.data(), value.size());
            const bool accepted = row.lengths.accept(length);
            EXPECT_EQ(tlvs.isValid(), accepted);
            EXPECT_EQ(row.propertyText(tlvs), accepted ? row.expected(value) : "(null)");
            EXPECT_EQ(presentProperties(tlvs), row.propertyText(tlvs) == "(null)" ? 0 : 1);
        }
    }
}

TEST(WPSTLVs, UnboundedBytesTakeMoreThanAnAttributeHolds) {
    auto tlvs = walk({});
    const Bytes value(kMaxAttributeLength + 1, 0xA5);
    tlvs.parseDataElementCredential_withLength(value.data(), value.size());
    EXPECT_TRUE(tlvs.isValid());
    EXPECT_EQ(tlvs.credential(), ByteBuffer(value));
}

TEST(WPSTLVs, IntegersAreStoredUnsigned) {
    const auto tlvs = walk(joined({attribute(0x1001, {0xFF, 0xFE}), attribute(0x103C, {0xFF}),
                                   attribute(0x101B, {0xFF, 0xFF, 0xFF, 0xFD})}));
    ASSERT_TRUE(tlvs.apChannel() && tlvs.rfBands() && tlvs.featureID());
    EXPECT_TRUE(tlvs.apChannel()->isUnsigned());
    EXPECT_EQ(tlvs.apChannel(), Number(0xFFFE));
    EXPECT_EQ(tlvs.rfBands(), Number(0xFF));
    EXPECT_EQ(tlvs.featureID(), Number(0xFFFFFFFDu));
}

TEST(WPSTLVs, TypesWithoutARowAreSkippedSilently) {
    std::set<std::uint16_t> known = {kVendorExtension, kVersion, kPrimaryDeviceType,
                                     kSecondaryDeviceTypeList};
    for (const Row& row : kRows) known.insert(row.type);
    for (unsigned type = 0; type <= 0xFFFF; ++type) {
        if (known.contains(static_cast<std::uint16_t>(type))) continue;
        const auto tlvs = walkWithTail(attribute(static_cast<std::uint16_t>(type), {0x00, 0x06}));
        ASSERT_TRUE(tlvs.isValid()) << type;
        ASSERT_EQ(tlvs.description(), "") << type;
    }
}

TEST(WPSTLVs, AuthenticationTypeFillsTheFlagsToo) {
    auto tlvs = walk(attribute(0x1003, {0x00, 0x22}));
    EXPECT_EQ(tlvs.authenticationType(), Number(0x22));
    EXPECT_EQ(tlvs.authenticationTypeFlags(), Number(0x22));

    tlvs = walk(attribute(0x1004, {0x00, 0x23}));
    EXPECT_FALSE(tlvs.authenticationType());
    EXPECT_EQ(tlvs.authenticationTypeFlags(), Number(0x23));

    tlvs = walk(joined({attribute(0x1004, {0x00, 0x23}), attribute(0x1003, {0x00, 0x01})}));
    EXPECT_EQ(tlvs.authenticationTypeFlags(), Number(1));
}

TEST(WPSTLVs, MessageTypeWithoutAByteIsAcceptedAndStoresNothing) {
    // The byte after the empty value belongs to the next attribute.
    const auto tlvs = walkWithTail(joined({attribute(0x1022, {}), attribute(0x103C, {0x01})}));
    EXPECT_TRUE(tlvs.isValid());
    EXPECT_FALSE(tlvs.messageType());
    EXPECT_EQ(tlvs.rfBands(), Number(1));
}

TEST(WPSTLVs, VersionIsAFractionOfTwoHalfBytes) {
    const std::vector<std::pair<std::uint8_t, double>> rows = {
        {0x00, 0.0}, {0x10, 1.0}, {0x20, 2.0}, {0x25, 2.5}, {0x0F, 1.5}, {0xFF, 16.5}};
    for (const auto& [byte, version] : rows) {
        const auto tlvs = walkWithTail(attribute(kVersion, {byte}));
        EXPECT_TRUE(tlvs.isValid());
        ASSERT_TRUE(tlvs.version());
        EXPECT_TRUE(tlvs.version()->isReal());
        EXPECT_EQ(tlvs.version(), Number(version)) << +byte;
    }
    for (const Bytes& value : {Bytes{}, Bytes{0x10, 0x20}}) {
        const auto tlvs = walkWithTail(attribute(kVersion, value));
        EXPECT_FALSE(tlvs.isValid());
        EXPECT_FALSE(tlvs.version());
    }
}

TEST(WPSTLVs, PrimaryDeviceTypeHasExactlyEightBytes) {
    for (const std::size_t length : {0u, 7u, 8u, 9u, 16u}) {
        const auto tlvs = walkWithTail(attribute(kPrimaryDeviceType, sampleValue(length)));
        EXPECT_EQ(tlvs.isValid(), length == 8) << length;
        EXPECT_EQ(tlvs.deviceTypes().has_value(), length == 8) << length;
    }
}

TEST(WPSTLVs, SecondaryDeviceTypesComeInEightsUpTo128Bytes) {
    for (const std::size_t length :
         {0u, 1u, 4u, 7u, 8u, 12u, 16u, 120u, 127u, 128u, 129u, 136u, 256u}) {
        const auto tlvs = walkWithTail(attribute(kSecondaryDeviceTypeList, sampleValue(length)));
        const bool accepted = length < 129 && length % 8 == 0;
        EXPECT_EQ(tlvs.isValid(), accepted) << length;
        ASSERT_EQ(tlvs.deviceTypes().has_value(), accepted) << length;
        if (accepted) {
            EXPECT_EQ(tlvs.deviceTypes()->size(), length / 8) << length;
        }
    }
}

TEST(WPSTLVs, DeviceTypesShareOneArrayInOrderOfAppearance) {
    Bytes two = repeated(kUnknownSMI, 2);
    two.at(15) = 0x03;
    const auto tlvs = walk(joined({attribute(kPrimaryDeviceType, repeated(kAccessPoint, 1)),
                                   attribute(kSecondaryDeviceTypeList, two),
                                   attribute(kPrimaryDeviceType, repeated(kAccessPoint, 1))}));
    ASSERT_TRUE(tlvs.deviceTypes());
    std::vector<std::uint64_t> subCategories;
    for (const DeviceType& type : *tlvs.deviceTypes())
        subCategories.push_back(type.subCategoryID());
    EXPECT_EQ(subCategories, (std::vector<std::uint64_t>{1, 2, 3, 1}));
    EXPECT_TRUE(tlvs.deviceTypes()->front().isValid());
    EXPECT_FALSE(tlvs.deviceTypes()->at(1).isValid());
}

TEST(WPSTLVs, DeviceTypeParsersFileOnTheirOwn) {
    auto tlvs = walk({});
    const Bytes three = repeated(kAccessPoint, 3);
    tlvs.parseDataElementPrimaryDeviceType_withLength(three.data(), 8);
    tlvs.parseDataElementSecondaryDeviceTypeList_withLength(three.data(), three.size());
    EXPECT_TRUE(tlvs.isValid());
    ASSERT_TRUE(tlvs.deviceTypes());
    EXPECT_EQ(tlvs.deviceTypes()->size(), 4u);
    tlvs.parseDataElementSecondaryDeviceTypeList_withLength(three.data(), 12);
    EXPECT_FALSE(tlvs.isValid());
    EXPECT_EQ(tlvs.deviceTypes()->size(), 4u);
}

TEST(WPSTLVs, NoWalkMakesVendorExtensionsPresent) {
    for (const std::size_t length : {0u, 1u, 6u, 1023u, 1024u, 1025u, 2000u}) {
        const auto tlvs = walkWithTail(attribute(kVendorExtension, sampleValue(length)));
        EXPECT_EQ(tlvs.isValid(), length < 1025) << length;
        EXPECT_FALSE(tlvs.vendorExtensions()) << length;
    }
}

TEST(WPSTLVs, AVendorExtensionReplacesAnArrayThatWasSet) {
    auto tlvs =
        walk(joined({attribute(kVendorExtension, {0x01}), attribute(kVendorExtension, {0x02})}));
    tlvs.setVendorExtensions(std::vector<ByteBuffer>());
    tlvs.parseTLVs();
    EXPECT_EQ(tlvs.vendorExtensions(), std::vector<ByteBuffer>{ByteBuffer{0x02}});

    const Bytes tooLong(1025);
    tlvs.parseDataElementVendorExtension_withLength(tooLong.data(), tooLong.size());
    EXPECT_FALSE(tlvs.isValid());
    EXPECT_EQ(tlvs.vendorExtensions(), std::vector<ByteBuffer>{ByteBuffer{0x02}});
}

// A rejected value clears the flag. Only an end exactly at the last byte sets it again.
TEST(WPSTLVs, ValidityDependsOnRejectionsAndOnTheEnd) {
    const Bytes good = attribute(0x1001, {0x00, 0x06});
    const Bytes rejected = attribute(0x1011, Bytes(33, 'n'));
    const Bytes skipped = attribute(0x1006, {0x01});
    const Bytes overLong = {0x10, 0x02, 0x00, 0x03, 0x00, 0x01};
    const Bytes headerAlone = {0x10, 0x02, 0x00, 0x02};
    struct Case {
        const char* what;
        Bytes bytes;
        bool isValid;
    };
    const std::vector<Case> cases = {
        {"nothing", {}, true},
        {"one stray byte", {0x10}, true},
        {"three stray bytes", {0x10, 0x01, 0x00}, true},
        {"an over-long length", overLong, true},
        {"a header whose value is missing", headerAlone, true},
        {"good", good, true},
        {"rejected at the end", rejected, true},
        {"rejected, then good", joined({rejected, good}), true},
        {"rejected, then skipped", joined({rejected, skipped}), true},
        {"rejected, then one stray byte", joined({rejected, {0x10}}), false},
        {"rejected, then three stray bytes", joined({rejected, {0x10, 0x01, 0x00}}), false},
        {"rejected, then an over-long length", joined({rejected, overLong}), false},
        {"rejected, then a missing value", joined({rejected, headerAlone}), false},
        {"rejected, good, stray byte", joined({rejected, good, {0x10}}), false},
        {"good, then one stray byte", joined({good, {0x10}}), true},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(walk(row.bytes).isValid(), row.isValid) << row.what;
        EXPECT_FALSE(walk(row.bytes).deviceName()) << row.what;
        EXPECT_FALSE(walk(row.bytes).associationState()) << row.what;
    }
}

TEST(WPSTLVs, AnOverLongAttributeStopsTheWalkAndKeepsTheEarlierOnes) {
    const auto tlvs = walk({0x10, 0x01, 0x00, 0x02, 0x00, 0x06,  // AP Channel 6
                            0x10, 0x02, 0x00, 0x07, 0x00, 0x01,  // says 7 bytes, 6 are left
                            0x10, 0x3C, 0x00, 0x01});
    EXPECT_EQ(tlvs.apChannel(), Number(6));
    EXPECT_EQ(presentProperties(tlvs), 1u);
}

TEST(WPSTLVs, ARepeatedAttributeReplacesAndARejectedOneDoesNot) {
    const auto tlvs = walk(joined({attribute(0x1001, {0x00, 0x06}), attribute(0x1001, {0x00, 0x0B}),
                                   attribute(0x1001, {0x0C})}));
    EXPECT_EQ(tlvs.apChannel(), Number(11));
}

TEST(WPSTLVs, ValuesShareTheMemoryTheyCameIn) {
    const auto tlvs = walk(attribute(0x1032, sampleValue(192)));
    const auto& raw = tlvs.rawTLVs();
    const auto& key = tlvs.publicKey();
    ASSERT_TRUE(raw && key);
    EXPECT_EQ(key->bytes().data(), raw->bytes().subspan(4).data());
}

TEST(WPSTLVs, CopiesAreIndependent) {
    const auto original = walk(attribute(0x1001, {0x00, 0x06}));
    auto copy = original;
    copy.setApChannel(11);
    copy.setSsid(ByteBuffer{'a'});
    EXPECT_EQ(original.apChannel(), Number(6));
    EXPECT_FALSE(original.ssid());
    EXPECT_EQ(copy.apChannel(), Number(11));
}

TEST(WPSTLVs, SettersClearWithAnAbsentValue) {
    auto tlvs = walk(joined({attribute(0x1001, {0x00, 0x06}), attribute(0x103C, {0x01}),
                             attribute(kPrimaryDeviceType, repeated(kAccessPoint, 1))}));
    tlvs.setApChannel(std::nullopt);
    tlvs.setDeviceTypes(std::nullopt);
    tlvs.setSsid(std::nullopt);
    EXPECT_FALSE(tlvs.apChannel());
    EXPECT_FALSE(tlvs.deviceTypes());
    EXPECT_EQ(tlvs.rfBands(), Number(1));
    EXPECT_EQ(presentProperties(tlvs), 1u);
}

// Calls the setters in reverse order, so that the order of the lines is not that of the calls.
HalvaneWPSTLVs everyPropertySet() {
    auto tlvs = walk({});
    tlvs.setWepTransmitKey(85);
    tlvs.setAppSessionKey(ByteBuffer{0x54});
    tlvs.setEnabled8021X(83);
    tlvs.setKeyProvidedAutomatically(82);
    tlvs.setInitializationVector(ByteBuffer{0x51});
    tlvs.setEAPType(ByteBuffer{0x50});
    tlvs.setApplicationExtension(ByteBuffer{0x4F});
    tlvs.setApSetupLocked(78);
    tlvs.setPortableDevice(77);
    tlvs.setDeviceTypes(std::vector{DeviceType::initWithDeviceType(kAccessPoint),
                                    DeviceType::initWithDeviceType(kUnknownSMI)});
    tlvs.setSelectedRegistrarConfigMethods(75);
    tlvs.setPermittedConfigMethods(74);
    tlvs.setKeyLifetime(73);
    tlvs.setRekeyKey(ByteBuffer{0x48});
    tlvs.setPublicKeyHash(ByteBuffer{0x47});
    tlvs.setMessageCounter(ByteBuffer{0x46});
    tlvs.setEAPIdentity(ByteBuffer{0x45});
    tlvs.setX509Certificate(ByteBuffer{0x44});
    tlvs.setX509CertificateRequest(ByteBuffer{0x43});
    tlvs.setVersion(2.5);
    tlvs.setVendorExtensions(std::vector{ByteBuffer{0x00, 0x11}, ByteBuffer{0x22}});
    tlvs.setRegistrarUUID(ByteBuffer{0x40});
    tlvs.setEnrolleeUUID(ByteBuffer{0x3F});
    tlvs.setTotalNetworks(62);
    tlvs.setSsid(ByteBuffer{0x3D});
    tlvs.setWpsSetupState(60);
    tlvs.setSerialNumber(ByteBuffer{0x3B});
    tlvs.setSelectedRegistrar(58);
    tlvs.setRegistrarSNonce2(ByteBuffer{0x39});
    tlvs.setRegistrarSNonce1(ByteBuffer{0x38});
    tlvs.setRegistrarHash2(ByteBuffer{0x37});
    tlvs.setRegistrarHash1(ByteBuffer{0x36});
    tlvs.setRfBands(53);
    tlvs.setResponseType(52);
    tlvs.setRequestType(51);
    tlvs.setRegistrarNonce(ByteBuffer{0x32});
    tlvs.setRegistrarMax(49);
    tlvs.setRegistrarList(ByteBuffer{0x30});
    tlvs.setRegistrarEstablished(47);
    tlvs.setRegistrarCurrent(46);
    tlvs.setRebootRequest(45);
    tlvs.setRadioEnabled(44);
    tlvs.setPublicKey(ByteBuffer{0x2B});
    tlvs.setPskMax(42);
    tlvs.setPskCurrent(41);
    tlvs.setPowerLevel(40);
    tlvs.setOsVersion(39);
    tlvs.setOobDevicePassword(ByteBuffer{0x26});
    tlvs.setUpdatedPassword(ByteBuffer{0x25});
    tlvs.setUpdatedDeviceName(ByteBuffer{0x24});
    tlvs.setNetworkKeyIndex(35);
    tlvs.setNetworkKey(ByteBuffer{0x22});
    tlvs.setNetworkIndex(33);
    tlvs.setModelNumber(ByteBuffer{0x20});
    tlvs.setModelName(ByteBuffer{0x1F});
    tlvs.setMessageType(30);
    tlvs.setManufacturer(ByteBuffer{0x1D});
    tlvs.setMACAddress(ByteBuffer{0x1C});
    tlvs.setKeyIdentifier(ByteBuffer{0x1B});
    tlvs.setKeyWrapAuthenticator(ByteBuffer{0x1A});
    tlvs.setIdentityProof(ByteBuffer{0x19});
    tlvs.setIdentity(ByteBuffer{0x18});
    tlvs.setFeatureID(23);
    tlvs.setEnrolleeNonce(ByteBuffer{0x16});
    tlvs.setEncryptionTypeFlags(21);
    tlvs.setEncryptionType(20);
    tlvs.setEncryptedSettings(ByteBuffer{0x13});
    tlvs.setEnrolleeSNonce2(ByteBuffer{0x12});
    tlvs.setEnrolleeSNonce1(ByteBuffer{0x11});
    tlvs.setEnrolleeHash2(ByteBuffer{0x10});
    tlvs.setEnrolleeHash1(ByteBuffer{0x0F});
    tlvs.setDevicePasswordID(14);
    tlvs.setDeviceName(ByteBuffer{0x0D});
    tlvs.setCredential(ByteBuffer{0x0C});
    tlvs.setConnectionTypeFlags(11);
    tlvs.setConnectionType(10);
    tlvs.setConfirmationURL6(ByteBuffer{0x09});
    tlvs.setConfirmationURL4(ByteBuffer{0x08});
    tlvs.setConfigurationError(7);
    tlvs.setConfigMethods(6);
    tlvs.setAuthenticator(ByteBuffer{0x05});
    tlvs.setAuthenticationTypeFlags(4);
    tlvs.setAuthenticationType(3);
    tlvs.setAssociationState(2);
    tlvs.setApChannel(1);
    return tlvs;
}

TEST(WPSTLVs, DescribesEveryPropertyUnderItsLabelInOrder) {
    EXPECT_EQ(everyPropertySet().description(),
              "    AP Channel                        : 1\n"
              "    AssociationState                  : 2\n"
              "    AuthenticationType                : 3\n"
              "    Authentication Type Flags         : 4\n"
              "    Authenticator                     : <05>\n"
              "    Config Methods                    : 6\n"
              "    Configuration Error               : 7\n"
              "    Confirmation URL4                 : <08>\n"
              "    Confirmation URL6                 : <09>\n"
              "    Connection Type                   : 10\n"
              "    Connection Type Flags             : 11\n"
              "    Credential                        : <0c>\n"
              "    Device Name                       : <0d>\n"
              "    Device Password ID                : 14\n"
              "    Enrollee Hash 1                   : <0f>\n"
              "    Enrollee Hash 2                   : <10>\n"
              "    Enrollee SNonce 1                 : <11>\n"
              "    Enrollee SNonce 2                 : <12>\n"
              "    Encrypted Settings                : <13>\n"
              "    Encryption Type                   : 20\n"
              "    Encryption Type Flags             : 21\n"
              "    Enrollee Nonce                    : <16>\n"
              "    Feature ID                        : 23\n"
              "    Identity                          : <18>\n"
              "    Identity Proof                    : <19>\n"
              "    Key Wrap Authenticator            : <1a>\n"
              "    Key Identifier                    : <1b>\n"
              "    MAC Address                       : <1c>\n"
              "    Manufacturer                      : <1d>\n"
              "    Message Type                      : 30\n"
              "    Model Name                        : <1f>\n"
              "    Model Number                      : <20>\n"
              "    Network Index                     : 33\n"
              "    Network Key                       : <22>\n"
              "    Network Key Index                 : 35\n"
              "    New Device Name                  : <24>\n"
              "    New Password                      : <25>\n"
              "    OOB Device Password               : <26>\n"
              "    OS Version                        : 39\n"
              "    Power Level                       : 40\n"
              "    PSK Current                       : 41\n"
              "    PSK Max                           : 42\n"
              "    Public Key                        : <2b>\n"
              "    Radio Enabled                     : 44\n"
              "    Reboot Request                    : 45\n"
              "    Registrar Current                 : 46\n"
              "    Registrar Established             : 47\n"
              "    Registrar List                    : <30>\n"
              "    Registrar Max                     : 49\n"
              "    Registrar Nonce                   : <32>\n"
              "    Request Type                      : 51\n"
              "    Response Type                     : 52\n"
              "    RF Bands                          : 53\n"
              "    Registrar Hash 1                  : <36>\n"
              "    Registrar Hash 2                  : <37>\n"
              "    Registrar SNonce 1                : <38>\n"
              "    Registrar SNonce 2                : <39>\n"
              "    Selected Registrar                : 58\n"
              "    Serial Number                     : <3b>\n"
              "    WPS Setup State                   : 60\n"
              "    SSID                              : <3d>\n"
              "    Total Networks                    : 62\n"
              "    Enrollee UUID                     : <3f>\n"
              "    Registrar UUID                    : <40>\n"
              "    Vendor Extensions                 : (<0011>, <22>)\n"
              "    Version                           : 2.5\n"
              "    X509 Certificate Request          : <43>\n"
              "    X509 Certificate                  : <44>\n"
              "    EAP Identity                      : <45>\n"
              "    Message Counter                   : <46>\n"
              "    Public Key Hash                   : <47>\n"
              "    Rekey Key                         : <48>\n"
              "    Key Lifetime                      : 73\n"
              "    Permitted Config Methods          : 74\n"
              "    Selected Registrar Config Methods : 75\n"
              "    Device Types                      : \n"
              "    Company      : Wi-Fi Alliance\n"
              "    Category     : (null)\n"
              "    Sub Category : (null)\n"
              "\n"
              "    Company      : (null)\n"
              "    Category     : (null)\n"
              "    Sub Category : (null)\n"
              "\n"
              "\n"
              "    Portable Device                   : 77\n"
              "    AP Setup Locked                   : 78\n"
              "    Application Extension             : <4f>\n"
              "    EAP Type                          : <50>\n"
              "    Initialization Vector             : <51>\n"
              "    Key Provided Automatically        : 82\n"
              "    Enabled 802.1X                    : 83\n"
              "    App Session Key                   : <54>\n"
              "    WEP Transmit Key                  : 85\n");
}

TEST(WPSTLVs, DescribesEmptyArraysOnOneLineEach) {
    auto tlvs = walk({});
    tlvs.setVendorExtensions(std::vector<ByteBuffer>());
    tlvs.setDeviceTypes(std::vector<DeviceType>());
    EXPECT_EQ(tlvs.description(),
              "    Vendor Extensions                 : ()\n"
              "    Device Types                      : \n"
              "\n");
}

// The attributes of a captured beacon.
const Bytes kBeacon = {
    0x10, 0x4A, 0x00, 0x01, 0x10,                                                  // Version 1.0
    0x10, 0x44, 0x00, 0x01, 0x02,                                                  // configured
    0x10, 0x54, 0x00, 0x08, 0x00, 0x06, 0x00, 0x50, 0xF2, 0x04, 0x00, 0x01,        // access point
    0x10, 0x11, 0x00, 0x09, 0x4B, 0x4D, 0x30, 0x36, 0x2D, 0x35, 0x30, 0x36, 0x48,  // Device Name
    0x10, 0x08, 0x00, 0x02, 0x06, 0x80,                                            // Config Methods
    0x10, 0x47, 0x00, 0x10, 0x63, 0x04, 0x12, 0x53, 0x10, 0x19, 0x20, 0x06,        // UUID-E
    0x12, 0x28, 0x08, 0x5D, 0xDD, 0x4C, 0x95, 0xE6,                                //
    0x10, 0x3C, 0x00, 0x01, 0x03,                                                  // both bands
    0x10, 0x49, 0x00, 0x06, 0x00, 0x37, 0x2A, 0x00, 0x01, 0x20,  // WFA, Version2 2.0
};

TEST(WPSTLVs, DecodesACapturedBeacon) {
    const auto tlvs = walk(kBeacon);
    EXPECT_TRUE(tlvs.isValid());
    EXPECT_EQ(tlvs.rawTLVs(), ByteBuffer(kBeacon));
    EXPECT_EQ(tlvs.description(),
              "    Config Methods                    : 1664\n"
              "    Device Name                       : <4b4d3036 2d353036 48>\n"
              "    RF Bands                          : 3\n"
              "    WPS Setup State                   : 2\n"
              "    Enrollee UUID                     : <63041253 10192006 1228085d dd4c95e6>\n"
              "    Version                           : 1\n"
              "    Device Types                      : \n"
              "    Company      : Wi-Fi Alliance\n"
              "    Category     : (null)\n"
              "    Sub Category : (null)\n"
              "\n"
              "\n");
}

TEST(WPSTLVs, HostileFormsFileNothingThatIsNotThere) {
    const std::string whole = walk(kBeacon).description();
    halvane::testing::forEachHostileForm(
        kBeacon, {2, 3, 7, 8, 12, 13, 24, 25, 37, 38, 43, 44, 63, 64, 68, 69},
        [&](const ByteBuffer& bytes) {
            const auto tlvs = HalvaneWPSTLVs::initWithData(bytes);
            EXPECT_EQ(tlvs.rawTLVs(), bytes);
            EXPECT_FALSE(tlvs.vendorExtensions());
            for (const auto& value : {tlvs.deviceName(), tlvs.enrolleeUUID()}) {
                EXPECT_TRUE(!value || value->size() + 4 <= bytes.size());
            }
            const auto text = tlvs.description();
            EXPECT_TRUE(text.empty() || text.back() == '\n');
            EXPECT_EQ(text == whole, bytes.size() >= kBeacon.size() - 10 &&
                                         bytes.slice(0, kBeacon.size() - 10) ==
                                             ByteBuffer(kBeacon).slice(0, kBeacon.size() - 10));
        });
}

TEST(WPSTLVs, ManyDeviceTypesAreKept) {
    Bytes bytes;
    const Bytes one = attribute(kPrimaryDeviceType, repeated(kAccessPoint, 1));
    for (int i = 0; i < 5000; ++i) bytes.insert(bytes.end(), one.begin(), one.end());
    const auto tlvs = walk(bytes);
    ASSERT_TRUE(tlvs.deviceTypes());
    EXPECT_EQ(tlvs.deviceTypes()->size(), 5000u);
}

// A stranger's list of device types may be long. It may be in one attribute or in many.
TEST(WPSTLVsMemory, IsSixteenTimesTheDeviceTypesAtMost) {
    constexpr std::size_t kSize = 400000;
    for (const std::size_t count : {1u, 2u, 16u}) {
        Bytes bytes;
        while (bytes.size() < kSize) {
            bytes.insert(bytes.end(), {0x10, 0x55, 0, static_cast<std::uint8_t>(8 * count)});
            for (std::size_t i = 0; i < count; ++i) {
                bytes.insert(bytes.end(), {0, 6, 0x00, 0x50, 0xF2, 4, 0, 1});
            }
        }
        const ByteBuffer buffer(bytes);
        const PeakMemory memory;
        const auto tlvs = HalvaneWPSTLVs::initWithData(buffer);
        EXPECT_EQ(tlvs.deviceTypes()->size(), bytes.size() / (4 + 8 * count) * count);
        EXPECT_LT(memory.bytes(), 16 * bytes.size()) << count;
    }
}

}  // namespace
