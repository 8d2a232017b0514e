#include "halvane/model/client_builder.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"

namespace halvane {

namespace {

constexpr MacAddress kAddress({2, 0, 0, 0, 0, 7});
constexpr std::uint8_t kElements[] = {0, 4, 'h', 'o', 'm', 'e'};

TEST(ClientBuilder, MakesAStationThatNeverCame) {
    const auto client = ClientBuilder(kAddress).build();
    EXPECT_EQ(client.mac(), kAddress.buffer());
    EXPECT_FALSE(client.isAssociated());
    EXPECT_GT(client.createTime(), 0u);
    EXPECT_EQ(client.joinTime(), 0u);
    EXPECT_EQ(client.leftTime(), 0u);
    EXPECT_EQ(client.deauthReason(), 0u);
}

TEST(ClientBuilder, MakesAStationThatClientsRead) {
    const auto client = ClientBuilder(kAddress)
                            .capabilities(0x0431)
                            .elements(kElements)
                            .signal(-48)
                            .noise(-95)
                            .channel(11)
                            .isAssociated(true)
                            .created(1)
                            .joined(2)
                            .left(3)
                            .deauthReason(4)
                            .build();
    EXPECT_EQ(client.capabilities(), 0x0431);
    EXPECT_EQ(client.SSID(), ByteBuffer::fromText("home"));
    EXPECT_EQ(client.RSSI(), Number(-48));
    EXPECT_EQ(client.noise(), Number(-95));
    EXPECT_EQ(client.channel(), Number(11));
    EXPECT_TRUE(client.isAssociated());
    EXPECT_EQ(client.createTime(), 1u);
    EXPECT_EQ(client.joinTime(), 2u);
    EXPECT_EQ(client.leftTime(), 3u);
    EXPECT_EQ(client.deauthReason(), 4u);
    EXPECT_EQ(HalvaneClient::initWithSkeletonRepresentation(client.skeletonRepresentation()),
              client);
}

}  // namespace

}  // namespace halvane
