#include "halvane/base/status.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

extern "C" int firstFailingLineOfStatusFromC(void);

namespace {

struct Row {
    HalvaneStatus constant;
    int value;
    const char* text;
};

const std::vector<Row> kRows = {
    {kStatusOK, 0, "success"},
    {kStatusConversionFailed, -6700, "conversion or reply failed"},
    {kStatusBadPath, -6704, "bad path"},
    {kStatusUnsupported, -6705, "unsupported, null or unrecognised input"},
    {kStatusOutOfRange, -6710, "value out of range"},
    {kStatusDigitsAfterGap, -6717, "digits after a gap"},
    {kStatusNoMemory, -6728, "out of memory or nothing produced"},
    {kStatusUnknownParameter, -6735, "unknown parameter"},
    {kStatusForbidden, -6736, "forbidden part"},
    {kStatusMalformed, -6742, "malformed text"},
    {kStatusWrongLength, -6743, "wrong length"},
    {kStatusTooFew, -6750, "too few parts or empty"},
    {kStatusTruncated, -6751, "truncated or too long"},
    {kStatusDone, -6752, "help or version printed"},
    {kStatusCannotOpen, -6755, "cannot open file"},
    {kStatusEmptyType, -6756, "empty type"},
    {kStatusNoRoom, -6763, "no room"},
};

TEST(Status, EachCodeHasItsValueAndText) {
    for (const Row& row : kRows) {
        EXPECT_EQ(row.constant, row.value);
        EXPECT_STREQ(HalvaneStatusText(row.constant), row.text);
    }
}

TEST(Status, HasNoCodeBesideThese) {
    std::size_t known = 0;
    for (HalvaneStatus status = -7000; status <= 100; ++status) {
        if (HalvaneStatusText(status) != std::string("unknown status")) ++known;
    }
    EXPECT_EQ(known, kRows.size());
}

TEST(Status, NamesACodeOfNoRowUnknown) {
    for (const HalvaneStatus status : {1, -1, -6701, INT32_MIN, INT32_MAX}) {
        EXPECT_STREQ(HalvaneStatusText(status), "unknown status") << status;
    }
}

TEST(Status, WorksFromC) {
    EXPECT_EQ(firstFailingLineOfStatusFromC(), 0);
}

}  // namespace
