#include <gtest/gtest.h>

#include "halvane/utils/convert.h"

extern "C" int firstFailingLineOfConvertFromC(void);

namespace {

TEST(Convert, WorksFromC) {
    EXPECT_EQ(firstFailingLineOfConvertFromC(), 0);
}

}  // namespace
