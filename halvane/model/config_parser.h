// Configuration text, as a command line or a file gives it, to typed values.
//
// Texts are UTF-8. What fails answers nothing, and stores an error of kDaemonErrorDomain where
// there is a place for it; the codes are those of halvane/base/status.h. After a success that place
// is left alone, but for the two operations that clear it.
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

// The words of a comma-separated list, each as `words` spells it, whatever the case it was written
// in; repeated ones stay. Nothing is trimmed. A comma at the end adds nothing, and an empty text
// has no words. Clears the error.
//
//   kStatusUnsupported  a piece, also an empty one, is none of `words`
//   kStatusNoMemory     there is no memory for the words
HALVANE_EXPORT std::optional<std::vector<std::string>> convertParamStringToArray_error(
    std::string_view text, std::span<const std::string_view> words,
    std::optional<Error>* error = nullptr);

// The bytes of pairs of hexadecimal digits of either case, after any white space and one "0x". A
// last digit without a second one is left out, and so is everything from the first character on
// that is no digit, as long as there was a pair before it; no text, or none but white space, is an
// empty buffer. A NUL ends the text.
//
//   kStatusMalformed        there is no pair before a character that is no digit
//   kStatusDigitsAfterGap   digits follow behind white space
//   kStatusNoMemory         there is no memory for the bytes
HALVANE_EXPORT std::optional<ByteBuffer> convertToDataFromHex(
    std::string_view text, std::optional<Error>* error = nullptr);

// The decimal integer that the text begins with, after any white space and one sign; what follows
// it is ignored. kStatusUnsupported: there is none, or it is beyond 64 bits.
HALVANE_EXPORT std::optional<std::int64_t> convertToInteger(std::string_view text,
                                                            std::optional<Error>* error = nullptr);

// "yes" or "no" in any case. kStatusUnsupported: any other text.
HALVANE_EXPORT std::optional<bool> convertToBool(std::string_view text,
                                                 std::optional<Error>* error = nullptr);

// A hardware address of 6 bytes, as TextToHardwareAddress
// (halvane/utils/convert/hardware_address.h) reads it: "00:11:22:33:44:55", "0-11-2-33-4-55",
// "001122334455". Clears the error.
//
//   kStatusMalformed    another character, or the end of the text, stands where a byte has to begin
//   kStatusUnsupported  the text is not UTF-8
HALVANE_EXPORT std::optional<ByteBuffer> convertToBSSID(std::string_view text,
                                                        std::optional<Error>* error = nullptr);

}  // namespace halvane::ConfigParser

#endif
