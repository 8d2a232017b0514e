#include "halvane/air/he_capabilities.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/mcs_map_internal.h"
#include "halvane/air/ppe_thresholds_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kDcm[] = {{0, "none"}, {1, "BPSK"}, {2, "QPSK"}, {3, "16-QAM"}};
constexpr ValueName kDcmRu[] = {
    {0, "242 tones"}, {1, "484 tones"}, {2, "996 tones"}, {3, "2x996 tones"}};
constexpr ValueName kPadding[] = {{0, "0 us"}, {1, "8 us"}, {2, "16 us"}};

// 9.4.2.248.2.
constexpr BitField kMac[] = {
    {0, 1, "+HTC-HE Support"},
    {1, 1, "TWT Requester Support"},
    {2, 1, "TWT Responder Support"},
    {3, 2, "Dynamic Fragmentation Support"},
    {5, 3, "Maximum Number Of Fragmented MSDUs/A-MSDUs Exponent"},
    {8, 2, "Minimum Fragment Size"},
    {10, 2, "Trigger Frame MAC Padding Duration"},
    {12, 3, "Multi-TID Aggregation Rx Support"},
    {15, 2, "HE Link Adaptation Support"},
    {17, 1, "All Ack Support"},
    {18, 1, "TRS Support"},
    {19, 1, "BSR Support"},
    {20, 1, "Broadcast TWT Support"},
    {21, 1, "32-bit BA Bitmap Support"},
    {22, 1, "MU Cascading Support"},
    {23, 1, "Ack-Enabled Aggregation Support"},
    {24, 1, "Reserved"},
    {25, 1, "OM Control Support"},
    {26, 1, "OFDMA RA Support"},
    {27, 2, "Maximum A-MPDU Length Exponent Extension"},
    {29, 1, "A-MSDU Fragmentation Support"},
    {30, 1, "Flexible TWT Schedule Support"},
    {31, 1, "Rx Control Frame To MultiBSS"},
    {32, 1, "BSRP BQRP A-MPDU Aggregation"},
    {33, 1, "QTP Support"},
    {34, 1, "BQR Support"},
    {35, 1, "PSR Responder"},
    {36, 1, "NDP Feedback Report Support"},
    {37, 1, "OPS Support"},
    {38, 1, "A-MSDU Not Under BA In Ack-Enabled A-MPDU Support"},
    {39, 3, "Multi-TID Aggregation Tx Support"},
    {42, 1, "HE Subchannel Selective Transmission Support"},
    {43, 1, "UL 2x996-tone RU Support"},
    {44, 1, "OM Control UL MU Data Disable RX Support"},
    {45, 1, "HE Dynamic SM Power Save"},
    {46, 1, "Punctured Sounding Support"},
    {47, 1, "HT And VHT Trigger Frame RX Support"},
};

