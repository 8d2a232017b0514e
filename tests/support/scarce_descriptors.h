// Few descriptors, for a child process, because the limit cannot be undone.
#ifndef TESTS_SUPPORT_SCARCE_DESCRIPTORS_H
#define TESTS_SUPPORT_SCARCE_DESCRIPTORS_H

#include <sys/resource.h>
#include <unistd.h>

namespace halvane::testing {

// Closes every descriptor. From now on files can have the numbers of the standard streams, and the
// `count` numbers above them.
inline bool leaveDescriptorsAboveStandardStreams(rlim_t count) {
    const rlim_t end = STDERR_FILENO + 1 + count;
    const rlimit limit{end, end};
    return ::close_range(0, ~0U, 0) == 0 && ::setrlimit(RLIMIT_NOFILE, &limit) == 0;
}

}  // namespace halvane::testing

#endif
