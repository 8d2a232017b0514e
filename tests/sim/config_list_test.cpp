#include "tools/halvaned-sim/config_list.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config.h"

namespace halvane::sim {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

HalvaneBSSConfig configOf(const std::string& ssid, std::int64_t order = 0) {
    auto config = HalvaneBSSConfig::init();
    config.setSSID_error(ssid);
    config.setPreferredOrder(order);
    return config;
}

ByteBuffer ssidOf(const std::string& name) {
    return *configOf(name).ssid();
}

TEST(ConfigList, KeepsTheOrderInWhichSSIDsCame) {
    ConfigList list;
    for (const char* const name : {"b", "a", "c"}) list.put(configOf(name));
    EXPECT_THAT(list, ElementsAre(configOf("b"), configOf("a"), configOf("c")));
    list.put(configOf("a", 7));
    EXPECT_THAT(list, ElementsAre(configOf("b"), configOf("a", 7), configOf("c")));
    list.remove(ssidOf("b"));
    list.put(configOf("b"));
    EXPECT_THAT(list, ElementsAre(configOf("a", 7), configOf("c"), configOf("b")));
}

TEST(ConfigList, FindsBySSID) {
    ConfigList list;
    list.put(configOf("ab", 1));
    list.put(configOf("a", 2));  // the beginning of another
    ASSERT_NE(list.find(ssidOf("ab")), nullptr);
    EXPECT_EQ(list.find(ssidOf("ab"))->preferredOrder(), 1);
    EXPECT_EQ(list.find(ssidOf("a"))->preferredOrder(), 2);
    EXPECT_EQ(list.find(ssidOf("b")), nullptr);
    list.remove(ssidOf("b"));
    list.remove(ssidOf("ab"));
    EXPECT_EQ(list.find(ssidOf("ab")), nullptr);
    EXPECT_EQ(list.size(), 1u);
    list.remove(ssidOf("a"));
    EXPECT_THAT(list, IsEmpty());
}

TEST(ConfigList, TakesOneOfItsOwn) {
    ConfigList list;
    list.put(configOf("a", 1));
    list.put(*list.begin());
    EXPECT_THAT(list, ElementsAre(configOf("a", 1)));
    list.remove(*list.begin()->ssid());
    EXPECT_THAT(list, IsEmpty());
}

TEST(ConfigList, FindsInWhatWasMoved) {
    ConfigList list;
    list.put(configOf("a", 1));
    ConfigList moved = std::move(list);
    moved.put(configOf("a", 2));
    EXPECT_THAT(moved, ElementsAre(configOf("a", 2)));
}

}  // namespace

}  // namespace halvane::sim
