#include "tools/halvaned/hostapd/control_message.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tests/support/guarded_bytes.h"

using namespace halvane;
using namespace halvane::hosting;
using halvane::testing::GuardedBytes;

namespace {

using Kind = ControlEvent::Kind;

constexpr MacAddress kStation({0x06, 0x12, 0xFB, 0x61, 0x0A, 0x28});

// hostapd 2.10, an open network on a radio.
constexpr std::string_view kRecord =
    "06:12:fb:61:0a:28\n"
    "flags=[AUTH][ASSOC][AUTHORIZED][SHORT_PREAMBLE][WMM][HT]\n"
    "aid=1\n"
    "capability=0x431\n"
    "listen_interval=5\n"
    "supported_rates=82 84 8b 96 0c 12 18 24 30 48 60 6c\n"
    "timeout_next=NULLFUNC POLL\n"
    "rx_packets=41\n"
    "tx_packets=17\n"
    "rx_bytes=5044\n"
    "tx_bytes=18446744073709551615\n"
    "inactive_msec=112\n"
    "signal=-43\n"
    "rx_rate_info=650 mcs 7 shortGI\n"
    "tx_rate_info=60\n"
    "connected_time=31\n"
    "ht_caps_info=0x016e\n"
    "ext_capab=0400000000000040\n";

// --- Events ---

TEST(ControlEvent, IsReadByItsName) {
    struct Row {
        const char* message;
        Kind kind;
    };
    const Row rows[] = {
        {"<3>AP-STA-CONNECTED 06:12:fb:61:0a:28", Kind::StationConnected},
        {"<3>AP-STA-CONNECTED 06:12:fb:61:0a:28 keyid=home", Kind::StationConnected},
        {"<3>AP-STA-DISCONNECTED 06:12:fb:61:0a:28", Kind::StationDisconnected},
        {"<3>CTRL-EVENT-EAP-SUCCESS 06:12:fb:61:0a:28", Kind::Authenticated},
        {"<3>CTRL-EVENT-EAP-SUCCESS2 06:12:fb:61:0a:28", Kind::Authenticated},
        {"<3>CTRL-EVENT-EAP-FAILURE 06:12:fb:61:0a:28", Kind::Rejected},
        {"<3>CTRL-EVENT-EAP-FAILURE2 06:12:fb:61:0a:28", Kind::Rejected},
        {"<3>EAPOL-4WAY-HS-COMPLETED 06:12:fb:61:0a:28", Kind::KeysInstalled},
        {"<3>EAPOL-4WAY-HS-COMPLETED 06:12:fb:61:0a:28\n", Kind::KeysInstalled},
        {"<3>AP-ENABLED ", Kind::Enabled},
        {"<3>AP-ENABLED", Kind::Enabled},
        {"<3>AP-DISABLED ", Kind::Disabled},
        {"<3>INTERFACE-DISABLED ", Kind::Disabled},
        {"<3>CTRL-EVENT-TERMINATING ", Kind::Terminating},
        {"<3>WPS-PBC-ACTIVE ", Kind::WPS},
        {"<3>WPS-REG-SUCCESS 06:12:fb:61:0a:28 12", Kind::WPS},
        {"<3>CTRL-EVENT-EAP-STARTED 06:12:fb:61:0a:28", Kind::Other},
        {"<2>AP-ENABLED", Kind::Enabled},
        {"AP-ENABLED", Kind::Enabled},
    };
    for (const Row& row : rows) {
        const auto event = readEvent(row.message);
        EXPECT_EQ(event.kind, row.kind) << row.message;
        if (std::string_view(row.message).find("06:") != std::string_view::npos) {
            EXPECT_EQ(event.station, kStation) << row.message;
        } else {
            EXPECT_EQ(event.station, std::nullopt) << row.message;
        }
    }
}

TEST(ControlEvent, KeepsTheTextOfOthers) {
    EXPECT_EQ(readEvent("<3>NEW-THING with words\n").text, "NEW-THING with words");
    EXPECT_EQ(readEvent("<3>AP-ENABLED ").text, "AP-ENABLED ");
}

TEST(ControlEvent, OfAStationNeedsItsAddress) {
    for (const char* message :
         {"<3>AP-STA-CONNECTED", "<3>AP-STA-CONNECTED ", "<3>AP-STA-CONNECTED 06:12:fb:61:0a",
          "<3>AP-STA-CONNECTED  06:12:fb:61:0a:28", "<3>AP-STA-CONNECTED 06:12:fb:61:0a:28:",
          "<3>AP-STA-DISCONNECTED x", "<3>CTRL-EVENT-EAP-SUCCESS 0"}) {
        EXPECT_EQ(readEvent(message).kind, Kind::Other) << message;
    }
}

TEST(ControlEvent, OfOddTextIsAnOther) {
    for (const char* message : {"", "<", "<3", "<3>", ">", "<>AP", "<3>ap-enabled",
                                "<3> AP-ENABLED", "<3>AP-ENABLEDX", "<3>WPS", "<<3>AP-ENABLED>"}) {
        EXPECT_EQ(readEvent(message).kind, Kind::Other) << message;
    }
    EXPECT_TRUE(isEvent("<3>AP-ENABLED"));
    EXPECT_TRUE(isEvent("<"));
    EXPECT_FALSE(isEvent(""));
    EXPECT_FALSE(isEvent("OK\n"));
}

TEST(ControlEvent, CutAnywhereNamesNoOtherStation) {
    constexpr std::string_view kWhole = "<3>AP-STA-CONNECTED 06:12:fb:61:0a:28";
    for (std::size_t size = 0; size < kWhole.size(); ++size) {
        const GuardedBytes cut(kWhole.substr(0, size));
        EXPECT_EQ(readEvent(cut.text()).kind, Kind::Other) << size;
    }
}

// --- Replies ---

TEST(ControlReply, IsReadByItsWord) {
    EXPECT_EQ(readReply("OK\n"), ControlReply::OK);
    EXPECT_EQ(readReply("OK"), ControlReply::OK);
    EXPECT_EQ(readReply("FAIL\n"), ControlReply::Fail);
    EXPECT_EQ(readReply("UNKNOWN COMMAND\n"), ControlReply::UnknownCommand);
    EXPECT_EQ(readReply("PONG\r\n"), ControlReply::Pong);
    for (const char* text : {"", "\n", "ok", "OK ", "OKAY", "FAIL-BUSY\n", "UNKNOWN"}) {
        EXPECT_EQ(readReply(text), ControlReply::Text) << text;
    }
}

TEST(ControlReply, HasValuesByLine) {
    constexpr std::string_view kStatus = "state=ENABLED\nphy=\nfreq=0\nno value\nfreq=2";
    EXPECT_EQ(valueIn(kStatus, "state"), "ENABLED");
    EXPECT_EQ(valueIn(kStatus, "phy"), "");
    EXPECT_EQ(valueIn(kStatus, "freq"), "0");
    EXPECT_EQ(valueIn(kStatus, "stat"), std::nullopt);
    EXPECT_EQ(valueIn(kStatus, "no value"), std::nullopt);
    EXPECT_EQ(valueIn("", "state"), std::nullopt);
}

// --- Stations ---

TEST(StationRecord, HasWhatHostapdTells) {
    const auto station = readStation(kRecord);
    ASSERT_TRUE(station);
    EXPECT_EQ(station->address, kStation);
    EXPECT_TRUE(station->isAuthenticated);
    EXPECT_TRUE(station->isAssociated);
    EXPECT_TRUE(station->isAuthorized);
    EXPECT_EQ(station->aid, 1);
    EXPECT_EQ(station->capabilities, 0x431);
    EXPECT_EQ(station->listenInterval, 5);
    EXPECT_EQ(station->signal, -43);
    EXPECT_EQ(station->receiveRate, 650U);
    EXPECT_EQ(station->transmitRate, 60U);
    EXPECT_EQ(station->receivedPackets, 41U);
    EXPECT_EQ(station->transmittedPackets, 17U);
    EXPECT_EQ(station->receivedBytes, 5044U);
    EXPECT_EQ(station->transmittedBytes, UINT64_MAX);
    EXPECT_EQ(station->connectedTime, 31U);
    EXPECT_EQ(station->inactiveTime, 112U);
    EXPECT_EQ(station->elements,
              (std::vector<std::uint8_t>{1,    8,  0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18,
                                         0x24, 50, 4,    0x30, 0x48, 0x60, 0x6C, 127,  8,
                                         0x04, 0,  0,    0,    0,    0,    0,    0x40}));
}

TEST(StationRecord, TellsFlagsApart) {
    const auto withFlags = [](const std::string& flags) {
        return *readStation("06:12:fb:61:0a:28\nflags=" + flags + "\n");
    };
    EXPECT_FALSE(withFlags("").isConnected());
    EXPECT_FALSE(withFlags("[AUTH]").isConnected());
    EXPECT_FALSE(withFlags("[AUTHORIZED]").isAuthenticated);
    EXPECT_TRUE(withFlags("[AUTHORIZED]").isConnected()) << "a cable has no association";
    EXPECT_TRUE(withFlags("[AUTH][ASSOC]").isConnected());
    EXPECT_FALSE(withFlags("[AUTH][ASSOC]").isAuthorized);
}

TEST(StationRecord, NeedsAnAddress) {
    for (const char* message : {"", "\n", "FAIL\n", "UNKNOWN COMMAND\n", "06:12:fb:61:0a\nflags=\n",
                                "flags=[AUTH]\n", "\n06:12:fb:61:0a:28\n"}) {
        EXPECT_EQ(readStation(message), std::nullopt) << message;
    }
    EXPECT_TRUE(readStation("06:12:fb:61:0a:28"));
}

TEST(StationRecord, LeavesOutWhatIsNoNumber) {
    const auto station = readStation(
        "06:12:fb:61:0a:28\naid=2008\ncapability=0x10000\nlisten_interval=-1\nsignal=-\n"
        "rx_rate_info= 650\ntx_rate_info=4294967296\nrx_bytes=18446744073709551616\ntx_bytes=1 2\n"
        "connected_time=\ninactive_msec=0x\nsupported_rates=8 2\next_capab=040\nsignal\n=5\n");
    ASSERT_TRUE(station);
    EXPECT_EQ(station->aid, std::nullopt);
    EXPECT_EQ(station->capabilities, std::nullopt);
    EXPECT_EQ(station->listenInterval, std::nullopt);
    EXPECT_EQ(station->signal, std::nullopt);
    EXPECT_EQ(station->receiveRate, std::nullopt);
    EXPECT_EQ(station->transmitRate, std::nullopt);
    EXPECT_EQ(station->receivedBytes, std::nullopt);
    EXPECT_EQ(station->transmittedBytes, std::nullopt);
    EXPECT_EQ(station->connectedTime, std::nullopt);
    EXPECT_EQ(station->inactiveTime, std::nullopt);
    EXPECT_TRUE(station->elements.empty());
}

TEST(StationRecord, HasTheLastOfTwoValues) {
    const auto station = readStation("06:12:fb:61:0a:28\naid=1\naid=7\naid=x\n");
    EXPECT_EQ(station->aid, 7);
}

TEST(StationRecord, HasNoElementThatIsTooLong) {
    std::string digits(2 * 256, '0');
    EXPECT_TRUE(readStation("06:12:fb:61:0a:28\next_capab=" + digits)->elements.empty());
    digits.resize(2 * 255);
    EXPECT_EQ(readStation("06:12:fb:61:0a:28\next_capab=" + digits)->elements.size(), 257U);
}

TEST(StationRecord, MayBeCutAnywhere) {
    for (std::size_t size = 0; size <= kRecord.size(); ++size) {
        const GuardedBytes cut(kRecord.substr(0, size));
        const auto station = readStation(cut.text());
        EXPECT_EQ(station.has_value(), size >= 17) << size;
        EXPECT_EQ(station.value_or(StationRecord{kStation}).address, kStation) << size;
    }
}

}  // namespace
