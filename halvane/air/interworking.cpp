#include "halvane/air/interworking.h"

#include <cstddef>

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

// Table 9-187.
constexpr ValueName kNetworkTypes[] = {
    {0, "Private network"},           {1, "Private network with guest access"},
    {2, "Chargeable public network"}, {3, "Free public network"},
    {4, "Personal device network"},   {5, "Emergency services only network"},
    {14, "Test or experimental"},     {15, "Wildcard"}};
// Table 9-61.
constexpr ValueName kVenueGroups[] = {{0, "Unspecified"},
                                      {1, "Assembly"},
                                      {2, "Business"},
                                      {3, "Educational"},
                                      {4, "Factory and Industrial"},
                                      {5, "Institutional"},
                                      {6, "Mercantile"},
                                      {7, "Residential"},
                                      {8, "Storage"},
                                      {9, "Utility and Miscellaneous"},
                                      {10, "Vehicular"},
                                      {11, "Outdoor"}};

constexpr BitField kOptions[] = {
    {0, 4, "Access Network Type", {.names = kNetworkTypes}},
    {4, 1, "Internet"},
    {5, 1, "ASRA"},
    {6, 1, "ESR"},
    {7, 1, "UESA"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("Access Network Options", [&] { codec.bits(element.options, kOptions); });
    const std::size_t left = codec.remaining();
    const bool hasHessid = left == MacAddress::kSize || left >= 2 + MacAddress::kSize;
    const bool hasVenue = left != MacAddress::kSize && left >= 2;
    codec.when(hasVenue, element.venue, [&](auto& venue) {
        codec.group("Venue Info", [&] {
            codec.number("Venue Group", venue.group, {.names = kVenueGroups});
            codec.number("Venue Type", venue.type);
        });
    });
    codec.when(hasHessid, element.hessid, [&](auto& value) { codec.address("HESSID", value); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Interworking, kLayout)

}  // namespace halvane::air
