#include "halvane/air/roaming_consortium.h"

#include <cstddef>

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kLengths[] = {{0, 4, "OI #1 Length"}, {4, 4, "OI #2 Length"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Number Of ANQP OIs", element.anqpCount);
    codec.group("OI #1 And #2 Lengths", [&] { codec.bits(element.lengths, kLengths); });
    codec.octets("OI #1", element.first, element.lengths.bits(0, 4));
    codec.octets("OI #2", element.second, element.lengths.bits(4, 4));
    codec.octets("OI #3", element.third);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(RoamingConsortium, kLayout)

void RoamingConsortium::set(const ByteBuffer& one, const ByteBuffer& two, const ByteBuffer& three) {
    constexpr std::size_t kMaxLength = 15;
    first = one.slice(0, kMaxLength);
    second = two.slice(0, kMaxLength);
    third = three;
    lengths.setBits(0, 4, static_cast<std::uint32_t>(first.size()));
    lengths.setBits(4, 4, static_cast<std::uint32_t>(second.size()));
}

}  // namespace halvane::air
