#include "tools/halvane/input/nl80211_channel.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <deque>
#include <iterator>
#include <limits>
#include <linux/netlink.h>
#include <netlink/attr.h>
#include <netlink/errno.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/handlers.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/socket.h>
#include <new>
#include <poll.h>
#include <utility>

#include "tools/halvane/input/libnl.h"

namespace halvane::tool {

namespace {

using Kind = Nl80211Fault::Kind;
using Message = Nl80211Channel::Message;

// Lists of hundreds of networks come in messages of up to this many octets.
constexpr int kReceiveBuffer = 1 << 20;

struct SocketFreer {
    void operator()(nl_sock* socket) const { libnl().nl_socket_free(socket); }
};
using Socket = std::unique_ptr<nl_sock, SocketFreer>;

struct MessageFreer {
    void operator()(nl_msg* message) const { libnl().nlmsg_free(message); }
};
using OwnedMessage = std::unique_ptr<nl_msg, MessageFreer>;

struct CallbackReleaser {
    void operator()(nl_cb* callbacks) const { libnl().nl_cb_put(callbacks); }
};
using Callbacks = std::unique_ptr<nl_cb, CallbackReleaser>;

Nl80211Fault lost(int libraryError) {
    return {.kind = Kind::Lost, .text = libnl().nl_geterror(libraryError)};
}

Nl80211Fault lost(const std::string& text) {
    return {.kind = Kind::Lost, .text = text};
}

// What callbacks of the library gather. They return to C, so that nothing may leave them.
struct Gathered {
    std::deque<Message> messages;
    bool isInterrupted = false;
    bool isFinished = false;
    bool isWithoutMemory = false;
    int error = 0;  // of <errno.h>

    void keep(nl_msg* message) noexcept {
        const nlmsghdr* const header = libnl().nlmsg_hdr(message);
        const auto* const start = static_cast<const std::uint8_t*>(libnl().nlmsg_data(header));
        const auto size = static_cast<std::size_t>(std::max(libnl().nlmsg_datalen(header), 0));
        try {
            messages.emplace_back(start, start + size);
        } catch (const std::bad_alloc&) {
            isWithoutMemory = true;
        }
    }

    // A list ends in a message with its error, which is 0 or negative.
    void finish(nl_msg* message) noexcept {
        const nlmsghdr* const header = libnl().nlmsg_hdr(message);
        int code = 0;
        if (libnl().nlmsg_datalen(header) >= static_cast<int>(sizeof code)) {
            std::memcpy(&code, libnl().nlmsg_data(header), sizeof code);
        }
        if (code < 0) error = -code;
        isFinished = true;
    }
};

int onValid(nl_msg* message, void* context) {
    static_cast<Gathered*>(context)->keep(message);
    return NL_OK;
}

int onFinish(nl_msg* message, void* context) {
    static_cast<Gathered*>(context)->finish(message);
    return NL_STOP;
}

int onAcknowledged(nl_msg*, void* context) {
    static_cast<Gathered*>(context)->isFinished = true;
    return NL_STOP;
}

int onInterrupted(nl_msg*, void* context) {
    static_cast<Gathered*>(context)->isInterrupted = true;
    return NL_OK;
}

int onError(sockaddr_nl*, nlmsgerr* message, void* context) {
    auto& gathered = *static_cast<Gathered*>(context);
    gathered.error = -message->error;
    gathered.isFinished = true;
    return NL_STOP;
}

int acceptAnySequence(nl_msg*, void*) {
    return NL_OK;
}

Callbacks callbacksInto(Gathered& gathered) {
    Callbacks callbacks(libnl().nl_cb_alloc(NL_CB_CUSTOM));
    if (!callbacks) throw std::bad_alloc();
    nl_cb* const set = callbacks.get();
    libnl().nl_cb_set(set, NL_CB_VALID, NL_CB_CUSTOM, onValid, &gathered);
    libnl().nl_cb_set(set, NL_CB_FINISH, NL_CB_CUSTOM, onFinish, &gathered);
    libnl().nl_cb_set(set, NL_CB_ACK, NL_CB_CUSTOM, onAcknowledged, &gathered);
    libnl().nl_cb_set(set, NL_CB_DUMP_INTR, NL_CB_CUSTOM, onInterrupted, &gathered);
    libnl().nl_cb_err(set, NL_CB_CUSTOM, onError, &gathered);
    return callbacks;
}

Result<Socket, Nl80211Fault> connect() {
    if (libnl().problem)
        return Unexpected(Nl80211Fault{.kind = Kind::Lost, .text = libnl().problem});
    Socket socket(libnl().nl_socket_alloc());
    if (!socket) throw std::bad_alloc();
    const int outcome = libnl().genl_connect(socket.get());
    if (outcome == -NLE_PROTO_MISMATCH || outcome == -NLE_AF_NOSUPPORT) {
        return Unexpected(Nl80211Fault{.kind = Kind::NoFamily});
    }
    if (outcome < 0) return Unexpected(lost(outcome));
    libnl().nl_socket_set_buffer_size(socket.get(), kReceiveBuffer, 0);
    return Result<Socket, Nl80211Fault>(std::move(socket));
}

OwnedMessage messageOf(const Nl80211Request& request, int family) {
    OwnedMessage message(libnl().nlmsg_alloc());
    const int flags = request.isList ? NLM_F_DUMP : NLM_F_ACK;
    const auto& attributes = request.attributes.bytes();
    if (!message ||
        !libnl().genlmsg_put(message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, family, 0, flags,
                             request.command, 0) ||
        libnl().nlmsg_append(message.get(), const_cast<std::uint8_t*>(attributes.data()),
                             attributes.size(), NLMSG_ALIGNTO) < 0) {
        throw std::bad_alloc();
    }
    return message;
}

class LibnlChannel : public Nl80211Channel {
  public:
    LibnlChannel(Socket socket, std::string name, int family)
        : socket_(std::move(socket)), name_(std::move(name)), family_(family) {}

