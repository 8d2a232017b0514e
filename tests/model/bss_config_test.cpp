#include "halvane/model/bss_config.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/ssid.h"
#include "halvane/base/status.h"
#include "halvane/model/bss_config_table_internal.h"
#include "halvane/model/bss_limits.h"
#include "halvane/model/daemon_service.h"
#include "halvane/utils/log.h"

#include "tests/support/log_recorder.h"

using namespace halvane;
using halvane::testing::LogRecorder;

namespace {

const Error kEarlier = {"earlier", 1};

ByteBuffer text(std::string_view characters) {
    return ByteBuffer::fromText(characters);
}

TEST(BSSConfig, StartsAsAnOpenNetworkOfAllPHYModes) {
    const auto configuration = HalvaneBSSConfig::init();
    EXPECT_FALSE(configuration.ssid() || configuration.passphrase() || configuration.keyMaterial());
    EXPECT_EQ(configuration.preferredOrder(), 0);
    EXPECT_EQ(configuration.channel(), 0);
    EXPECT_EQ(configuration.channelWidth(), 0);
    EXPECT_EQ(configuration.eapolRetryCount(), 3);
    EXPECT_EQ(configuration.eapolRetryInterval(), 100);
    EXPECT_EQ(configuration.eapolGTKRotation(), 300);
    EXPECT_FALSE(configuration.country());
    EXPECT_TRUE(configuration.allowAuthenticationOpen());
    EXPECT_FALSE(configuration.allowAuthenticationSharedKey());
    EXPECT_FALSE(configuration.allowAuthenticationLEAP());
    EXPECT_TRUE(configuration.allowSecurityOpen());
    EXPECT_FALSE(configuration.allowSecurityWEP());
    EXPECT_FALSE(configuration.allowSecurityWPA());
    EXPECT_FALSE(configuration.allowSecurityWPA2());
    EXPECT_FALSE(configuration.allowSecurityWPS());
    EXPECT_FALSE(configuration.allowUnicastCipherTKIP());
    EXPECT_FALSE(configuration.allowUnicastCipherCCMP());
    EXPECT_FALSE(configuration.allowUnicastCipherUseGroup());
    EXPECT_FALSE(configuration.allowMulticastCipherWEP40());
    EXPECT_FALSE(configuration.allowMulticastCipherWEP104());
    EXPECT_FALSE(configuration.allowMulticastCipherTKIP());
    EXPECT_FALSE(configuration.allowMulticastCipherCCMP());
    EXPECT_FALSE(configuration.allowKeyManagementPSK());
    EXPECT_FALSE(configuration.allowKeyManagement8021X());
    EXPECT_TRUE(configuration.allowPHY80211a());
    EXPECT_TRUE(configuration.allowPHY80211b());
    EXPECT_TRUE(configuration.allowPHY80211g());
    EXPECT_TRUE(configuration.allowPHY80211n());
    EXPECT_FALSE(configuration.allowPIN());
    EXPECT_FALSE(configuration.allowPushbutton());
    EXPECT_FALSE(configuration.wpsDeviceName() || configuration.wpsManufacturerName());
    EXPECT_FALSE(configuration.wpsModelName() || configuration.wpsModelNumber());
    EXPECT_FALSE(configuration.wpsSerialNumber());
    EXPECT_EQ(configuration.wpsPIN(), 0);
    EXPECT_EQ(configuration.wifiSecurity(), 1u);
}

// Sets each field to a value that differs from its default, and reads it.
TEST(BSSConfig, KeepsWhatItsPropertiesAreSetTo) {
    auto configuration = HalvaneBSSConfig::init();
#define IGNORE(...)
#define SET_NUMBER(getter, setter, key, value)                                          \
    for (const std::int64_t number : {INT64_MIN, INT64_MAX, std::int64_t{value} + 1}) { \
        configuration.setter(number);                                                   \
        EXPECT_EQ(configuration.getter(), number) << key;                               \
    }
#define SET_FLAG(getter, setter, key, value) \
    configuration.setter(!(value));          \
    EXPECT_EQ(configuration.getter(), !(value)) << key;
#define SET_NAME(getter, setter, key)                   \
    configuration.setter(std::string("a name"));        \
    EXPECT_EQ(configuration.getter(), "a name") << key; \
    configuration.setter(std::nullopt);                 \
    EXPECT_FALSE(configuration.getter()) << key;
    HALVANE_BSS_CONFIG_FIELDS(IGNORE, SET_NUMBER, SET_FLAG, SET_NAME)
#undef IGNORE
#undef SET_NUMBER
#undef SET_FLAG
#undef SET_NAME
}

TEST(BSSConfig, SaysNothingOfSAEAndFrameProtectionUnlessToldTo) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_FALSE(configuration.allowKeyManagementSAE());
    EXPECT_FALSE(configuration.managementFrameProtection());
    configuration.setAllowKeyManagementSAE(true);
    EXPECT_EQ(configuration.allowKeyManagementSAE(), true);
    for (const auto protection :
         {kHalvaneManagementFrameProtectionNone, kHalvaneManagementFrameProtectionCapable,
          kHalvaneManagementFrameProtectionRequired}) {
        configuration.setManagementFrameProtection(protection);
        EXPECT_EQ(configuration.managementFrameProtection(), protection);
    }
    EXPECT_EQ(configuration.wifiSecurity(), kHalvaneSecurityOpen);
}

