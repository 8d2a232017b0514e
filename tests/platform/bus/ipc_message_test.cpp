#include "halvane/platform/bus/ipc_message.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"

namespace {

using halvane::ByteBuffer;
using halvane::IPCMessage;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListObject;
using halvane::PropertyListValue;

class Foreign : public PropertyListObject {
  public:
    explicit Foreign(std::optional<std::string> description)
        : description_(std::move(description)) {}
    std::optional<std::string> description() const override { return description_; }
    int typeNumber() const override { return 77; }

  private:
    std::optional<std::string> description_;
};

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

TEST(IPCMessage, DescribesEveryKindOfScalar) {
    const auto object = [](std::optional<std::string> description) {
        return PropertyListValue::Object(std::make_shared<Foreign>(std::move(description)));
    };
    struct Row {
        PropertyListValue value;
        const char* text;
    };
    const std::vector<Row> rows = {
        {6.5, "6.5"},
        {halvane::Date::fromUnixTime(951782399), "951782399 s since 1970"},
        {halvane::Date::fromUnixTime(-1), "-1 s since 1970"},
        {object("an object"), "an object"},
        {object(std::nullopt), "object"},
        {PropertyListValue::Object(), "null"},
        {PropertyListValue(), "null"},
        {false, "false"},
        {"", ""},
    };
    for (const auto& row : rows) {
        PropertyListDictionary entries;
        entries.set("key", row.value);
        EXPECT_EQ(IPCMessage(entries).description(), std::string("key = ") + row.text + "\n");
    }
}

// The message is level 1, so an entry and 254 arrays in it reach level 256.
TEST(IPCMessage, ShowsATextForWhatNestsTooDeep) {
    for (const int depth : {254, 255, 200'000}) {
        PropertyListValue value = 1;
        for (int level = 0; level < depth; ++level) {
            PropertyListArray array;
            array.push_back(std::move(value));
            value = std::move(array);
        }
        PropertyListDictionary entries;
        entries.set("key", std::move(value));
        const auto text = IPCMessage(std::move(entries)).description();
        ASSERT_TRUE(text);
        const std::string last = depth == 254
                                     ? std::string(4 * 254, ' ') + "0 = 1"
                                     : std::string(4 * 255, ' ') + "0 = <<NESTED TOO DEEP>>";
        EXPECT_TRUE(text->ends_with("array\n" + last + "\n")) << depth;
    }
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
