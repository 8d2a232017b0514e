#include "tools/halvaned/radio/regulatory_domain.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::forEachPrefix;
using halvane::testing::NetlinkMessage;
using namespace halvane::hosting;

namespace {

halvane::tool::ToldBy<RegulatoryDomain> readWith(const Bytes& country) {
    NetlinkMessage message(NL80211_CMD_GET_REG);
    message.add(NL80211_ATTR_REG_ALPHA2, country);
    return readRegulatoryDomain(message.bytes());
}

TEST(RegulatoryDomain, IsACountryOfAllRadiosOrOfOne) {
    NetlinkMessage all(NL80211_CMD_GET_REG);
    all.addText(NL80211_ATTR_REG_ALPHA2, "GB").begin(NL80211_ATTR_REG_RULES).end();
    EXPECT_EQ(*readRegulatoryDomain(all.bytes()), (RegulatoryDomain{"GB", std::nullopt}));
    NetlinkMessage own(NL80211_CMD_GET_REG);
    own.addU32(NL80211_ATTR_WIPHY, 7).addText(NL80211_ATTR_REG_ALPHA2, "US");
    EXPECT_EQ(*readRegulatoryDomain(own.bytes()), (RegulatoryDomain{"US", 7}));
}

TEST(RegulatoryDomain, HasTwoCharacters) {
    EXPECT_EQ(*readWith({'0', '0', 0}), (RegulatoryDomain{"00", std::nullopt}));
    EXPECT_EQ(*readWith({'D', 'E'}), (RegulatoryDomain{"DE", std::nullopt}));
    for (const Bytes& wrong : {Bytes{}, Bytes{'D'}, Bytes{'D', 0}, Bytes{'D', 'E', 'U'},
                               Bytes{'d', 'e'}, Bytes{0xFF, 0xFF}}) {
        EXPECT_EQ(readWith(wrong).error(),
                  "its country has other characters than two letters or digits");
    }
}

TEST(RegulatoryDomain, IsOfOneKindOfMessage) {
    const auto event = readRegulatoryDomain(NetlinkMessage(NL80211_CMD_REG_CHANGE).bytes());
    ASSERT_TRUE(event);
    EXPECT_FALSE(*event);
    EXPECT_EQ(readRegulatoryDomain(NetlinkMessage(NL80211_CMD_GET_REG).bytes()).error(),
              "it tells no country");
    NetlinkMessage whole(NL80211_CMD_GET_REG);
    whole.addU32(NL80211_ATTR_WIPHY, 7).addText(NL80211_ATTR_REG_ALPHA2, "US");
    forEachPrefix(whole.bytes(), [&](const ByteBuffer& prefix) {
        // The country has a NUL and an octet of padding.
        EXPECT_EQ(readRegulatoryDomain(prefix.bytes()).has_value(), prefix.size() >= 19);
    });
}

}  // namespace
