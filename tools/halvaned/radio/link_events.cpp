#include "tools/halvaned/radio/link_events.h"

#include <cerrno>
#include <cstddef>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <system_error>

namespace halvane::hosting {

namespace {

constexpr int kMostAtOnce = 256;

}  // namespace

Result<LinkEvents, std::string> LinkEvents::open() {
    FileDescriptor socket(
        ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE));
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK;
    if (!socket ||
        ::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return Unexpected("the kernel does not tell of network interfaces: " +
                          std::generic_category().message(errno));
    }
    return LinkEvents(std::move(socket));
}

bool LinkEvents::take() {
    bool hasAny = false;
    for (int i = 0; i < kMostAtOnce; ++i) {
        char octet = 0;  // the rest of the message is dropped
        const ssize_t size = ::recv(socket_.number(), &octet, sizeof octet, MSG_DONTWAIT);
        const bool isLost = size < 0 && errno == ENOBUFS;  // events that found no room
        if (size < 0 && !isLost && errno != EINTR) break;
        hasAny = hasAny || size >= 0 || isLost;
        if (size == 0) break;
    }
    return hasAny;
}

}  // namespace halvane::hosting
