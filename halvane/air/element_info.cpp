#include "halvane/air/element_info.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "halvane/air/advertisement_protocol.h"
#include "halvane/air/ap_channel_report.h"
#include "halvane/air/bandwidth_indication.h"
#include "halvane/air/bss_ac_access_delay.h"
#include "halvane/air/bss_color_change.h"
#include "halvane/air/bss_load.h"
#include "halvane/air/bss_max_idle_period.h"
#include "halvane/air/channel_switch.h"
#include "halvane/air/channel_switch_wrapper.h"
#include "halvane/air/channel_usage.h"
#include "halvane/air/country.h"
#include "halvane/air/device_name.h"
#include "halvane/air/ds_parameter_set.h"
#include "halvane/air/edca_parameter_set.h"
#include "halvane/air/eht_capabilities.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/element_decoder.h"
#include "halvane/air/erp.h"
#include "halvane/air/estimated_service_parameters.h"
#include "halvane/air/extended_bss_load.h"
#include "halvane/air/extended_capabilities.h"
#include "halvane/air/extended_channel_switch.h"
#include "halvane/air/extended_supported_rates.h"
#include "halvane/air/fils_indication.h"
#include "halvane/air/he_6ghz_band_capabilities.h"
#include "halvane/air/he_capabilities.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/ht_capabilities.h"
#include "halvane/air/ht_operation.h"
#include "halvane/air/interworking.h"
#include "halvane/air/max_channel_switch_time.h"
#include "halvane/air/mesh_configuration.h"
#include "halvane/air/mesh_id.h"
#include "halvane/air/mobility_domain.h"
#include "halvane/air/mu_edca_parameter_set.h"
#include "halvane/air/multi_link.h"
#include "halvane/air/multi_link_traffic.h"
#include "halvane/air/multiple_bssid.h"
#include "halvane/air/multiple_bssid_configuration.h"
#include "halvane/air/multiple_bssid_index.h"
#include "halvane/air/neighbor_report.h"
#include "halvane/air/non_inheritance.h"
#include "halvane/air/nontransmitted_bssid_capability.h"
#include "halvane/air/operating_channel_information.h"
#include "halvane/air/operating_mode_notification.h"
#include "halvane/air/power_constraint.h"
#include "halvane/air/quiet.h"
#include "halvane/air/quiet_channel.h"
#include "halvane/air/reduced_neighbor_report.h"
#include "halvane/air/rm_enabled_capabilities.h"
#include "halvane/air/roaming_consortium.h"
#include "halvane/air/rsn.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/secondary_channel_offset.h"
#include "halvane/air/short_ssid_list.h"
#include "halvane/air/spatial_reuse.h"
#include "halvane/air/ssid_element.h"
#include "halvane/air/supported_operating_classes.h"
#include "halvane/air/supported_rates.h"
#include "halvane/air/tid_to_link_mapping.h"
#include "halvane/air/tim.h"
#include "halvane/air/time_advertisement.h"
#include "halvane/air/tpc_report.h"
#include "halvane/air/transmit_power_envelope.h"
#include "halvane/air/twt.h"
#include "halvane/air/uora_parameter_set.h"
#include "halvane/air/vht_capabilities.h"
#include "halvane/air/vht_operation.h"
#include "halvane/air/wapi.h"
#include "halvane/air/wide_bandwidth_channel_switch.h"

