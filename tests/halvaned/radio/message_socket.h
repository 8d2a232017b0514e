// A pair of sockets in the place of one of the kernel's: what a test sends is readable at the other
// end.
#ifndef TESTS_HALVANED_RADIO_MESSAGE_SOCKET_H
#define TESTS_HALVANED_RADIO_MESSAGE_SOCKET_H

#include <cerrno>
#include <string>
#include <sys/socket.h>
#include <system_error>
#include <utility>

#include "halvane/platform/os/file_internal.h"

namespace halvane::testing {

class MessageSocket {
  public:
    MessageSocket() {
        int ends[2] = {-1, -1};
        if (::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0) {
            throw std::system_error(errno, std::generic_category(), "socketpair");
        }
        near_ = FileDescriptor(ends[0]);
        far_ = FileDescriptor(ends[1]);
    }

    void send() const {
        const char message[] = "anything";
        if (::send(near_.number(), message, sizeof message, 0) < 0) {
            throw std::system_error(errno, std::generic_category(), "send");
        }
    }

    // The end at which messages arrive. It can be taken once.
    FileDescriptor take() { return std::move(far_); }

  private:
    FileDescriptor near_;
    FileDescriptor far_;
};

}  // namespace halvane::testing

#endif
