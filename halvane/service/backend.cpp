#include "halvane/service/backend.h"

namespace halvane {

// Here, so that the library alone holds the tables of the classes.
StationListener::~StationListener() = default;
Backend::~Backend() = default;

}  // namespace halvane
