// Whether this build is instrumented by the address or the thread sanitizer.
#ifndef TESTS_SUPPORT_SANITIZERS_H
#define TESTS_SUPPORT_SANITIZERS_H

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define HALVANE_IS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define HALVANE_IS_SANITIZED 1
#endif
#endif
#ifndef HALVANE_IS_SANITIZED
#define HALVANE_IS_SANITIZED 0
#endif

// Whether it is instrumented by the thread sanitizer, which allows no new thread in a child that a
// process with threads has forked.
#if defined(__SANITIZE_THREAD__)
#define HALVANE_IS_THREAD_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define HALVANE_IS_THREAD_SANITIZED 1
#endif
#endif
#ifndef HALVANE_IS_THREAD_SANITIZED
#define HALVANE_IS_THREAD_SANITIZED 0
#endif

#endif
