// Decompresses a source of octets: gzip by zlib, xz by liblzma, and bzip2, zstd and lz4 by
// libarchive.
//
// A decompressor belongs to one thread at a time. It keeps no more than the window of its format:
// up to 256 MiB with xz, where more is an error, 128 MiB with zstd, and a few MiB with the others.
#ifndef TOOLS_HALVANE_INPUT_DECOMPRESSOR_H
#define TOOLS_HALVANE_INPUT_DECOMPRESSOR_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "tools/halvane/input/octet_source.h"

namespace halvane::tool {

// The most octets at the start of a file that tell its compression.
inline constexpr std::size_t kCompressionMagicSize = 6;

// Makes a source of what the source contains, decompressed. The fault of damaged data, or of data
// that ends early, comes after the octets before it: with gzip and xz all of them, with the others
// those of whole blocks. A read error of the source keeps its text.
using MakeDecompressor = std::unique_ptr<OctetSource> (*)(std::unique_ptr<OctetSource> source);

// Returns the decompressor for a file that starts with `octets`. Null if it is not compressed.
MakeDecompressor decompressorOf(std::span<const std::uint8_t> octets);

// gzip of one or several members. What follows them and begins no other is left unread.
std::unique_ptr<OctetSource> createGzipDecompressor(std::unique_ptr<OctetSource> source);
// xz of one or several streams.
std::unique_ptr<OctetSource> createXzDecompressor(std::unique_ptr<OctetSource> source);
// bzip2, zstd or lz4.
std::unique_ptr<OctetSource> createArchiveDecompressor(std::unique_ptr<OctetSource> source);

}  // namespace halvane::tool

#endif
