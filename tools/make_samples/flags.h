// Sets flags of fields that the library numbers by an enumeration.
#ifndef TOOLS_MAKE_SAMPLES_FLAGS_H
#define TOOLS_MAKE_SAMPLES_FLAGS_H

#include <cstddef>
#include <initializer_list>

namespace halvane::samples {

template <typename Flag, typename Fields>
void setFlags(Fields& fields, std::initializer_list<Flag> flags) {
    for (const Flag flag : flags) fields.setBit(static_cast<std::size_t>(flag), true);
}

}  // namespace halvane::samples

#endif
