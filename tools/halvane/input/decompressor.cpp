#include "tools/halvane/input/decompressor.h"

#include <algorithm>
#include <string_view>

namespace halvane::tool {

namespace {

using namespace std::string_view_literals;

struct Compression {
    std::string_view magic;
    MakeDecompressor make;
};

constexpr Compression kCompressions[] = {
    // RFC 1952, 2.3.1, with deflate as the one method
    {"\x1F\x8B\x08"sv, createGzipDecompressor},
    // The .xz File Format 1.2.0, 2.1.1.1
    {"\xFD\x37zXZ\x00"sv, createXzDecompressor},
    // RFC 8878, 3.1.1
    {"\x28\xB5\x2F\xFD"sv, createArchiveDecompressor},
    // LZ4 Frame Format Description 1.6.4
    {"\x04\x22\x4D\x18"sv, createArchiveDecompressor},
    // bzip2
    {"BZh"sv, createArchiveDecompressor},
};

bool startsWith(std::span<const std::uint8_t> octets, std::string_view magic) {
    return octets.size() >= magic.size() &&
           std::ranges::equal(octets.first(magic.size()), magic, [](auto octet, char letter) {
               return octet == static_cast<std::uint8_t>(letter);
           });
}

}  // namespace

MakeDecompressor decompressorOf(std::span<const std::uint8_t> octets) {
    for (const Compression& each : kCompressions) {
        if (startsWith(octets, each.magic)) return each.make;
    }
    return nullptr;
}

}  // namespace halvane::tool
