#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/number.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_config_table_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "tests/support/skeletons.h"

using namespace halvane;

namespace {

HalvaneBSSConfig fromSkeleton(const PropertyListDictionary& skeleton) {
    return HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
}

// Every key, in order, with a value that differs from those of its neighbours and of init().
PropertyListDictionary fullSkeleton() {
    PropertyListDictionary skeleton;
    const std::pair<const char*, PropertyListValue> entries[] = {
        {"SSID", ByteBuffer::fromText("home")},
        {"Passphrase", ByteBuffer::fromText("password")},
        {"KeyMaterial", ByteBuffer::fromText(std::string(32, 'k'))},
        {"PreferredOrder", 1},
        {"channel", 2},
        {"channelWidth", 3},
        {"eapolRetryCount", 4},
        {"eapolRetryInterval", 5},
        {"eapolGTKRotation", 6},
        {"country", "DE"},
        {"AuthenticationOpen", false},
        {"AuthenticationOpenSharedKey", true},
        {"AuthenticationOpenLEAP", true},
        {"SecurityOpen", false},
        {"SecurityWEP", true},
        {"SecurityWPA", true},
        {"SecurityWPA2", true},
        {"SecurityWPS", true},
        {"CipherUnicastTKIP", true},
        {"CipherUnicastCCMP", true},
        {"CipherUnicastUseGroup", true},
        {"CipherMulticastWEP40", true},
        {"CipherMulticastWEP104", true},
        {"CipherMulticastTKIP", true},
        {"CipherMulticastCCMP", true},
        {"KeyManagementPSK", true},
        {"KeyManagement8021X", true},
        {"PHYModes80211b", false},
        {"PHYModes80211g", false},
        {"PHYModes80211a", false},
        {"PHYModes80211n", false},
        {"allowPIN", true},
        {"allowPushbutton", true},
        {"wpsDeviceName", "device"},
        {"wpsManufacturerName", "maker"},
        {"wpsModelName", "model"},
        {"wpsModelNumber", "number"},
        {"wpsPIN", 7},
        {"wpsSerialNumber", "serial"},
        {"KeyManagementSAE", true},
        {"ManagementFrameProtection", 2},
        {"HiddenSSID", true},
        {"StationIsolation", true},
    };
    for (const auto& [key, value] : entries) skeleton.set(key, value);
    return skeleton;
}

std::vector<std::string> keysOf(const PropertyListDictionary& skeleton) {
    std::vector<std::string> keys;
    for (const auto& entry : skeleton) keys.push_back(entry.first);
    return keys;
}

TEST(BSSConfigSkeleton, HasEveryKeyInItsOrder) {
    const auto skeleton = fromSkeleton(fullSkeleton()).skeletonRepresentation();
    EXPECT_EQ(keysOf(skeleton), keysOf(fullSkeleton()));
    EXPECT_EQ(skeleton, fullSkeleton());
}

TEST(BSSConfigSkeleton, IsReadIntoTheFields) {
    const auto configuration = fromSkeleton(fullSkeleton());
    EXPECT_EQ(configuration.ssid(), ByteBuffer::fromText("home"));
    EXPECT_EQ(configuration.passphrase(), ByteBuffer::fromText("password"));
    EXPECT_EQ(configuration.keyMaterial(), ByteBuffer::fromText(std::string(32, 'k')));
    EXPECT_EQ(configuration.preferredOrder(), 1);
    EXPECT_EQ(configuration.channel(), 2);
    EXPECT_EQ(configuration.channelWidth(), 3);
    EXPECT_EQ(configuration.eapolRetryCount(), 4);
    EXPECT_EQ(configuration.eapolRetryInterval(), 5);
    EXPECT_EQ(configuration.eapolGTKRotation(), 6);
    EXPECT_EQ(configuration.country(), "DE");
    EXPECT_EQ(configuration.wpsDeviceName(), "device");
    EXPECT_EQ(configuration.wpsManufacturerName(), "maker");
    EXPECT_EQ(configuration.wpsModelName(), "model");
    EXPECT_EQ(configuration.wpsModelNumber(), "number");
    EXPECT_EQ(configuration.wpsPIN(), 7);
    EXPECT_EQ(configuration.wpsSerialNumber(), "serial");
}

TEST(BSSConfigSkeleton, KeepsEachFlagUnderItsKey) {
    struct Row {
        const char* key;
        bool (HalvaneBSSConfig::*flag)() const;
    };
    const Row rows[] = {
        {"AuthenticationOpen", &HalvaneBSSConfig::allowAuthenticationOpen},
        {"AuthenticationOpenSharedKey", &HalvaneBSSConfig::allowAuthenticationSharedKey},
        {"AuthenticationOpenLEAP", &HalvaneBSSConfig::allowAuthenticationLEAP},
        {"SecurityOpen", &HalvaneBSSConfig::allowSecurityOpen},
        {"SecurityWEP", &HalvaneBSSConfig::allowSecurityWEP},
        {"SecurityWPA", &HalvaneBSSConfig::allowSecurityWPA},
        {"SecurityWPA2", &HalvaneBSSConfig::allowSecurityWPA2},
        {"SecurityWPS", &HalvaneBSSConfig::allowSecurityWPS},
        {"CipherUnicastTKIP", &HalvaneBSSConfig::allowUnicastCipherTKIP},
        {"CipherUnicastCCMP", &HalvaneBSSConfig::allowUnicastCipherCCMP},
        {"CipherUnicastUseGroup", &HalvaneBSSConfig::allowUnicastCipherUseGroup},
        {"CipherMulticastWEP40", &HalvaneBSSConfig::allowMulticastCipherWEP40},
        {"CipherMulticastWEP104", &HalvaneBSSConfig::allowMulticastCipherWEP104},
        {"CipherMulticastTKIP", &HalvaneBSSConfig::allowMulticastCipherTKIP},
        {"CipherMulticastCCMP", &HalvaneBSSConfig::allowMulticastCipherCCMP},
        {"KeyManagementPSK", &HalvaneBSSConfig::allowKeyManagementPSK},
        {"KeyManagement8021X", &HalvaneBSSConfig::allowKeyManagement8021X},
        {"PHYModes80211b", &HalvaneBSSConfig::allowPHY80211b},
        {"PHYModes80211g", &HalvaneBSSConfig::allowPHY80211g},
        {"PHYModes80211a", &HalvaneBSSConfig::allowPHY80211a},
        {"PHYModes80211n", &HalvaneBSSConfig::allowPHY80211n},
        {"allowPIN", &HalvaneBSSConfig::allowPIN},
        {"allowPushbutton", &HalvaneBSSConfig::allowPushbutton},
    };
    for (const Row& row : rows) {
        PropertyListDictionary skeleton;
        skeleton.set(row.key, true);
        const auto configuration = fromSkeleton(skeleton);
        for (const Row& other : rows) {
            EXPECT_EQ((configuration.*other.flag)(), &other == &row) << row.key << other.key;
        }
    }
}

TEST(BSSConfigSkeleton, LeavesOutWhatIsAbsent) {
    const auto skeleton = HalvaneBSSConfig::init().skeletonRepresentation();
    std::vector<std::string> expected;
    for (const auto& [key, value] : fullSkeleton()) {
        const bool isOptional = key == "KeyManagementSAE" || key == "ManagementFrameProtection" ||
                                key == "HiddenSSID" || key == "StationIsolation";
        if (!isOptional && (value.as<Number>() || value.as<bool>())) expected.push_back(key);
    }
    EXPECT_EQ(keysOf(skeleton), expected);
    EXPECT_EQ(*skeleton.find("eapolRetryCount"), PropertyListValue(3));
    EXPECT_EQ(*skeleton.find("AuthenticationOpen"), PropertyListValue(true));
    EXPECT_EQ(*skeleton.find("KeyManagementPSK"), PropertyListValue(false));
}

HalvaneBSSConfig throughXML(const HalvaneBSSConfig& configuration) {
    const auto xml = xmlPropertyList(configuration.skeletonRepresentation());
    EXPECT_TRUE(xml);
    const auto read = propertyListFromXml(xml.value_or(""));
    const auto* skeleton = read ? read->as<PropertyListDictionary>() : nullptr;
    EXPECT_NE(skeleton, nullptr);
    return skeleton != nullptr ? fromSkeleton(*skeleton) : HalvaneBSSConfig::init();
}

TEST(BSSConfigSkeleton, HasSAEAndFrameProtectionOnlyIfSet) {
    auto configuration = HalvaneBSSConfig::init();
    configuration.setAllowKeyManagementSAE(false);
    configuration.setManagementFrameProtection(kHalvaneManagementFrameProtectionNone);
    auto expected = HalvaneBSSConfig::init().skeletonRepresentation();
    expected.set("KeyManagementSAE", false);
    expected.set("ManagementFrameProtection", 0);
    EXPECT_EQ(configuration.skeletonRepresentation(), expected);
    EXPECT_EQ(fromSkeleton(expected), configuration);
    EXPECT_NE(configuration, HalvaneBSSConfig::init());
    configuration.setAllowKeyManagementSAE(std::nullopt);
    configuration.setManagementFrameProtection(std::nullopt);
    EXPECT_EQ(configuration.skeletonRepresentation(),
              HalvaneBSSConfig::init().skeletonRepresentation());
}

TEST(BSSConfigSkeleton, HasHiddenSSIDAndIsolationOnlyIfSet) {
    auto configuration = HalvaneBSSConfig::init();
    configuration.setHiddenSSID(false);
    configuration.setStationIsolation(true);
    auto expected = HalvaneBSSConfig::init().skeletonRepresentation();
    expected.set("HiddenSSID", false);
    expected.set("StationIsolation", true);
    EXPECT_EQ(configuration.skeletonRepresentation(), expected);
    EXPECT_EQ(fromSkeleton(expected), configuration);
    EXPECT_EQ(throughXML(configuration), configuration);
    EXPECT_NE(configuration, HalvaneBSSConfig::init());
    configuration.setHiddenSSID(std::nullopt);
    configuration.setStationIsolation(std::nullopt);
    EXPECT_EQ(configuration.skeletonRepresentation(),
              HalvaneBSSConfig::init().skeletonRepresentation());
}

TEST(BSSConfigSkeleton, ReadsANumberForHiddenSSIDAndNoText) {
    PropertyListDictionary skeleton;
    skeleton.set("HiddenSSID", 7);
    skeleton.set("StationIsolation", "true");
    const auto configuration = fromSkeleton(skeleton);
    EXPECT_EQ(configuration.hiddenSSID(), true);
    EXPECT_EQ(configuration.stationIsolation(), std::nullopt);
}

// A later version may know more numbers, and a number stands in for a boolean.
TEST(BSSConfigSkeleton, CarriesAnUnknownFrameProtection) {
    PropertyListDictionary skeleton;
    skeleton.set("KeyManagementSAE", 7);
    skeleton.set("ManagementFrameProtection", -3);
    const auto configuration = fromSkeleton(skeleton);
    EXPECT_EQ(configuration.allowKeyManagementSAE(), true);
    EXPECT_EQ(configuration.managementFrameProtection(), -3);
    EXPECT_EQ(throughXML(configuration), configuration);
    EXPECT_EQ(*configuration.skeletonRepresentation().find("ManagementFrameProtection"),
              PropertyListValue(-3));
}

TEST(BSSConfigSkeleton, KeepsWhatIsPresentAndEmpty) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE(configuration.setSSID_error(""));
    configuration.setWpsDeviceName("");
    const auto skeleton = configuration.skeletonRepresentation();
    EXPECT_EQ(*skeleton.find("SSID"), PropertyListValue(ByteBuffer()));
    EXPECT_EQ(*skeleton.find("wpsDeviceName"), PropertyListValue(""));
    EXPECT_EQ(fromSkeleton(skeleton), configuration);
}

