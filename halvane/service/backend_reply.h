// The completion of a request that a backend carries out.
//
// Threads: only the thread that runs the server's loop may use one.
#ifndef HALVANE_SERVICE_BACKEND_REPLY_H
#define HALVANE_SERVICE_BACKEND_REPLY_H

#include <functional>
#include <utility>

#include "halvane/base/result.h"          // IWYU pragma: export
#include "halvane/model/daemon_status.h"  // IWYU pragma: export

namespace halvane {

// What a backend returns: a value, or the status that says why there is none. A status of the
// backend's own is static_cast<DaemonStatus>(kFirstOwnStatus + n).
template <typename T>
using BackendResult = Result<T, DaemonStatus>;

// Receives the result of one request, once, at any time. A reply that is destroyed uncalled is
// lost: the client gets DaemonStatus::Lost.
template <typename T>
class BackendReply {
  public:
    // Takes the result, once.
    using Handler = std::function<void(BackendResult<T>)>;

    // Destroying a handler uncalled has to mean that the reply is lost.
    explicit BackendReply(Handler handler) : handler_(std::move(handler)) {}
    BackendReply(BackendReply&& other) noexcept
        : handler_(std::exchange(other.handler_, nullptr)) {}
    BackendReply& operator=(BackendReply&& other) noexcept {
        handler_ = std::exchange(other.handler_, nullptr);
        return *this;
    }
    ~BackendReply() = default;

    // Answers the request. Later calls do nothing.
    void operator()(BackendResult<T> result) {
        const Handler handler = std::exchange(handler_, nullptr);
        if (handler) handler(std::move(result));
    }

    // Whether the request still waits.
    explicit operator bool() const { return handler_ != nullptr; }

  private:
    Handler handler_;
};

}  // namespace halvane

#endif
