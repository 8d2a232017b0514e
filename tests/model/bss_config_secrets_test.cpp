// What remains of passphrases and keys in freed memory.
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/config_parser.h"
#include "halvane/model/daemon_service.h"

#include "tests/support/freed_memory.h"

using namespace halvane;
using halvane::testing::FreedMemoryWatch;

namespace {

// One secret that fits inside of a buffer, and one that does not.
constexpr std::string_view kShort = "sekret1234";
constexpr std::string_view kShortHex = "73656b72657431323334";
constexpr std::string_view kLong = "a secret of more than forty characters";
constexpr std::string_view kLongHex =
    "6120736563726574206f66206d6f7265207468616e20666f7274792063686172616374657273";

struct Row {
    std::string_view secret;
    std::string_view hex;
};
constexpr Row kRows[] = {{kShort, kShortHex}, {kLong, kLongHex}};

// A buffer that refers to the characters themselves, which are not from operator new.
ByteBuffer inPlace(std::string_view text) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    return ByteBuffer::sharing({bytes, [](const std::uint8_t*) {}}, text.size());
}

// The record itself is one of the watched blocks.
std::unique_ptr<HalvaneBSSConfig> wpaNetwork() {
    auto configuration = std::make_unique<HalvaneBSSConfig>(HalvaneBSSConfig::init());
    EXPECT_TRUE(configuration->setSSID_error("IEEE"));
    EXPECT_TRUE(configuration->setSecurityWithOptionString_error("WPA2"));
    return configuration;
}

TEST(FreedMemoryWatch, FindsWhatIsLeft) {
    for (const Row& row : kRows) {
        const FreedMemoryWatch watch(row.secret);
        std::make_unique<ByteBuffer>(ByteBuffer::fromText(row.secret)).reset();
        EXPECT_EQ(watch.finds(), 1u) << row.secret.size();
        std::make_unique<std::vector<char>>(row.secret.begin(), row.secret.end()).reset();
        EXPECT_EQ(watch.finds(), 2u) << row.secret.size();
    }
}

TEST(BSSConfigSecrets, GoWithTheRecord) {
    for (const Row& row : kRows) {
        const FreedMemoryWatch watch(row.secret);
        auto configuration = wpaNetwork();
        EXPECT_TRUE(configuration->setWirelessPassphrase_error(row.secret));
        configuration.reset();
        EXPECT_EQ(watch.finds(), 0u) << "as text, " << row.secret.size();

        configuration = wpaNetwork();
        EXPECT_TRUE(configuration->setWirelessPassphraseFromHexString_error(row.hex));
        EXPECT_EQ(configuration->passphrase(), inPlace(row.secret));
        configuration.reset();
        EXPECT_EQ(watch.finds(), 0u) << "as digits, " << row.secret.size();
    }
}

TEST(BSSConfigSecrets, GoWithTheLastOfManyCopies) {
    for (const Row& row : kRows) {
        const FreedMemoryWatch watch(row.secret);
        auto configuration = wpaNetwork();
        EXPECT_TRUE(configuration->setWirelessPassphrase_error(row.secret));
        std::vector<HalvaneBSSConfig> copies;
        for (int copy = 0; copy < 5; ++copy) copies.push_back(*configuration);
        copies.erase(copies.begin());
        configuration.reset();
        EXPECT_EQ(copies.back().passphrase(), inPlace(row.secret));
        copies = {};
        EXPECT_EQ(watch.finds(), 0u) << row.secret.size();
    }
}

TEST(BSSConfigSecrets, GoWithTheSkeleton) {
    for (const Row& row : kRows) {
        const FreedMemoryWatch watch(row.secret);
        auto configuration = wpaNetwork();
        EXPECT_TRUE(configuration->setWirelessPassphrase_error(row.secret));
        auto skeleton =
            std::make_unique<PropertyListDictionary>(configuration->skeletonRepresentation());
        configuration.reset();
        configuration = std::make_unique<HalvaneBSSConfig>(
            HalvaneBSSConfig::initWithSkeletonRepresentation(*skeleton));
        skeleton.reset();
        EXPECT_EQ(configuration->passphrase(), inPlace(row.secret));
        configuration.reset();
        EXPECT_EQ(watch.finds(), 0u) << row.secret.size();
    }
}

