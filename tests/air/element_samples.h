// A valid body for each element that has a decoder, with every optional field. A test asserts that
// none is missing.
#ifndef TESTS_AIR_ELEMENT_SAMPLES_H
#define TESTS_AIR_ELEMENT_SAMPLES_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "halvane/air/device_name.h"
#include "halvane/air/element_id.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/oui.h"

#include "tests/support/hostile_bytes.h"

namespace halvane::testing {

inline Bytes bytesOf(std::string_view hex) {
    const auto buffer = ByteBuffer::fromHex(hex).value();
    return {buffer.begin(), buffer.end()};
}

struct ElementSample {
    air::ElementId id;
    std::string_view hex;  // of the body
};

inline constexpr ElementSample kElementSamples[] = {
    {air::ElementId::CcxDeviceName,
     "000102030405060708FF 61702D3100000000000000000000000000 05 00"},
    {air::ElementId::MeshConfiguration, "01010001010308"},
    {air::ElementId::MeshId, "6D657368"},
    {air::ElementId::RoamingConsortium, "02 53 506F9A 0014AABBCC 112233"},
    {air::ElementId::AdvertisementProtocol, "7F00 85DD04506F9A01 0201"},
    {air::ElementId::Interworking, "13 0205 020000000001"},
    {air::ElementId::RmEnabledCapabilities, "73D0000C02"},
    {air::ElementId::ExtendedCapabilities, "04004C0000000040 00002000 0001 FF"},
    {air::ElementId::BssAcAccessDelay,
     "0100 0100 00147202 0200 00147201 00147202 00147201 0100 0100 "
     "00112233445566778899AABBCCDDEEFF"},
    {air::ElementId::Rsnx, "3120 AB"},
    {air::ElementId::FilsIndication, "920F 1122 020000000001 AABB CCDD 0103414243 0200"},
    {air::ElementId::MobilityDomain, "3412 01"},
    {air::ElementId::EhtCapabilities, "0B00 E201FF7F1FC00000FE 444444 444444 222222"},
    {air::ElementId::He6GhzBandCapabilities, "BD36"},
    {air::ElementId::HeCapabilities,
     "0D009A181040 1C700CCA7F02C0B15B0108 FAFF FAFF AAFF AAFF FAFF FAFF 1B 1CC771 1CC771"},
    {air::ElementId::VhtCapabilities, "B279C333 FAFF 0C03 FAFF 0C23"},
    {air::ElementId::BssLoad, "0500 7F 1234"},
    {air::ElementId::Rsn,
     "0100 000FAC04 0200 000FAC04 000FAC02 0200 000FAC02 000FAC08 CC00 0100 "
     "00112233445566778899AABBCCDDEEFF 000FAC06"},
    {air::ElementId::VhtOperation, "01 2A 32 FCFF"},
    {air::ElementId::MultiLink,
     "F007 12 020000000A01 02 05 0805 D722 F271 00 E500 "
     "00 1D F10F 16 020000000A11 6400 FEFFFFFFFFFFFFFF 0103 0500 07 1104 000161 DD 04 01020304"},
    {air::ElementId::MultiLink, "1100 02 00 00 05 1300 0A010A"},
    {air::ElementId::MultiLink,
     "F200 0D 020000000A01 D722 F271 E500 "
     "00 0F 6100 0B 020000000A11 6400 AABB 1104"},
    {air::ElementId::MultiLink, "0300 07 020000000A01 00 02 0100"},
    {air::ElementId::MultiLink, "0400 07 020000000A01 00 05 0200 0C0101"},
    {air::ElementId::MultiLink, "0700 07 020000000A01 00 02 0100"},
    {air::ElementId::MultipleBssid, "03 00 0C 53021104 000161 5503010300 DD 02 0102"},
    {air::ElementId::NontransmittedBssidCapability, "1104"},
    {air::ElementId::MultipleBssidIndex, "01 03 00"},
    {air::ElementId::MultipleBssidConfiguration, "04 01"},
    {air::ElementId::NonInheritance, "02 30 46 01 6C"},
    {air::ElementId::ReducedNeighborReport,
     "0010 51 0B 0210 83 25 14 0200000000AA 12345678 5A FE 00215A 0009 00 00 "
     "2103 73 05 000010 FFFF3F"},
    {air::ElementId::NeighborReport,
     "0200000000AA FF7C2000 80 2A 09 01 04 1000 6400 03 01 FE DD 03 010203"},
    {air::ElementId::TidToLinkMapping, "1A 81 3412 563412 0300 0400"},
    {air::ElementId::TidToLinkMapping, "24"},
    {air::ElementId::MultiLinkTraffic, "1200 A501"},
    {air::ElementId::Twt, "41 6B28 0102030405060708 40 0002 01 01020304 0300"},
    {air::ElementId::Twt, "00 0628 81010203040506 0708 40 0002 01"},
    {air::ElementId::Twt, "08 8228 3412 10 0002 0905 03 0F F0 B228 3412 10 0002 1005"},
    {air::ElementId::QuietChannel, "01 02 03 0400 0500"},
    {air::ElementId::BssMaxIdlePeriod, "2C01 01"},
    {air::ElementId::TimeAdvertisement, "02 E907 0B 16 0A 2C 00 F401 00 0102030405 07"},
    {air::ElementId::TimeAdvertisement, "01 0102030405060708090A 0102030405"},
    {air::ElementId::EstimatedServiceParametersInbound, "F9 80 64 02 FF 00"},
    {air::ElementId::ShortSsidList, "12345678 9ABCDEF0"},
    {air::ElementId::OperatingChannelInformation, "80 24 9B"},
    {air::ElementId::ChannelUsage, "01 5106 510B"},
    {air::ElementId::Ssid, "486F6D65"},
    {air::ElementId::DsParameterSet, "0B"},
    {air::ElementId::SecondaryChannelOffset, "01"},
    {air::ElementId::SupportedRates, "82848B960C9298FF"},
    {air::ElementId::ExtendedSupportedRates, "3048606CFB"},
    {air::ElementId::HtCapabilities, "EF19 17 FFFFFF00010000000000C20101000000 0004 0A000018 3F"},
    {air::ElementId::HtOperation, "24 0550060000 FF000000000000000000000000000000"},
    {air::ElementId::HeOperation, "F4FF02 2A FCFF 012A32 03 250B2F5706"},
    {air::ElementId::EhtOperation, "03 44444444 FC 2F 3F 0C00"},
    {air::ElementId::BandwidthIndication, "02 04 2F 3F 0C00"},
    {air::ElementId::Tim, "00 03 05 0880"},
    {air::ElementId::Country, "555304 C98300 010D14 2404 E2 00"},
    {air::ElementId::PowerConstraint, "03"},
    {air::ElementId::TpcReport, "1100"},
    {air::ElementId::ChannelSwitch, "01 2C 0A"},
    {air::ElementId::ExtendedChannelSwitch, "00 83 25 0A"},
    {air::ElementId::WideBandwidthChannelSwitch, "01 2A 32"},
    {air::ElementId::Quiet, "01 02 3200 0A00"},
    {air::ElementId::Erp, "07"},
    {air::ElementId::TransmitPowerEnvelope, "1C 0A0B0C0D0E0F1011 02 1213"},
    {air::ElementId::ChannelSwitchWrapper,
     "0706444520010D14 C203012A32 C30200 14 FF078702022A000800 DD020102"},
    {air::ElementId::BssColorChange, "05 2A"},
    {air::ElementId::SpatialReuse, "1C 0A 02 14 2400000000000080 0100000000000000"},
    {air::ElementId::EdcaParameterSet, "A5 00 03A40000 27A40000 42435E00 62322F00"},
    {air::ElementId::MuEdcaParameterSet, "05 00A4FF 20A4FF 4043FF 6032FF"},
    {air::ElementId::UoraParameterSet, "2B"},
    {air::ElementId::SupportedOperatingClasses, "73 51535473757780 82 00 7374"},
    {air::ElementId::ApChannelReport, "73 24282C30"},
    {air::ElementId::ExtendedBssLoad, "0300 80 10 20 30"},
    {air::ElementId::OperatingModeNotification, "12"},
    {air::ElementId::MaxChannelSwitchTime, "640000"},
};

struct VendorSample {
    OUI oui;
    std::uint8_t type;
    std::string_view hex;  // of the body after OUI and type
};

inline constexpr VendorSample kVendorSamples[] = {
    {air::MistDeviceName::kOui, 1, "6170"},
    {air::AironetDeviceName::kOui, 47, "6170"},
    {air::ArubaDeviceName::kOui, 1, "03 00 6170"},
    {kWPAOUI, 4,
     "104A 0001 10 1044 0001 02 1057 0001 01 1041 0001 01 1012 0002 0004 1011 0003 617031 1008 "
     "0002 0680 1047 0010 00112233445566778899AABBCCDDEEFF 1054 0008 0006 0050F204 0001 103C 0001 "
     "03 1049 0006 00372A 000120 1049 0004 00112233 1002 0001 00"},
    {kWfaOUI, 10, "00 0006 0011 1C44 0032 01 0006 020000000001 07 0002 0000 08 0001 05"},
    {kWfaOUI, 9,
     "02 0200 2101 03 0600 020000000001 0D 2200 020000000001 0188 0006 0050F204 0001 01 0001 "
     "0050F204 0001 1011 0005 68656C6C6F 0F 0900 020000000001 444952 11 0500 555304 51 06"},
    {kWfaOUI, 22, "010140 040102 650109 670134 6602AABB"},
    {kWfaOUI, 16, "26 0102 0304 FF"},
    {kWPAOUI, 2, "01 01 84 00 03A40000 27A40000 42435E00 62322F00 07"},
    {kWfaOUI, 28, "020000000001 04 6F776531 51 06"},
    {kWfaOUI, 43, "21 40"},
    {kWfaOUI, 42,
     "0100000FAC04 0100 000FAC04 0200 000FAC08 000FAC18 CC00 0100 00112233445566778899AABBCCDDEEFF "
     "000FAC06"},
    {kWfaOUI, 41,
     "0100000FAC04 0100 000FAC04 0200 000FAC08 000FAC18 CC00 0100 00112233445566778899AABBCCDDEEFF "
     "000FAC06"},
    {kWfaOUI, 18,
     "000FAC04 0100 000FAC04 0200 000FAC08 000FAC18 CC00 0100 00112233445566778899AABBCCDDEEFF "
     "000FAC06"},
    {kWPAOUI, 1, "0100 0050F202 0200 0050F202 0050F204 0100 0050F202 0C00"},
};

}  // namespace halvane::testing

#endif
