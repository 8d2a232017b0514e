#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <new>
#include <utility>
#include <vector>

#include "halvane/platform/os/secret_internal.h"

using halvane::Secret;
using halvane::secretMemory;

namespace {

using Key = std::array<std::uint8_t, 32>;

bool isAllZeros(const unsigned char* bytes, std::size_t size) {
    return std::all_of(bytes, bytes + size, [](unsigned char byte) { return byte == 0; });
}

using Memory = std::array<unsigned char, sizeof(Secret<Key>)>;

// Runs `use` on memory that compilers cannot follow. Otherwise they may drop stores to an object
// that ends.
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

TEST(SecretMemory, IsZerosAtFirst) {
    EXPECT_TRUE(isAllZeros(secretMemory(100).get(), 100));
    EXPECT_TRUE(secretMemory(0));
}

TEST(SecretBuffer, KeepsItsBytesOutOfItself) {
    for (const std::size_t size : {0u, 1u, 16u, 17u, 100u}) {
        const std::vector<std::uint8_t> bytes(size, 0xA5);
        auto buffer = halvane::secretBuffer(bytes);
        EXPECT_EQ(buffer, halvane::ByteBuffer(bytes));
        const auto copy = buffer;
        EXPECT_EQ(copy.bytes().data(), buffer.bytes().data()) << size;
        const auto moved = std::move(buffer);
        EXPECT_EQ(moved.bytes().data(), copy.bytes().data()) << size;
    }
}

}  // namespace
