// Waits for what happens to files, without looking again and again.
#ifndef TESTS_SUPPORT_FOLDER_WATCH_H
#define TESTS_SUPPORT_FOLDER_WATCH_H

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>

namespace halvane::testing {

class FolderWatch {
  public:
    // Events are those of inotify(7): IN_MODIFY and so on.
    FolderWatch(const std::string& path, std::uint32_t events)
        : descriptor_(::inotify_init1(IN_CLOEXEC)) {
        if (::inotify_add_watch(descriptor_, path.c_str(), events) < 0) {
            throw std::runtime_error(path + " cannot be watched");
        }
    }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch() { ::close(descriptor_); }

    // Returns when the condition holds. It is asked at once, and again after each event.
    template <typename Condition>
    void waitUntil(Condition condition) const {
        alignas(inotify_event) std::array<char, 4096> events;
        while (!condition()) {
            if (::read(descriptor_, events.data(), events.size()) <= 0) {
                throw std::runtime_error("the watch ended");
            }
        }
    }

  private:
    int descriptor_;
};

}  // namespace halvane::testing

#endif