    Result<Nl80211Answer, Nl80211Fault> ask(const Nl80211Request& request) override {
        const OwnedMessage message = messageOf(request, family_);
        int outcome = libnl().nl_send_auto(socket_.get(), message.get());
        if (outcome < 0) return Unexpected(lost(outcome));

        Gathered gathered;
        const Callbacks callbacks = callbacksInto(gathered);
        while (!gathered.isFinished) {
            outcome = libnl().nl_recvmsgs(socket_.get(), callbacks.get());
            if (gathered.isFinished || outcome >= 0) continue;
            if (outcome != -NLE_DUMP_INTR) return Unexpected(lost(outcome));
            gathered.isInterrupted = true;
        }
        if (gathered.isWithoutMemory) throw std::bad_alloc();
        if (gathered.error != 0) {
            return Unexpected(Nl80211Fault{.kind = Kind::Refused, .error = gathered.error});
        }
        return Nl80211Answer{{std::make_move_iterator(gathered.messages.begin()),
                              std::make_move_iterator(gathered.messages.end())},
                             gathered.isInterrupted};
    }

    // Events have a socket of their own, so that they do not come between answers.
    std::optional<Nl80211Fault> subscribe(const std::string& group) override {
        const int number =
            libnl().genl_ctrl_resolve_grp(socket_.get(), name_.c_str(), group.c_str());
        if (number < 0) return lost(number);
        if (!events_) {
            auto socket = connect();
            if (!socket) return socket.error();
            const int outcome = libnl().nl_socket_set_nonblocking(socket->get());
            if (outcome < 0) return lost(outcome);
            events_ = std::move(*socket);
        }
        const int outcome = libnl().nl_socket_add_membership(events_.get(), number);
        return outcome < 0 ? std::optional(lost(outcome)) : std::nullopt;
    }

    Result<std::optional<Message>, Nl80211Fault> nextEvent(Clock::time_point deadline,
                                                           int interrupt) override {
        if (!events_) return Unexpected(lost("no events are asked for"));
        while (kept_.messages.empty()) {
            if (!waitForEvent(deadline, interrupt)) return std::optional<Message>();
            const int outcome = receiveEvents();
            // Events that found no room are lost; those that follow are not.
            const bool canGoOn = outcome >= 0 || outcome == -NLE_AGAIN || outcome == -NLE_NOMEM;
            if (!canGoOn) return Unexpected(lost(outcome));
        }
        Message event = std::move(kept_.messages.front());
        kept_.messages.pop_front();
        return std::optional(std::move(event));
    }

    int eventDescriptor() const override {
        return events_ ? libnl().nl_socket_get_fd(events_.get()) : -1;
    }

    Result<Nl80211Events, Nl80211Fault> readyEvents() override {
        if (!events_) return Unexpected(lost("no events are asked for"));
        Nl80211Events events;
        while (kept_.messages.size() < kMostReadyEvents) {
            const int outcome = receiveEvents();
            if (outcome == -NLE_AGAIN) break;
            if (outcome < 0 && outcome != -NLE_NOMEM) return Unexpected(lost(outcome));
            // Without room nothing more comes now.
            events.wereLost = outcome == -NLE_NOMEM;
            if (events.wereLost) break;
        }
        events.messages.assign(std::make_move_iterator(kept_.messages.begin()),
                               std::make_move_iterator(kept_.messages.end()));
        kept_.messages.clear();
        return events;
    }

  private:
    static constexpr std::size_t kMostReadyEvents = 256;

    // Keeps what one reading of the socket gives. Returns a code of libnl.
    int receiveEvents() {
        const Callbacks callbacks = callbacksInto(kept_);
        libnl().nl_cb_set(callbacks.get(), NL_CB_SEQ_CHECK, NL_CB_CUSTOM, acceptAnySequence,
                          nullptr);
        const int outcome = libnl().nl_recvmsgs(events_.get(), callbacks.get());
        if (kept_.isWithoutMemory) throw std::bad_alloc();
        return outcome;
    }

    // Returns whether the socket may have an event.
    bool waitForEvent(Clock::time_point deadline, int interrupt) const {
        std::array<pollfd, 2> polled = {
            {{libnl().nl_socket_get_fd(events_.get()), POLLIN, 0}, {interrupt, POLLIN, 0}}};
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return false;
        const auto most = std::int64_t{std::numeric_limits<int>::max()};
        const int ready = ::poll(polled.data(), polled.size(),
                                 static_cast<int>(std::min<std::int64_t>(left, most)));
        return ready < 0 || (ready > 0 && polled[1].revents == 0);
    }

    Socket socket_;
    Socket events_;
    std::string name_;
    int family_;
    Gathered kept_;
};

}  // namespace

Nl80211Channel::Opened Nl80211Channel::open(const std::string& family) {
    auto socket = connect();
    if (!socket) return Unexpected(socket.error());
    const int number = libnl().genl_ctrl_resolve(socket->get(), family.c_str());
    if (number == -NLE_OBJ_NOTFOUND) return Unexpected(Nl80211Fault{.kind = Kind::NoFamily});
    if (number < 0) return Unexpected(lost(number));
    return Opened(std::make_unique<LibnlChannel>(std::move(*socket), family, number));
}

}  // namespace halvane::tool
