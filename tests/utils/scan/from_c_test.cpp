#include <gtest/gtest.h>

#include "halvane/utils/scan_time.h"

extern "C" int firstFailingLineOfScanTimeFromC(void);

namespace {

TEST(ScanTime, WorksFromC) {
    EXPECT_EQ(firstFailingLineOfScanTimeFromC(), 0);
}

}  // namespace
