#include "halvane/air/eht_capabilities.h"

#include "halvane/air/eht_mcs_sets_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kMpduLengths[] = {{0, "3895 octets"}, {1, "7991 octets"}, {2, "11454 octets"}};
constexpr ValueName kLinkAdaptation[] = {{0, "none"}, {2, "unsolicited"}, {3, "both"}};
constexpr ValueName kPadding[] = {{0, "0 us"}, {1, "8 us"}, {2, "16 us"}, {3, "20 us"}};

// 9.4.2.313.2.
constexpr BitField kMac[] = {
    {0, 1, "EPCS Priority Access Support"},
    {1, 1, "EHT OM Control Support"},
    {2, 1, "Triggered TXOP Sharing Mode 1 Support"},
    {3, 1, "Triggered TXOP Sharing Mode 2 Support"},
    {4, 1, "Restricted TWT Support"},
    {5, 1, "SCS Traffic Description Support"},
    {6, 2, "Maximum MPDU Length", {.names = kMpduLengths}},
    {8, 1, "Maximum A-MPDU Length Exponent Extension"},
    {9, 1, "EHT TRS Support"},
    {10, 1, "TXOP Return Support In TXOP Sharing Mode 2"},
    {11, 1, "Two BQRs Support"},
    {12, 2, "EHT Link Adaptation Support", {.names = kLinkAdaptation}},
    {14, 1, "Unsolicited EPCS Priority Access Parameter Update"},
    {15, 1, "Reserved"},
};

// 9.4.2.313.3.
constexpr BitField kPhy[] = {
    {0, 1, "Reserved"},
    {1, 1, "Support For 320 MHz In 6 GHz"},
    {2, 1, "Support For 242-tone RU In BW Wider Than 20 MHz"},
    {3, 1, "NDP With 4x EHT-LTF And 3.2 us GI"},
    {4, 1, "Partial Bandwidth UL MU-MIMO"},
    {5, 1, "SU Beamformer"},
    {6, 1, "SU Beamformee"},
    {7, 3, "Beamformee SS (<= 80 MHz)"},
    {10, 3, "Beamformee SS (= 160 MHz)"},
    {13, 3, "Beamformee SS (= 320 MHz)"},
    {16, 3, "Number Of Sounding Dimensions (<= 80 MHz)"},
    {19, 3, "Number Of Sounding Dimensions (= 160 MHz)"},
    {22, 3, "Number Of Sounding Dimensions (= 320 MHz)"},
    {25, 1, "Ng = 16 SU Feedback"},
    {26, 1, "Ng = 16 MU Feedback"},
    {27, 1, "Codebook Size (4, 2) SU Feedback"},
    {28, 1, "Codebook Size (7, 5) MU Feedback"},
    {29, 1, "Triggered SU Beamforming Feedback"},
    {30, 1, "Triggered MU Beamforming Partial BW Feedback"},
    {31, 1, "Triggered CQI Feedback"},
    {32, 1, "Partial Bandwidth DL MU-MIMO"},
    {33, 1, "EHT PSR-based SR Support"},
    {34, 1, "Power Boost Factor Support"},
    {35, 1, "EHT MU PPDU With 4x EHT-LTF And 0.8 us GI"},
    {36, 4, "Max Nc"},
    {40, 1, "Non-Triggered CQI Feedback"},
    {41, 1, "Tx 1024-QAM And 4096-QAM < 242-tone RU Support"},
    {42, 1, "Rx 1024-QAM And 4096-QAM < 242-tone RU Support"},
    {43, 1, "PPE Thresholds Present"},
    {44, 2, "Common Nominal Packet Padding", {.names = kPadding}},
    {46, 5, "Maximum Number Of Supported EHT-LTFs"},
    {51, 4, "Support Of MCS 15"},
    {55, 1, "Support Of EHT DUP In 6 GHz"},
    {56, 1, "Support For 20 MHz Operating STA Receiving NDP With Wider Bandwidth"},
    {57, 1, "Non-OFDMA UL MU-MIMO (BW <= 80 MHz)"},
    {58, 1, "Non-OFDMA UL MU-MIMO (BW = 160 MHz)"},
    {59, 1, "Non-OFDMA UL MU-MIMO (BW = 320 MHz)"},
    {60, 1, "MU Beamformer (BW <= 80 MHz)"},
    {61, 1, "MU Beamformer (BW = 160 MHz)"},
    {62, 1, "MU Beamformer (BW = 320 MHz)"},
    {63, 1, "TB Sounding Feedback Rate Limit"},
    {64, 1, "Rx 1024-QAM In Wider Bandwidth DL OFDMA Support"},
    {65, 1, "Rx 4096-QAM In Wider Bandwidth DL OFDMA Support"},
    {66, 1, "20 MHz-Only Limited Capabilities Support"},
    {67, 1, "20 MHz-Only Triggered MU Beamforming Full BW Feedback And DL MU-MIMO"},
    {68, 1, "20 MHz-Only M-RU Support"},
    {69, 3, "Reserved"},
};

constexpr auto kHeadLayout = [](auto& codec, auto& element) {
    codec.group("EHT MAC Capabilities Information", [&] { codec.bits(element.mac.bits, kMac); });
    codec.group("EHT PHY Capabilities Information", [&] { codec.bits(element.phy.bits, kPhy); });
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    kHeadLayout(codec, element);
    codec.octets("Supported EHT-MCS And NSS Set And EHT PPE Thresholds", element.sets);
};

// An element with its sets decoded.
struct Whole {
    EhtMacCapabilities mac{};
    EhtPhyCapabilities phy{};
    EhtMcsSets sets{};
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(EhtCapabilities, kLayout)

std::optional<ElementDamage> EhtCapabilities::describe(Octets body, FieldSink& sink,
                                                       const HePhyCapabilities& he,
                                                       EhtSender sender) {
    const auto layout = [&](auto& codec, auto& whole) {
        kHeadLayout(codec, whole);
        kEhtMcsSetsLayout(codec, whole.sets, ehtMcsSetsPresence(whole.phy, he, sender));
    };
    return describeBy<Whole>(layout, body, sink);
}

}  // namespace halvane::air
