// Tells that a network interface came, went, or changed (rtnetlink, rtnetlink(7)). nl80211 does not
// tell of new names and addresses.
//
// Only one thread at a time may use it.
#ifndef TOOLS_HALVANED_RADIO_LINK_EVENTS_H
#define TOOLS_HALVANED_RADIO_LINK_EVENTS_H

#include <string>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/platform/os/file_internal.h"

namespace halvane::hosting {

class LinkEvents {
  public:
    // The error is for people.
    static Result<LinkEvents, std::string> open();

    // Takes messages from a socket without looking into them. For tests.
    explicit LinkEvents(FileDescriptor socket) : socket_(std::move(socket)) {}

    // Readable while events wait.
    int descriptor() const { return socket_.number(); }

    // Takes the events that are there, without waiting. Returns whether there were any. Of very
    // many it leaves some for the next call.
    bool take();

  private:
    FileDescriptor socket_;
};

}  // namespace halvane::hosting

#endif
