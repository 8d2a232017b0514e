#include "halvane/service/backend.h"

namespace halvane {

// Here, so that the library alone holds the table of the class.
Backend::~Backend() = default;

}  // namespace halvane
