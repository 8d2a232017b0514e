// The option-word setters, and the public lists of their words.
#include <cstddef>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_words.h"
#include "halvane/model/daemon_service.h"

using namespace halvane;

namespace {

using Setter = bool (HalvaneBSSConfig::*)(std::string_view, std::optional<Error>*);
using Flag = bool (HalvaneBSSConfig::*)() const;

struct Word {
    std::string spelling;
    Flag flag;
};
struct Group {
    Setter set;
    std::span<const std::string_view> listed;
    std::vector<Word> words;
};

const std::vector<Group> kGroups = {
    {&HalvaneBSSConfig::setAuthenticationWithOptionString_error,
     kBSSAuthenticationWords,
     {{"Open", &HalvaneBSSConfig::allowAuthenticationOpen},
      {"SharedKey", &HalvaneBSSConfig::allowAuthenticationSharedKey},
      {"LEAP", &HalvaneBSSConfig::allowAuthenticationLEAP}}},
    {&HalvaneBSSConfig::setSecurityWithOptionString_error,
     kBSSSecurityWords,
     {{"Open", &HalvaneBSSConfig::allowSecurityOpen},
      {"WEP", &HalvaneBSSConfig::allowSecurityWEP},
      {"WPA", &HalvaneBSSConfig::allowSecurityWPA},
      {"WPA2", &HalvaneBSSConfig::allowSecurityWPA2},
      {"WPS", &HalvaneBSSConfig::allowSecurityWPS}}},
    {&HalvaneBSSConfig::setUnicastCipherWithOptionString_error,
     kBSSUnicastCipherWords,
     {{"TKIP", &HalvaneBSSConfig::allowUnicastCipherTKIP},
      {"CCMP", &HalvaneBSSConfig::allowUnicastCipherCCMP},
      {"UseGroup", &HalvaneBSSConfig::allowUnicastCipherUseGroup}}},
    {&HalvaneBSSConfig::setMulticastCipherWithOptionString_error,
     kBSSMulticastCipherWords,
     {{"WEP40", &HalvaneBSSConfig::allowMulticastCipherWEP40},
      {"WEP104", &HalvaneBSSConfig::allowMulticastCipherWEP104},
      {"TKIP", &HalvaneBSSConfig::allowMulticastCipherTKIP},
      {"CCMP", &HalvaneBSSConfig::allowMulticastCipherCCMP}}},
    {&HalvaneBSSConfig::setKeyManagementWithOptionString_error,
     kBSSKeyManagementWords,
     {{"802.1X", &HalvaneBSSConfig::allowKeyManagement8021X},
      {"PSK", &HalvaneBSSConfig::allowKeyManagementPSK}}},
    {&HalvaneBSSConfig::setPHYModeWithOptionString_error,
     kBSSPHYModeWords,
     {{"802.11b", &HalvaneBSSConfig::allowPHY80211b},
      {"802.11g", &HalvaneBSSConfig::allowPHY80211g},
      {"802.11a", &HalvaneBSSConfig::allowPHY80211a},
      {"802.11n", &HalvaneBSSConfig::allowPHY80211n}}},
    {&HalvaneBSSConfig::setWPSConfigurationMethodsString_error,
     kBSSWPSMethodWords,
     {{"PIN", &HalvaneBSSConfig::allowPIN}, {"PushButton", &HalvaneBSSConfig::allowPushbutton}}},
};

// The flags of the group, in the order of its words.
std::vector<bool> flagsOf(const HalvaneBSSConfig& configuration, const Group& group) {
    std::vector<bool> flags;
    for (const Word& word : group.words) flags.push_back((configuration.*word.flag)());
    return flags;
}

// Returns the text that lists the words whose bits are set, and the flags that this text should
// set.
std::pair<std::string, std::vector<bool>> listing(const Group& group, unsigned bits) {
    std::pair<std::string, std::vector<bool>> result;
    for (std::size_t i = 0; i < group.words.size(); ++i) {
        const bool isListed = (bits >> i & 1) != 0;
        result.second.push_back(isListed);
        if (!isListed) continue;
        if (!result.first.empty()) result.first += ',';
        result.first += group.words[i].spelling;
    }
    return result;
}

std::string withCaseSwapped(std::string text) {
    for (char& character : text) {
        const bool isLetter = (character | 0x20) >= 'a' && (character | 0x20) <= 'z';
        if (isLetter) character = static_cast<char>(character ^ 0x20);
    }
    return text;
}

TEST(BSSOptionWords, SetEveryCombinationOfFlagsWhateverTheyWere) {
    for (const Group& group : kGroups) {
        const unsigned count = 1u << group.words.size();
        for (unsigned before = 0; before < count; ++before) {
            for (unsigned after = 0; after < count; ++after) {
                auto configuration = HalvaneBSSConfig::init();
                EXPECT_TRUE((configuration.*group.set)(listing(group, before).first, nullptr));
                const auto [text, flags] = listing(group, after);
                std::optional<Error> error = Error{"earlier", 1};
                EXPECT_TRUE((configuration.*group.set)(text, &error)) << text;
                EXPECT_EQ(error, std::nullopt);
                EXPECT_EQ(flagsOf(configuration, group), flags) << text;
            }
        }
    }
}

TEST(BSSOptionWords, LeaveOtherGroupsAlone) {
    for (const Group& group : kGroups) {
        auto configuration = HalvaneBSSConfig::init();
        const auto [text, flags] = listing(group, ~0u);
        EXPECT_TRUE((configuration.*group.set)(text, nullptr));
        const auto unchanged = HalvaneBSSConfig::init();
        for (const Group& other : kGroups) {
            if (&other == &group) continue;
            EXPECT_EQ(flagsOf(configuration, other), flagsOf(unchanged, other)) << text;
        }
    }
}

TEST(BSSOptionWords, AreTakenInAnyCaseOrderAndNumber) {
    for (const Group& group : kGroups) {
        auto configuration = HalvaneBSSConfig::init();
        std::string text;
        for (auto word = group.words.rbegin(); word != group.words.rend(); ++word) {
            text += withCaseSwapped(word->spelling) + "," + word->spelling + ",";
        }
        EXPECT_TRUE((configuration.*group.set)(text, nullptr)) << text;
        EXPECT_EQ(flagsOf(configuration, group), std::vector<bool>(group.words.size(), true));
    }
}

TEST(BSSOptionWords, ChangeNothingWhereOneIsUnknown) {
    for (const Group& group : kGroups) {
        const std::string& first = group.words[0].spelling;
        const std::string& second = group.words[1].spelling;
        for (const std::string& text :
             {first + ", " + second, first + ",," + second, std::string(","), first + ",x",
              "x," + first, first.substr(1), first + "x", " " + first, first + " "}) {
            for (const unsigned before : {0u, 1u, ~0u}) {
                auto configuration = HalvaneBSSConfig::init();
                EXPECT_TRUE((configuration.*group.set)(listing(group, before).first, nullptr));
                const auto unchanged = configuration;
                std::optional<Error> error;
                EXPECT_FALSE((configuration.*group.set)(text, &error)) << text;
                EXPECT_EQ(error, daemonError(-6705));
                EXPECT_FALSE((configuration.*group.set)(text, nullptr));
                EXPECT_EQ(configuration, unchanged) << text;
            }
        }
    }
}

TEST(BSSOptionWords, MayEndInAComma) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE(configuration.setSecurityWithOptionString_error("WEP,Open,"));
    EXPECT_TRUE(configuration.allowSecurityWEP() && configuration.allowSecurityOpen());
}

TEST(BSSOptionWords, AreListed) {
    for (const Group& group : kGroups) {
        ASSERT_EQ(group.listed.size(), group.words.size());
        for (std::size_t i = 0; i < group.words.size(); ++i) {
            EXPECT_EQ(group.listed[i], group.words[i].spelling);
        }
    }
}

TEST(BSSOptionWords, TellWPAKindsApart) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE(configuration.setSecurityWithOptionString_error("wpa2"));
    EXPECT_TRUE(configuration.setKeyManagementWithOptionString_error("psk"));
    EXPECT_EQ(configuration.wifiSecurity(), 4u);
    EXPECT_TRUE(configuration.setKeyManagementWithOptionString_error("psk,802.1x"));
    EXPECT_EQ(configuration.wifiSecurity(), 5u);
}

}  // namespace
