// The part of the hexadecimal conversion that depends on the capacity of a buffer.
#ifndef HALVANE_MODEL_CONFIG_PARSER_INTERNAL_H
#define HALVANE_MODEL_CONFIG_PARSER_INTERNAL_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"

namespace halvane::ConfigParser {

// convertToDataFromHex with a scratch buffer of `capacity` bytes. If the bytes do not fit, digits
// after a gap give kStatusTruncated. Without another fault, a caller that gave `error` gets
// kStatusUnsupported, and any other caller gets the bytes that fit.
std::optional<ByteBuffer> dataFromHexWithin(std::string_view text, std::size_t capacity,
                                            std::optional<Error>* error);

}  // namespace halvane::ConfigParser

#endif
