#include "halvane/air/multi_link_traffic.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kControl[] = {
    {0, 4, "Bitmap Size less 1"},
    {4, 11, "AID Offset"},
    {15, 1, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("Multi-Link Traffic Indication Control",
                [&] { codec.bits(element.control, kControl); });
    codec.octets("Per-Link Traffic Indication List", element.bitmaps);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MultiLinkTraffic, kLayout)

std::optional<std::uint16_t> MultiLinkTraffic::links(std::size_t index) const {
    const std::size_t size = bitmapSize();
    if (index >= 8 * bitmaps.size() / size) return std::nullopt;
    return static_cast<std::uint16_t>(bitsOf(bitmaps.bytes(), index * size, size));
}

}  // namespace halvane::air
