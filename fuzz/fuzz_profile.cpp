// The profile of a BSS of any elements: every value has a rule and names elements that stand where
// it says, channel, width and puncturing fit together, and no finding stands twice.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"
#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/finding.h"
#include "halvane/air/max_rates.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/phy_rate.h"
#include "halvane/air/profile.h"
#include "halvane/air/rule.h"
#include "halvane/air/source.h"
#include "halvane/base/mac_address.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"
#include "fuzz/required_fields.h"
#include "tools/halvane/output/air_text.h"

using namespace halvane;
using namespace halvane::air;

namespace {

// --- Sources ---

// What stands at the offsets of a frame.
class Places {
  public:
    explicit Places(Octets octets) : octets_(octets) {
        auto element = ElementRange(octets).begin();
        for (; element != std::default_sentinel; ++element) {
            fuzz::requireElement(element->id, element->body);
            idAt_[element->offset] = element->id;
        }
        trailing_ = element.rest().offset;
    }

    // An element of the sender, and the first octet of what the frame's end cuts off.
    void requireOfSender(const Source& source) const {
        requireOctet(source);
        if (source.offset == trailing_) return;
        const auto found = idAt_.find(source.offset);
        REQUIRE(found != idAt_.end() && found->second == source.id);
    }
    // An element of the sender, or one within a profile.
    void requireOctet(const Source& source) const {
        REQUIRE(source.offset < octets_.size());
        REQUIRE(octets_[source.offset] == idOctetOf(source.id));
    }

  private:
    Octets octets_;
    std::map<std::size_t, ElementId> idAt_;
    std::size_t trailing_ = 0;
};

class ProfileCheck {
  public:
    ProfileCheck(const Places& places, const BssProfile& profile, bool isSender)
        : places_(places), profile_(profile), isSender_(isSender) {}

    void run() const {
        requireValues();
        requireChannel();
        requirePuncturing();
        requireRates();
        requireFindings();
    }

  private:
    void requireSources(const Sources& sources) const {
        for (const Source& source : sources) {
            if (source.origin != Origin::Element) continue;
            isSender_ ? places_.requireOfSender(source) : places_.requireOctet(source);
        }
    }

    template <typename T>
    void requireDerived(const Derived<T>& derived) const {
        REQUIRE(!ruleInfo(derived.rule).sentence.empty());
        requireSources(derived.sources);
    }
    template <typename T>
    void requireDerived(const std::optional<Derived<T>>& derived) const {
        if (derived) requireDerived(*derived);
    }

    void requireValues() const {
        requireDerived(profile_.ssid);
        requireDerived(profile_.generation);
        requireDerived(profile_.security.name);
        requireDerived(profile_.security.pmf);
        requireDerived(profile_.country);
        requireDerived(profile_.load);
        requireDerived(profile_.dtimPeriod);
        if (profile_.mld) requireSources(profile_.mld->sources);
        REQUIRE(!profile_.ssid || (*profile_.ssid)->buffer().size() <= 32);
        REQUIRE(!profile_.isHidden || profile_.ssid);
    }

    bool isFound(FindingKind kind) const {
        return std::ranges::count(profile_.findings, kind, &Finding::kind) > 0;
    }

    static bool isWithin(int frequency, int center, int width) {
        return std::abs(frequency - center) <= (width - 20) / 2;
    }

    void requireChannel() const {
        const ChannelUse& channel = profile_.channel;
        requireDerived(channel.band);
        requireDerived(channel.primaryChannel);
        requireDerived(channel.span);
        constexpr int kWidths[] = {20, 40, 80, 160, 320};
        const auto& [width, center1, center2] = *channel.span;
        REQUIRE(std::ranges::count(kWidths, width) == 1);
        REQUIRE(!channel.primaryChannel || channel.band);
        REQUIRE(!channel.primaryFrequency || channel.primaryChannel);
        REQUIRE(!center2 || (center1 && width == 160));
        REQUIRE(width > 20 || center1 == channel.primaryFrequency);
        if (!channel.primaryFrequency || !center1 || **channel.band == Band::Ghz2) return;
        const int segment = center2 ? 80 : width;
        const bool isPrimaryWithin =
            isWithin(*channel.primaryFrequency, *center1, segment) ||
            (center2 && isWithin(*channel.primaryFrequency, *center2, segment));
        REQUIRE(isPrimaryWithin || isFound(FindingKind::CenterWithoutPrimary));
    }

