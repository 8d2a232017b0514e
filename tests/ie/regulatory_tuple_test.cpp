#include "halvane/ie/regulatory_tuple.h"

#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"

using halvane::HalvaneRegulatoryTuple;
using halvane::testing::Bytes;

namespace {

TEST(RegulatoryTuple, IsZeroAtFirst) {
    const HalvaneRegulatoryTuple tuple;
    EXPECT_EQ(tuple.extensionIdentifier(), 0);
    EXPECT_EQ(tuple.regulatoryClass(), 0);
    EXPECT_EQ(tuple.coverageClass(), 0);
}

TEST(RegulatoryTuple, HoldsTheThreeBytes) {
    const Bytes bytes = {201, 12, 3};
    const auto tuple = HalvaneRegulatoryTuple::initWithTuple_withLength(bytes.data(), bytes.size());
    EXPECT_EQ(tuple.extensionIdentifier(), 201);
    EXPECT_EQ(tuple.regulatoryClass(), 12);
    EXPECT_EQ(tuple.coverageClass(), 3);
}

TEST(RegulatoryTuple, PrintsItsFieldsUnsigned) {
    const Bytes bytes = {255, 128, 0};
    const auto tuple = HalvaneRegulatoryTuple::initWithTuple_withLength(bytes.data(), bytes.size());
    EXPECT_EQ(tuple.description(),
              "Extension Identifier <255>, Regulatory Class <128>, Coverage Class <0>");
}

TEST(RegulatoryTuple, TakesOnlyTheBytesThatThereAre) {
    halvane::testing::forEachPrefix({202, 5, 1, 99}, [](const halvane::ByteBuffer& prefix) {
        const auto bytes = prefix.bytes();
        const auto tuple =
            HalvaneRegulatoryTuple::initWithTuple_withLength(bytes.data(), bytes.size());
        EXPECT_EQ(tuple.extensionIdentifier(), prefix.size() > 0 ? 202 : 0);
        EXPECT_EQ(tuple.regulatoryClass(), prefix.size() > 1 ? 5 : 0);
        EXPECT_EQ(tuple.coverageClass(), prefix.size() > 2 ? 1 : 0);
    });
}

}  // namespace
