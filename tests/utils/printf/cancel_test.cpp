// A thread that is cancelled while it formats unwinds. It leaks nothing, and does not abort.
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <pthread.h>

#include "halvane/utils/printf.h"

#include "tests/support/sanitizers.h"

namespace {

// An output that is a cancellation point, as a blocking stream is.
std::int32_t cancelHere(const char*, std::size_t length, void*) {
    pthread_cancel(pthread_self());
    pthread_testcancel();
    return static_cast<std::int32_t>(length);
}

void* formatUntilCancelled(void*) {
    CPrintF(cancelHere, nullptr, "%d frames", 42);
    return nullptr;
}

TEST(PrintF, LetsAThreadBeCancelled) {
    // The address sanitizer of GCC 12 loses the stack of a thread that is unwound by force.
    if (HALVANE_IS_SANITIZED) GTEST_SKIP() << "a sanitizer cannot follow a cancelled thread";
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, nullptr, formatUntilCancelled, nullptr), 0);
    void* result = nullptr;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(result, PTHREAD_CANCELED);
}

}  // namespace
