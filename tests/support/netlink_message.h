// A message of nl80211 as libnl makes it, another implementation of netlink.
#ifndef TESTS_SUPPORT_NETLINK_MESSAGE_H
#define TESTS_SUPPORT_NETLINK_MESSAGE_H

#include <cstdint>
#include <memory>
#include <netlink/attr.h>
#include <netlink/genl/genl.h>
#include <netlink/msg.h>
#include <new>
#include <string>
#include <vector>

#include "tests/support/hostile_bytes.h"

namespace halvane::testing {

class NetlinkMessage {
  public:
    explicit NetlinkMessage(std::uint8_t command) : message_(nlmsg_alloc()) {
        constexpr int kAnyFamily = 0x1C;
        if (!message_) throw std::bad_alloc();
        require(genlmsg_put(get(), 0, 0, kAnyFamily, 0, 0, command, 1) != nullptr);
    }

    NetlinkMessage& add(int type, const Bytes& value) {
        require(nla_put(get(), type, static_cast<int>(value.size()), value.data()) == 0);
        return *this;
    }
    NetlinkMessage& addText(int type, const std::string& text) {
        require(nla_put_string(get(), type, text.c_str()) == 0);
        return *this;
    }
    NetlinkMessage& addU8(int type, std::uint8_t value) { return addValue(type, value); }
    NetlinkMessage& addU16(int type, std::uint16_t value) { return addValue(type, value); }
    NetlinkMessage& addU32(int type, std::uint32_t value) { return addValue(type, value); }
    NetlinkMessage& addU64(int type, std::uint64_t value) { return addValue(type, value); }
    NetlinkMessage& addFlag(int type) { return add(type, {}); }

    // The attributes that follow stand within this one, up to its end().
    NetlinkMessage& begin(int type) {
        nested_.push_back(nla_nest_start(get(), type));
        require(nested_.back() != nullptr);
        return *this;
    }
    NetlinkMessage& end() {
        nla_nest_end(get(), nested_.back());
        nested_.pop_back();
        return *this;
    }

    // From the header of generic netlink on.
    Bytes bytes() const {
        const nlmsghdr* const header = nlmsg_hdr(message_.get());
        const auto* const start = static_cast<const std::uint8_t*>(nlmsg_data(header));
        return {start, start + nlmsg_datalen(header)};
    }

  private:
    struct Freer {
        void operator()(nl_msg* message) const { nlmsg_free(message); }
    };

    template <typename Value>
    NetlinkMessage& addValue(int type, Value value) {
        require(nla_put(get(), type, sizeof value, &value) == 0);
        return *this;
    }

    static void require(bool isDone) {
        if (!isDone) throw std::bad_alloc();
    }

    nl_msg* get() const { return message_.get(); }

    std::unique_ptr<nl_msg, Freer> message_;
    std::vector<nlattr*> nested_;  // the innermost is the last
};

}  // namespace halvane::testing

#endif
