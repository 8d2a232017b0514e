#include <cstdint>
#include <poll.h>
#include <sys/epoll.h>

#include "halvane/platform/os/descriptor_mask_internal.h"

namespace halvane {

namespace {

// The two interfaces have the same values.
static_assert(POLLIN == EPOLLIN && POLLOUT == EPOLLOUT);

bool control(int set, int operation, int watched, std::uint32_t events) {
    epoll_event event{};
    event.events = events;
    return ::epoll_ctl(set, operation, watched, &event) == 0;
}

}  // namespace

DescriptorMask::DescriptorMask()
    : set_(aboveStandardStreams(FileDescriptor(::epoll_create1(EPOLL_CLOEXEC)))) {}

bool DescriptorMask::watch(int watched, short events) {
    if (!control(set_.number(), EPOLL_CTL_ADD, watched, static_cast<std::uint32_t>(events))) {
        return false;
    }
    watched_ = watched;
    return true;
}

// The kernel tells errors and hang-ups even if nothing is asked for, but in this mode not again and
// again.
void DescriptorMask::hide() {
    control(set_.number(), EPOLL_CTL_MOD, watched_, EPOLLET);
}

void DescriptorMask::show(short events) {
    control(set_.number(), EPOLL_CTL_MOD, watched_, static_cast<std::uint32_t>(events));
}

void DescriptorMask::forget() {
    control(set_.number(), EPOLL_CTL_DEL, watched_, 0);
    watched_ = -1;
}

}  // namespace halvane
