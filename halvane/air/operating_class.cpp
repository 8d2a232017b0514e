#include "halvane/air/operating_class.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace halvane::air {

namespace {

constexpr std::uint32_t kKilohertz = 1000;  // in a MHz
constexpr int kNumberSpacing = 5;           // MHz between two channel numbers below 60 GHz
constexpr int kNumberSpacingAt60 = 2160;

template <std::size_t Count>
constexpr std::array<std::uint8_t, Count> numbers(int first, int step) {
    std::array<std::uint8_t, Count> list{};
    for (std::size_t i = 0; i < Count; ++i) {
        list[i] = static_cast<std::uint8_t>(first + step * static_cast<int>(i));
    }
    return list;
}

// At 2.4 GHz.
constexpr auto k1To13 = numbers<13>(1, 1);
constexpr auto k14 = numbers<1>(14, 1);
constexpr auto k1To9 = numbers<9>(1, 1);
constexpr auto k5To13 = numbers<9>(5, 1);
// At 3.6 GHz.
constexpr auto k133And137 = numbers<2>(133, 4);
constexpr auto k132To138 = numbers<4>(132, 2);
constexpr auto k131To138 = numbers<8>(131, 1);
// At 4.9 GHz.
constexpr auto k21And25 = numbers<2>(21, 4);
constexpr auto k11To19 = numbers<5>(11, 2);
constexpr auto k1To10 = numbers<10>(1, 1);
constexpr auto k184And192 = numbers<2>(184, 8);
constexpr auto k188And196 = numbers<2>(188, 8);
constexpr auto k191And195 = numbers<2>(191, 4);
constexpr auto k189To197 = numbers<5>(189, 2);
constexpr auto k188To197 = numbers<10>(188, 1);
constexpr auto k184To196 = numbers<4>(184, 4);
constexpr std::uint8_t k183To189[] = {183, 184, 185, 187, 188, 189};
constexpr auto k182To189 = numbers<8>(182, 1);
// At 5 GHz.
constexpr auto k8To16 = numbers<3>(8, 4);
constexpr std::uint8_t k7To11[] = {7, 8, 9, 11};
constexpr auto k6To11 = numbers<6>(6, 1);
constexpr auto k36To48 = numbers<4>(36, 4);
constexpr auto k36And44 = numbers<2>(36, 8);
constexpr auto k40And48 = numbers<2>(40, 8);
constexpr auto k52To64 = numbers<4>(52, 4);
constexpr auto k52And60 = numbers<2>(52, 8);
constexpr auto k56And64 = numbers<2>(56, 8);
constexpr auto k100To144 = numbers<12>(100, 4);
constexpr auto k100To140 = numbers<6>(100, 8);
constexpr auto k104To144 = numbers<6>(104, 8);
constexpr auto k149To161 = numbers<4>(149, 4);
constexpr auto k149To177 = numbers<8>(149, 4);
constexpr auto k149To173 = numbers<4>(149, 8);
constexpr auto k153To177 = numbers<4>(153, 8);
constexpr std::uint8_t k80At5[] = {42, 58, 106, 122, 138, 155, 171};
constexpr std::uint8_t k160At5[] = {50, 114, 163};
// At 6 GHz.
constexpr auto k1To233 = numbers<59>(1, 4);
constexpr auto k3To227 = numbers<29>(3, 8);
constexpr auto k7To215 = numbers<14>(7, 16);
constexpr auto k15To207 = numbers<7>(15, 32);
constexpr auto k2 = numbers<1>(2, 1);
constexpr auto k31To191 = numbers<6>(31, 32);
// At 60 GHz.
constexpr auto k1To6 = numbers<6>(1, 1);
constexpr auto k9To13 = numbers<5>(9, 1);
constexpr auto k17To20 = numbers<4>(17, 1);
constexpr auto k25To27 = numbers<3>(25, 1);

constexpr auto kLower = OperatingClass::Primary::Lower;
constexpr auto kUpper = OperatingClass::Primary::Upper;
constexpr auto kAny = OperatingClass::Primary::Any;
constexpr auto kEnergy = OperatingClass::Demand::EnergyDetection;
constexpr auto kNomadic = OperatingClass::Demand::Nomadic;
constexpr auto kExempt = OperatingClass::Demand::LicenseExempt;

constexpr OperatingClass kClasses[] = {
    {81, Band::Ghz2, 25, 2407000, k1To13},
    {82, Band::Ghz2, 25, 2414000, k14},
    {83, Band::Ghz2, 40, 2407000, k1To9, false, kLower},
    {84, Band::Ghz2, 40, 2407000, k5To13, false, kUpper},
    {94, Band::Ghz3, 20, 3000000, k133And137, false, kAny, false, false, kEnergy},
    {95, Band::Ghz3, 10, 3000000, k132To138, false, kAny, false, false, kEnergy},
    {96, Band::Ghz3, 5, 3002500, k131To138, false, kAny, false, false, kEnergy},
    {101, Band::Ghz4, 20, 4850000, k21And25},
    {102, Band::Ghz4, 10, 4890000, k11To19},
    {103, Band::Ghz4, 5, 4937500, k1To10},
    {104, Band::Ghz4, 40, 4000000, k184And192, false, kLower},
    {105, Band::Ghz4, 40, 4000000, k188And196, false, kUpper},
    {106, Band::Ghz4, 20, 4000000, k191And195},
    {107, Band::Ghz4, 10, 4000000, k189To197},
    {108, Band::Ghz4, 5, 4002500, k188To197},
    {109, Band::Ghz4, 20, 4000000, k184To196},
    {110, Band::Ghz4, 10, 4000000, k183To189},
    {111, Band::Ghz4, 5, 4002500, k182To189},
    {112, Band::Ghz5, 20, 5000000, k8To16},
    {113, Band::Ghz5, 10, 5000000, k7To11},
    {114, Band::Ghz5, 5, 5002500, k6To11},
    {115, Band::Ghz5, 20, 5000000, k36To48},
    {116, Band::Ghz5, 40, 5000000, k36And44, false, kLower},
    {117, Band::Ghz5, 40, 5000000, k40And48, false, kUpper},
    {118, Band::Ghz5, 20, 5000000, k52To64, false, kAny, true},
    {119, Band::Ghz5, 40, 5000000, k52And60, false, kLower, true},
    {120, Band::Ghz5, 40, 5000000, k56And64, false, kUpper, true},
    {121, Band::Ghz5, 20, 5000000, k100To144, false, kAny, true},
    {122, Band::Ghz5, 40, 5000000, k100To140, false, kLower, true},
    {123, Band::Ghz5, 40, 5000000, k104To144, false, kUpper, true},
    {124, Band::Ghz5, 20, 5000000, k149To161, false, kAny, false, false, kNomadic},
    {125, Band::Ghz5, 20, 5000000, k149To177, false, kAny, false, false, kExempt},
    {126, Band::Ghz5, 40, 5000000, k149To173, false, kLower},
    {127, Band::Ghz5, 40, 5000000, k153To177, false, kUpper},
    {128, Band::Ghz5, 80, 5000000, k80At5, true},
    {129, Band::Ghz5, 160, 5000000, k160At5, true},
    {130, Band::Ghz5, 80, 5000000, k80At5, true, kAny, false, true},
    {131, Band::Ghz6, 20, 5950000, k1To233},
    {132, Band::Ghz6, 40, 5950000, k3To227, true},
    {133, Band::Ghz6, 80, 5950000, k7To215, true},
    {134, Band::Ghz6, 160, 5950000, k15To207, true},
    {135, Band::Ghz6, 80, 5950000, k7To215, true, kAny, false, true},
    {136, Band::Ghz6, 20, 5925000, k2},
    {137, Band::Ghz6, 320, 5950000, k31To191, true},
    {180, Band::Ghz60, 2160, 56160000, k1To6},
    {181, Band::Ghz60, 4320, 39960000, k9To13, true},
    {182, Band::Ghz60, 6480, 23760000, k17To20, true},
    {183, Band::Ghz60, 8640, 7560000, k25To27, true},
};
static_assert(std::ranges::is_sorted(kClasses, {}, &OperatingClass::number));

// Two of 320 MHz, which overlap.
constexpr ChannelWidth kWidths[] = {ChannelWidth::Mhz20,       ChannelWidth::Mhz40,
                                    ChannelWidth::Mhz80,       ChannelWidth::Mhz160,
                                    ChannelWidth::Mhz320First, ChannelWidth::Mhz320Second};

}  // namespace

