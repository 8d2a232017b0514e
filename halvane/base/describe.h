// The text of a value in a description. An absent value gives "(null)".
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_BASE_DESCRIBE_H
#define HALVANE_BASE_DESCRIBE_H

#include <optional>
#include <string>

#include "halvane/base/cxx20.h"

namespace halvane {

// The text, as descriptions print it.
inline std::string describe(const std::string& text) {
    return text;
}

// The value's own description, as descriptions print it.
template <typename Value>
requires requires(const Value& value) {
    value.description();
}
std::string describe(const Value& value) {
    return value.description();
}

// The value as above, or "(null)".
template <typename Value>
std::string describe(const std::optional<Value>& value) {
    return value ? describe(*value) : std::string("(null)");
}

}  // namespace halvane

#endif
