// Converts configuration text of a command line or file to typed values.
//
// Texts are UTF-8. A failure returns an absent value and stores an error of kDaemonErrorDomain,
// with a code of halvane/base/status.h, in `error` if that is given. Success leaves `error`
// unchanged, except in the two operations that clear it.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_MODEL_CONFIG_PARSER_H
#define HALVANE_MODEL_CONFIG_PARSER_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/export.h"

namespace halvane::ConfigParser {

// Returns the words of a comma-separated list. Case is ignored; each word is returned in the
// spelling of `words`. Repeated words stay. Nothing is trimmed. A comma at the end adds nothing,
// and an empty text has no words. Clears the error.
//
//   kStatusUnsupported  an item, possibly empty, is not in `words`
//   kStatusNoMemory     out of memory
HALVANE_EXPORT std::optional<std::vector<std::string>> convertParamStringToArray_error(
    std::string_view text, std::span<const std::string_view> words,
    std::optional<Error>* error = nullptr);

// Reads pairs of hexadecimal digits of either case as bytes, after optional white space and an
// optional "0x". A last digit without a partner is ignored. If at least one pair was read,
// everything from the first other character on is ignored. An empty or blank text gives an empty
// buffer. A NUL ends the text.
//
//   kStatusMalformed        a character that is not a digit comes before the first pair
//   kStatusDigitsAfterGap   digits follow after white space
//   kStatusNoMemory         out of memory
HALVANE_EXPORT std::optional<ByteBuffer> convertToDataFromHex(
    std::string_view text, std::optional<Error>* error = nullptr);

// Returns the decimal integer at the beginning of the text, after optional white space and a sign.
// The rest of the text is ignored. kStatusUnsupported: there is no integer, or it is beyond 64
// bits.
HALVANE_EXPORT std::optional<std::int64_t> convertToInteger(std::string_view text,
                                                            std::optional<Error>* error = nullptr);

// Accepts "yes" and "no" in any case. kStatusUnsupported: any other text.
HALVANE_EXPORT std::optional<bool> convertToBool(std::string_view text,
                                                 std::optional<Error>* error = nullptr);

// Reads a hardware address of 6 bytes as TextToHardwareAddress
// (halvane/utils/convert/hardware_address.h) does: "00:11:22:33:44:55", "0-11-2-33-4-55",
// "001122334455". Clears the error.
//
//   kStatusMalformed    another character, or the end of the text, is where a byte must begin
//   kStatusUnsupported  the text is not UTF-8
HALVANE_EXPORT std::optional<ByteBuffer> convertToBSSID(std::string_view text,
                                                        std::optional<Error>* error = nullptr);

}  // namespace halvane::ConfigParser

#endif
