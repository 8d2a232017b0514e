#include "tools/halvane/networks/network_csv.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/captured_stream.h"
#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

std::string csvOf(const std::vector<Network>& networks, const std::vector<const char*>& names) {
    std::vector<const NetworkColumn*> columns;
    for (const char* const name : names) columns.push_back(networkColumnNamed(name));
    const CapturedStream output(stdout);
    printCSV(networks, columns, asciiSurroundings(), stdout);
    return output.text();
}

TEST(NetworkCSV, HasALineForEachNetwork) {
    NetworkMaker maker;
    EXPECT_EQ(csvOf({maker.make({"home", 1, -50}), maker.make({"", 2})},
                    {"ssid", "signal", "bssid", "maker"}),
              "ssid,ssidHex,signal,bssid,maker\n"
              "home,686f6d65,-50,02:00:00:00:00:01,\n"
              ",,,02:00:00:00:00:02,\n");
}

TEST(NetworkCSV, QuotesWhatNeedsIt) {
    NetworkMaker maker;
    EXPECT_EQ(csvOf({maker.make({"a,\"b\""})}, {"ssid"}),
              "ssid,ssidHex\n\"a,\"\"b\"\"\",612c226222\n");
    EXPECT_EQ(csvOf({maker.make({"a\r\n\xFF"})}, {"ssid"}),
              "ssid,ssidHex\na\\x0D\\x0A\\xFF,610d0aff\n");
}

TEST(NetworkCSV, HasAllColumnsUnlessAskedOtherwise) {
    const std::string header = csvOf({}, {});
    EXPECT_EQ(
        header.find("mark,ssid,ssidHex,signal,band,channel,width,generation,rate,security,pmf,"
                    "load,stations,last,bssid,maker,beacons,"),
        0u)
        << header;
}

}  // namespace
