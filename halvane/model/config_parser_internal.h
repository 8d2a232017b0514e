// The part of a conversion that depends on how much it was given room for.
#ifndef HALVANE_MODEL_CONFIG_PARSER_INTERNAL_H
#define HALVANE_MODEL_CONFIG_PARSER_INTERNAL_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"

namespace halvane::ConfigParser {

// convertToDataFromHex through a scratch buffer of `capacity` bytes. With one that the bytes do not
// fit in, digits after a gap are kStatusTruncated; where nothing else is wrong, a caller that gave
// a place for the error gets kStatusUnsupported, another one the bytes that fit.
std::optional<ByteBuffer> dataFromHexWithin(std::string_view text, std::size_t capacity,
                                            std::optional<Error>* error);

}  // namespace halvane::ConfigParser

#endif
