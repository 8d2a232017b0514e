#include "halvane/air/rsnx.h"

#include <algorithm>

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

// 9.4.2.241.
constexpr BitField kCapabilities[] = {
    {0, 4, "Field Length"},
    {4, 1, "Protected TWT Operations Support"},
    {5, 1, "SAE Hash-to-element"},
    {6, 1, "SAE-PK"},
    {7, 1, "Protected WUR Frame Support"},
    {8, 1, "Secure LTF Support"},
    {9, 1, "Secure RTT Support"},
    {10, 1, "URNM-MFPR-X20"},
    {11, 1, "Protected Announce Support"},
    {12, 1, "PBAC"},
    {13, 1, "Extended S1G Action Protection"},
    {14, 1, "SPP A-MSDU Capable"},
    {15, 1, "URNM-MFPR"},
    {18, 1, "KEK In PASN"},
    {21, 1, "SSID Protection"},
};

constexpr auto kRsnxLayout = [](auto& codec, auto& element) {
    codec.group("Extended RSN Capabilities", [&] {
        codec.bitString(
            element.capabilities, [](Octets left) { return std::size_t{bitsOf(left, 0, 4)} + 1; },
            [](BitTeller& teller) { teller.runs(kCapabilities); });
    });
    codec.rest(element.rest);
};

constexpr auto kOverrideLayout = [](auto& codec, auto& element) {
    kRsnxLayout(codec, element.rsnx);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Rsnx, kRsnxLayout)
HALVANE_AIR_DEFINE_ELEMENT(RsnxOverride, kOverrideLayout)

void Rsnx::setCapability(RsnxCapability flag) {
    BitOctets<16> bits;
    std::ranges::copy(capabilities, bits.octets.begin());
    bits.setBit(static_cast<std::size_t>(flag), true);
    const std::size_t size =
        std::max({capabilities.size(), static_cast<std::size_t>(flag) / 8 + 1, std::size_t{1}});
    bits.setBits(0, 4, static_cast<std::uint32_t>(size - 1));
    capabilities = ByteBuffer(bits.octets).slice(0, size);
}

}  // namespace halvane::air