// 9.4.2.248.3.
constexpr BitField kPhy[] = {
    {0, 1, "Reserved"},
    {1, 1, "40 MHz In 2.4 GHz"},
    {2, 1, "40 MHz And 80 MHz In 5 GHz And 6 GHz"},
    {3, 1, "160 MHz In 5 GHz And 6 GHz"},
    {4, 1, "160/80+80 MHz In 5 GHz And 6 GHz"},
    {5, 1, "242-tone RUs In 2.4 GHz"},
    {6, 1, "242-tone RUs In 5 GHz And 6 GHz"},
    {7, 1, "Reserved"},
    {8, 4, "Punctured Preamble Rx"},
    {12, 1, "Device Class"},
    {13, 1, "LDPC Coding In Payload"},
    {14, 1, "HE SU PPDU With 1x HE-LTF And 0.8 us GI"},
    {15, 2, "Midamble Tx/Rx Max NSTS"},
    {17, 1, "NDP With 4x HE-LTF And 3.2 us GI"},
    {18, 1, "STBC Tx <= 80 MHz"},
    {19, 1, "STBC Rx <= 80 MHz"},
    {20, 1, "Doppler Tx"},
    {21, 1, "Doppler Rx"},
    {22, 1, "Full Bandwidth UL MU-MIMO"},
    {23, 1, "Partial Bandwidth UL MU-MIMO"},
    {24, 2, "DCM Max Constellation Tx", {.names = kDcm}},
    {26, 1, "DCM Max NSS Tx"},
    {27, 2, "DCM Max Constellation Rx", {.names = kDcm}},
    {29, 1, "DCM Max NSS Rx"},
    {30, 1, "Rx Partial BW SU In 20 MHz HE MU PPDU"},
    {31, 1, "SU Beamformer"},
    {32, 1, "SU Beamformee"},
    {33, 1, "MU Beamformer"},
    {34, 3, "Beamformee STS <= 80 MHz"},
    {37, 3, "Beamformee STS > 80 MHz"},
    {40, 3, "Number Of Sounding Dimensions <= 80 MHz"},
    {43, 3, "Number Of Sounding Dimensions > 80 MHz"},
    {46, 1, "Ng = 16 SU Feedback"},
    {47, 1, "Ng = 16 MU Feedback"},
    {48, 1, "Codebook Size (4, 2) SU Feedback"},
    {49, 1, "Codebook Size (7, 5) MU Feedback"},
    {50, 1, "Triggered SU Beamforming Feedback"},
    {51, 1, "Triggered MU Beamforming Partial BW Feedback"},
    {52, 1, "Triggered CQI Feedback"},
    {53, 1, "Partial Bandwidth Extended Range"},
    {54, 1, "Partial Bandwidth DL MU-MIMO"},
    {55, 1, "PPE Thresholds Present"},
    {56, 1, "PSR-based SR Support"},
    {57, 1, "Power Boost Factor Support"},
    {58, 1, "HE SU PPDU And HE MU PPDU With 4x HE-LTF And 0.8 us GI"},
    {59, 3, "Max Nc"},
    {62, 1, "STBC Tx > 80 MHz"},
    {63, 1, "STBC Rx > 80 MHz"},
    {64, 1, "HE ER SU PPDU With 4x HE-LTF And 0.8 us GI"},
    {65, 1, "20 MHz In 40 MHz HE PPDU In 2.4 GHz Band"},
    {66, 1, "20 MHz In 160/80+80 MHz HE PPDU"},
    {67, 1, "80 MHz In 160/80+80 MHz HE PPDU"},
    {68, 1, "HE ER SU PPDU With 1x HE-LTF And 0.8 us GI"},
    {69, 1, "Midamble Tx/Rx 2x And 1x HE-LTF"},
    {70, 2, "DCM Max RU", {.names = kDcmRu}},
    {72, 1, "Longer Than 16 HE SIG-B OFDM Symbols Support"},
    {73, 1, "Non-Triggered CQI Feedback"},
    {74, 1, "Tx 1024-QAM < 242-tone RU Support"},
    {75, 1, "Rx 1024-QAM < 242-tone RU Support"},
    {76, 1, "Rx Full BW SU Using HE MU PPDU With Compressed HE-SIG-B"},
    {77, 1, "Rx Full BW SU Using HE MU PPDU With Non-Compressed HE-SIG-B"},
    {78, 2, "Nominal Packet Padding", {.names = kPadding}},
    {80, 1, "HE MU PPDU With More Than One RU Rx Max N_HE-LTF"},
    {81, 7, "Reserved"},
};

constexpr auto kSetLayout = [](auto& codec, auto& set) {
    codec.group("Rx HE-MCS Map", [&] { codec.bits(set.rx.fields, kHeMcsFields); });
    codec.group("Tx HE-MCS Map", [&] { codec.bits(set.tx.fields, kHeMcsFields); });
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    const auto& phy = element.phy;
    codec.group("HE MAC Capabilities Information", [&] { codec.bits(element.mac.bits, kMac); });
    codec.group("HE PHY Capabilities Information", [&] { codec.bits(element.phy.bits, kPhy); });
    codec.group("<= 80 MHz", [&] { kSetLayout(codec, element.upTo80); });
    codec.when(phy.has(HePhyCapability::Width160), element.at160,
               [&](auto& set) { codec.group("160 MHz", [&] { kSetLayout(codec, set); }); });
    codec.when(phy.has(HePhyCapability::Width80Plus80), element.at80Plus80,
               [&](auto& set) { codec.group("80+80 MHz", [&] { kSetLayout(codec, set); }); });
    codec.when(phy.has(HePhyCapability::PpeThresholdsPresent), element.ppe,
               [&](auto& ppe) { kPpeThresholdsLayout(codec, ppe, "PPET16"); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(HeCapabilities, kLayout)

}  // namespace halvane::air
