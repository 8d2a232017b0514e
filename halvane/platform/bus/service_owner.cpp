#include <utility>

#include "halvane/platform/bus/service_owner_internal.h"

namespace halvane {

void ServiceOwner::answered(std::string_view owner) {
    become(owner);
}

// If the first report is a change, it names two owners: the former one came and went.
void ServiceOwner::changed(std::string_view before, std::string_view now) {
    if (!owner_) become(before);
    become(now);
}

void ServiceOwner::received(std::string_view sender, const Reading& read) {
    if (!owner_ || sender.empty() || sender != *owner_) return;
    if (auto message = read()) sink_(std::move(*message));
}

void ServiceOwner::become(std::string_view owner) {
    const std::string before = std::exchange(owner_, owner).value_or("");
    if (owner == before) return;
    if (!before.empty()) {
        sink_(ServiceError{ServiceError::Kind::Interrupted, "the service has gone away"});
    }
    if (!owner.empty()) sink_(ServiceAppeared());
}

}  // namespace halvane
