// A daemon of the library in a thread of its own, on the system bus of the process.
#ifndef TESTS_SERVICE_RUNNING_SERVER_H
#define TESTS_SERVICE_RUNNING_SERVER_H

#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <queue>
#include <stdexcept>
#include <string>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <systemd/sd-event.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/service/daemon_limits.h"
#include "halvane/service/daemon_server.h"
#include "halvane/service/subscribers.h"

#include "tests/service/scripted_backend.h"

namespace halvane::testing {

class RunningServer {
  public:
    // Returns when the server owns its name. Throws std::runtime_error if it does not get it.
    explicit RunningServer(const DaemonLimits& limits = {}) : limits_(limits) {
        thread_ = std::thread([this] { run(); });
        std::string problem;
        inLoop([&] {
            if (auto started = server_->start(); !started) problem = started.error();
        });
        if (problem.empty()) return;
        end();
        throw std::runtime_error(problem);
    }
    RunningServer(const RunningServer&) = delete;
    RunningServer& operator=(const RunningServer&) = delete;
    ~RunningServer() { end(); }

    // Runs `work` in the thread of the loop, and returns when it is done.
    void inLoop(const std::function<void()>& work) {
        std::packaged_task<void()> task(work);
        auto done = task.get_future();
        {
            const std::lock_guard lock(mutex_);
            tasks_.push(std::move(task));
        }
        const std::uint64_t one = 1;
        if (::write(wake_, &one, sizeof one) != sizeof one) throw std::runtime_error("no wake-up");
        done.get();
    }

    // For use in the loop.
    ScriptedBackend& backend() { return backend_; }
    DaemonServer& server() { return *server_; }
    const Subscribers& subscribers() const { return subscribers_; }

    // Ends the server, but neither its loop nor its backend.
    void endServer() {
        inLoop([this] { server_.reset(); });
    }

    // Waits until the server has told that it lost the bus.
    void waitForLoss() { lost_.get_future().wait(); }

  private:
    void run() {
        loop_ = newEventLoop();
        ::sd_event_add_io(loop_.get(), nullptr, wake_, EPOLLIN, work, this);
        server_ = std::make_unique<DaemonServer>(
            loop_.get(),
            DaemonParts{.backend = backend_,
                        .logging = logging_,
                        .limits = limits_,
                        .subscribers = &subscribers_},
            DaemonServerHandlers{.onLoss = [this] { lost_.set_value(); }});
        ::sd_event_loop(loop_.get());
        server_.reset();
    }

    void end() {
        inLoop([this] { ::sd_event_exit(loop_.get(), 0); });
        thread_.join();
        ::close(wake_);
    }

    static int work(sd_event_source*, int descriptor, std::uint32_t, void* server) {
        auto& self = *static_cast<RunningServer*>(server);
        std::uint64_t count = 0;
        if (::read(descriptor, &count, sizeof count) != sizeof count) return 0;
        while (auto task = self.nextTask()) (*task)();
        return 0;
    }

    std::optional<std::packaged_task<void()>> nextTask() {
        const std::lock_guard lock(mutex_);
        if (tasks_.empty()) return std::nullopt;
        std::optional<std::packaged_task<void()>> task = std::move(tasks_.front());
        tasks_.pop();
        return task;
    }

    const DaemonLimits limits_;
    ScriptedBackend backend_;
    ScriptedLogSettings logging_;
    Subscribers subscribers_;
    std::promise<void> lost_;
    const int wake_ = ::eventfd(0, EFD_CLOEXEC);
    std::mutex mutex_;
    std::queue<std::packaged_task<void()>> tasks_;
    EventPointer loop_;
    std::unique_ptr<DaemonServer> server_;
    std::thread thread_;
};

}  // namespace halvane::testing

#endif
