#include "tools/halvane/commands/daemon_tables.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "halvane/model/client.h"

#include "tests/support/captured_stream.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::CapturedStream;
using ::testing::HasSubstr;

namespace {

HalvaneClient gone(std::uint64_t reason) {
    auto client = HalvaneClient::initWithMAC({0x02, 0, 0, 0, 0, 1});
    client.setJoinTime(1'500'000);
    client.setLeftTime(2'500'000);
    client.setDeauthReason(reason);
    return client;
}

std::string clientsAt(std::optional<std::size_t> columns, const std::vector<HalvaneClient>& rows) {
    const CapturedStream output(stdout);
    printTableOf(rows, ListLook({.isTerminal = columns.has_value(), .columns = columns}));
    return output.text();
}

constexpr char kFull[] =
    " 5 Disassociated because AP is unable to handle all currently associated STAs\n";

TEST(ClientsTable, HasTheWholeWordsOfAReasonWhereTheyFit) {
    EXPECT_THAT(clientsAt(std::nullopt, {gone(5)}), HasSubstr(kFull));
    EXPECT_THAT(clientsAt(161, {gone(5)}), HasSubstr(kFull));
    EXPECT_THAT(clientsAt(140, {gone(4)}), HasSubstr(" 4 Disassociated due to inactivity\n"));
    EXPECT_THAT(clientsAt(80, {gone(4)}), HasSubstr(" 4 inactive\n"));
}

TEST(ClientsTable, CutsNoReasonThatHasBriefWords) {
    for (const std::size_t columns : {120u, 140u, 150u}) {
        const std::string table = clientsAt(columns, {gone(5)});
        EXPECT_THAT(table, HasSubstr(" 5 AP is full\n")) << columns;
        EXPECT_THAT(table, HasSubstr("SECURITY")) << columns;
    }
    EXPECT_THAT(clientsAt(140, {gone(4), gone(5)}), HasSubstr(" 4 inactive\n"))
        << "one kind of words in a table";
}

}  // namespace
