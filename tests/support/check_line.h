/* The one assertion of the tests that are written in C. */
#ifndef TESTS_SUPPORT_CHECK_LINE_H
#define TESTS_SUPPORT_CHECK_LINE_H

/* Makes the calling function return its line if the condition does not hold. */
#define CHECK(condition)                   \
    do {                                   \
        if (!(condition)) return __LINE__; \
    } while (0)

#endif
