#include "tools/halvaned/radio/link_events.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <string>

#include "tests/halvaned/radio/message_socket.h"
#include "tests/support/private_network.h"

using halvane::hosting::LinkEvents;
using halvane::testing::HeardInterface;
using halvane::testing::inPrivateNetwork;
using halvane::testing::MessageSocket;

namespace {

bool isReadable(const LinkEvents& events) {
    pollfd polled{events.descriptor(), POLLIN, 0};
    return ::poll(&polled, 1, 0) == 1 && (polled.revents & POLLIN) != 0;
}

TEST(LinkEvents, AreTakenWithoutWaiting) {
    MessageSocket socket;
    LinkEvents events(socket.take());
    EXPECT_FALSE(events.take());
    for (int i = 0; i < 5; ++i) socket.send();
    EXPECT_TRUE(isReadable(events));
    EXPECT_TRUE(events.take());
    EXPECT_FALSE(isReadable(events));
    EXPECT_FALSE(events.take());
}

TEST(LinkEvents, TellOfInterfacesThatComeAndGo) {
    inPrivateNetwork([] {
        auto events = LinkEvents::open();
        ASSERT_TRUE(events) << events.error();
        events->take();
        {
            const HeardInterface interface("eth7", 1);
            EXPECT_TRUE(isReadable(*events));
            EXPECT_TRUE(events->take());
            EXPECT_FALSE(events->take());
        }
        EXPECT_TRUE(events->take());
    });
}

}  // namespace
