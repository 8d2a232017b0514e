#include "halvane/air/advertisement_protocol.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kProtocols[] = {{0, "ANQP"},
                                    {1, "MIH Information Service"},
                                    {2, "MIH Command and Event Services Capability Discovery"},
                                    {3, "Emergency Alert System"},
                                    {4, "Registered Location Query Protocol"},
                                    {221, "Vendor Specific"}};

constexpr BitField kResponse[] = {{0, 7, "Query Response Length Limit", {.unit = "256 octets"}},
                                  {7, 1, "PAME-BI"}};

constexpr auto kTupleLayout = [](auto& codec, auto& tuple) {
    codec.group("Query Response Info", [&] { codec.bits(tuple.response, kResponse); });
    codec.number("Advertisement Protocol ID", tuple.id, {.names = kProtocols});
    codec.when(tuple.protocol() == AdvertisementProtocolId::Vendor, tuple.vendor,
               [&](auto& vendor) {
                   codec.template sized<std::uint8_t>(
                       "Length", 0, [&] { codec.octets("Vendor Specific Content", vendor); });
               });
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.listToEnd(element.protocols, [&](auto& tuple) {
        codec.group("Advertisement Protocol Tuple", [&] { kTupleLayout(codec, tuple); });
    });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(AdvertisementProtocol, kLayout)

}  // namespace halvane::air