    // Every punctured 20 MHz lie in the channel, and the primary channel is none of them unless a
    // finding says so.
    void requirePuncturing() const {
        const ChannelUse& channel = profile_.channel;
        requireDerived(channel.punctured);
        if (!channel.punctured) return;
        const auto& [width, center1, center2] = *channel.span;
        REQUIRE(**channel.punctured >> (width / 20) == 0);
        if (!channel.primaryFrequency || !center1 || center2) return;
        const int fromLowest = *channel.primaryFrequency - (*center1 - width / 2 + 10);
        if (fromLowest < 0 || fromLowest % 20 != 0 || fromLowest >= width) return;
        const bool isPrimaryPunctured = (**channel.punctured >> (fromLowest / 20) & 1) != 0;
        REQUIRE(isPrimaryPunctured == isFound(FindingKind::PuncturedPrimary));
    }

    void requireRates() const {
        const MaxRates& rates = profile_.rates;
        for (const auto* rate : {&rates.ht, &rates.vht, &rates.he, &rates.eht}) {
            if (!*rate) continue;
            requireDerived(**rate);
            const PhyRate& value = ***rate;
            REQUIRE(value.hundredKbit > 0);
            REQUIRE(phyRate(value.inputs) == value);
            REQUIRE(value.inputs.width <= profile_.channel.span->width);
        }
        REQUIRE(profile_.streams() >= 0 && profile_.streams() <= 8);
    }

    void requireFindings() const {
        const auto& findings = profile_.findings;
        for (std::size_t i = 0; i < findings.size(); ++i) {
            requireSources(findings[i].sources);
            REQUIRE(std::count(findings.begin(), findings.end(), findings[i]) == 1);
            REQUIRE(i == 0 || findings[i - 1].info().severity >= findings[i].info().severity);
        }
    }

    const Places& places_;
    const BssProfile& profile_;
    const bool isSender_;
};

// A network that shares the frame has an address of its own, and no networks in turn.
void requireNontransmitted(const Places& places, const BssProfile& profile,
                           const MacAddress& sender) {
    std::vector<MacAddress> addresses = {sender};
    for (const NontransmittedBss& bss : profile.nontransmitted) {
        REQUIRE(std::ranges::count(addresses, bss.bssid) == 0);
        addresses.push_back(bss.bssid);
        REQUIRE(bss.index > 0 && bss.profile.nontransmitted.empty());
        ProfileCheck(places, bss.profile, false).run();
    }
}

void requireNeighbors(const BssProfile& profile) {
    for (const Neighbor& neighbor : profile.neighbors) {
        REQUIRE(!neighbor.frequency || neighbor.band);
        REQUIRE(!neighbor.frequency ||
                neighbor.frequency == centerFrequencyOf(*neighbor.band, neighbor.channel));
    }
}

void requireTexts(const BssProfile& profile) {
    REQUIRE(!tool::airText(profile).empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongestFrame = 11454;  // IEEE 802.11-2020, table 9-25
    if (size > kLongestFrame) return 0;
    constexpr int kFrequencies[] = {0,    2412, 2437, 2452, 2472, 2484, 5180, 5500,
                                    5745, 5885, 5900, 5935, 5955, 6135, 7115, 60480};
    fuzzing::ByteSource source(data, size);
    const int frequency = source.oneOf(kFrequencies);
    const FixedFields fixed = {MacAddress({0x02, 0x1A, 0, 0, 0, source.byte()}),
                               source.integer<std::uint16_t>(), source.integer<std::uint16_t>()};
    const Octets elements = source.rest();
    const auto profile =
        profileOf(elements, fixed, {frequency == 0 ? std::nullopt : std::optional(frequency)});
    const Places places(elements);
    ProfileCheck(places, profile, true).run();
    requireNontransmitted(places, profile, fixed.bssid);
    requireNeighbors(profile);
    requireTexts(profile);
    return 0;
}
