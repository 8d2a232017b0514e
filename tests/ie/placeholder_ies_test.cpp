// The elements that are named and hold nothing.
#include <gtest/gtest.h>
#include <type_traits>

#include "halvane/ie/bss_coexistence_ie.h"
#include "halvane/ie/bss_intolerant_ie.h"
#include "halvane/ie/overlapping_bss_ie.h"
#include "halvane/ie/secondary_channel_offset_ie.h"

namespace {

template <typename Element>
constexpr bool kIsPlaceholder =
    std::is_empty_v<Element>&& std::is_nothrow_default_constructible_v<Element>;

TEST(PlaceholderElements, HoldNoFields) {
    EXPECT_TRUE(kIsPlaceholder<halvane::HalvaneSecondaryChannelOffsetIE>);
    EXPECT_TRUE(kIsPlaceholder<halvane::HalvaneBSSCoexistenceIE>);
    EXPECT_TRUE(kIsPlaceholder<halvane::HalvaneBSSIntolerantIE>);
    EXPECT_TRUE(kIsPlaceholder<halvane::HalvaneOverlappingBSSIE>);
}

}  // namespace
