#include "halvane/utils/scan_time.h"

#include <gtest/gtest.h>

extern "C" int firstFailingLineOfScanTimeFromC(void);

namespace {

TEST(ScanTime, WorksFromC) {
    EXPECT_EQ(firstFailingLineOfScanTimeFromC(), 0);
}

}  // namespace
