#include "halvane/air/estimated_service_parameters.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kCategories[] = {{0, "AC_BK"}, {1, "AC_BE"}, {2, "AC_VI"}, {3, "AC_VO"}};
constexpr ValueName kFormats[] = {
    {0, "no aggregation"}, {1, "A-MSDU"}, {2, "A-MPDU"}, {3, "A-MSDU and A-MPDU"}};
constexpr ValueName kWindows[] = {{0, "none"}, {1, "2"},  {2, "4"},  {3, "6"},
                                  {4, "8"},    {5, "16"}, {6, "32"}, {7, "64"}};

constexpr BitField kFields[] = {
    {0, 2, "Access Category", {.names = kCategories}},
    {2, 1, "Reserved"},
    {3, 2, "Data Format", {.names = kFormats}},
    {5, 3, "BA Window Size", {.names = kWindows}},
    {8, 8, "Estimated Air Time Fraction", {.unit = "/255"}},
    {16, 8, "Data PPDU Duration Target", {.unit = "50 us"}},
};
constexpr std::size_t kSize = 3;
constexpr std::size_t kMaxCount = 4;

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.listWhile(
        [&](const auto& reader) {
            return reader.remaining() >= kSize && element.services.size() < kMaxCount;
        },
        element.services,
        [&](auto& service) {
            codec.group("ESP Information", [&] { codec.bits(service.fields, kFields); });
        });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(EstimatedServiceParameters, kLayout)

}  // namespace halvane::air
