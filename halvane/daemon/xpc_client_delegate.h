// Who hears of the stations of hosted networks.
//
// Threads: the calls come from the client's connection queue, one at a time, in the order of the
// notifications. They are not changed while a client holds the delegate.
#ifndef HALVANE_DAEMON_XPC_CLIENT_DELEGATE_H
#define HALVANE_DAEMON_XPC_CLIENT_DELEGATE_H

#include <functional>
#include <string>

#include "halvane/base/byte_buffer.h"

namespace halvane {

// Each call may be left empty, and is not made then.
struct HalvaneXPCClientDelegate {
    // The station's address as the daemon sent it, usually 6 bytes, and the name of the interface
    // that hosts the network.
    // REQUIRES: throws nothing; an exception ends the program.
    using Call = std::function<void(const ByteBuffer& mac, const std::string& interfaceName)>;

    Call clientAuthorized_forInterface = nullptr;
    Call clientJoined_forInterface = nullptr;
    Call clientKicked_forInterface = nullptr;
    Call clientLeft_forInterface = nullptr;
};

}  // namespace halvane

#endif
