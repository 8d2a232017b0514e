// Dotted decimal text inside other texts.
#ifndef HALVANE_UTILS_CONVERT_IPV4_ADDRESS_INTERNAL_H
#define HALVANE_UTILS_CONVERT_IPV4_ADDRESS_INTERNAL_H

#include <cstdint>

#include "halvane/base/status.h"
#include "halvane/utils/text/cursor_internal.h"

namespace halvane {

// A number that may follow an address.
struct AddressPart {
    bool isThere = false;
    std::uint32_t value = 0;

    HalvaneStatus read(TextCursor& text, std::uint32_t max) {
        isThere = true;
        return text.decimal(max, value);
    }
    template <typename Value>
    void storeAt(Value* destination) const {
        if (isThere && destination != nullptr) *destination = static_cast<Value>(value);
    }
};

// Reads an address in host byte order. The statuses are those of ParseIPv4Address.
HalvaneStatus readIPv4Address(TextCursor& text, std::uint32_t& address);

// Writes an address in host byte order, without a terminator. Returns the end of the text.
char* putIPv4Address(char* to, std::uint32_t address);

// Writes a ':' and a number. Returns the end of the text.
char* putPort(char* to, int port);

}  // namespace halvane

#endif
