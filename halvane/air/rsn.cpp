#include "halvane/air/rsn.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kReplayCounters[] = {{0, "1"}, {1, "2"}, {2, "4"}, {3, "16"}};

// Figure 9-286.
constexpr BitField kCapabilities[] = {
    {0, 1, "Preauthentication"},
    {1, 1, "No Pairwise"},
    {2, 2, "PTKSA Replay Counters", {.names = kReplayCounters}},
    {4, 2, "GTKSA Replay Counters", {.names = kReplayCounters}},
    {6, 1, "Management Frame Protection Required"},
    {7, 1, "Management Frame Protection Capable"},
    {8, 1, "Joint Multi-band RSNA"},
    {9, 1, "PeerKey Enabled"},
    {10, 1, "SPP A-MSDU Capable"},
    {11, 1, "SPP A-MSDU Required"},
    {12, 1, "PBAC"},
    {13, 1, "Extended Key ID for Individually Addressed Frames"},
    {14, 1, "OCVC"},
    {15, 1, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Version", element.version);
    codec.ifMore(element.group,
                 [&](auto& suite) { codec.cipher("Group Data Cipher Suite", suite); });
    codec.ifMore(element.pairwise, [&](auto& suites) {
        codec.template counted<std::uint16_t>(
            "Pairwise Cipher Suite Count", suites,
            [&](auto& suite) { codec.cipher("Pairwise Cipher Suite", suite); });
    });
    codec.ifMore(element.akms, [&](auto& suites) {
        codec.template counted<std::uint16_t>("AKM Suite Count", suites,
                                              [&](auto& suite) { codec.akm("AKM Suite", suite); });
    });
    codec.ifMore(element.capabilities, [&](auto& bits) {
        codec.group("RSN Capabilities", [&] { codec.bits(bits, kCapabilities); });
    });
    codec.ifMore(element.pmkids, [&](auto& pmkids) {
        codec.template counted<std::uint16_t>("PMKID Count", pmkids,
                                              [&](auto& pmkid) { codec.octets("PMKID", pmkid); });
    });
    codec.ifMore(element.groupManagement,
                 [&](auto& suite) { codec.cipher("Group Management Cipher Suite", suite); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Rsn, kLayout)

}  // namespace halvane::air
