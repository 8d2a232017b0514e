#include "halvane/air/fils_indication.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kInformation[] = {
    {0, 3, "Number Of Public Key Identifiers"},
    {3, 3, "Number Of Realm Identifiers"},
    {6, 1, "FILS IP Address Configuration"},
    {7, 1, "Cache Identifier Included"},
    {8, 1, "HESSID Included"},
    {9, 1, "FILS Shared Key Authentication Supported Without PFS"},
    {10, 1, "FILS Shared Key Authentication Supported With PFS"},
    {11, 1, "FILS Public Key Authentication Supported"},
    {12, 4, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("FILS Information", [&] { codec.bits(element.information, kInformation); });
    codec.when(element.has(FilsFlag::CacheIdentifierIncluded), element.cacheIdentifier,
               [&](auto& value) { codec.octets("Cache Identifier", value); });
    codec.when(element.has(FilsFlag::HessidIncluded), element.hessid,
               [&](auto& value) { codec.address("HESSID", value); });
    codec.list(element.realmCount(), element.realms,
               [&](auto& realm) { codec.octets("Realm Identifier", realm); });
    codec.list(element.publicKeyCount(), element.publicKeys, [&](auto& key) {
        codec.group("Public Key Identifier", [&] {
            codec.number("Key Type", key.keyType);
            codec.template sized<std::uint8_t>(
                "Length", 0, [&] { codec.octets("Public Key Indicator", key.indicator); });
        });
    });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(FilsIndication, kLayout)

}  // namespace halvane::air
