// The time in the headers of messages.
#ifndef HALVANE_UTILS_LOG_STAMP_INTERNAL_H
#define HALVANE_UTILS_LOG_STAMP_INTERNAL_H

#include <string_view>

namespace halvane::logging {

// Returns the text of "%N " for the current time. It is valid until the next call. The text of a
// second is kept, because the C library takes long to convert it: it is used again within the same
// second and zone.
// REQUIRES: the caller holds the lock.
std::string_view stampOfNow();

}  // namespace halvane::logging

#endif
