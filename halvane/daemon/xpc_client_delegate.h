// The functions that receive the events of stations on hosted networks.
//
// Threads: the client calls them on its connection queue, one at a time, in the order of the
// notifications. Nobody may change them while a client holds the delegate.
#ifndef HALVANE_DAEMON_XPC_CLIENT_DELEGATE_H
#define HALVANE_DAEMON_XPC_CLIENT_DELEGATE_H

#include <functional>
#include <string>

#include "halvane/base/byte_buffer.h"

namespace halvane {

// Each function may be empty; it is not called then.
struct HalvaneXPCClientDelegate {
    // Receives the station's address as the daemon sent it, usually 6 bytes, and the name of the
    // interface that hosts the network.
    // REQUIRES: throws nothing; an exception ends the program.
    using Call = std::function<void(const ByteBuffer& mac, const std::string& interfaceName)>;

    // What happened to a station, by its address, on an interface. Null ignores it.
    Call clientAuthorized_forInterface = nullptr;
    Call clientJoined_forInterface = nullptr;
    Call clientKicked_forInterface = nullptr;
    Call clientLeft_forInterface = nullptr;
};

}  // namespace halvane

#endif
