#include "tools/halvane/survey/cut_elements.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <span>
#include <vector>

#include "halvane/air/element_range.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/capture/beacon_frame.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

// Every sequence of three, and every prefix of it. Among them are full elements, with and without
// fragments.
TEST(CutElements, AreThoseThatTheWalkOverElementsLeaves) {
    const std::vector<Bytes> choices = {element(0, {}),           element(5, {0, 1, 0, 0}),
                                        element(221, Bytes(254)), element(255, Bytes(255)),
                                        element(242, Bytes(255)), element(242, {1}),
                                        element(255, {})};
    for (const Bytes& first : choices) {
        for (const Bytes& second : choices) {
            const Bytes all = joined({first, second, element(242, {2, 3})});
            forEachPrefix(all, [](const ByteBuffer& elements) {
                const bool isCut = !air::ElementRange(elements.bytes()).trailing().empty();
                ASSERT_EQ(endsInsideAnElement(elements.bytes()), isCut) << elements.size();
            });
        }
    }
}

TEST(CutElements, MakeAFrameCut) {
    const Bytes whole = ssidElement("home");
    EXPECT_FALSE(isCutFrame({.elements = whole}));
    EXPECT_TRUE(isCutFrame({.elements = whole, .isCut = true}));
    EXPECT_TRUE(isCutFrame({.elements = std::span(whole).first(4)}));
}

}  // namespace