// A missing key gives an empty value, not the default of init().
TEST(BSSConfigSkeleton, ReadsAMissingKeyAsNothing) {
    const auto bare = fromSkeleton({});
    EXPECT_NE(bare, HalvaneBSSConfig::init());
    EXPECT_EQ(bare.wifiSecurity(), 0u);
    const auto skeleton = bare.skeletonRepresentation();
    for (const auto& [key, value] : skeleton) {
        EXPECT_TRUE(value == PropertyListValue(0) || value == PropertyListValue(false)) << key;
    }
    for (const auto& [key, value] : fullSkeleton()) {
        auto without = fullSkeleton();
        EXPECT_TRUE(without.erase(key));
        auto expected = fullSkeleton();
        if (const auto* nothing = skeleton.find(key)) {
            expected.set(key, *nothing);
        } else {
            expected.erase(key);
        }
        EXPECT_EQ(fromSkeleton(without).skeletonRepresentation(), expected) << key;
    }
}

TEST(BSSConfigSkeleton, ReadsAValueOfTheWrongKindAsAMissingOne) {
    const auto isNumber = [](const PropertyListValue& value) {
        return value.as<Number>() != nullptr || value.as<bool>() != nullptr;
    };
    for (const auto& [key, value] : fullSkeleton()) {
        auto without = fullSkeleton();
        without.erase(key);
        for (const auto& kind : halvane::testing::valuesOfEveryKind()) {
            if (kind.variant().index() == value.variant().index()) continue;
            if (isNumber(kind) && isNumber(value)) continue;  // stand in for each other
            auto wrong = fullSkeleton();
            wrong.set(key, kind);
            EXPECT_EQ(fromSkeleton(wrong), fromSkeleton(without)) << key;
        }
    }
}

