// The names of threads. The system keeps their last 15 bytes.
#ifndef TESTS_SUPPORT_THREAD_NAMES_H
#define TESTS_SUPPORT_THREAD_NAMES_H

#include <filesystem>
#include <fstream>
#include <pthread.h>
#include <set>
#include <string>

namespace halvane::testing {

inline std::string currentThreadName() {
    char name[16] = {};
    ::pthread_getname_np(::pthread_self(), name, sizeof(name));
    return name;
}

// The names of this process's threads. A thread that is ending may have an empty name.
inline std::multiset<std::string> threadNames() {
    std::multiset<std::string> names;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string name;
        std::getline(std::ifstream(thread.path() / "comm"), name);
        names.insert(name);
    }
    return names;
}

}  // namespace halvane::testing

#endif
