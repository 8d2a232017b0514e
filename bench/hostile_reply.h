// Replies of a hostile daemon.
#ifndef BENCH_HOSTILE_REPLY_H
#define BENCH_HOSTILE_REPLY_H

#include <string>
#include <string_view>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"

namespace bench {

// A reply whose list `key` is the data `xml`.
inline halvane::ServiceReply replyOf(const char* key, std::string_view xml) {
    halvane::IPCMessage message;
    message.entries().set("status", 0);
    message.entries().set(key, halvane::ByteBuffer::fromText(xml));
    return halvane::ServiceReply(std::move(message));
}

// The XML list of `items`, which is XML of one value after the other.
inline std::string listXml(std::string_view items) {
    return "<plist><array>" + std::string(items) + "</array></plist>";
}

}  // namespace bench

#endif