TEST(BSSConfigSkeleton, TakesNumbersAndBooleansForEachOther) {
    PropertyListDictionary skeleton;
    skeleton.set("SecurityWPA2", 1);
    skeleton.set("SecurityWPA", 0);
    skeleton.set("SecurityWEP", 0.5);
    skeleton.set("channel", true);
    skeleton.set("channelWidth", 40.9);
    const auto configuration = fromSkeleton(skeleton);
    EXPECT_TRUE(configuration.allowSecurityWPA2());
    EXPECT_FALSE(configuration.allowSecurityWPA());
    EXPECT_TRUE(configuration.allowSecurityWEP());
    EXPECT_EQ(configuration.channel(), 1);
    EXPECT_EQ(configuration.channelWidth(), 40);
}

TEST(BSSConfigSkeleton, IgnoresOtherKeys) {
    auto skeleton = fullSkeleton();
    skeleton.set("Channel", 100);
    skeleton.set("ssid", ByteBuffer());
    EXPECT_EQ(fromSkeleton(skeleton), fromSkeleton(fullSkeleton()));
}

TEST(BSSConfigSkeleton, ComesThroughXMLUnchanged) {
    for (const auto& configuration :
         {HalvaneBSSConfig::init(), fromSkeleton({}), fromSkeleton(fullSkeleton())}) {
        EXPECT_EQ(throughXML(configuration), configuration);
    }
}

