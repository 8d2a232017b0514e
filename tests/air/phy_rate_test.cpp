#include "halvane/air/phy_rate.h"

#include <gtest/gtest.h>

using namespace halvane::air;

namespace {

struct Row {
    PhyRateInputs inputs;
    double mbps;
};

// Tables 19-27 to 19-38 (HT), 21-29 to 21-61 (VHT), 27-54 to 27-110 (HE), 36-71 and after (EHT).
TEST(AirPhyRate, IsTheOneOfTheStandardsTables) {
    const Row rows[] = {
        {{Phy::Ht, 20, 1, 7, false}, 65.0},     {{Phy::Ht, 20, 1, 7, true}, 72.2},
        {{Phy::Ht, 20, 2, 7, true}, 144.4},     {{Phy::Ht, 40, 1, 0, false}, 13.5},
        {{Phy::Ht, 40, 4, 7, true}, 600.0},     {{Phy::Vht, 20, 1, 8, true}, 86.7},
        {{Phy::Vht, 20, 3, 9, true}, 288.9},    {{Phy::Vht, 40, 1, 9, false}, 180.0},
        {{Phy::Vht, 80, 2, 9, true}, 866.7},    {{Phy::Vht, 80, 4, 9, true}, 1733.3},
        {{Phy::Vht, 160, 8, 9, true}, 6933.3},  {{Phy::He, 20, 1, 0, true}, 8.6},
        {{Phy::He, 20, 1, 11, true}, 143.4},    {{Phy::He, 40, 2, 11, true}, 573.5},
        {{Phy::He, 80, 2, 11, true}, 1201.0},   {{Phy::He, 160, 2, 11, true}, 2402.0},
        {{Phy::He, 160, 8, 11, true}, 9607.8},  {{Phy::Eht, 160, 2, 13, true}, 2882.4},
        {{Phy::Eht, 320, 2, 13, true}, 5764.7}, {{Phy::Eht, 320, 4, 13, true}, 11529.4},
        {{Phy::Eht, 20, 8, 13, true}, 1376.5},
    };
    for (const Row& row : rows) {
        const auto rate = phyRate(row.inputs);
        ASSERT_TRUE(rate) << phyName(row.inputs.phy) << row.inputs.width;
        EXPECT_DOUBLE_EQ(rate->mbps(), row.mbps) << rate->formula();
    }
}

TEST(AirPhyRate, IsAbsentForWhatAPhyLacks) {
    const PhyRateInputs rows[] = {
        {Phy::Ht, 80, 1, 7},   {Phy::Ht, 20, 5, 7},  {Phy::Ht, 20, 1, 8},  {Phy::Vht, 80, 9, 7},
        {Phy::Vht, 80, 1, 10}, {Phy::He, 320, 1, 7}, {Phy::He, 80, 1, 12}, {Phy::Eht, 320, 1, 14},
        {Phy::Eht, 0, 1, 0},   {Phy::He, 80, 0, 0},  {Phy::He, 80, 1, -1}, {Phy::Vht, 20, 1, 9},
        {Phy::Vht, 80, 3, 6},  {Phy::Vht, 80, 7, 6}, {Phy::Vht, 80, 6, 9}, {Phy::Vht, 160, 3, 9},
    };
    for (const PhyRateInputs& row : rows) {
        EXPECT_FALSE(phyRate(row))
            << phyName(row.phy) << ' ' << row.width << ' ' << row.streams << ' ' << row.mcs;
    }
    int rates = 0;  // of VHT: 320 combinations less those that are excluded
    for (const int width : {20, 40, 80, 160}) {
        for (int streams = 1; streams <= 8; ++streams) {
            for (int mcs = 0; mcs <= 9; ++mcs) {
                if (phyRate({Phy::Vht, width, streams, mcs})) ++rates;
            }
        }
    }
    EXPECT_EQ(rates, 320 - 6 - 3 - 1);
}

TEST(AirPhyRate, FallsBackToAnMcsThatThereIs) {
    EXPECT_EQ(highestPhyRate({Phy::Vht, 20, 1, 9})->inputs.mcs, 8);
    EXPECT_EQ(highestPhyRate({Phy::Vht, 80, 3, 6})->inputs.mcs, 5);
    EXPECT_EQ(highestPhyRate({Phy::He, 80, 2, 11})->inputs.mcs, 11);
    EXPECT_FALSE(highestPhyRate({Phy::Ht, 80, 1, 7}));
}

TEST(AirPhyRate, ShowsHowItIsComputed) {
    EXPECT_EQ(phyRate({Phy::He, 80, 2, 11})->formula(),
              "980 subcarriers x 10 bits x 5/6 x 2 streams / 13.6 us = 1201.0 Mbit/s");
    EXPECT_EQ(phyRate({Phy::Ht, 20, 1, 0, false})->formula(),
              "52 subcarriers x 1 bit x 1/2 x 1 stream / 4.0 us = 6.5 Mbit/s");
}

}  // namespace
