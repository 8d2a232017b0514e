#include "tests/air/finding_cases.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace halvane::testing {

namespace {

using Kind = air::FindingKind;
using Cases = std::vector<FindingCase>;

HeardFrame opened(std::string elements) {
    return {std::move(elements), kOpenBss, 100, 0};
}
HeardFrame secured(std::string elements) {
    return {std::move(elements), kPrivateBss, 100, 0};
}
HeardFrame heardAt(int frequency, std::string elements) {
    return {std::move(elements), kOpenBss, 100, frequency};
}
HeardFrame heardWith(int signal) {
    return {"0=61;3=06", kOpenBss, 100, 0, signal};
}
HeardFrame every(std::uint16_t interval) {
    return {"0=61", kOpenBss, interval, 0};
}

// --- Elements ---

std::string suites(std::string_view types, std::string_view oui) {
    std::string hex = types.size() == 2 ? "0100" : "0200";
    for (std::size_t i = 0; i < types.size(); i += 2) hex.append(oui).append(types.substr(i, 2));
    return hex;
}

// RSN with CCMP. `akms` are one or two types.
std::string rsn(std::string_view akms, std::string_view capabilities = "8000") {
    return "48=0100 000FAC04 0100000FAC04" + suites(akms, "000FAC") + std::string(capabilities);
}
std::string rsnOfCiphers(std::string_view group, std::string_view pairwise) {
    return "48=0100 000FAC" + std::string(group) + suites(pairwise, "000FAC") +
           "0100 000FAC02 8000";
}
std::string wpa(std::string_view akm, std::string_view cipher) {
    return "221=0050F201 0100 0050F2" + std::string(cipher) + suites(cipher, "0050F2") +
           suites(akm, "0050F2");
}
std::string wps(std::string_view attributes) {
    return "221=0050F204 104A 0001 10" + std::string(attributes);
}
// An override element of Wi-Fi 7 with SAE-EXT-KEY.
const std::string kOverride = "221=506F9A2A 0100 000FAC09 0100000FAC09 0100000FAC18 C000";
const std::string kOweTransition = "221=506F9A1C 020000000001 03 6F7765";
const std::string kH2e = "244=20";

std::string htOperation(std::string_view head) {
    return "61=" + std::string(head) + std::string(2 * (22 - head.size() / 2), '0');
}
const std::string kHt = "45=" + std::string(52, '0');
const std::string kVht = "191=000000000000000000000000";

// HE Operation with 6 GHz Operation Information: primary channel, control, two centres.
std::string sixGhz(std::string_view information) {
    return "255/36=000002 00 FCFF" + std::string(information) + "06";
}
// EHT Operation with a bitmap of disabled subchannels: control, two centres, bitmap.
std::string punctured(std::string_view information) {
    return "255/106=03 44444444" + std::string(information);
}

// A profile of Multiple BSSID: capabilities, further elements.
std::string profile(std::string_view elements) {
    const std::size_t size = 4 + elements.size() / 2;
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    return std::string("00") + kDigits[size / 16] + kDigits[size % 16] + "53020100" +
           std::string(elements);
}

// --- Cases ---

const Cases kSecurity = {
    {Kind::WepOnly, secured("0=61"), "capabilities", opened("0=61")},
    {Kind::WpaOnly, secured(wpa("02", "02")), "221@0", secured(rsn("02") + ";" + wpa("02", "02"))},
    {Kind::WpaBesideWpa2, secured(rsn("02") + ";" + wpa("02", "04")), "48@0 221@22",
     secured(rsn("02"))},
    {Kind::TkipAllowed, secured(rsn("02") + ";" + wpa("02", "02")), "221@22",
     secured(rsn("02") + ";" + wpa("02", "04"))},
    {Kind::TkipAllowed, secured(rsnOfCiphers("02", "0204")), "48@0",
     secured(rsnOfCiphers("02", "04"))},
    {Kind::TkipAllowed, secured(rsnOfCiphers("02", "02")), "48@0",
     secured(rsnOfCiphers("02", "08"))},
    {Kind::TkipAllowed, secured(rsnOfCiphers("02", "02") + ";" + wpa("02", "02")), "48@0 221@22",
     secured(wpa("02", "02"))},
    {Kind::TkipGroup, secured(rsnOfCiphers("02", "04")), "48@0", secured(rsnOfCiphers("04", "04"))},
    {Kind::TkipGroup, secured(rsnOfCiphers("05", "04")), "48@0", secured(rsnOfCiphers("08", "04"))},
    {Kind::TkipGroup, secured("48=0200;" + wpa("02", "02")), "221@4",
     secured("48=0200;" + wpa("02", "04"))},
    {Kind::OpenNetwork, opened("0=61"), "capabilities", opened(kOweTransition)},
    {Kind::SecurityBroken, secured("48=0200"), "48@0", secured("48=0100")},
    {Kind::SecurityBroken, secured("221=0050F201"), "221@0", secured("221=0050F201 0100")},
    {Kind::SuiteCountPastEnd, secured("48=0100 000FAC04 0200 000FAC04"), "48@0",
     secured("48=0100 000FAC04 0100 000FAC04")},
    {Kind::SuiteCountPastEnd, secured("221=0050F201 0100 0050F202 0200 0050F202"), "221@0",
     secured("221=0050F201 0100 0050F202 0100 0050F202")},
    // Too short for a count.
    {Kind::SuiteCountPastEnd, secured("0=61;48=0100 000FAC04 0100"), "48@3",
     secured("0=61;48=0100 000FAC")},
    {Kind::RsnVersion, secured("48=0200"), "48@0", secured("48=0100")},
    {Kind::AkmUnknown, secured(rsn("3F")), "48@0", secured(rsn("02"))},
    {Kind::AkmUnknown, secured(rsn("02") + ";" + wpa("3F", "04")), "221@22",
     secured(rsn("02") + ";" + wpa("02", "04"))},
    {Kind::PrivacyBitDiffers, opened(rsn("02")), "capabilities 48@0", secured(rsn("02"))},
    {Kind::PrivacyBitDiffers, opened(wpa("02", "04")), "capabilities 221@0",
     secured(wpa("02", "04"))},
    {Kind::RsnWpaDiffer, secured(rsn("01") + ";" + wpa("02", "04")), "48@0 221@22",
     secured(rsn("01") + ";" + wpa("01", "04"))},
    // FILS authenticates by 802.1X.
    {Kind::RsnWpaDiffer, secured(rsn("0E") + ";" + wpa("02", "04")), "48@0 221@22",
     secured(rsn("0E") + ";" + wpa("01", "04"))},
    {Kind::PmfOff, secured(rsn("02", "0000")), "48@0", secured(rsn("02", "8000"))},
    {Kind::PmfNotRequired, secured(rsn("08", "8000")), "48@0", secured(rsn("08", "C000"))},
    {Kind::PmfNotRequired, secured(rsn("12", "8000")), "48@0", secured(rsn("0208", "8000"))},
    {Kind::PmfNotRequired, secured(rsn("0C", "8000")), "48@0", secured(rsn("010C", "8000"))},
    {Kind::PmfMissingWithSae, secured(rsn("08", "0000")), "48@0", secured(rsn("08", "8000"))},
    {Kind::PmfMissingWithSae, secured(rsn("12", "0000")), "48@0", secured(rsn("02", "0000"))},
    // The peers of a mesh authenticate by SAE whether or not they protect management frames.
    {Kind::PmfMissingWithSae, secured("0=;" + rsn("08", "0000")), "48@2",
     secured("0=;114=6D;" + rsn("08", "0000"))},
    {Kind::PmfRequiredNotCapable, secured(rsn("02", "4000")), "48@0", secured(rsn("02", "C000"))},
    {Kind::SaeWithoutH2e, secured(rsn("08", "C000")), "48@0",
     secured(rsn("08", "C000") + ";" + kH2e)},
    {Kind::SaeWithoutH2e, secured(rsn("08", "C000") + ";244=10"), "244@22",
     secured(rsn("02", "C000") + ";244=10")},
    {Kind::Wpa3Transition, secured(rsn("0208")), "48@0", secured(rsn("08"))},
    {Kind::Suite192Mixed, secured(rsn("050C")), "48@0", secured(rsn("0C0D"))},
    {Kind::PersonalAndEnterprise, secured(rsn("0102")), "48@0", secured(rsn("0105"))},
    {Kind::PersonalAndEnterprise, secured(rsn("020E")), "48@0", secured(rsn("010E"))},
    {Kind::PersonalAndEnterprise, secured(rsn("0508")), "48@0", secured(rsn("0208"))},
    {Kind::OpenWithWps, opened(wps("")), "221@0", secured(rsn("02") + ";" + wps(""))},
    {Kind::WpsOn, secured(rsn("02") + ";" + wps("")), "221@22",
     secured(rsn("02") + ";" + wps("1057 0001 01"))},
    {Kind::WpsUnlockedPin, secured(rsn("02") + ";" + wps("1041 0001 01")), "221@22",
     secured(rsn("02") + ";" + wps("1041 0001 00"))},
    {Kind::FtWithoutMobilityDomain, secured(rsn("04")), "48@0", secured(rsn("04") + ";54=341201")},
    {Kind::MobilityDomainWithoutFt, secured(rsn("02") + ";54=341201"), "54@22",
     secured(rsn("0204") + ";54=341201")},
    {Kind::SixGhzSecurity, opened(sixGhz("01000000")), "capabilities",
     secured(sixGhz("01000000") + ";" + rsn("12", "C000"))},
    {Kind::SixGhzSecurity, secured(rsn("02", "C000") + ";" + sixGhz("01000000")), "48@0",
     secured(rsn("08", "C000") + ";" + kH2e + ";" + sixGhz("01000000"))},
    {Kind::SixGhzSecurity, secured(rsn("05", "8000") + ";" + sixGhz("01000000")), "48@0",
     secured(rsn("05", "C000") + ";" + sixGhz("01000000"))},
    {Kind::SixGhzSecurity, secured(rsn("0208", "C000") + ";" + kH2e + ";" + sixGhz("01000000")),
     "48@0", secured(rsn("0105", "C000") + ";" + sixGhz("01000000"))},
    {Kind::SixGhzSecurity, secured(rsn("08", "C000") + ";" + sixGhz("01000000")), "48@0",
     secured(rsn("08", "C000") + ";61=2400")},
    {Kind::OweTransitionOpen, opened(kOweTransition), "221@0",
     secured(rsn("12", "C000") + ";" + kOweTransition)},
    {Kind::RsnOverride, secured(rsn("02") + ";" + kOverride), "221@22", secured(rsn("02"))},
};

const Cases kChannel = {
    {Kind::HtVhtWidthDiffer, opened(htOperation("2400") + ";192=012A00FCFF"), "61@0 192@24",
     opened(htOperation("2405") + ";192=012A00FCFF")},
    {Kind::DsHtChannelDiffer, opened("3=06;" + htOperation("0100")), "3@0 61@3",
     opened("3=06;" + htOperation("0600"))},
    {Kind::ChannelFarFromRadio, heardAt(2412, "3=06"), "3@0 radio", heardAt(2437, "3=06")},
    {Kind::SignalImplausible, heardWith(1), "radio", heardWith(0)},
    {Kind::Ht40On24, opened(htOperation("0605")), "61@0", opened(htOperation("2405"))},
    {Kind::BetweenChannels, opened("0=61;3=03"), "3@3", opened("3=0B")},
    {Kind::VhtOn24, opened("3=06;" + kVht), "191@3", opened("3=24;" + kVht)},
    {Kind::VhtCentersInvalid, opened(htOperation("2405") + ";192=012A3AFCFF"), "192@24",
     opened(htOperation("2405") + ";192=012A32FCFF")},
    {Kind::VhtCentersInvalid, opened(htOperation("2405") + ";192=042A00FCFF"), "192@24",
     opened(htOperation("2405") + ";192=002A00FCFF")},
    {Kind::CenterWithoutPrimary, opened(htOperation("9505") + ";192=012A00FCFF"), "192@24",
     opened(htOperation("2405") + ";192=012A00FCFF")},
    {Kind::CenterWithoutPrimary, opened(htOperation("9505") + ";192=012A72FCFF"), "192@24",
     opened(htOperation("9505") + ";192=012A9BFCFF")},
    {Kind::EhtHeWidthDiffer, opened(sixGhz("01020700") + ";" + punctured("03070F0000")),
     "255/106@14 255/36@0", opened(sixGhz("01020700") + ";" + punctured("0207000000"))},
    {Kind::SixGhzInformationMissing, heardAt(5955, "0=61"), "radio",
     heardAt(5955, sixGhz("01000000"))},
    {Kind::SixGhzInformationMissing, heardAt(5955, "255/36=000000 00 FCFF"), "255/36@0",
     heardAt(5180, "255/36=000000 00 FCFF")},
    {Kind::PuncturedPrimary, opened(sixGhz("01020700") + ";" + punctured("0207000100")),
     "255/106@14", opened(sixGhz("01020700") + ";" + punctured("0207000200"))},
    {Kind::PuncturingInvalid, opened(sixGhz("01020700") + ";" + punctured("0207000600")),
     "255/106@14", opened(sixGhz("01020700") + ";" + punctured("0207000400"))},
    {Kind::OperationWithoutCapabilities, opened(htOperation("0600")), "61@0",
     opened(kHt + ";" + htOperation("0600"))},
    {Kind::CapabilitiesWithoutOperation, opened(kHt), "45@0",
     opened(kHt + ";" + htOperation("0600"))},
    {Kind::ChannelSwitch, opened("0=61;37=01240A"), "37@3", opened("0=61")},
    {Kind::ChannelSwitch, opened("0=61;60=0173240A"), "60@3", opened("0=61;62=01")},
};

const Cases kRates = {
    {Kind::SlowBasicRates, opened("0=61;1=8224"), "1@3", opened("1=0298")},
    {Kind::SlowBasicRates, opened("1=98;50=84"), "50@3", opened("1=98;50=8B")},
    {Kind::NoBasicRates, opened("0=61;1=0C18;50=30"), "1@3 50@7", opened("1=0C18;50=B0")},
    {Kind::LoadHigh, opened("0=61;11=00009A0000"), "11@3", opened("11=0000990000")},
    {Kind::ManyNames,
     opened("0=61;71=02" + profile("00016255020101") + profile("55020202") + profile("550103")),
     "71@3", opened("71=02" + profile("550101") + profile("550102"))},
    {Kind::ShortBeaconInterval, every(49), "beacon interval", every(50)},
    {Kind::ShortBeaconInterval, every(1), "beacon interval", every(0)},
    {Kind::LongBeaconInterval, every(501), "beacon interval", every(500)},
    // A mesh has no stations that could lose it, and takes 1000 TU unless told otherwise.
    {Kind::LongBeaconInterval, every(1000), "beacon interval", {"0=;114=6D", kOpenBss, 1000, 0}},
};

const std::string k32 = "0=" + std::string(64, '6');

const Cases kNames = {
    {Kind::SsidMissing, opened("3=06"), "", opened("3=06;0=61")},
    {Kind::SsidTooLong, opened("3=06;" + k32 + "66"), "0@3", opened("3=06;" + k32)},
    {Kind::HiddenName, opened("3=06;0="), "0@3", opened("3=06;0=61")},
    {Kind::HiddenName, opened("0=000000"), "0@0", opened("0=;114=6D")},
    // The encrypted half of an Enhanced Open network is hidden on purpose.
    {Kind::HiddenName, secured("0=;" + rsn("12", "C000")), "0@0",
     secured("0=;" + rsn("12", "C000") + ";" + kOweTransition)},
    {Kind::ProfileSsidMissing, opened("0=61;71=02" + profile("550101")), "71@3",
     opened("0=61;71=02" + profile("000162550101"))},
    {Kind::CountryInvalid, opened("0=61;7=303020 010D14"), "7@3", opened("7=555320 010D14")},
    {Kind::CountryMissingOnDfs, opened("0=61;" + htOperation("3400")), "61@3",
     opened("0=61;" + htOperation("3400") + ";7=555320 340114")},
    {Kind::CountryMissingOnDfs, opened(htOperation("9000")), "61@0", opened(htOperation("9500"))},
    // 160 MHz around channel 50 end on channel 64.
    {Kind::CountryMissingOnDfs, opened(htOperation("2405") + ";192=012A32FCFF"), "61@0 192@24",
     opened(htOperation("2405") + ";192=012A00FCFF")},
};

// Basic Multi-Link: the address of the device, the sender's link 0, and the complete profile of
// link 1 with these octets.
std::string multiLink(std::string_view mld, std::string_view size, std::string_view link) {
    return "255/107=1000 08" + std::string(mld) + "00" + "00" + std::string(size) + "1100 01" +
           std::string(link);
}
const std::string kMld = "020000000A01";
// The privacy bit, and RSN with SAE in place of the sender's.
const std::string kSaeOfLink = "1100 3014 0100 000FAC04 0100000FAC04 0100000FAC08 8000";

const Cases kLinks = {
    {Kind::MldSecurityDiffers, secured(rsn("18") + ";" + multiLink(kMld, "1B", kSaeOfLink)),
     "255/107@22", secured(rsn("08") + ";" + multiLink(kMld, "1B", kSaeOfLink))},
    // The link inherits RSN; Non-Inheritance takes it away.
    {Kind::MldSecurityDiffers,
     secured(rsn("08") + ";" + multiLink(kMld, "0B", "0100 FF04380130 00")), "255/107@22",
     secured(rsn("08") + ";" + multiLink(kMld, "05", "1100"))},
    // The second profile of link 1 does not count.
    {Kind::MldSecurityDiffers,
     secured(rsn("18") + ";" + multiLink(kMld, "1B", kSaeOfLink + "0005 1100 01 1100")),
     "255/107@22",
     secured(rsn("18") + ";" + multiLink(kMld, "05", "1100 001B 1100 01" + kSaeOfLink))},
    {Kind::MldSecurityDiffers, opened("0=61;" + multiLink(kMld, "05", "1100")), "255/107@3",
     opened("0=61;" + multiLink(kMld, "05", "0100"))},
    {Kind::MldAddressIsBssid, opened("0=61;" + multiLink("020000000820", "05", "0100")),
     "255/107@3", opened("0=61;" + multiLink(kMld, "05", "0100"))},
    {Kind::ProfileIndexInvalid, opened("0=61;71=02" + profile("000162")), "71@3",
     opened("0=61;71=02" + profile("550101"))},
    {Kind::ProfileIndexInvalid, opened("71=02" + profile("550101") + profile("550101")), "71@0",
     opened("71=02" + profile("550101") + profile("550102"))},
    {Kind::ProfileIndexInvalid, opened("71=02" + profile("550100")), "71@0",
     opened("71=02" + profile("550103"))},
    {Kind::ProfileIndexInvalid, opened("71=02" + profile("550105")), "71@0",
     opened("71=03" + profile("550105"))},
    // Only the second element has the fault.
    {Kind::ProfileIndexInvalid, opened("71=02" + profile("550101") + ";71=02" + profile("550101")),
     "71@12", opened("71=02" + profile("550101") + ";71=02" + profile("550102"))},
    {Kind::ProfileIndexInvalid, opened("0=61;71=00"), "71@3", opened("0=61;71=01")},
    {Kind::ProfileIndexInvalid, opened("71=09" + profile("550101")), "71@0",
     opened("71=08" + profile("550101"))},
    // The first of two faulty elements, though its profile ends with the second.
    {Kind::ProfileIndexInvalid, opened("71=02" + profile("000162") + ";71=00"), "71@0",
     opened("71=02" + profile("550101") + ";71=08")},
    {Kind::ColorDisabled, opened("0=61;255/36=000000 85 FCFF"), "255/36@3",
     opened("255/36=000000 05 FCFF")},
};

// EDCA Parameter Set, whose fields do not matter.
const std::string kEdca = "12=" + std::string(36, '0');

const Cases kForm = {
    {Kind::FrameCut, opened("0=61;x=301401"), "48@3", opened("0=61;48=01")},
    {Kind::FrameCut, opened("0=61;x=FF0624"), "255/36@3", opened("0=61")},
    {Kind::FrameCut, opened("0=61;x=FF"), "255@3", opened("0=61")},
    {Kind::ElementTooShort, opened("0=61;11=01000000"), "11@3", opened("11=0100000000")},
    {Kind::ElementTooShort, opened("0=61;221=0050F201"), "221@3", opened("221=0050F263")},
    // A name that is too long has a finding of its own.
    {Kind::ElementTooShort, opened("3="), "3@0", opened("3=06;" + k32 + "66")},
    {Kind::ElementDuplicated, opened("3=06;3=06"), "3@3", opened("3=06")},
    {Kind::ElementDuplicated, opened("255/36=00000000FCFF;255/36=00000000FCFF"), "255/36@9",
     opened("198=0100000000;198=0100000000")},
    {Kind::ElementDuplicated, opened("0=61;0=62"), "0@3", opened("221=00112233;221=00112233")},
    {Kind::ElementOrder, opened("0=61;3=06;1=82"), "1@6", opened("0=61;1=82;3=06")},
    {Kind::ElementOrder, opened(kEdca + ";11=0100000000"), "11@20",
     opened("11=0100000000;" + kEdca)},
    {Kind::ElementOrder, opened("54=000000;70=0000000000"), "70@5",
     opened("70=0000000000;54=000000")},
    {Kind::ElementOrder, opened("192=012A00FCFF;127=00"), "127@7", opened("127=00;192=012A00FCFF")},
    {Kind::ElementOrder, opened("127=00;" + htOperation("0600")), "61@3",
     opened(htOperation("0600") + ";127=00")},
    {Kind::ElementOrder, opened("0=61;221=00112233;127=00"), "127@9",
     opened("0=61;127=00;221=00112233;221=00112234")},
    // EHT Operation, EHT Capabilities and Multi-Link follow HE Operation in any order.
    {Kind::ElementOrder, opened("255/106=0000000000;255/36=00000000FCFF"), "255/36@8",
     opened("255/36=00000000FCFF;255/106=0000000000;255/108=00;" + multiLink(kMld, "05", "0100") +
            ";255/106=0000000000;221=00112233")},
    {Kind::ExtensionMissing, opened("0=61;255="), "255@3", opened("0=61;255/200=")},
    {Kind::FragmentAlone, opened("0=61;242=01"), "242@3",
     opened("221=" + std::string(510, '0') + ";242=01")},
};

}  // namespace

std::vector<FindingCase> findingCases() {
    Cases all;
    for (const Cases* cases : {&kSecurity, &kChannel, &kRates, &kNames, &kLinks, &kForm}) {
        all.insert(all.end(), cases->begin(), cases->end());
    }
    return all;
}

}  // namespace halvane::testing