TEST(BSSConfigSkeleton, CarriesNumbersAtTheirLimits) {
    for (const std::int64_t number : {INT64_MIN, INT64_MIN + 1, std::int64_t{-1}, std::int64_t{0},
                                      std::int64_t{INT32_MAX} + 1, INT64_MAX}) {
        auto configuration = HalvaneBSSConfig::init();
#define IGNORE(...)
#define SET(getter, setter, key, value) configuration.setter(number);
        HALVANE_BSS_CONFIG_FIELDS(IGNORE, SET, IGNORE, IGNORE)
#undef IGNORE
#undef SET
        EXPECT_EQ(throughXML(configuration), configuration) << number;
    }
}

// Covers every control character that XML can carry (so not NUL), quotes, markup and astral
// characters.
TEST(BSSConfigSkeleton, CarriesEveryTextOfXmlAndEveryOctet) {
    auto configuration = HalvaneBSSConfig::init();
    configuration.setWpsDeviceName("\x7F\xC2\x80\xC2\x85\xC2\x9F");
    configuration.setWpsManufacturerName("\"'`<>&]]>&amp;\xE2\x80\x9C\xE2\x80\x99");
    configuration.setWpsModelName("\xF0\x9F\x98\x80\xF4\x8F\xBF\xBD\xE2\x80\xA8");
    configuration.setWpsModelNumber(" \t\r\n ");
    configuration.setWpsSerialNumber("");
    std::string octets;
    for (int octet = 0; octet < 0x100; ++octet) {
        constexpr char kDigits[] = "0123456789abcdef";
        octets += {kDigits[octet / 16], kDigits[octet % 16]};
    }
    EXPECT_TRUE(configuration.setWirelessPassphraseFromHexString_error(octets));
    EXPECT_TRUE(configuration.setSSIDFromHexString_error("00ff"));
    EXPECT_EQ(throughXML(configuration), configuration);
}

}  // namespace