TEST(BSSConfig, SaysNothingOfHiddenSSIDAndIsolationUnlessToldTo) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_FALSE(configuration.hiddenSSID());
    EXPECT_FALSE(configuration.stationIsolation());
    configuration.setHiddenSSID(true);
    EXPECT_EQ(configuration.hiddenSSID(), true);
    EXPECT_FALSE(configuration.stationIsolation());
    configuration.setStationIsolation(false);
    EXPECT_EQ(configuration.stationIsolation(), false);
}

TEST(BSSConfig, EqualsAnotherWithTheSameFields) {
    auto one = HalvaneBSSConfig::init();
    auto other = HalvaneBSSConfig::init();
    EXPECT_EQ(one, other);
    EXPECT_TRUE(one.setSSID_error("home"));
    EXPECT_NE(one, other);
    EXPECT_TRUE(other.setSSID_error("home"));
    EXPECT_EQ(one, other);
    one.setAllowPIN(true);
    EXPECT_NE(one, other);
    other = one;
    EXPECT_EQ(one, other);
}

// --- SSID and passphrase as text ---

using Setter = bool (HalvaneBSSConfig::*)(std::string_view, std::optional<Error>*);
using Getter = const std::optional<ByteBuffer>& (HalvaneBSSConfig::*)() const;

struct TextField {
    Setter set;
    Setter setHex;
    Getter get;
    std::size_t limit;  // of characters
};
const TextField kSSID = {&HalvaneBSSConfig::setSSID_error,
                         &HalvaneBSSConfig::setSSIDFromHexString_error, &HalvaneBSSConfig::ssid,
                         32};
const TextField kPassphrase = {&HalvaneBSSConfig::setWirelessPassphrase_error,
                               &HalvaneBSSConfig::setWirelessPassphraseFromHexString_error,
                               &HalvaneBSSConfig::passphrase, 63};

// Sets the field of a record to "before" and then calls `set`, which must succeed and clear the
// error. Returns the field.
std::optional<ByteBuffer> fieldSet(const TextField& field, Setter set, std::string_view value) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE((configuration.*field.set)("before", nullptr));
    std::optional<Error> error = kEarlier;
    EXPECT_TRUE((configuration.*set)(value, &error)) << value;
    EXPECT_EQ(error, std::nullopt) << value;
    auto again = HalvaneBSSConfig::init();
    EXPECT_TRUE((again.*set)(value, nullptr)) << value;
    EXPECT_EQ((again.*field.get)(), (configuration.*field.get)());
    return (configuration.*field.get)();
}

// The same for a `set` that must fail with that code.
std::optional<ByteBuffer> fieldLeft(const TextField& field, Setter set, std::string_view value,
                                    HalvaneStatus code) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE((configuration.*field.set)("before", nullptr));
    std::optional<Error> error = kEarlier;
    EXPECT_FALSE((configuration.*set)(value, &error)) << value;
    EXPECT_EQ(error, daemonError(code)) << value;
    EXPECT_FALSE((configuration.*set)(value, nullptr)) << value;
    return (configuration.*field.get)();
}

