// hostapd's side of its control interface, played by the test on the loop of the client.
#ifndef TESTS_HALVANED_HOSTAPD_PLAYED_SERVER_H
#define TESTS_HALVANED_HOSTAPD_PLAYED_SERVER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <systemd/sd-event.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace halvane::testing {

class PlayedServer {
  public:
    // What to reply to a request; absent for nothing at all.
    using Script = std::function<std::optional<std::string>(const std::string& request)>;

    PlayedServer(sd_event* loop, std::string path, Script script)
        : path_(std::move(path)), script_(std::move(script)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path_.size() >= sizeof(address.sun_path)) throw std::runtime_error("a long path");
        path_.copy(address.sun_path, path_.size());
        socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        if (::bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
            ::sd_event_add_io(loop, &source_, socket_, EPOLLIN, happened, this) < 0) {
            throw std::runtime_error("no socket " + path_);
        }
    }
    PlayedServer(const PlayedServer&) = delete;
    PlayedServer& operator=(const PlayedServer&) = delete;
    ~PlayedServer() {
        ::sd_event_source_disable_unref(source_);
        ::close(socket_);
        ::unlink(path_.c_str());
    }

    // Sends a message to the client that spoke last, which must have room for it. Returns whether
    // it had.
    bool send(std::string_view message) const { return send(message, MSG_DONTWAIT); }

    // The same, but waits for room. REQUIRES: the client is on another loop.
    bool sendPatiently(std::string_view message) const { return send(message, 0); }

    void setScript(Script script) { script_ = std::move(script); }

    const std::vector<std::string>& requests() const { return requests_; }

  private:
    bool send(std::string_view message, int flags) const {
        return ::sendto(socket_, message.data(), message.size(), flags | MSG_NOSIGNAL,
                        reinterpret_cast<const sockaddr*>(&client_), clientSize_) >= 0;
    }

    static int happened(sd_event_source*, int, std::uint32_t, void* server) {
        static_cast<PlayedServer*>(server)->answer();
        return 0;
    }

    void answer() {
        std::array<char, 4096> octets;
        clientSize_ = sizeof(client_);
        const auto size = ::recvfrom(socket_, octets.data(), octets.size(), MSG_DONTWAIT,
                                     reinterpret_cast<sockaddr*>(&client_), &clientSize_);
        if (size < 0) return;
        requests_.emplace_back(octets.data(), static_cast<std::size_t>(size));
        const std::string request = requests_.back();
        if (const auto reply = script_(request)) send(*reply);
    }

    std::string path_;
    Script script_;
    int socket_ = -1;
    sd_event_source* source_ = nullptr;
    sockaddr_un client_{};
    socklen_t clientSize_ = 0;
    std::vector<std::string> requests_;
};

}  // namespace halvane::testing

#endif
