#include "halvane/platform/service_owner_internal.h"

namespace halvane {

void ServiceOwner::answered(std::string_view owner) {
    settle(owner);
    become(owner);
}

void ServiceOwner::changed(std::string_view before, std::string_view now) {
    settle(before);
    become(now);
}

void ServiceOwner::received(std::string_view sender, IPCMessage message) {
    if (!owner_) {
        early_.emplace_back(sender, std::move(message));
    } else if (!sender.empty() && sender == *owner_) {
        sink_(std::move(message));
    }
}

// The first word on the owner.
void ServiceOwner::settle(std::string_view owner) {
    if (owner_) return;
    owner_.emplace();
    become(owner);
    for (auto& [sender, message] : std::exchange(early_, {})) received(sender, std::move(message));
}

void ServiceOwner::become(std::string_view owner) {
    if (owner == *owner_) return;
    const bool wasThere = !owner_->empty();
    *owner_ = owner;
    if (wasThere) {
        sink_(ServiceError{ServiceError::Kind::Interrupted, "the service has gone away"});
    }
    if (!owner.empty()) sink_(ServiceAppeared());
}

}  // namespace halvane
