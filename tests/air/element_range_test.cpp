#include "halvane/air/element_range.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <vector>

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::element;
using halvane::testing::joined;
using namespace halvane::air;

namespace {

std::vector<Element> elementsOf(Octets octets) {
    std::vector<Element> elements;
    for (const Element& element : ElementRange(octets)) elements.push_back(element);
    return elements;
}

Bytes bodyOf(const Element& element) {
    return {element.body.begin(), element.body.end()};
}

Bytes counting(std::size_t size, std::uint8_t first = 0) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(first + i);
    return bytes;
}

TEST(ElementRange, IsEmptyForNothing) {
    EXPECT_TRUE(elementsOf({}).empty());
    EXPECT_TRUE(ElementRange({}).trailing().empty());
}

TEST(ElementRange, GivesEachElementWithItsPlace) {
    const Bytes octets =
        joined({element(0, {'a', 'b'}), element(3, {6}), element(255, {35, 1, 2})});
    const auto elements = elementsOf(octets);
    ASSERT_EQ(elements.size(), 3u);
    EXPECT_EQ(elements[0].id, ElementId::Ssid);
    EXPECT_EQ(bodyOf(elements[0]), (Bytes{'a', 'b'}));
    EXPECT_EQ(elements[0].offset, 0u);
    EXPECT_EQ(elements[1].id, ElementId::DsParameterSet);
    EXPECT_EQ(elements[1].offset, 4u);
    EXPECT_EQ(elements[2].id, ElementId::HeCapabilities);
    EXPECT_EQ(bodyOf(elements[2]), (Bytes{1, 2}));
    EXPECT_EQ(elements[2].offset, 7u);
    EXPECT_EQ(elements[2].octets.size(), 5u);
    EXPECT_EQ(elements[2].offsetOfBody(0), 10u);
    EXPECT_TRUE(ElementRange(octets).trailing().empty());
}

TEST(ElementRange, TellsAnElementWithoutItsExtension) {
    const Bytes octets = joined({element(255, {}), element(3, {6})});
    const auto elements = elementsOf(octets);
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[0].id, ElementId::ExtensionMissing);
    EXPECT_TRUE(elements[0].body.empty());
}

TEST(ElementRange, KeepsApartWhatMakesNoElement) {
    Bytes octets = element(3, {6});
    octets.push_back(48);
    auto trailing = ElementRange(octets).trailing();
    EXPECT_EQ(trailing.offset, 3u);
    EXPECT_EQ(trailing.octets.size(), 1u);
    EXPECT_FALSE(trailing.missingLength());
    octets.push_back(20);
    octets.push_back(1);
    trailing = ElementRange(octets).trailing();
    EXPECT_EQ(trailing.octets.size(), 3u);
    EXPECT_EQ(trailing.missingLength(), 20);
    EXPECT_EQ(elementsOf(octets).size(), 1u);
}

TEST(ElementRange, JoinsFragments) {
    Bytes first = counting(255);
    first[0] = 107;
    const Bytes octets = joined({element(255, first), element(242, counting(255, 7)),
                                 element(242, counting(3, 9)), element(3, {6})});
    const auto elements = elementsOf(octets);
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[0].id, ElementId::MultiLink);
    EXPECT_TRUE(elements[0].isFragmented());
    Bytes body(first.begin() + 1, first.end());
    for (const std::uint8_t octet : counting(255, 7)) body.push_back(octet);
    for (const std::uint8_t octet : counting(3, 9)) body.push_back(octet);
    EXPECT_EQ(bodyOf(elements[0]), body);
    EXPECT_EQ(elements[0].octets.size(), 257u + 257 + 5);
    EXPECT_EQ(elements[1].offset, 257u + 257 + 5);
    EXPECT_EQ(bodyOf(elements[1]), Bytes{6});
    for (std::size_t i = 0; i < body.size(); ++i) {
        EXPECT_EQ(octets[elements[0].offsetOfBody(i)], body[i]) << i;
    }
    EXPECT_EQ(elements[0].offsetOfBody(body.size()), 257u + 257 + 5);
}

TEST(ElementRange, JoinsAFragmentToNoShorterElement) {
    const Bytes octets =
        joined({element(221, counting(254)), element(242, {1, 2}), element(242, {3})});
    const auto elements = elementsOf(octets);
    ASSERT_EQ(elements.size(), 3u);
    EXPECT_EQ(elements[1].id, ElementId::Fragment);
    EXPECT_EQ(bodyOf(elements[2]), Bytes{3});
}

TEST(ElementRange, EndsAJoinAtAFragmentThatIsNotFull) {
    const Bytes octets = joined({element(221, counting(255)), element(242, {}), element(242, {3})});
    const auto elements = elementsOf(octets);
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[0].body.size(), 255u);
    EXPECT_TRUE(elements[0].isFragmented());
    EXPECT_EQ(elements[1].id, ElementId::Fragment);
}

TEST(ElementRange, LeavesAFragmentThatDoesNotFitToTheTrailingOctets) {
    Bytes octets = element(221, counting(255));
    octets.insert(octets.end(), {242, 4, 1, 2, 3});
    const auto elements = elementsOf(octets);
    ASSERT_EQ(elements.size(), 1u);
    EXPECT_FALSE(elements[0].isFragmented());
    EXPECT_EQ(ElementRange(octets).trailing().octets.size(), 5u);
}

TEST(ElementRange, NeverReadsPastTheEnd) {
    const Bytes octets = joined({element(255, counting(255, 107)), element(242, counting(20)),
                                 element(0, {'a'}), element(255, {}), element(255, {35})});
    halvane::testing::forEachHostileForm(octets, {1, 258, 280, 283, 285}, [](const auto& buffer) {
        std::size_t passed = 0;
        for (const Element& element : ElementRange(buffer.bytes())) {
            EXPECT_EQ(element.offset, passed);
            passed += element.octets.size();
            for (const std::uint8_t octet : element.body) EXPECT_LE(octet, 255);
        }
        EXPECT_EQ(passed + ElementRange(buffer.bytes()).trailing().octets.size(), buffer.size());
    });
}

}  // namespace