TEST(BSSConfigSecrets, GoWithAValueThatTakesTheirPlace) {
    for (const Row& row : kRows) {
        const FreedMemoryWatch watch(row.secret);
        auto configuration = wpaNetwork();
        EXPECT_TRUE(configuration->setWirelessPassphrase_error(row.secret));
        EXPECT_TRUE(configuration->setWirelessPassphrase_error("another"));
        EXPECT_TRUE(configuration->setWirelessPassphraseFromHexString_error(row.hex));
        EXPECT_FALSE(configuration->setWirelessPassphrase_error("caf\xE9"));
        EXPECT_FALSE(configuration->passphrase());
        configuration.reset();
        EXPECT_EQ(watch.finds(), 0u) << row.secret.size();
    }
}

TEST(BSSConfigSecrets, AreNotLeftByAFailure) {
    static const std::string digits = std::string(kLongHex) + " 41";
    const FreedMemoryWatch watch(kLong);
    const auto configuration = wpaNetwork();
    std::optional<Error> error;
    EXPECT_FALSE(configuration->setWirelessPassphraseFromHexString_error(digits, &error));
    EXPECT_EQ(error, daemonError(kStatusDigitsAfterGap));
    EXPECT_FALSE(ConfigParser::convertToDataFromHex(digits));
    EXPECT_FALSE(HalvaneBSSConfig::wpaPasswordHash_withSSID_error(inPlace(kLong), ByteBuffer()));
    EXPECT_EQ(watch.finds(), 0u);
}

constexpr std::array<char, 32> kIEEEKey = {
    '\xf4', '\x2c', '\x6f', '\xc5', '\x2d', '\xf0', '\xeb', '\xef', '\x9e', '\xbb', '\x4b',
    '\x90', '\xb3', '\x8a', '\x5f', '\x90', '\x2e', '\x83', '\xfe', '\x1b', '\x13', '\x5a',
    '\x70', '\xe2', '\x3a', '\xed', '\x76', '\x2e', '\x97', '\x10', '\xa1', '\x2e'};
constexpr std::string_view kKey(kIEEEKey.data(), kIEEEKey.size());

// A part of each of the two blocks that make up the key.
constexpr std::string_view kKeyParts[] = {kKey.substr(0, 8), kKey.substr(20, 8)};

TEST(BSSConfigSecrets, OfTheKeyGoWithIt) {
    for (const std::string_view part : kKeyParts) {
        const FreedMemoryWatch watch(part);
        auto key =
            HalvaneBSSConfig::wpaPasswordHash_withSSID_error(inPlace("password"), inPlace("IEEE"));
        EXPECT_EQ(key, inPlace(kKey));
        key.reset();
        auto configuration = wpaNetwork();
        EXPECT_TRUE(configuration->setWirelessPassphrase_error("password"));
        configuration->generateKeyMaterial();
        EXPECT_EQ(configuration->keyMaterial(), inPlace(kKey));
        EXPECT_TRUE(configuration->setWirelessPassphrase_error("short"));
        configuration->generateKeyMaterial();
        EXPECT_FALSE(configuration->keyMaterial());
        EXPECT_EQ(watch.finds(), 0u);
    }
}

TEST(BSSConfigSecrets, OfABlockGoWithIt) {
    const FreedMemoryWatch watch(kKeyParts[0]);
    {
        const auto block = HalvaneBSSConfig::F_withSSID_withIterations_withCount(
            inPlace("password"), inPlace("IEEE"), 4096, 1);
        EXPECT_EQ(block, inPlace(kKey.substr(0, 20)));
    }
    EXPECT_EQ(watch.finds(), 0u);
}

}  // namespace
