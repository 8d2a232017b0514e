#include "tools/halvane/input/maker_list.h"

#include <cstdint>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/base/mac_address.h"

#include "tests/support/temporary_folder.h"

using halvane::MacAddress;
using halvane::testing::TemporaryFolder;
using halvane::tool::MakerList;
using ::testing::Optional;

namespace {

MacAddress address(const std::string& text) {
    return MacAddress::fromText(text).value();
}

// As the IEEE writes its registers: carriage returns, tabs, and addresses of the makers.
const std::string kBlocks =
    "OUI/MA-L                                                    Organization                  \r\n"
    "company_id                                                  Organization                  \r\n"
    "                                                            Address                       \r\n"
    "\r\n"
    "B8-55-10   (hex)\t\tZioncom Electronics (Shenzhen) Ltd.\r\n"
    "B85510     (base 16)\t\tZioncom Electronics (Shenzhen) Ltd.\r\n"
    "\t\t\t\tBuilding A1&A2\r\n"
    "\t\t\t\tCN\r\n"
    "\r\n"
    "6C-DF-FB   (hex)\t\tIEEE Registration Authority\r\n"
    "6CDFFB     (base 16)\t\tIEEE Registration Authority\r\n"
    "\r\n"
    "00-50-C2   (hex)\t\tIEEE Registration Authority\r\n"
    "0050C2     (base 16)\t\tIEEE Registration Authority\r\n";

const std::string kMediumBlocks =
    "6C-DF-FB   (hex)\t\tSercomm Corporation.\r\n"
    "200000-2FFFFF     (base 16)\t\tSercomm Corporation.\r\n"
    "\t\t\t\t3F, No.81\r\n";

const std::string kSmallBlocks =
    "00-50-C2                      (hex)                         DEUTA-WERKE GmbH             \r\n"
    "7D5000-7D5FFF                 (base 16)                     DEUTA-WERKE GmbH             \r\n";

MakerList listOf(const std::string& text) {
    MakerList list;
    list.add(text);
    return list;
}

TEST(MakerList, FindsARangeFromItsFirstAddressToItsLast) {
    const MakerList list = listOf(kBlocks + kMediumBlocks + kSmallBlocks);
    EXPECT_EQ(list.size(), 5u);
    const char* const zioncom = "Zioncom Electronics (Shenzhen) Ltd.";
    EXPECT_THAT(list.find(address("B8:55:10:00:00:00")), Optional(std::string_view(zioncom)));
    EXPECT_THAT(list.find(address("B8:55:10:FF:FF:FF")), Optional(std::string_view(zioncom)));
    EXPECT_FALSE(list.find(address("B8:55:0F:FF:FF:FF")));
    EXPECT_FALSE(list.find(address("B8:55:11:00:00:00")));
}

TEST(MakerList, PrefersTheSmallestRange) {
    const MakerList list = listOf(kBlocks + kMediumBlocks + kSmallBlocks);
    EXPECT_EQ(list.cell(address("6C:DF:FB:20:00:00")), "Sercomm");
    EXPECT_EQ(list.cell(address("6C:DF:FB:2F:FF:FF")), "Sercomm");
    EXPECT_EQ(list.cell(address("6C:DF:FB:1F:FF:FF")), "-");
    EXPECT_EQ(list.cell(address("6C:DF:FB:30:00:00")), "-");
    EXPECT_EQ(list.cell(address("00:50:C2:7D:50:00")), "DEUTA-WERKE");
    EXPECT_EQ(list.cell(address("00:50:C2:7D:60:00")), "-");
}

TEST(MakerList, TellsAddressesThatHaveNoMaker) {
    const MakerList list = listOf("02-00-00   (hex)\t\tAcme\n020000     (base 16)\t\tAcme\n");
    EXPECT_EQ(list.cell(address("02:00:00:00:00:01")), "(local)");
    EXPECT_EQ(list.cell(address("01:00:5E:00:00:01")), "(group)");
    EXPECT_EQ(list.cell(address("FF:FF:FF:FF:FF:FF")), "(group)");
    EXPECT_EQ(list.cell(address("00:00:00:00:00:01")), "-");
    EXPECT_FALSE(list.find(address("02:00:00:00:00:01")));
}

TEST(MakerList, ShortensToTheCells) {
    const MakerList list = listOf(
        "B8114B     (base 16)\t\tCisco Systems, Inc\n"
        "44F770     (base 16)\t\tBeijing Xiaomi Electronics Co.,Ltd\n");
    EXPECT_EQ(list.cell(address("B8:11:4B:C7:D3:EE")), "Cisco Systems");
    EXPECT_EQ(list.cell(address("B8:11:4B:C7:D3:EE"), 8), "Cisco");
    EXPECT_EQ(list.cell(address("44:F7:70:F9:8C:32")), "Xiaomi");
}

TEST(MakerList, TakesTheFirstOfSeveralEntries) {
    const MakerList list =
        listOf("B8114B     (base 16)\t\tFirst\nB8114B     (base 16)\t\tSecond\n");
    EXPECT_EQ(list.cell(address("B8:11:4B:00:00:00")), "First");
}

TEST(MakerList, PassesOverWhatIsNoEntry) {
    for (const char* text : {
             "",
             "\n",
             "B8114B",
             "B8114B     (base 16)",
             "B8114B     (base 16)   \r\n",
             "B8114     (base 16)\t\tAcme",
             "B8114G     (base 16)\t\tAcme",
             "B8-11-4B   (hex)\t\tAcme",             // half an entry
             "200000-2FFFFF     (base 16)\t\tAcme",  // the other half
             "B8-11-4B   (hex)\t\tAcme\n200000-2FFFFE     (base 16)\t\tAcme",
             "B8-11-4B   (hex)\t\tAcme\n2FFFFF-200000     (base 16)\t\tAcme",
             "B8-11-4B   (hex)\t\tAcme\n280000-37FFFF     (base 16)\t\tAcme",
             "\tB8114B     (base 16)\t\tAcme",
         }) {
        EXPECT_EQ(listOf(text).size(), 0u) << text;
    }
}

TEST(MakerList, ReadsTheRegistersOfAFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(MakerList::read(folder.path()).size(), 0u);
    EXPECT_EQ(MakerList::read(folder.path() / "missing").size(), 0u);
    std::ofstream(folder.path() / "oui.txt") << kBlocks;
    EXPECT_EQ(MakerList::read(folder.path()).size(), 3u);
    std::ofstream(folder.path() / "mam.txt") << kMediumBlocks;
    std::ofstream(folder.path() / "iab.txt") << kSmallBlocks;
    const MakerList list = MakerList::read(folder.path());
    EXPECT_EQ(list.size(), 5u);
    EXPECT_EQ(list.cell(address("6C:DF:FB:23:41:87")), "Sercomm");
    EXPECT_EQ(list.cell(address("00:50:C2:7D:5F:FF")), "DEUTA-WERKE");
}

// A name outlives what it was read from, and the list may move.
TEST(MakerList, KeepsItsNames) {
    MakerList list;
    {
        std::string text = kBlocks;
        list.add(text);
        text.assign(text.size(), 'x');
    }
    const MakerList moved = std::move(list);
    EXPECT_EQ(moved.cell(address("B8:55:10:E0:10:52")), "Zioncom");
}

}  // namespace