InlineList<std::string_view, 4> OperatingClass::behaviorLimits() const {
    constexpr std::string_view kPrimaries[] = {"", "PrimaryChannelLowerBehavior",
                                               "PrimaryChannelUpperBehavior"};
    constexpr std::string_view kDemands[] = {"", "CCA-EDBehavior", "NomadicBehavior",
                                             "LicenseExemptBehavior"};
    InlineList<std::string_view, 4> limits;
    const auto add = [&](bool holds, std::string_view name) {
        if (holds) limits.push_back(name);
    };
    add(primary != Primary::Any, kPrimaries[static_cast<int>(primary)]);
    add(needsRadarDetection, "DFS_50_100_Behavior");
    add(isPair, "80+");
    add(demand != Demand::None, kDemands[static_cast<int>(demand)]);
    return limits;
}

bool OperatingClass::hasCenter(std::uint8_t channel) const {
    return hasCenters && std::ranges::find(channels, channel) != channels.end();
}

bool OperatingClass::hasPrimary(std::uint8_t channel) const {
    if (!hasCenters) return std::ranges::find(channels, channel) != channels.end();
    return std::ranges::any_of(kWidths, [&](ChannelWidth candidate) {
        if (megahertzOf(candidate) != spacing) return false;
        const auto wide = wideChannelOf({band, channel}, candidate);
        return wide && hasCenter(wide->center.number);
    });
}

