// Where octets come from: a file descriptor, or a decompressor of another source.
//
// A source belongs to one thread at a time.
#ifndef TOOLS_HALVANE_INPUT_OCTET_SOURCE_H
#define TOOLS_HALVANE_INPUT_OCTET_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "halvane/base/result.h"

namespace halvane::tool {

class OctetSource {
  public:
    virtual ~OctetSource() = default;

    // Reads up to `room.size()` octets, at least one unless the source is at its end: then 0. An
    // error is the text of the fault, without the file's name.
    virtual Result<std::size_t, std::string> read(std::span<std::uint8_t> room) = 0;

    // The octets read so far of the file behind all sources.
    virtual std::uint64_t fileOffset() const = 0;
};

// Reads a descriptor, and closes it at the end unless it is standard input's.
std::unique_ptr<OctetSource> createDescriptorSource(int descriptor);

}  // namespace halvane::tool

#endif
