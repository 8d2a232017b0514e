#include "halvane/air/ht_capabilities.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/ht_mcs_set_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kChannelWidths[] = {{0, "20 MHz"}, {1, "20 and 40 MHz"}};
constexpr ValueName kSmPowerSaves[] = {{0, "static"}, {1, "dynamic"}, {3, "disabled"}};
constexpr ValueName kRxStbcs[] = {
    {0, "not supported"}, {1, "1 stream"}, {2, "1 and 2 streams"}, {3, "1 to 3 streams"}};
constexpr ValueName kAmsduLengths[] = {{0, "3839 octets"}, {1, "7935 octets"}};

// 9.4.2.55.2. The bits 13 and 15 meant PSMP and L-SIG TXOP protection in older editions.
constexpr BitField kInformation[] = {
    {0, 1, "LDPC Coding Capability"},
    {1, 1, "Supported Channel Width Set", {.names = kChannelWidths}},
    {2, 2, "SM Power Save", {.names = kSmPowerSaves}},
    {4, 1, "HT-Greenfield"},
    {5, 1, "Short GI for 20 MHz"},
    {6, 1, "Short GI for 40 MHz"},
    {7, 1, "Tx STBC"},
    {8, 2, "Rx STBC", {.names = kRxStbcs}},
    {10, 1, "HT-Delayed Block Ack"},
    {11, 1, "Maximum A-MSDU Length", {.names = kAmsduLengths}},
    {12, 1, "DSSS/CCK Mode in 40 MHz"},
    {13, 1, "Reserved"},
    {14, 1, "Forty MHz Intolerant"},
    {15, 1, "L-SIG TXOP Protection Support (obsolete)"},
};

constexpr ValueName kAmpduLengths[] = {
    {0, "8191 octets"}, {1, "16383 octets"}, {2, "32767 octets"}, {3, "65535 octets"}};
constexpr ValueName kStartSpacings[] = {{0, "no restriction"}, {1, "1/4 us"}, {2, "1/2 us"},
                                        {3, "1 us"},           {4, "2 us"},   {5, "4 us"},
                                        {6, "8 us"},           {7, "16 us"}};

constexpr BitField kAmpdu[] = {
    {0, 2, "Maximum A-MPDU Length Exponent", {.names = kAmpduLengths}},
    {2, 3, "Minimum MPDU Start Spacing", {.names = kStartSpacings}},
    {5, 3, "Reserved"},
};

constexpr ValueName kMcsFeedbacks[] = {{0, "none"}, {2, "unsolicited"}, {3, "both"}};

constexpr BitField kExtended[] = {
    {0, 1, "PCO (obsolete)"},   {1, 2, "PCO Transition Time (obsolete)"},
    {3, 5, "Reserved"},         {8, 2, "MCS Feedback", {.names = kMcsFeedbacks}},
    {10, 1, "+HTC-HT Support"}, {11, 1, "RD Responder"},
    {12, 4, "Reserved"},
};

constexpr ValueName kCalibrations[] = {
    {0, "not supported"}, {1, "responds"}, {3, "initiates and responds"}};
constexpr ValueName kFeedbacks[] = {
    {0, "not supported"}, {1, "delayed"}, {2, "immediate"}, {3, "delayed and immediate"}};
constexpr ValueName kGroupings[] = {
    {0, "1 (no grouping)"}, {1, "1, 2"}, {2, "1, 4"}, {3, "1, 2, 4"}};

// 9.4.2.55.6.
constexpr BitField kBeamforming[] = {
    {0, 1, "Implicit Transmit Beamforming Receiving Capable"},
    {1, 1, "Receive Staggered Sounding Capable"},
    {2, 1, "Transmit Staggered Sounding Capable"},
    {3, 1, "Receive NDP Capable"},
    {4, 1, "Transmit NDP Capable"},
    {5, 1, "Implicit Transmit Beamforming Capable"},
    {6, 2, "Calibration", {.names = kCalibrations}},
    {8, 1, "Explicit CSI Transmit Beamforming Capable"},
    {9, 1, "Explicit Noncompressed Steering Capable"},
    {10, 1, "Explicit Compressed Steering Capable"},
    {11, 2, "Explicit Transmit Beamforming CSI Feedback", {.names = kFeedbacks}},
    {13, 2, "Explicit Noncompressed Beamforming Feedback Capable", {.names = kFeedbacks}},
    {15, 2, "Explicit Compressed Beamforming Feedback Capable", {.names = kFeedbacks}},
    {17, 2, "Minimal Grouping", {.names = kGroupings}},
    {19, 2, "CSI Number of Beamformer Antennas Supported", {.names = kHtStreamCounts}},
    {21,
     2,
     "Noncompressed Steering Number of Beamformer Antennas Supported",
     {.names = kHtStreamCounts}},
    {23,
     2,
     "Compressed Steering Number of Beamformer Antennas Supported",
     {.names = kHtStreamCounts}},
    {25, 2, "CSI Max Number of Rows Beamformer Supported", {.names = kHtStreamCounts}},
    {27, 2, "Channel Estimation Capability", {.names = kHtStreamCounts}},
    {29, 3, "Reserved"},
};

// 9.4.2.55.7.
constexpr BitField kAntennaSelection[] = {
    {0, 1, "Antenna Selection Capable"},
    {1, 1, "Explicit CSI Feedback Based Transmit ASEL Capable"},
    {2, 1, "Antenna Indices Feedback Based Transmit ASEL Capable"},
    {3, 1, "Explicit CSI Feedback Capable"},
    {4, 1, "Antenna Indices Feedback Capable"},
    {5, 1, "Receive ASEL Capable"},
    {6, 1, "Transmit Sounding PPDUs Capable"},
    {7, 1, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("HT Capability Information",
                [&] { codec.bits(element.information.fields, kInformation); });
    codec.group("A-MPDU Parameters", [&] { codec.bits(element.ampdu.fields, kAmpdu); });
    codec.group("Supported MCS Set", [&] { codec.bits(element.rxMcs.fields, kHtMcsFields); });
    codec.group("HT Extended Capabilities",
                [&] { codec.bits(element.extended.fields, kExtended); });
    codec.group("Transmit Beamforming Capabilities",
                [&] { codec.bits(element.beamforming.fields, kBeamforming); });
    codec.group("ASEL Capability",
                [&] { codec.bits(element.antennaSelection.fields, kAntennaSelection); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(HtCapabilities, kLayout)

}  // namespace halvane::air