std::optional<std::uint32_t> OperatingClass::frequency(std::uint8_t channel) const {
    if (!hasPrimary(channel) && !hasCenter(channel)) return std::nullopt;
    const int step = band == Band::Ghz60 ? kNumberSpacingAt60 : kNumberSpacing;
    return start + kKilohertz * static_cast<std::uint32_t>(step) * channel;
}

std::optional<WideChannel> OperatingClass::wideChannel(std::uint8_t channel) const {
    if (!hasPrimary(channel)) return std::nullopt;
    if (primary != Primary::Any) {
        const int center = primary == Primary::Lower ? channel + 2 : channel - 2;
        return wideChannelAt({band, static_cast<std::uint8_t>(center)}, spacing);
    }
    std::optional<WideChannel> found;
    for (const ChannelWidth candidate : kWidths) {
        if (megahertzOf(candidate) != channelWidth()) continue;
        const auto wide = wideChannelOf({band, channel}, candidate);
        if (!wide) continue;
        if (found) return std::nullopt;
        found = wide;
    }
    return found;
}

std::span<const OperatingClass> operatingClasses() {
    return kClasses;
}

const OperatingClass* operatingClass(std::uint8_t number) {
    const auto* const row = std::ranges::lower_bound(kClasses, number, {}, &OperatingClass::number);
    if (row == std::end(kClasses) || row->number != number) return nullptr;
    return row;
}

std::optional<Channel> channelIn(std::uint8_t number, std::uint8_t channel) {
    const auto* const row = operatingClass(number);
    if (!row || !row->hasPrimary(channel)) return std::nullopt;
    const auto frequency = row->frequency(channel);
    if (!frequency || *frequency % kKilohertz != 0) return std::nullopt;
    return channelOf(static_cast<int>(*frequency / kKilohertz));
}

}  // namespace halvane::air