TEST(BSSConfigText, IsKeptAsItsUTF8Bytes) {
    for (const TextField& field : {kSSID, kPassphrase}) {
        EXPECT_EQ(fieldSet(field, field.set, "home"), text("home"));
        EXPECT_EQ(fieldSet(field, field.set, "Caf\xC3\xA9"), text("Caf\xC3\xA9"));
        EXPECT_EQ(fieldSet(field, field.set, ""), ByteBuffer()) << "present and empty";
        EXPECT_EQ(fieldSet(field, field.set, std::string_view()), ByteBuffer());
        EXPECT_EQ(fieldSet(field, field.set, std::string_view("a\0b", 3)),
                  text(std::string_view("a\0b", 3)));
    }
}

TEST(BSSConfigText, IsLimitedInUTF16CodeUnits) {
    const std::string euro = "\xE2\x82\xAC";      // one unit, three bytes
    const std::string face = "\xF0\x9F\x98\x80";  // two units, four bytes
    for (const TextField& field : {kSSID, kPassphrase}) {
        std::string euros, faces;
        for (std::size_t i = 0; i < field.limit; ++i) euros += euro;
        for (std::size_t i = 0; i < field.limit / 2; ++i) faces += face;
        const std::string full(field.limit, 'x');
        const std::string filled = field.limit % 2 == 1 ? faces + "x" : faces;
        for (const std::string& allowed : {full, euros, filled, full.substr(1)}) {
            EXPECT_EQ(fieldSet(field, field.set, allowed), text(allowed));
        }
        for (const std::string& longer : {full + "x", euros + "x", filled + "x", faces + face,
                                          full.substr(1) + face, std::string(1000, 'x')}) {
            EXPECT_EQ(fieldLeft(field, field.set, longer, -6705), text("before")) << longer;
        }
    }
}

TEST(BSSConfigText, IsClearedByOneThatIsNotUTF8) {
    for (const TextField& field : {kSSID, kPassphrase}) {
        EXPECT_FALSE(fieldLeft(field, field.set, "caf\xE9", -6728));
        EXPECT_FALSE(fieldLeft(field, field.set, "\xED\xA0\x80", -6728));
        EXPECT_EQ(fieldLeft(field, field.set, std::string(100, '\xFF'), -6705), text("before"))
            << "its length comes first";
    }
}

TEST(BSSConfigText, HasNoLowerLimit) {
    EXPECT_EQ(fieldSet(kPassphrase, kPassphrase.set, "short"), text("short"));
}

// --- As hexadecimal text ---

TEST(BSSConfigHex, IsKeptAsItsBytes) {
    for (const TextField& field : {kSSID, kPassphrase}) {
        EXPECT_EQ(fieldSet(field, field.setHex, "41424344"), text("ABCD"));
        EXPECT_EQ(fieldSet(field, field.setHex, " 0x00fF"), (ByteBuffer{0x00, 0xFF}));
        EXPECT_EQ(fieldSet(field, field.setHex, "414"), text("A"));
        EXPECT_EQ(fieldSet(field, field.setHex, "41zz"), text("A"));
        EXPECT_EQ(fieldSet(field, field.setHex, ""), ByteBuffer()) << "present and empty";
    }
}

TEST(BSSConfigHex, ClearsTheFieldWithTheConversionsError) {
    for (const TextField& field : {kSSID, kPassphrase}) {
        EXPECT_FALSE(fieldLeft(field, field.setHex, "zz", -6742));
        EXPECT_FALSE(fieldLeft(field, field.setHex, "41 42", -6717));
    }
}

