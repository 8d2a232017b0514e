#include "halvane/platform/ipc_message.h"

#include <gtest/gtest.h>

namespace {

using halvane::ByteBuffer;
using halvane::IPCMessage;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;

TEST(IPCMessage, HasNoDescriptionWhenItHoldsNothing) {
    EXPECT_EQ(IPCMessage().description(), std::nullopt);
}

TEST(IPCMessage, DescribesOneEntryALine) {
    PropertyListDictionary entries;
    entries.set("command", "queryInterfaceList");
    entries.set("status", -6728);
    entries.set("enabled", true);
    entries.set("reply", ByteBuffer{0x01, 0xAB});
    EXPECT_EQ(IPCMessage(entries).description(),
              "command = queryInterfaceList\nstatus = -6728\nenabled = true\nreply = <01ab>\n");
}

TEST(IPCMessage, IndentsNestedEntries) {
    PropertyListDictionary inner;
    inner.set("name", "en0");
    PropertyListDictionary entries;
    entries.set("interface", inner);
    entries.set("channels", PropertyListArray{1, 6});
    EXPECT_EQ(IPCMessage(entries).description(),
              "interface = dictionary\n    name = en0\nchannels = array\n    0 = 1\n    1 = 6\n");
}

}  // namespace
