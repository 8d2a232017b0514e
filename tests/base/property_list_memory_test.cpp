// If memory runs out, a dictionary stays unchanged: its entries and their index agree.
#include <cstddef>
#include <gtest/gtest.h>
#include <new>
#include <string>

#include "halvane/base/property_list_value.h"

#include "tests/support/scarce_memory.h"

using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::testing::withEverLessScarceMemory;

namespace {

std::string key(int number) {
    return "a key of more than 15 characters " + std::to_string(number);
}

PropertyListDictionary numbered(int count) {
    PropertyListDictionary dictionary;
    for (int i = 0; i < count; ++i) dictionary.set(key(i), i);
    return dictionary;
}

// The dictionary holds the numbers from `first` on, in order, and finds each.
void expectNumbers(const PropertyListDictionary& dictionary, int first, int count) {
    ASSERT_EQ(dictionary.size(), static_cast<std::size_t>(count - first));
    int number = first;
    for (const auto& entry : dictionary) {
        EXPECT_EQ(entry.first, key(number));
        EXPECT_EQ(dictionary.find(entry.first), &entry.second);
        EXPECT_EQ(entry.second, PropertyListValue(number));
        ++number;
    }
    EXPECT_EQ(dictionary.find(key(count)), nullptr);
}

// Calls `attempt`, and returns whether it ran out of memory.
template <typename Attempt>
bool isOutOfMemory(Attempt attempt) {
    try {
        attempt();
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

// Up to and beyond the size where an index takes over.
TEST(PropertyListDictionaryMemory, EndsInTheSameDictionaryWhereAnEntryIsSet) {
    for (int count = 0; count <= 40; ++count) {
        PropertyListDictionary dictionary = numbered(count);
        bool isThrown = false;
        withEverLessScarceMemory(
            [&] { isThrown = isOutOfMemory([&] { dictionary.set(key(count), count); }); },
            [&](bool hasEnded) {
                EXPECT_EQ(isThrown, hasEnded);
                expectNumbers(dictionary, 0, hasEnded ? count : count + 1);
            });
    }
}

TEST(PropertyListDictionaryMemory, EndsInTheSameDictionaryWhereItIsCopied) {
    const auto original = numbered(20);
    auto copy = numbered(3);
    withEverLessScarceMemory([&] { isOutOfMemory([&] { copy = original; }); },
                             [&](bool hasEnded) { expectNumbers(copy, 0, hasEnded ? 3 : 20); });
}

TEST(PropertyListDictionaryMemory, IsNotNeededToErase) {
    auto dictionary = numbered(40);
    for (int first = 0; first < 40; ++first) {
        const std::string gone = key(first);
        bool isErased = false;
        const auto attempts =
            withEverLessScarceMemory([&] { isErased = dictionary.erase(gone); }, [](bool) {});
        EXPECT_TRUE(isErased);
        EXPECT_EQ(attempts, 1u);
        expectNumbers(dictionary, first + 1, 40);
    }
}

}  // namespace