TEST(BSSConfigHex, LimitsAnSSIDTo32BytesAndAPassphraseToNothing) {
    const std::string full(64, 'f');
    EXPECT_EQ(fieldSet(kSSID, kSSID.setHex, full), text(std::string(32, '\xFF')));
    EXPECT_EQ(fieldSet(kSSID, kSSID.setHex, full + "f"), text(std::string(32, '\xFF')));
    EXPECT_FALSE(fieldLeft(kSSID, kSSID.setHex, full + "ff", -6705));
    EXPECT_EQ(fieldSet(kPassphrase, kPassphrase.setHex, std::string(2000, 'f')),
              text(std::string(1000, '\xFF')));
}

// --- From the old value ---

// The sizes fit inside of a buffer, and do not.
TEST(BSSConfigText, MayBeOfTheOldValueItself) {
    const auto viewOf = [](const std::optional<ByteBuffer>& octets) {
        return std::string_view(reinterpret_cast<const char*>(octets->bytes().data()),
                                octets->size());
    };
    for (const TextField& field : {kSSID, kPassphrase}) {
        for (const std::string digits : {"41424344", "41424344454647484950515253545556"}) {
            auto configuration = HalvaneBSSConfig::init();
            EXPECT_TRUE((configuration.*field.set)(digits, nullptr));
            const std::string_view old = viewOf((configuration.*field.get)());
            EXPECT_TRUE((configuration.*field.set)(old.substr(2), nullptr));
            EXPECT_EQ((configuration.*field.get)(), text(digits.substr(2)));
            EXPECT_TRUE(
                (configuration.*field.setHex)(viewOf((configuration.*field.get)()), nullptr));
            EXPECT_EQ((configuration.*field.get)(), ByteBuffer::fromHex(digits.substr(2)));
        }
    }
}

// --- What follows from the fields ---

TEST(BSSConfig, AcceptsNoCountry) {
    auto configuration = HalvaneBSSConfig::init();
    std::optional<Error> error = kEarlier;
    EXPECT_FALSE(configuration.setCountry_error("DE", &error));
    EXPECT_EQ(error, kEarlier);
    EXPECT_FALSE(configuration.setCountry_error("DE"));
    EXPECT_FALSE(configuration.setCountry_error(""));
    EXPECT_EQ(configuration, HalvaneBSSConfig::init());
}

// Compares every combination of the flags that count with the order in which they are examined.
TEST(BSSConfig, TellsItsKindOfSecurity) {
    for (unsigned flags = 0; flags < 64; ++flags) {
        const auto has = [flags](unsigned bit) { return (flags >> bit & 1) != 0; };
        auto configuration = HalvaneBSSConfig::init();
        configuration.setAllowSecurityOpen(has(0));
        configuration.setAllowSecurityWEP(has(1));
        configuration.setAllowSecurityWPA(has(2));
        configuration.setAllowSecurityWPA2(has(3));
        configuration.setAllowSecurityWPS(has(4));
        configuration.setAllowKeyManagement8021X(has(5));
        unsigned kind = has(4) ? 6 : has(3) || has(2) ? 4 : has(1) ? 2 : has(0) ? 1 : 0;
        if (has(5) && (kind == 2 || kind == 4)) ++kind;
        EXPECT_EQ(configuration.wifiSecurity(), kind) << flags;
    }
}

HalvaneBSSConfig wpaNetwork() {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE(configuration.setSSID_error("IEEE"));
    EXPECT_TRUE(configuration.setWirelessPassphrase_error("password"));
    EXPECT_TRUE(configuration.setSecurityWithOptionString_error("wpa2"));
    EXPECT_TRUE(configuration.setKeyManagementWithOptionString_error("psk"));
    return configuration;
}

constexpr char kIEEEKey[] = "f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e";

TEST(BSSConfig, DerivesItsKeyMaterial) {
    auto configuration = wpaNetwork();
    EXPECT_EQ(configuration.wifiSecurity(), kHalvaneSecurityWPAPSK);
    configuration.generateKeyMaterial();
    ASSERT_TRUE(configuration.keyMaterial());
    EXPECT_EQ(configuration.keyMaterial()->hex(), kIEEEKey);
}

TEST(BSSConfig, LosesItsKeyMaterialWhereThereIsNone) {
    auto configuration = wpaNetwork();
    configuration.generateKeyMaterial();
    EXPECT_TRUE(configuration.setWirelessPassphrase_error("short"));
    configuration.generateKeyMaterial();
    EXPECT_FALSE(configuration.keyMaterial());
}

