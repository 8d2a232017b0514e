// The fields that RSN, WPA, OSEN and the RSN Override elements share.
#ifndef HALVANE_AIR_RSN_LAYOUT_INTERNAL_H
#define HALVANE_AIR_RSN_LAYOUT_INTERNAL_H

#include <cstdint>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/suite.h"

namespace halvane::air {

// 9.4.2.24.4.
inline constexpr ValueName kRsnReplayCounters[] = {{0, "1"}, {1, "2"}, {2, "4"}, {3, "16"}};
inline constexpr BitField kRsnCapabilityFields[] = {
    {0, 1, "Preauthentication"},
    {1, 1, "No Pairwise"},
    {2, 2, "PTKSA Replay Counters", {.names = kRsnReplayCounters}},
    {4, 2, "GTKSA Replay Counters", {.names = kRsnReplayCounters}},
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

inline constexpr auto kRsnSuitesLayout = [](auto& codec, auto& element) {
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
        codec.group("RSN Capabilities", [&] { codec.bits(bits, kRsnCapabilityFields); });
    });
};

// All fields after the version.
inline constexpr auto kRsnFieldsLayout = [](auto& codec, auto& element) {
    kRsnSuitesLayout(codec, element);
    codec.ifMore(element.pmkids, [&](auto& pmkids) {
        codec.template counted<std::uint16_t>("PMKID Count", pmkids,
                                              [&](auto& pmkid) { codec.octets("PMKID", pmkid); });
    });
    codec.ifMore(element.groupManagement,
                 [&](auto& suite) { codec.cipher("Group Management Cipher Suite", suite); });
    codec.rest(element.rest);
};

inline constexpr auto kRsnLayout = [](auto& codec, auto& element) {
    codec.number("Version", element.version);
    kRsnFieldsLayout(codec, element);
};

}  // namespace halvane::air

#endif
