#include "halvane/air/wapi.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kCapabilities[] = {{0, 1, "Preauthentication"}, {1, 15, "Reserved"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    const auto readCipher = [&](auto& suite) { codec.cipher("Unicast Cipher Suite", suite); };
    codec.number("Version", element.version);
    codec.template counted<std::uint16_t>("AKM Suite Count", element.akms,
                                          [&](auto& suite) { codec.akm("AKM Suite", suite); });
    codec.template counted<std::uint16_t>("Unicast Cipher Suite Count", element.unicast,
                                          readCipher);
    codec.cipher("Multicast Cipher Suite", element.multicast);
    codec.group("WAPI Capability Information",
                [&] { codec.bits(element.capabilities, kCapabilities); });
    codec.ifMore(element.bkids, [&](auto& bkids) {
        codec.template counted<std::uint16_t>("BKID Count", bkids,
                                              [&](auto& bkid) { codec.octets("BKID", bkid); });
    });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Wapi, kLayout)

}  // namespace halvane::air