TEST(BSSConfig, LeavesItsKeyMaterialAloneForOtherKinds) {
    auto configuration = wpaNetwork();
    configuration.generateKeyMaterial();
    EXPECT_TRUE(configuration.setWirelessPassphrase_error("another password"));
    for (const char* words : {"", "Open", "WEP", "WPS", "WPA2,WPS"}) {
        EXPECT_TRUE(configuration.setSecurityWithOptionString_error(words));
        configuration.generateKeyMaterial();
        EXPECT_EQ(configuration.keyMaterial()->hex(), kIEEEKey) << words;
    }
    EXPECT_TRUE(configuration.setSecurityWithOptionString_error("WPA"));
    EXPECT_TRUE(configuration.setKeyManagementWithOptionString_error("PSK,802.1X"));
    configuration.generateKeyMaterial();
    EXPECT_EQ(configuration.keyMaterial()->hex(), kIEEEKey) << "WPA with 802.1X";
}

// Every category writes all of its levels to the recorder.
TEST(BSSConfig, TakesOctetsAsTheyAre) {
    auto configuration = HalvaneBSSConfig::init();
    const ByteBuffer octets{0x00, 0xFF, 0x41};
    configuration.setSSID(halvane::Ssid::fromBytes(octets.bytes()).value());
    EXPECT_EQ(configuration.ssid(), octets);
    configuration.setPassphrase(octets.bytes());
    EXPECT_EQ(configuration.passphrase(), octets);
    const std::array<std::uint8_t, halvane::kBSSKeySize> key = {1, 2, 3};
    configuration.setKeyMaterial(key);
    EXPECT_EQ(configuration.keyMaterial(), ByteBuffer(key));

    configuration.setSSID(halvane::Ssid());
    configuration.setPassphrase({});
    EXPECT_EQ(configuration.ssid(), ByteBuffer());
    EXPECT_EQ(configuration.passphrase(), ByteBuffer());
}

TEST(BSSConfig, TakesOctetsOfItsOwn) {
    auto configuration = HalvaneBSSConfig::init();
    const std::string passphrase(40, 'p');
    configuration.setWirelessPassphrase_error(passphrase);
    configuration.setPassphrase(configuration.passphrase()->bytes());
    EXPECT_EQ(configuration.passphrase(), ByteBuffer::fromText(passphrase));
}

class BSSConfigLog : public ::testing::Test {
  protected:
    BSSConfigLog() {
        LogUtils_Finalize();
#define RECORD(name)                                      \
    LogIsEnabled(&gLogCategory_##name, kLogLevelError);   \
    EXPECT_EQ(LogControl(#name ":level=all"), kStatusOK); \
    EXPECT_EQ(LogControl((#name ":output=" + recorder_.spec()).c_str()), kStatusOK);
        HALVANE_WIFI_LOG_CATEGORIES(RECORD)
#undef RECORD
        LogPrintF(&gLogCategory_WiFi, "test", kLogLevelVerbose, "heard");
        EXPECT_NE(recorder_.take().find("heard"), std::string::npos);
    }
    ~BSSConfigLog() override {
        LogUtils_Finalize();
    }

    LogRecorder recorder_;
};

TEST_F(BSSConfigLog, HearsNothingOfPassphraseAndKey) {
    auto configuration = wpaNetwork();
    configuration.generateKeyMaterial();
    std::optional<Error> error;
    EXPECT_FALSE(configuration.setWirelessPassphrase_error(std::string(64, 'p'), &error));
    EXPECT_EQ(error, daemonError(-6705));
    EXPECT_FALSE(configuration.setWirelessPassphraseFromHexString_error("41 70617373", &error));
    EXPECT_EQ(error, daemonError(-6717));
    EXPECT_FALSE(
        HalvaneBSSConfig::wpaPasswordHash_withSSID_error(text("short"), text("IEEE"), &error));
    EXPECT_EQ(error, daemonError(-6705));
    EXPECT_EQ(recorder_.text(), "");
}

}  // namespace
