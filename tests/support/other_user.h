// Another user: a thread whose user and group are not those of the test.
#ifndef TESTS_SUPPORT_OTHER_USER_H
#define TESTS_SUPPORT_OTHER_USER_H

#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <thread>
#include <unistd.h>

namespace halvane::testing {

// Runs `work` as `user`, whose only group is `group`. Returns false without running it if the test
// may not do so. Root usually may.
template <typename Work>
bool runAs(uid_t user, gid_t group, Work work) {
    bool isOther = false;
    std::thread thread([&] {
        // The system calls change this thread. The functions of the C library would change all
        // threads.
        isOther = ::syscall(SYS_setgroups, 0, nullptr) == 0 &&
                  ::syscall(SYS_setresgid, group, group, group) == 0 &&
                  ::syscall(SYS_setresuid, user, user, user) == 0;
        if (isOther) work();
    });
    thread.join();
    ::prctl(PR_SET_DUMPABLE, 1);  // debuggers and leak checkers can attach again
    return isOther;
}

}  // namespace halvane::testing

#endif