namespace halvane::air {

namespace {

// The element ID 68 has two owners. The number of octets tells which one it is.
constexpr ElementDecoder kElement68 = {
    [](Octets body, FieldSink& sink) {
        return Wapi::isWapi(body) ? Wapi::describe(body, sink)
                                  : BssAcAccessDelay::describe(body, sink);
    },
    [](Octets body) {
        return Wapi::isWapi(body) ? isWholeBy<Wapi>(body) : isWholeBy<BssAcAccessDelay>(body);
    },
    [](Octets body) {
        return Wapi::isWapi(body) ? rebuildBy<Wapi>(body) : rebuildBy<BssAcAccessDelay>(body);
    },
};

// Table 9-92, with the elements of 802.11ax, 802.11az and 802.11be.
constexpr ElementInfo kElements[] = {
    {ElementId{0}, "SSID", "9.4.2.2", decoderOf<SsidElement>()},
    {ElementId{1}, "Supported Rates and BSS Membership Selectors", "9.4.2.3",
     decoderOf<SupportedRates>()},
    {ElementId{3}, "DSSS Parameter Set", "9.4.2.4", decoderOf<DsParameterSet>()},
    {ElementId{5}, "TIM", "9.4.2.5", decoderOf<Tim>()},
    {ElementId{6}, "IBSS Parameter Set", "9.4.2.6"},
    {ElementId{7}, "Country", "9.4.2.8", decoderOf<Country>()},
    {ElementId{10}, "Request", "9.4.2.9"},
    {ElementId{11}, "BSS Load", "9.4.2.27", decoderOf<BssLoad>()},
    {ElementId{12}, "EDCA Parameter Set", "9.4.2.28", decoderOf<EdcaParameterSet>()},
    {ElementId{13}, "TSPEC", "9.4.2.29"},
    {ElementId{14}, "TCLAS", "9.4.2.30"},
    {ElementId{15}, "Schedule", "9.4.2.33"},
    {ElementId{16}, "Challenge Text", "9.4.2.7"},
    {ElementId{32}, "Power Constraint", "9.4.2.13", decoderOf<PowerConstraint>()},
    {ElementId{33}, "Power Capability", "9.4.2.14"},
    {ElementId{34}, "TPC Request", "9.4.2.15"},
    {ElementId{35}, "TPC Report", "9.4.2.16", decoderOf<TpcReport>()},
    {ElementId{36}, "Supported Channels", "9.4.2.17"},
    {ElementId{37}, "Channel Switch Announcement", "9.4.2.18", decoderOf<ChannelSwitch>()},
    {ElementId{38}, "Measurement Request", "9.4.2.20"},
    {ElementId{39}, "Measurement Report", "9.4.2.21"},
    {ElementId{40}, "Quiet", "9.4.2.22", decoderOf<Quiet>()},
    {ElementId{41}, "IBSS DFS", "9.4.2.23"},
    {ElementId{42}, "ERP", "9.4.2.11", decoderOf<Erp>()},
    {ElementId{43}, "TS Delay", "9.4.2.31"},
    {ElementId{44}, "TCLAS Processing", "9.4.2.32"},
    {ElementId{45}, "HT Capabilities", "9.4.2.55", decoderOf<HtCapabilities>()},
    {ElementId{46}, "QoS Capability", "9.4.2.34"},
    {ElementId{48}, "RSN", "9.4.2.24", decoderOf<Rsn>()},
    {ElementId{50}, "Extended Supported Rates and BSS Membership Selectors", "9.4.2.12",
     decoderOf<ExtendedSupportedRates>()},
    {ElementId{51}, "AP Channel Report", "9.4.2.35", decoderOf<ApChannelReport>()},
    {ElementId{52}, "Neighbor Report", "9.4.2.36", decoderOf<NeighborReport>()},
    {ElementId{53}, "RCPI", "9.4.2.37"},
    {ElementId{54}, "Mobility Domain", "9.4.2.46", decoderOf<MobilityDomain>()},
    {ElementId{55}, "Fast BSS Transition", "9.4.2.47"},
    {ElementId{56}, "Timeout Interval", "9.4.2.48"},
    {ElementId{57}, "RIC Data", "9.4.2.49"},
    {ElementId{58}, "DSE Registered Location", "9.4.2.51"},
    {ElementId{59}, "Supported Operating Classes", "9.4.2.53",
     decoderOf<SupportedOperatingClasses>()},
    {ElementId{60}, "Extended Channel Switch Announcement", "9.4.2.52",
     decoderOf<ExtendedChannelSwitch>()},
    {ElementId{61}, "HT Operation", "9.4.2.56", decoderOf<HtOperation>()},
    {ElementId{62}, "Secondary Channel Offset", "9.4.2.19", decoderOf<SecondaryChannelOffset>()},
    {ElementId{63}, "BSS Average Access Delay", "9.4.2.38"},
    {ElementId{64}, "Antenna", "9.4.2.39"},
    {ElementId{65}, "RSNI", "9.4.2.40"},
    {ElementId{66}, "Measurement Pilot Transmission", "9.4.2.41"},
    {ElementId{67}, "BSS Available Admission Capacity", "9.4.2.42"},
    {ElementId{68}, "BSS AC Access Delay", "9.4.2.43", kElement68},
    {ElementId{69}, "Time Advertisement", "9.4.2.60", decoderOf<TimeAdvertisement>()},
    {ElementId{70}, "RM Enabled Capabilities", "9.4.2.44", decoderOf<RmEnabledCapabilities>()},
    {ElementId{71}, "Multiple BSSID", "9.4.2.45", decoderOf<MultipleBssid>()},
    {ElementId{72}, "20/40 BSS Coexistence", "9.4.2.59"},
    {ElementId{73}, "20/40 BSS Intolerant Channel Report", "9.4.2.57"},
    {ElementId{74}, "Overlapping BSS Scan Parameters", "9.4.2.58"},
    {ElementId{75}, "RIC Descriptor", "9.4.2.50"},
    {ElementId{76}, "Management MIC", "9.4.2.54"},
    {ElementId{78}, "Event Request", "9.4.2.66"},
    {ElementId{79}, "Event Report", "9.4.2.67"},
    {ElementId{80}, "Diagnostic Request", "9.4.2.68"},
    {ElementId{81}, "Diagnostic Report", "9.4.2.69"},
    {ElementId{82}, "Location Parameters", "9.4.2.70"},
    {ElementId{83}, "Nontransmitted BSSID Capability", "9.4.2.71",
     decoderOf<NontransmittedBssidCapability>()},
    {ElementId{84}, "SSID List", "9.4.2.72"},
    {ElementId{85}, "Multiple BSSID-Index", "9.4.2.73", decoderOf<MultipleBssidIndex>()},
    {ElementId{86}, "FMS Descriptor", "9.4.2.74"},
    {ElementId{87}, "FMS Request", "9.4.2.75"},
    {ElementId{88}, "FMS Response", "9.4.2.76"},
    {ElementId{89}, "QoS Traffic Capability", "9.4.2.77"},
    {ElementId{90}, "BSS Max Idle Period", "9.4.2.78", decoderOf<BssMaxIdlePeriod>()},
    {ElementId{91}, "TFS Request", "9.4.2.79"},
    {ElementId{92}, "TFS Response", "9.4.2.80"},
    {ElementId{93}, "WNM Sleep Mode", "9.4.2.81"},
    {ElementId{94}, "TIM Broadcast Request", "9.4.2.82"},
    {ElementId{95}, "TIM Broadcast Response", "9.4.2.83"},
    {ElementId{96}, "Collocated Interference Report", "9.4.2.84"},
    {ElementId{97}, "Channel Usage", "9.4.2.85", decoderOf<ChannelUsage>()},
    {ElementId{98}, "Time Zone", "9.4.2.86"},
    {ElementId{99}, "DMS Request", "9.4.2.87"},
    {ElementId{100}, "DMS Response", "9.4.2.88"},
    {ElementId{101}, "Link Identifier", "9.4.2.61"},
    {ElementId{102}, "Wakeup Schedule", "9.4.2.62"},
    {ElementId{104}, "Channel Switch Timing", "9.4.2.63"},
    {ElementId{105}, "PTI Control", "9.4.2.64"},
    {ElementId{106}, "TPU Buffer Status", "9.4.2.65"},
    {ElementId{107}, "Interworking", "9.4.2.91", decoderOf<Interworking>()},
    {ElementId{108}, "Advertisement Protocol", "9.4.2.92", decoderOf<AdvertisementProtocol>()},
    {ElementId{109}, "Expedited Bandwidth Request", "9.4.2.93"},
    {ElementId{110}, "QoS Map", "9.4.2.94"},
    {ElementId{111}, "Roaming Consortium", "9.4.2.95", decoderOf<RoamingConsortium>()},
    {ElementId{112}, "Emergency Alert Identifier", "9.4.2.96"},
    {ElementId{113}, "Mesh Configuration", "9.4.2.97", decoderOf<MeshConfiguration>()},
    {ElementId{114}, "Mesh ID", "9.4.2.98", decoderOf<MeshId>()},
    {ElementId{115}, "Mesh Link Metric Report", "9.4.2.99"},
    {ElementId{116}, "Congestion Notification", "9.4.2.100"},
    {ElementId{117}, "Mesh Peering Management", "9.4.2.101"},
    {ElementId{118}, "Mesh Channel Switch Parameters", "9.4.2.102"},
    {ElementId{119}, "Mesh Awake Window", "9.4.2.103"},
    {ElementId{120}, "Beacon Timing", "9.4.2.104"},
    {ElementId{121}, "MCCAOP Setup Request", "9.4.2.105"},
    {ElementId{122}, "MCCAOP Setup Reply", "9.4.2.106"},
    {ElementId{123}, "MCCAOP Advertisement", "9.4.2.108"},
    {ElementId{124}, "MCCAOP Teardown", "9.4.2.109"},
    {ElementId{125}, "GANN", "9.4.2.110"},
    {ElementId{126}, "RANN", "9.4.2.111"},
    {ElementId{127}, "Extended Capabilities", "9.4.2.26", decoderOf<ExtendedCapabilities>()},
    {ElementId{130}, "PREQ", "9.4.2.112"},
    {ElementId{131}, "PREP", "9.4.2.113"},
    {ElementId{132}, "PERR", "9.4.2.114"},
    {ElementId{133}, "CCX Device Name", "known from the field", decoderOf<CcxDeviceName>()},
    {ElementId{137}, "PXU", "9.4.2.115"},
    {ElementId{138}, "PXUC", "9.4.2.116"},
    {ElementId{139}, "Authenticated Mesh Peering Exchange", "9.4.2.117"},
    {ElementId{140}, "MIC", "9.4.2.118"},
    {ElementId{141}, "Destination URI", "9.4.2.89"},
    {ElementId{142}, "U-APSD Coexistence", "9.4.2.90"},
    {ElementId{143}, "DMG Wakeup Schedule", "9.4.2.130"},
    {ElementId{144}, "Extended Schedule", "9.4.2.131"},
    {ElementId{145}, "STA Availability", "9.4.2.132"},
    {ElementId{146}, "DMG TSPEC", "9.4.2.133"},
    {ElementId{147}, "Next DMG ATI", "9.4.2.134"},
    {ElementId{148}, "DMG Capabilities", "9.4.2.127"},
    {ElementId{151}, "DMG Operation", "9.4.2.128"},
    {ElementId{152}, "DMG BSS Parameter Change", "9.4.2.126"},
    {ElementId{153}, "DMG Beam Refinement", "9.4.2.129"},
    {ElementId{154}, "Channel Measurement Feedback", "9.4.2.135"},
    {ElementId{157}, "Awake Window", "9.4.2.136"},
    {ElementId{158}, "Multi-band", "9.4.2.137"},
    {ElementId{159}, "ADDBA Extension", "9.4.2.138"},
    {ElementId{160}, "NextPCP List", "9.4.2.139"},
    {ElementId{161}, "PCP Handover", "9.4.2.140"},
    {ElementId{162}, "DMG Link Margin", "9.4.2.141"},
    {ElementId{163}, "Switching Stream", "9.4.2.143"},
    {ElementId{164}, "Session Transition", "9.4.2.144"},
    {ElementId{165}, "Dynamic Tone Pairing Report", "9.4.2.145"},
    {ElementId{166}, "Cluster Report", "9.4.2.146"},
    {ElementId{167}, "Relay Capabilities", "9.4.2.147"},
    {ElementId{168}, "Relay Transfer Parameter Set", "9.4.2.148"},
    {ElementId{169}, "BeamLink Maintenance", "9.4.2.152"},
    {ElementId{170}, "Multiple MAC Sublayers", "9.4.2.153"},
    {ElementId{171}, "U-PID", "9.4.2.154"},
    {ElementId{172}, "DMG Link Adaptation Acknowledgment", "9.4.2.142"},
    {ElementId{174}, "MCCAOP Advertisement Overview", "9.4.2.107"},
    {ElementId{175}, "Quiet Period Request", "9.4.2.149"},
    {ElementId{177}, "Quiet Period Response", "9.4.2.150"},
    {ElementId{181}, "QMF Policy", "9.4.2.119"},
    {ElementId{182}, "ECAPC Policy", "802.11ad"},
    {ElementId{183}, "Cluster Time Offset", "802.11ad"},
    {ElementId{184}, "Intra-Access Category Priority", "9.4.2.120"},
    {ElementId{185}, "SCS Descriptor", "9.4.2.121"},
    {ElementId{186}, "QLoad Report", "9.4.2.122"},
    {ElementId{187}, "HCCA TXOP Update Count", "9.4.2.123"},
    {ElementId{188}, "Higher Layer Stream ID", "9.4.2.124"},
    {ElementId{189}, "GCR Group Address", "9.4.2.125"},
    {ElementId{190}, "Antenna Sector ID Pattern", "9.4.2.156"},
    {ElementId{191}, "VHT Capabilities", "9.4.2.157", decoderOf<VhtCapabilities>()},
    {ElementId{192}, "VHT Operation", "9.4.2.158", decoderOf<VhtOperation>()},
    {ElementId{193}, "Extended BSS Load", "9.4.2.159", decoderOf<ExtendedBssLoad>()},
    {ElementId{194}, "Wide Bandwidth Channel Switch", "9.4.2.160",
     decoderOf<WideBandwidthChannelSwitch>()},
    {ElementId{195}, "Transmit Power Envelope", "9.4.2.161", decoderOf<TransmitPowerEnvelope>()},
    {ElementId{196}, "Channel Switch Wrapper", "9.4.2.162", decoderOf<ChannelSwitchWrapper>()},
    {ElementId{197}, "AID", "9.4.2.163"},
    {ElementId{198}, "Quiet Channel", "9.4.2.164", decoderOf<QuietChannel>()},
    {ElementId{199}, "Operating Mode Notification", "9.4.2.165",
     decoderOf<OperatingModeNotification>()},
    {ElementId{200}, "UPSIM", "9.4.2.166"},
    {ElementId{201}, "Reduced Neighbor Report", "9.4.2.170", decoderOf<ReducedNeighborReport>()},
    {ElementId{202}, "TVHT Operation", "9.4.2.171"},
    {ElementId{204}, "Device Location", "9.4.2.168"},
    {ElementId{205}, "White Space Map", "9.4.2.169"},
    {ElementId{206}, "Fine Timing Measurement Parameters", "9.4.2.167"},
    {ElementId{207}, "S1G Open-Loop Link Margin Index", "802.11ah"},
    {ElementId{208}, "RPS", "9.4.2.191"},
    {ElementId{209}, "Page Slice", "9.4.2.192"},
    {ElementId{210}, "AID Request", "9.4.2.193"},
    {ElementId{211}, "AID Response", "9.4.2.194"},
    {ElementId{212}, "S1G Sector Operation", "9.4.2.195"},
    {ElementId{213}, "S1G Beacon Compatibility", "9.4.2.196"},
    {ElementId{214}, "Short Beacon Interval", "9.4.2.197"},
    {ElementId{215}, "Change Sequence", "9.4.2.198"},
    {ElementId{216}, "TWT", "9.4.2.199", decoderOf<Twt>()},
    {ElementId{217}, "S1G Capabilities", "9.4.2.200"},
    {ElementId{220}, "Subchannel Selective Transmission", "9.4.2.201"},
    {ElementId{221}, "Vendor Specific", "9.4.2.25"},
    {ElementId{222}, "Authentication Control", "802.11ah"},
    {ElementId{223}, "TSF Timer Accuracy", "802.11ah"},
    {ElementId{224}, "S1G Relay", "802.11ah"},
    {ElementId{225}, "Reachable Address", "802.11ah"},
    {ElementId{226}, "S1G Relay Discovery", "802.11ah"},
    {ElementId{228}, "AID Announcement", "802.11ah"},
    {ElementId{229}, "PV1 Probe Response Option", "802.11ah"},
    {ElementId{230}, "EL Operation", "802.11ah"},
    {ElementId{231}, "Sectorized Group ID List", "802.11ah"},
    {ElementId{232}, "S1G Operation", "9.4.2.212"},
    {ElementId{233}, "Header Compression", "802.11ah"},
    {ElementId{234}, "SST Operation", "802.11ah"},
    {ElementId{235}, "MAD", "802.11ah"},
    {ElementId{236}, "S1G Relay Activation", "802.11ah"},
    {ElementId{237}, "CAG Number", "802.11ai"},
    {ElementId{239}, "AP-CSN", "802.11ai"},
    {ElementId{240}, "FILS Indication", "9.4.2.177", decoderOf<FilsIndication>()},
    {ElementId{241}, "DILS", "802.11ai"},
    {ElementId{242}, "Fragment", "9.4.2.188"},
    {ElementId{244}, "RSN Extension", "9.4.2.241", decoderOf<Rsnx>()},
    {ElementId{256 + 1}, "Association Delay Info", "802.11ai"},
    {ElementId{256 + 2}, "FILS Request Parameters", "802.11ai"},
    {ElementId{256 + 3}, "FILS Key Confirmation", "802.11ai"},
    {ElementId{256 + 4}, "FILS Session", "802.11ai"},
    {ElementId{256 + 5}, "FILS HLP Container", "802.11ai"},
    {ElementId{256 + 6}, "FILS IP Address Assignment", "802.11ai"},
    {ElementId{256 + 7}, "Key Delivery", "802.11ai"},
    {ElementId{256 + 8}, "FILS Wrapped Data", "802.11ai"},
    {ElementId{256 + 9}, "FTM Synchronization Information", "9.4.2.172"},
    {ElementId{256 + 10}, "Extended Request", "9.4.2.10"},
    {ElementId{256 + 11}, "Estimated Service Parameters Inbound", "9.4.2.173",
     decoderOf<EstimatedServiceParameters>()},
    {ElementId{256 + 12}, "FILS Public Key", "802.11ai"},
    {ElementId{256 + 13}, "FILS Nonce", "802.11ai"},
    {ElementId{256 + 14}, "Future Channel Guidance", "9.4.2.174"},
    {ElementId{256 + 15}, "Service Hint", "802.11aq"},
    {ElementId{256 + 16}, "Service Hash", "802.11aq"},
    {ElementId{256 + 17}, "CDMG Capabilities", "802.11aj"},
    {ElementId{256 + 18}, "Dynamic Bandwidth Control", "802.11aj"},
    {ElementId{256 + 19}, "CDMG Extended Schedule", "802.11aj"},
    {ElementId{256 + 20}, "SSW Report", "802.11aj"},
    {ElementId{256 + 21}, "Cluster Probe", "802.11aj"},
    {ElementId{256 + 22}, "Extended Cluster Report", "802.11aj"},
    {ElementId{256 + 23}, "Cluster Switch Announcement", "802.11aj"},
    {ElementId{256 + 24}, "Enhanced Beam Tracking", "802.11aj"},
    {ElementId{256 + 25}, "SPSH Report", "802.11aj"},
    {ElementId{256 + 26}, "Clustering Interference Assessment", "802.11aj"},
    {ElementId{256 + 27}, "CMMG Capabilities", "802.11aj"},
    {ElementId{256 + 28}, "CMMG Operation", "802.11aj"},
    {ElementId{256 + 29}, "CMMG Operating Mode Notification", "802.11aj"},
    {ElementId{256 + 30}, "CMMG Link Margin", "802.11aj"},
    {ElementId{256 + 31}, "CMMG Link Adaptation Acknowledgment", "802.11aj"},
    {ElementId{256 + 32}, "OWE Diffie-Hellman Parameter", "RFC 8110"},
    {ElementId{256 + 33}, "Password Identifier", "802.11-2020"},
    {ElementId{256 + 34}, "GLK-GCR Parameter Set", "802.11ak"},
    {ElementId{256 + 35}, "HE Capabilities", "802.11ax 9.4.2.248", decoderOf<HeCapabilities>()},
    {ElementId{256 + 36}, "HE Operation", "802.11ax 9.4.2.249", decoderOf<HeOperation>()},
    {ElementId{256 + 37}, "UORA Parameter Set", "802.11ax 9.4.2.250",
     decoderOf<UoraParameterSet>()},
    {ElementId{256 + 38}, "MU EDCA Parameter Set", "802.11ax 9.4.2.251",
     decoderOf<MuEdcaParameterSet>()},
    {ElementId{256 + 39}, "Spatial Reuse Parameter Set", "802.11ax 9.4.2.252",
     decoderOf<SpatialReuse>()},
    {ElementId{256 + 40}, "GAS Extension", "802.11aq"},
    {ElementId{256 + 41}, "NDP Feedback Report Parameter Set", "802.11ax 9.4.2.253"},
    {ElementId{256 + 42}, "BSS Color Change Announcement", "802.11ax 9.4.2.254",
     decoderOf<BssColorChange>()},
    {ElementId{256 + 43}, "Quiet Time Period", "802.11ax 9.4.2.255"},
    {ElementId{256 + 44}, "Vendor Specific Request", "802.11-2020"},
    {ElementId{256 + 45}, "ESS Report", "802.11ax 9.4.2.256"},
    {ElementId{256 + 46}, "OPS", "802.11ax 9.4.2.257"},
    {ElementId{256 + 47}, "HE BSS Load", "802.11ax 9.4.2.258"},
    {ElementId{256 + 51}, "MAC Address Policy", "802.11-2020"},
    {ElementId{256 + 52}, "Max Channel Switch Time", "802.11-2020",
     decoderOf<MaxChannelSwitchTime>()},
    {ElementId{256 + 53}, "Estimated Service Parameters Outbound", "802.11-2020"},
    {ElementId{256 + 54}, "Operating Channel Information", "12.2.9",
     decoderOf<OperatingChannelInformation>()},
    {ElementId{256 + 55}, "Multiple BSSID Configuration", "802.11ax 9.4.2.260",
     decoderOf<MultipleBssidConfiguration>()},
    {ElementId{256 + 56}, "Non-Inheritance", "9.4.2.240", decoderOf<NonInheritance>()},
    {ElementId{256 + 57}, "Known BSSID", "802.11ax 9.4.2.261"},
    {ElementId{256 + 58}, "Short SSID List", "802.11ax 9.4.2.262", decoderOf<ShortSsidList>()},
    {ElementId{256 + 59}, "HE 6 GHz Band Capabilities", "802.11ax 9.4.2.263",
     decoderOf<He6GhzBandCapabilities>()},
    {ElementId{256 + 60}, "UL MU Power Capabilities", "802.11ax 9.4.2.264"},
    {ElementId{256 + 88}, "MSCS Descriptor", "9.4.2.243"},
    {ElementId{256 + 89}, "TCLAS Mask", "9.4.2.242"},
    {ElementId{256 + 90}, "Supplemental Class 2 Capabilities", "802.11-2020"},
    {ElementId{256 + 91}, "OCT Source", "802.11-2020"},
    {ElementId{256 + 92}, "Rejected Groups", "802.11-2020"},
    {ElementId{256 + 93}, "Anti-Clogging Token Container", "802.11-2020"},
    {ElementId{256 + 94}, "Secure LTF Parameters", "802.11az"},
    {ElementId{256 + 95}, "ISTA Passive TB Ranging Measurement Report", "802.11az"},
    {ElementId{256 + 96}, "RSTA Passive TB Ranging Measurement Report", "802.11az"},
    {ElementId{256 + 97}, "Passive TB Ranging LCI Table", "802.11az"},
    {ElementId{256 + 98}, "ISTA Availability Window", "802.11az"},
    {ElementId{256 + 99}, "RSTA Availability Window", "802.11az"},
    {ElementId{256 + 100}, "PASN Parameters", "802.11az"},
    {ElementId{256 + 101}, "Ranging Parameters", "802.11az"},
    {ElementId{256 + 102}, "Direction Measurement Results", "802.11az"},
    {ElementId{256 + 103}, "Multiple AOD Feedback", "802.11az"},
    {ElementId{256 + 104}, "Multiple Best AWV ID", "802.11az"},
    {ElementId{256 + 105}, "LOS Likelihood", "802.11az"},
    {ElementId{256 + 106}, "EHT Operation", "802.11be 9.4.2.311", decoderOf<EhtOperation>()},
    {ElementId{256 + 107}, "Multi-Link", "802.11be 9.4.2.312", decoderOf<MultiLink>()},
    {ElementId{256 + 108}, "EHT Capabilities", "802.11be 9.4.2.313", decoderOf<EhtCapabilities>()},
    {ElementId{256 + 109}, "TID-to-Link Mapping", "802.11be 9.4.2.314",
     decoderOf<TidToLinkMapping>()},
    {ElementId{256 + 110}, "Multi-Link Traffic Indication", "802.11be 9.4.2.315",
     decoderOf<MultiLinkTraffic>()},
    {ElementId{256 + 113}, "QoS Characteristics", "802.11be 9.4.2.316"},
    {ElementId{256 + 114}, "AKM Suite Selector", "802.11be"},
    {ElementId{256 + 133}, "MLO Link Info", "802.11be 9.4.2.317"},
    {ElementId{256 + 134}, "AID Bitmap", "802.11be 9.4.2.318"},
    {ElementId{256 + 135}, "Bandwidth Indication", "802.11be 9.4.2.319",
     decoderOf<BandwidthIndication>()},
};
static_assert(std::ranges::is_sorted(kElements, {}, &ElementInfo::id));

constexpr std::size_t kNumbers = 512;

// The index in the table of each number, plus 1.
constexpr auto kIndexes = [] {
    std::array<std::uint16_t, kNumbers> indexes{};
    for (std::size_t i = 0; i < std::size(kElements); ++i) {
        indexes[static_cast<std::size_t>(kElements[i].id)] = static_cast<std::uint16_t>(i + 1);
    }
    return indexes;
}();

std::string numberText(ElementId id) {
    std::string text = std::to_string(idOctetOf(id));
    if (const auto extension = extensionOf(id)) text += '/' + std::to_string(*extension);
    return text;
}

}  // namespace

std::span<const ElementInfo> elementInfos() {
    return kElements;
}

const ElementInfo* elementInfo(ElementId id) {
    const auto number = static_cast<std::size_t>(id);
    if (number >= kNumbers || kIndexes[number] == 0) return nullptr;
    return &kElements[kIndexes[number] - 1];
}

std::string_view knownElementName(const Element& element) {
    if (element.id == ElementId::Vendor) {
        if (const auto* vendor = vendorElementInfo(element.body)) return vendor->name;
    }
    if (element.id == Wapi::kId && Wapi::isWapi(element.body)) return "WAPI";
    const auto* const info = elementInfo(element.id);
    return info != nullptr ? info->name : std::string_view();
}

std::string elementName(const Element& element) {
    const std::string_view name = knownElementName(element);
    return name.empty() ? "Reserved (" + numberText(element.id) + ')' : std::string(name);
}

}  // namespace halvane::air
