// The samples of today's networks: what their profiles say is what samples/README.md says, frames
// of one network agree with each other, and only the contradictions that are meant are found.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/finding.h"
#include "halvane/air/inheritance.h"
#include "halvane/air/multi_link.h"
#include "halvane/air/profile.h"
#include "halvane/air/security.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/survey/air_profile.h"

using namespace halvane;
using namespace halvane::tool;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

namespace {

struct Sampled {
    ByteBuffer elements;
    air::BssProfile profile;
};

std::vector<Sampled> framesOf(const std::string& name) {
    std::vector<Sampled> frames;
    auto reader = CaptureReader::open((std::filesystem::path(HALVANE_SAMPLES) / name).string());
    EXPECT_TRUE(reader) << name;
    if (!reader) return frames;
    while (const auto frame = reader->next()) {
        if (frame->beacon() == nullptr) continue;
        const auto sighting = capture::sightingOf(*frame->beacon(), frame->radio);
        frames.push_back({ByteBuffer(frame->beacon()->elements), airProfileOf(sighting)});
    }
    EXPECT_EQ(reader->error(), std::nullopt);
    return frames;
}

std::string nameOf(const air::BssProfile& profile) {
    return profile.ssid ? (*profile.ssid)->text() : "-";
}

// "channel 36 of 5 GHz, 80 MHz around 5210"
std::string channelOf(const air::BssProfile& profile) {
    const air::ChannelUse& use = profile.channel;
    if (!use.band || !use.primaryChannel) return "no channel";
    std::string text = "channel " + std::to_string(**use.primaryChannel) + " of " +
                       std::string(air::bandName(**use.band)) + " GHz, " +
                       std::to_string(use.span->width) + " MHz";
    if (use.span->center1) text += " around " + std::to_string(*use.span->center1);
    return text;
}

std::string securityOf(const air::BssProfile& profile) {
    return std::string(air::securityName(*profile.security.name)) + ", PMF " +
           std::string(air::pmfName(*profile.security.pmf));
}

std::string rateOf(const air::BssProfile& profile) {
    const auto* const rate = profile.rates.latest();
    if (rate == nullptr) return "no rate";
    char text[32];
    std::snprintf(text, sizeof text, "%.1f Mbit/s", (*rate)->mbps());
    return text;
}

std::string lineOf(const air::BssProfile& profile) {
    return nameOf(profile) + ": Wi-Fi " + std::to_string(static_cast<int>(*profile.generation)) +
           ", " + channelOf(profile) + ", " + rateOf(profile) + ", " + securityOf(profile);
}

std::vector<std::string> linesOf(const std::vector<Sampled>& frames) {
    std::vector<std::string> lines;
    for (const Sampled& frame : frames) lines.push_back(lineOf(frame.profile));
    return lines;
}

std::vector<std::string> findingsOf(const air::BssProfile& profile, air::Severity least) {
    std::vector<std::string> ids;
    for (const air::Finding& finding : profile.findings) {
        if (finding.info().severity >= least) ids.emplace_back(finding.info().id);
    }
    return ids;
}

std::vector<std::string> linksOf(const air::BssProfile& profile) {
    std::vector<std::string> links;
    if (!profile.mld) return links;
    for (const air::MldLink& link : profile.mld->links) {
        links.push_back(std::to_string(link.id) + ' ' +
                        (link.address ? link.address->text().substr(15) : "-") +
                        (link.isReporting ? " this" : ""));
    }
    return links;
}

TEST(AirSamples, HoldTheNetworksOfToday) {
    const auto frames = framesOf("today.pcap");
    EXPECT_THAT(
        linesOf(frames),
        ElementsAre("Linden House: Wi-Fi 6, channel 1 of 2.4 GHz, 20 MHz around 2412, 286.8 "
                    "Mbit/s, WPA2/WPA3-Personal, PMF capable",
                    "Linden House 5G: Wi-Fi 5, channel 36 of 5 GHz, 80 MHz around 5210, 1300.0 "
                    "Mbit/s, WPA2-Personal, PMF none",
                    "Larch Lane: Wi-Fi 6, channel 100 of 5 GHz, 160 MHz around 5570, 4803.9 "
                    "Mbit/s, WPA3-Personal, PMF required",
                    "Larch Lane: Wi-Fi 6, channel 37 of 6 GHz, 160 MHz around 6185, 2402.0 "
                    "Mbit/s, WPA3-Personal, PMF required",
                    "Poplar Tower: Wi-Fi 7, channel 53 of 6 GHz, 320 MHz around 6265, 11529.4 "
                    "Mbit/s, WPA3-Personal, PMF required",
                    "Ministry: Wi-Fi 6, channel 44 of 5 GHz, 80 MHz around 5210, 2402.0 Mbit/s, "
                    "WPA3-Enterprise 192-bit, PMF required",
                    "Poplar Cafe: Wi-Fi 6, channel 6 of 2.4 GHz, 20 MHz around 2437, 286.8 "
                    "Mbit/s, Enhanced Open, PMF required",
                    "Market Hall: Wi-Fi 6, channel 11 of 2.4 GHz, 20 MHz around 2462, 286.8 "
                    "Mbit/s, Enhanced Open transition, PMF none",
                    ": Wi-Fi 6, channel 11 of 2.4 GHz, 20 MHz around 2462, 286.8 Mbit/s, "
                    "Enhanced Open, PMF required"));
    for (const Sampled& frame : frames) {
        EXPECT_THAT(findingsOf(frame.profile, air::Severity::Warning), IsEmpty())
            << lineOf(frame.profile);
    }
}

TEST(AirSamples, HoldAPuncturedChannelOf320Mhz) {
    const auto frames = framesOf("today.pcap");
    ASSERT_EQ(frames.size(), 9u);
    const auto& punctured = frames[4].profile.channel.punctured;
    ASSERT_TRUE(punctured);
    EXPECT_EQ(**punctured, 0x0C00);  // 73 and 77, the eleventh and twelfth from channel 33 on
}

TEST(AirSamples, TellOfTheAccessPointInTheSameDevice) {
    const auto frames = framesOf("today.pcap");
    ASSERT_EQ(frames.size(), 9u);
    const auto& neighbors = frames[2].profile.neighbors;
    ASSERT_EQ(neighbors.size(), 1u);
    EXPECT_EQ(neighbors[0].bssid->text(), "02:1a:00:00:00:14");
    EXPECT_EQ(neighbors[0].frequency, frames[3].profile.channel.primaryFrequency);
    EXPECT_EQ(neighbors[0].isSameSsid, true);
    EXPECT_EQ(neighbors[0].isCoLocated, true);
}

TEST(AirSamples, HoldFourNetworksInOneBeacon) {
    const auto frames = framesOf("shared-beacon.pcap");
    ASSERT_EQ(frames.size(), 1u);
    const air::BssProfile& sender = frames[0].profile;
    EXPECT_EQ(lineOf(sender),
              "Cedar Office: Wi-Fi 6, channel 36 of 5 GHz, 80 MHz around 5210, 2402.0 Mbit/s, "
              "WPA3-Personal, PMF required");
    std::vector<std::string> lines;
    for (const air::NontransmittedBss& bss : sender.nontransmitted) {
        lines.push_back(bss.bssid.text().substr(15) + ' ' + nameOf(bss.profile) + ": " +
                        securityOf(bss.profile));
        EXPECT_EQ(channelOf(bss.profile), channelOf(sender));
        EXPECT_EQ(rateOf(bss.profile), rateOf(sender));
    }
    EXPECT_THAT(lines, ElementsAre("21 Cedar Staff: WPA3-Personal, PMF required",
                                   "22 Cedar Guests: Enhanced Open, PMF required",
                                   "23 Cedar Lobby: Open, PMF none"));
    EXPECT_THAT(findingsOf(sender, air::Severity::Warning), IsEmpty());
}

TEST(AirSamples, HoldAMultiLinkDeviceOfThreeLinks) {
    const auto frames = framesOf("multi-link.pcap");
    EXPECT_THAT(
        linesOf(frames),
        ElementsAre("Birch House: Wi-Fi 7, channel 6 of 2.4 GHz, 20 MHz around 2437, 344.1 "
                    "Mbit/s, WPA3-Personal, PMF required",
                    "Birch House: Wi-Fi 7, channel 36 of 5 GHz, 160 MHz around 5250, 2882.4 "
                    "Mbit/s, WPA3-Personal, PMF required",
                    "Birch House: Wi-Fi 7, channel 37 of 6 GHz, 320 MHz around 6105, 5764.7 "
                    "Mbit/s, WPA3-Personal, PMF required",
                    lineOf(frames.at(1).profile), lineOf(frames.at(1).profile)));
    EXPECT_THAT(linksOf(frames[0].profile), ElementsAre("0 31 this", "1 32", "2 33"));
    EXPECT_THAT(linksOf(frames[1].profile), ElementsAre("1 32 this", "0 31", "2 33"));
    EXPECT_THAT(linksOf(frames[2].profile), ElementsAre("2 33 this", "0 31", "1 32"));
    for (const Sampled& frame : frames) {
        EXPECT_EQ(frame.profile.mld->address.text(), "02:1a:00:00:00:30");
        EXPECT_THAT(findingsOf(frame.profile, air::Severity::Warning), IsEmpty());
    }
}

// The profile of a link that another link's response tells of.
air::BssProfile toldLink(const Sampled& response) {
    const auto elements = air::elementsIn(response.elements.bytes());
    const auto found = std::ranges::find(elements, air::ElementId::MultiLink, &air::Element::id);
    const auto multiLink = air::MultiLink::decode(found->body).value();
    const air::PerStaProfile& link = *multiLink.subelements.at(0).link;
    std::vector<std::uint8_t> octets;
    for (const air::Element& element : air::elementsOfLink(elements, link).elements) {
        octets.insert(octets.end(), element.octets.begin(), element.octets.end());
    }
    const air::FixedFields fixed = {
        *link.address, static_cast<std::uint16_t>(link.capabilities()->fields.bits(0, 16)), 100};
    return air::profileOf(octets, fixed);
}

TEST(AirSamples, TellOfAnotherLinkWhatItsBeaconSays) {
    const auto frames = framesOf("multi-link.pcap");
    ASSERT_EQ(frames.size(), 5u);
    EXPECT_EQ(lineOf(toldLink(frames[3])), lineOf(frames[0].profile));
    EXPECT_EQ(lineOf(toldLink(frames[4])), lineOf(frames[2].profile));
    EXPECT_EQ(toldLink(frames[4]).channel.punctured, frames[2].profile.channel.punctured);
}

TEST(AirSamples, HoldContradictions) {
    struct Row {
        std::string name;
        std::vector<std::string> findings;
    };
    const Row rows[] = {
        {"Two widths", {"ht-vht-width"}},
        {"Two channels", {"ds-ht-channel", "heard-elsewhere"}},
        {"Off centre", {"center-without-primary"}},
        {"Punctured heart", {"punctured-primary", "puncturing"}},
        {"Half a WPA3", {"pmf-missing", "sae-without-h2e"}},
        {"Key muddle", {"rsn-wpa-differ", "tkip-allowed", "weak-group-cipher"}},
        {"Old keys", {"6ghz-security", "6ghz-information"}},
        {"Roam nowhere", {"ft-without-domain"}},
        {"Said twice", {"element-duplicated", "element-order"}},
        {"Nameless guest", {"profile-ssid-missing"}},
        {"Links apart", {"mld-address"}},
    };
    const auto frames = framesOf("contradictions.pcap");
    ASSERT_EQ(frames.size(), std::size(rows));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        EXPECT_EQ(nameOf(frames[i].profile), rows[i].name);
        EXPECT_THAT(findingsOf(frames[i].profile, air::Severity::Note),
                    IsSupersetOf(rows[i].findings))
            << rows[i].name;
    }
}

// Damage is the matter of other samples.
TEST(AirSamples, ContradictInWholeFramesAlone) {
    for (const char* const name :
         {"today.pcap", "shared-beacon.pcap", "multi-link.pcap", "contradictions.pcap"}) {
        for (const Sampled& frame : framesOf(name)) {
            const auto found = findingsOf(frame.profile, air::Severity::Note);
            for (const char* const damage :
                 {"frame-cut", "element-too-short", "extension-missing", "fragment-alone"}) {
                EXPECT_THAT(found, ::testing::Not(Contains(damage))) << lineOf(frame.profile);
            }
        }
    }
}

}  // namespace
