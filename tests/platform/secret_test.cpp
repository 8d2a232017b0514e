#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <new>

#include "halvane/platform/secret_internal.h"

using halvane::Secret;
using halvane::SecretBytes;

namespace {

using Key = std::array<std::uint8_t, 32>;

bool isAllZeros(const unsigned char* bytes, std::size_t size) {
    return std::all_of(bytes, bytes + size, [](unsigned char byte) { return byte == 0; });
}

using Memory = std::array<unsigned char, sizeof(Secret<Key>)>;

// Runs `use` on memory where compilers cannot follow it, for what an object leaves behind is
// nothing that they would care about.
Memory memoryAfter(void (*use)(void*)) {
    void (*volatile const hidden)(void*) = use;
    alignas(Secret<Key>) Memory memory;
    memory.fill(0x5A);
    hidden(memory.data());
    return memory;
}

TEST(Secret, StartsAsZeros) {
    const Secret<Key> secret;
    EXPECT_TRUE(isAllZeros(secret->data(), secret->size()));
}

TEST(Secret, LeavesNothingInItsMemory) {
    const Memory used = memoryAfter([](void* memory) { (**new (memory) Secret<Key>).fill(0xA5); });
    EXPECT_EQ(used[0], 0xA5);
    const Memory destroyed = memoryAfter([](void* memory) {
        auto* const secret = new (memory) Secret<Key>;
        (*secret)->fill(0xA5);
        secret->~Secret();
    });
    EXPECT_TRUE(isAllZeros(destroyed.data(), destroyed.size()));
}

TEST(SecretBytes, AreZerosAtFirst) {
    SecretBytes bytes(100);
    ASSERT_TRUE(bytes);
    EXPECT_TRUE(isAllZeros(bytes.data(), 100));
    EXPECT_TRUE(SecretBytes(0));
}

}  // namespace
