#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/message_reader_internal.h"
#include "halvane/platform/bus/message_writer_internal.h"

#include "tests/support/bus_peer.h"
#include "tests/support/loose_bus_message.h"

namespace {

using halvane::ByteBuffer;
using halvane::IPCMessage;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::readBusMessage;
using halvane::writeBusMessage;
using halvane::testing::ipcMessage;
using halvane::testing::LooseBusMessage;

TEST(BusMessageWriter, WritesTheTypesOfTheProtocol) {
    const LooseBusMessage message;
    const std::vector<std::uint8_t> expected = {0, 255, 1};
    ASSERT_GE(writeBusMessage(message.get(), ipcMessage({{"text", "caf\xC3\xA9"},
                                                         {"number", INT64_MIN},
                                                         {"boolean", true},
                                                         {"data", ByteBuffer(expected)}})),
              0);
    sd_bus_message* sealed = message.sealed();
    EXPECT_STREQ(::sd_bus_message_get_signature(sealed, 1), "a{sv}");
    const char *text = nullptr, *keys[3] = {};
    std::int64_t number = 0;
    int boolean = 0;
    const void* data = nullptr;
    std::size_t size = 0;
    ASSERT_GT(::sd_bus_message_enter_container(sealed, 'a', "{sv}"), 0);
    ASSERT_GT(::sd_bus_message_read(sealed, "{sv}", &keys[0], "s", &text), 0);
    ASSERT_GT(::sd_bus_message_read(sealed, "{sv}", &keys[1], "x", &number), 0);
    ASSERT_GT(::sd_bus_message_read(sealed, "{sv}", &keys[2], "b", &boolean), 0);
    ASSERT_GT(::sd_bus_message_enter_container(sealed, 'e', "sv"), 0);
    ASSERT_GT(::sd_bus_message_skip(sealed, "s"), 0);
    ASSERT_GT(::sd_bus_message_enter_container(sealed, 'v', "ay"), 0);
    ASSERT_GT(::sd_bus_message_read_array(sealed, 'y', &data, &size), 0);
    EXPECT_STREQ(keys[0], "text");
    EXPECT_STREQ(text, "caf\xC3\xA9");
    EXPECT_STREQ(keys[1], "number");
    EXPECT_EQ(number, INT64_MIN);
    EXPECT_STREQ(keys[2], "boolean");
    EXPECT_EQ(boolean, 1);
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    EXPECT_EQ(std::vector(bytes, bytes + size), expected);
}

TEST(BusMessageWriter, WritesWhatTheReaderReads) {
    PropertyListDictionary inner;
    inner.set("real", 6.5);
    inner.set("large", UINT64_MAX);
    inner.set("list", PropertyListArray{1, "two", PropertyListArray{}, ByteBuffer()});
    inner.set("", PropertyListDictionary());
    const IPCMessage source = ipcMessage({{"inner", inner}, {"last", false}});
    const LooseBusMessage message;
    ASSERT_GE(writeBusMessage(message.get(), source), 0);
    const auto read = readBusMessage(message.sealed());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->entries(), source.entries());
}

TEST(BusMessageWriter, WritesAnEmptyMessage) {
    const LooseBusMessage message;
    ASSERT_GE(writeBusMessage(message.get(), IPCMessage()), 0);
    const auto read = readBusMessage(message.sealed());
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->entries().empty());
}

TEST(BusMessageWriter, FailsForWhatHasNoType) {
    const LooseBusMessage message;
    EXPECT_LT(writeBusMessage(message.get(), ipcMessage({{"date", halvane::Date()}})), 0);
}

}  // namespace
