// What the operations report if one allocation fails, or if all later ones fail too.
#include "tests/support/scarce_memory.h"

#include <gtest/gtest.h>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/status.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/config_parser.h"
#include "halvane/model/daemon_service.h"

using namespace halvane;
using halvane::testing::ScarceMemory;
using halvane::testing::withEverLessScarceMemory;

namespace {

// The earlier error in each out-parameter. It allocates nothing either.
const Error kEarlier = daemonError(77);

constexpr std::string_view kText = "of more than 15 characters";
constexpr std::string_view kHex = "6f66206d6f7265207468616e203135206368617261637465727";

struct Setter {
    const char* name;
    bool (HalvaneBSSConfig::*set)(std::string_view, std::optional<Error>*);
    std::string_view text;
    const std::optional<ByteBuffer>& (HalvaneBSSConfig::*field)() const;
};
#define SETTER(operation, text, field) \
    { #operation, &HalvaneBSSConfig::operation, text, &HalvaneBSSConfig::field }
const Setter kSetters[] = {
    SETTER(setSSID_error, kText, ssid),
    SETTER(setSSIDFromHexString_error, kHex, ssid),
    SETTER(setWirelessPassphrase_error, kText, passphrase),
    SETTER(setWirelessPassphraseFromHexString_error, kHex, passphrase),
};
#undef SETTER

TEST(ScarceMemory, FailsEveryAllocationFromOneOn) {
    std::vector<bool> results;
    const auto attempts = withEverLessScarceMemory(
        [] {
            // The operators are called by name, so that the compiler does not omit the calls.
            ::operator delete(::operator new(1, std::nothrow));
            ::operator delete(::operator new(1, std::nothrow));
        },
        [&](bool hasEnded) { results.push_back(hasEnded); });
    EXPECT_EQ(attempts, 3u);
    EXPECT_EQ(results, (std::vector<bool>{true, true, false}));
}

TEST(ErrorsOfTheDaemon, AllocateNothing) {
    std::optional<Error> copy;
    bool isEqual = false;
    {
        const ScarceMemory memory(0);
        const Error error = daemonError(-6728);
        copy = error;
        const Error moved = std::move(*copy);
        isEqual = moved == error && moved.domain == kDaemonErrorDomain;
    }
    EXPECT_TRUE(isEqual);
}

TEST(BSSConfigSetters, ClearTheirFieldAndTellWhereMemoryEnds) {
    for (const Setter& setter : kSetters) {
        SCOPED_TRACE(setter.name);
        for (const bool hasPlace : {true, false}) {
            auto configuration = HalvaneBSSConfig::init();
            std::optional<Error> error = kEarlier;
            bool isSet = false;
            const auto attempts = withEverLessScarceMemory(
                [&] {
                    isSet = (configuration.*setter.set)(setter.text, hasPlace ? &error : nullptr);
                },
                [&](bool hasEnded) {
                    EXPECT_EQ(isSet, !hasEnded);
                    EXPECT_EQ((configuration.*setter.field)().has_value(), !hasEnded);
                    const auto code = hasEnded ? std::optional(daemonError(-6728)) : std::nullopt;
                    EXPECT_EQ(error, hasPlace ? code : kEarlier);
                    // Restores the state for the next attempt.
                    EXPECT_TRUE((configuration.*setter.set)("4142434445464748", nullptr));
                    error = kEarlier;
                });
            EXPECT_GT(attempts, 1u);
        }
    }
}

TEST(BSSConfigSetters, LeaveTheFlagsWhereMemoryEnds) {
    const auto before = HalvaneBSSConfig::init();
    auto configuration = before;
    std::optional<Error> error;
    bool isSet = false;
    const auto attempts = withEverLessScarceMemory(
        [&] { isSet = configuration.setPHYModeWithOptionString_error("802.11n,802.11a", &error); },
        [&](bool hasEnded) {
            EXPECT_EQ(isSet, !hasEnded);
            EXPECT_EQ(configuration == before, hasEnded);
            EXPECT_EQ(error, hasEnded ? std::optional(daemonError(-6728)) : std::nullopt);
        });
    EXPECT_GT(attempts, 1u);
}

// An object of an empty skeleton takes no memory before its first change.
TEST(BSSConfigSetters, TellWhereMemoryEndsForABareObject) {
    const auto bare = HalvaneBSSConfig::initWithSkeletonRepresentation({});
    auto configuration = bare;
    std::optional<Error> error = kEarlier;
    bool isSet = false;
    const auto attempts = withEverLessScarceMemory(
        [&] { isSet = configuration.setSecurityWithOptionString_error("WPA2", &error); },
        [&](bool hasEnded) {
            EXPECT_EQ(isSet, !hasEnded);
            EXPECT_EQ(configuration == bare, hasEnded);
            EXPECT_EQ(error, hasEnded ? std::optional(daemonError(-6728)) : std::nullopt);
        });
    EXPECT_GT(attempts, 1u);
}

TEST(BSSConfigSetters, RefuseTextThatIsTooLongWhateverMemoryThereIs) {
    const std::string text(100, 'x');
    auto configuration = HalvaneBSSConfig::initWithSkeletonRepresentation({});
    std::optional<Error> error;
    bool isSet = true;
    {
        const ScarceMemory memory(0);
        isSet = configuration.setSSID_error(text, &error) ||
                configuration.setWirelessPassphrase_error(text, &error);
    }
    EXPECT_FALSE(isSet);
    EXPECT_EQ(error, daemonError(-6705));
}

TEST(BSSConfigKey, IsAbsentAndToldWhereMemoryEnds) {
    const auto passphrase = ByteBuffer::fromText("passphrase");
    const auto ssid = ByteBuffer::fromText("IEEE");
    std::optional<Error> error;
    std::optional<ByteBuffer> key;
    const auto attempts = withEverLessScarceMemory(
        [&] { key = HalvaneBSSConfig::wpaPasswordHash_withSSID_error(passphrase, ssid, &error); },
        [&](bool hasEnded) {
            EXPECT_EQ(key.has_value(), !hasEnded);
            EXPECT_EQ(error, hasEnded ? std::optional(daemonError(-6728)) : kEarlier);
            error = kEarlier;
        });
    EXPECT_GT(attempts, 1u);

    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE(configuration.setSSID_error("IEEE"));
    EXPECT_TRUE(configuration.setWirelessPassphrase_error("passphrase"));
    EXPECT_TRUE(configuration.setSecurityWithOptionString_error("WPA2"));
    withEverLessScarceMemory(
        [&] { configuration.generateKeyMaterial(); },
        [&](bool hasEnded) { EXPECT_EQ(configuration.keyMaterial().has_value(), !hasEnded); });
}

// Calls `convert(error)` with less and less scarce memory, and returns the number of calls.
template <typename Convert>
std::size_t convertScarcely(Convert convert) {
    std::optional<Error> error = kEarlier;
    decltype(convert(&error)) value;
    return withEverLessScarceMemory([&] { value = convert(&error); },
                                    [&](bool hasEnded) {
                                        EXPECT_EQ(value.has_value(), !hasEnded);
                                        EXPECT_EQ(error == daemonError(-6728), hasEnded);
                                        error = kEarlier;
                                        value.reset();
                                    });
}

TEST(ConfigParser, TellsWhereMemoryEnds) {
    using namespace ConfigParser;
    static constexpr std::string_view kWords[] = {"a word of more than 15 characters", "short"};
    EXPECT_GT(convertScarcely([](auto* error) {
                  return convertParamStringToArray_error(
                      "short,a word of more than 15 characters,short", kWords, error);
              }),
              1u);
    EXPECT_GT(convertScarcely([](auto* error) { return convertToDataFromHex(kHex, error); }), 1u);
    // These need no memory.
    EXPECT_EQ(convertScarcely([](auto* error) { return convertToInteger("-12345", error); }), 1u);
    EXPECT_EQ(convertScarcely([](auto* error) { return convertToBool("yes", error); }), 1u);
    EXPECT_EQ(
        convertScarcely([](auto* error) { return convertToBSSID("00:11:22:33:44:55", error); }),
        1u);
}

}  // namespace
