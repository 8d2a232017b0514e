#include "tools/halvane/input/netlink_attributes.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/netlink.h>
#include <netlink/attr.h>
#include <span>
#include <vector>

#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"

using halvane::testing::Bytes;
using halvane::testing::forEachHostileForm;
using halvane::testing::forEachPrefix;
using halvane::testing::NetlinkMessage;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using namespace halvane::tool;

namespace {

struct Walk {
    std::vector<std::uint16_t> types;
    std::vector<std::size_t> sizes;
    bool isBroken = false;
};

Walk walk(std::span<const std::uint8_t> bytes) {
    Walk walk;
    NetlinkAttributes attributes(bytes);
    while (const auto attribute = attributes.next()) {
        walk.types.push_back(attribute->type);
        walk.sizes.push_back(attribute->value.size());
    }
    walk.isBroken = attributes.areBroken();
    EXPECT_FALSE(attributes.next());
    return walk;
}

Bytes attributesOf(const NetlinkMessage& message) {
    const Bytes bytes = message.bytes();
    return {bytes.begin() + 4, bytes.end()};
}

TEST(NetlinkAttributes, ReadsWhatLibnlWrites) {
    NetlinkMessage message(34);
    message.addU8(1, 0xAB).addU16(2, 0xABCD).addU32(3, 0xABCDEF01).addU64(4, 0x0123456789ABCDEF);
    message.addFlag(5).begin(6).addU8(7, 1).addU8(8, 2).end().add(9, {1, 2, 3, 4, 5});
    const Bytes bytes = message.bytes();
    const auto generic = readGenericMessage(bytes);
    ASSERT_TRUE(generic);
    EXPECT_EQ(generic->command, 34);
    NetlinkAttributes attributes = generic->attributes;
    EXPECT_THAT(attributes.next()->u8(), Optional(0xAB));
    EXPECT_THAT(attributes.next()->u16(), Optional(0xABCD));
    EXPECT_THAT(attributes.next()->u32(), Optional(0xABCDEF01));
    EXPECT_THAT(attributes.next()->u64(), Optional(0x0123456789ABCDEF));
    EXPECT_THAT(attributes.next()->value, IsEmpty());
    const auto nested = attributes.next();
    EXPECT_EQ(nested->type, 6);  // without the flag that it is nested
    EXPECT_THAT(walk(nested->value).types, ElementsAre(7, 8));
    EXPECT_THAT(attributes.next()->value, ElementsAre(1, 2, 3, 4, 5));
    EXPECT_FALSE(attributes.next());
    EXPECT_FALSE(attributes.areBroken());
}

TEST(NetlinkAttributes, ReadsNumbersOfTheirSizeAlone) {
    for (std::size_t size = 0; size <= 9; ++size) {
        const Bytes value(size, 1);
        const NetlinkAttribute attribute{.type = 1, .value = value};
        EXPECT_EQ(attribute.u8().has_value(), size == 1);
        EXPECT_EQ(attribute.u16().has_value(), size == 2);
        EXPECT_EQ(attribute.u32().has_value(), size == 4);
        EXPECT_EQ(attribute.u64().has_value(), size == 8);
    }
}

TEST(NetlinkAttributes, EndWhereTheBytesDo) {
    const Bytes bytes = attributesOf(NetlinkMessage(1).add(1, {1}).add(2, {1, 2, 3, 4, 5}));
    ASSERT_EQ(bytes.size(), 20U);
    forEachPrefix(bytes, [](const halvane::ByteBuffer& prefix) {
        const std::size_t size = prefix.size();
        const Walk found = walk(prefix.bytes());
        EXPECT_EQ(found.types.size(), size < 5 ? 0U : size < 17 ? 1U : 2U) << size;
        // The padding of the last one may be missing.
        EXPECT_EQ(found.isBroken, size != 0 && (size < 5 || (size > 8 && size < 17))) << size;
    });
}

TEST(NetlinkAttributes, RefuseLengthsThatDoNotFit) {
    const Bytes bytes = attributesOf(NetlinkMessage(1).addU32(1, 1).addU32(2, 2));
    for (unsigned length = 0; length <= 0xFFFF; ++length) {
        Bytes changed = bytes;
        const auto number = static_cast<std::uint16_t>(length);
        std::memcpy(changed.data(), &number, sizeof number);
        const Walk found = walk(changed);
        if (length < 4 || length > bytes.size()) {
            EXPECT_TRUE(found.isBroken) << length;
            EXPECT_THAT(found.types, IsEmpty()) << length;
        } else {
            EXPECT_EQ(found.sizes.front(), length - 4) << length;
        }
    }
}

TEST(NetlinkAttributes, SurviveHostileForms) {
    const Bytes bytes = NetlinkMessage(1).addU8(1, 1).addU64(2, 2).add(3, Bytes(5, 3)).bytes();
    forEachHostileForm(bytes, {4, 5, 12, 13, 24, 25}, [](const halvane::ByteBuffer& form) {
        const auto generic = readGenericMessage(form.bytes());
        EXPECT_EQ(generic.has_value(), form.size() >= 4);
        if (generic) walk(form.bytes().subspan(4));
    });
}

TEST(NetlinkAttributeList, IsReadByLibnl) {
    NetlinkAttributeList nested;
    nested.add(1, std::span<const std::uint8_t>());
    NetlinkAttributeList list;
    list.add(3, std::uint32_t{0x01020304});
    list.add(45, nested);
    list.add(7, Bytes{1, 2, 3});

    Bytes bytes = list.bytes();
    std::vector<const nlattr*> found;
    const nlattr* attribute = nullptr;
    int left = 0;
    nla_for_each_attr(attribute, reinterpret_cast<nlattr*>(bytes.data()),
                      static_cast<int>(bytes.size()), left) found.push_back(attribute);
    EXPECT_EQ(left, 0);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(nla_type(found[0]), 3);
    EXPECT_EQ(nla_get_u32(found[0]), 0x01020304U);
    EXPECT_EQ(nla_type(found[1]), 45);
    EXPECT_TRUE(nla_is_nested(found[1]));
    EXPECT_EQ(nla_len(found[1]), 4);
    EXPECT_EQ(nla_type(static_cast<const nlattr*>(nla_data(found[1]))), 1);
    EXPECT_EQ(nla_len(found[2]), 3);
}

}  // namespace
