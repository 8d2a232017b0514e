#include "halvane/air/short_ssid_list.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/base/crc32.h"

namespace halvane::air {

namespace {

constexpr std::size_t kSize = 4;

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.listWhile([](const auto& reader) { return reader.remaining() >= kSize; },
                    element.shortSsids, [&](auto& sum) { codec.number("Short SSID", sum); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(ShortSsidList, kLayout)

std::uint32_t shortSsidOf(const Ssid& ssid) {
    return crc32(ssid.bytes());
}

}  // namespace halvane::air
