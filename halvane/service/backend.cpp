#include "halvane/service/backend.h"

namespace halvane {

// Here, so that the library alone holds the table of the class.
Backend::~Backend() = default;

void Backend::kick(std::string_view, const MacAddress&, BackendReply<void> reply) {
    reply(Unexpected(DaemonStatus::UnknownCommand));
}

}  // namespace halvane
