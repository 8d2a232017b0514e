#include "tools/halvaned/hostapd/control_socket.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tools/halvaned/hostapd/control_message.h"

namespace halvane::hosting {

namespace {

std::optional<sockaddr_un> addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) return std::nullopt;
    path.copy(address.sun_path, path.size());
    return address;
}

template <typename Call>
bool withAddress(const std::string& path, Call call) {
    const auto address = addressOf(path);
    if (!address) {
        errno = ENAMETOOLONG;
        return false;
    }
    return call(reinterpret_cast<const sockaddr*>(&*address), socklen_t{sizeof(*address)}) == 0;
}

std::string sentence(const std::string& what, int error) {
    return what + ": " + std::strerror(error);
}

// Binds the socket to a free name in the folder, and returns the path; empty on failure, with
// errno.
std::string bindIn(const std::string& folder, const FileDescriptor& socket) {
    constexpr int kMostNames = 1000;
    const std::string stem = folder + "/control-" + std::to_string(::getpid()) + "-";
    for (int number = 1; number <= kMostNames; ++number) {
        std::string path = stem + std::to_string(number);
        const bool isBound = withAddress(path, [&](const sockaddr* address, socklen_t size) {
            return ::bind(socket.number(), address, size);
        });
        if (isBound) return path;
        if (errno != EADDRINUSE) break;
    }
    return {};
}

}  // namespace

ControlSocket::ControlSocket(sd_event* loop, std::uint64_t timeout, Handlers handlers)
    : loop_(loop), timeout_(timeout), handlers_(std::move(handlers)) {}

Result<std::unique_ptr<ControlSocket>, std::string> ControlSocket::connect(sd_event* loop,
                                                                           const Paths& paths,
                                                                           std::uint64_t timeout,
                                                                           Handlers handlers) {
    std::unique_ptr<ControlSocket> made(new ControlSocket(loop, timeout, std::move(handlers)));
    auto reason = made->open(paths);
    if (!reason.empty()) return Unexpected(std::move(reason));
    return made;
}

// Returns a sentence if that fails.
std::string ControlSocket::open(const Paths& paths) {
    socket_ = aboveStandardStreams(
        FileDescriptor(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)));
    if (!socket_) return sentence("no socket", errno);
    ownPath_ = bindIn(paths.folder, socket_);
    if (ownPath_.empty()) return sentence(paths.folder, errno);
    const auto connect = [this](const sockaddr* address, socklen_t size) {
        return ::connect(socket_.number(), address, size);
    };
    if (!withAddress(paths.server, connect)) return sentence(paths.server, errno);
    sd_event_source* source = nullptr;
    const int error = ::sd_event_add_io(loop_, &source, socket_.number(), EPOLLIN, happened, this);
    if (error < 0) return sentence("no place in the loop", -error);
    source_.reset(source);
    return {};
}

ControlSocket::~ControlSocket() {
    if (!ownPath_.empty()) ::unlink(ownPath_.c_str());
}

void ControlSocket::request(std::string command, ReplyHandler reply) {
    if (!socket_) return reply(Unexpected(ControlFailure::Lost));
    if (requests_.size() >= kMostRequests) return reply(Unexpected(ControlFailure::TooMany));
    requests_.push_back({std::move(command), std::move(reply)});
    // What fails here is told from the loop.
    if (requests_.size() == 1) listenFor(EPOLLIN | EPOLLOUT);
}

void ControlSocket::listenFor(std::uint32_t events) {
    ::sd_event_source_set_io_events(source_.get(), events);
}

int ControlSocket::happened(sd_event_source*, int, std::uint32_t events, void* data) {
    return guarded([=] {
        auto& socket = *static_cast<ControlSocket*>(data);
        if ((events & EPOLLOUT) != 0) return socket.sendFirst();
        socket.readSome();
    });
}

// A full queue of the server leaves the request waiting for room.
void ControlSocket::sendFirst() {
    if (requests_.empty() || isSent_) return listenFor(EPOLLIN);
    if (!deadline_) deadline_ = timerOf<&ControlSocket::expire>(loop_, timeout_, this);
    const std::string& command = requests_.front().command;
    if (::send(socket_.number(), command.data(), command.size(), MSG_NOSIGNAL) >= 0) {
        isSent_ = true;
        return listenFor(EPOLLIN);
    }
    if (errno == EAGAIN || errno == EINTR || errno == ENOBUFS) return;
    lose(sentence("hostapd is gone", errno));
}

// A part of what waits, so that a flood leaves the loop to others.
void ControlSocket::readSome() {
    constexpr int kMost = 64;
    const std::weak_ptr<char> life = life_;
    std::vector<char> octets(kLargestMessage);
    for (int i = 0; i < kMost && !life.expired() && socket_; ++i) {
        const ssize_t count =
            ::recv(socket_.number(), octets.data(), octets.size(), MSG_TRUNC | MSG_DONTWAIT);
        if (count < 0) {
            if (errno == EAGAIN || errno == EINTR) return;
            return lose(sentence("hostapd is gone", errno));
        }
        const auto size = static_cast<std::size_t>(count);
        const bool isTooLarge = size > octets.size();
        take({octets.data(), isTooLarge ? octets.size() : size}, isTooLarge);
    }
}

void ControlSocket::take(std::string_view message, bool isTooLarge) {
    if (isEvent(message)) {
        if (!isTooLarge && handlers_.event) handlers_.event(message);
        return;
    }
    if (!isSent_) return;  // nobody asked
    if (isTooLarge) return reply(Unexpected(ControlFailure::TooLarge));
    reply(message);
}

// Answers the first request, and then sends the next one.
void ControlSocket::reply(Result<std::string_view, ControlFailure> result) {
    const auto handler = std::move(requests_.front().reply);
    requests_.pop_front();
    isSent_ = false;
    deadline_.reset();
    if (!requests_.empty()) listenFor(EPOLLIN | EPOLLOUT);
    handler(result);
}

void ControlSocket::expire() {
    lose("hostapd does not answer \"" + requests_.front().command + "\"");
}

// Returns whether the object is still there.
bool ControlSocket::failRequests() {
    const std::weak_ptr<char> life = life_;
    source_.reset();
    deadline_.reset();
    socket_ = FileDescriptor();
    for (auto requests = std::exchange(requests_, {}); !requests.empty(); requests.pop_front()) {
        requests.front().reply(Unexpected(ControlFailure::Lost));
        if (life.expired()) return false;
    }
    return true;
}

void ControlSocket::close() {
    handlers_ = {};
    failRequests();
}

void ControlSocket::lose(const std::string& reason) {
    const auto lost = std::move(handlers_.lost);
    if (failRequests() && lost) lost(reason);
}

}  // namespace halvane::hosting
