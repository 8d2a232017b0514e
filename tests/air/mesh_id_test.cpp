#include "halvane/air/mesh_id.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"
#include "tests/air/told_fields.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using halvane::testing::ToldFields;
using namespace halvane::air;

namespace {

TEST(AirMeshId, IsAName) {
    EXPECT_EQ(MeshId::decode(bytesOf("6D657368"))->name, ByteBuffer::fromText("mesh"));
    EXPECT_TRUE(MeshId::decode({})->name.empty());
    ToldFields fields;
    EXPECT_FALSE(MeshId::describe(bytesOf("6D07"), fields));
    EXPECT_EQ(fields.text_, "Mesh ID=m\\x07;");
}

}  // namespace
