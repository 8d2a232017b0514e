#include "halvane/base/property_list_value.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

using halvane::ByteBuffer;
using halvane::Date;
using halvane::Number;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListObject;
using halvane::PropertyListValue;

namespace {

class NamelessObject : public PropertyListObject {
  public:
    std::optional<std::string> description() const override { return std::nullopt; }
    int typeNumber() const override { return 7; }
};

PropertyListDictionary numbered(int count) {
    PropertyListDictionary dictionary;
    for (int i = 0; i < count; ++i) dictionary.set("key" + std::to_string(i), i);
    return dictionary;
}

std::vector<std::string> keysOf(const PropertyListDictionary& dictionary) {
    std::vector<std::string> keys;
    for (const auto& entry : dictionary) keys.push_back(entry.first);
    return keys;
}

TEST(PropertyListValue, TakesEachKindAsItself) {
    EXPECT_TRUE(PropertyListValue().isNull());
    EXPECT_EQ(*PropertyListValue(true).as<bool>(), true);
    EXPECT_EQ(*PropertyListValue(-61).as<Number>(), Number(-61));
    EXPECT_EQ(*PropertyListValue(std::uint64_t{7}).as<Number>(), Number(7));
    EXPECT_EQ(*PropertyListValue(6.5).as<Number>(), Number(6.5));
    EXPECT_EQ(*PropertyListValue(Number(1)).as<Number>(), Number(1));
    EXPECT_EQ(*PropertyListValue("literal").as<std::string>(), "literal");
    EXPECT_EQ(*PropertyListValue(std::string("owned")).as<std::string>(), "owned");
    EXPECT_EQ(*PropertyListValue(std::string_view("view")).as<std::string>(), "view");
    EXPECT_EQ(*PropertyListValue(ByteBuffer{1, 2}).as<ByteBuffer>(), (ByteBuffer{1, 2}));
    EXPECT_EQ(*PropertyListValue(Date::fromUnixTime(5)).as<Date>(), Date::fromUnixTime(5));
    EXPECT_EQ(PropertyListValue(PropertyListArray{1, 2}).as<PropertyListArray>()->size(), 2u);
    EXPECT_EQ(PropertyListValue(numbered(3)).as<PropertyListDictionary>()->size(), 3u);
    const PropertyListValue object(std::make_shared<NamelessObject>());
    EXPECT_EQ((*object.as<PropertyListValue::Object>())->typeNumber(), 7);
}

TEST(PropertyListValue, TakesANullTextAsNothing) {
    const char* const none = nullptr;
    EXPECT_TRUE(PropertyListValue(none).isNull());
    PropertyListDictionary dictionary;
    dictionary.set("key", none);
    EXPECT_TRUE(dictionary.find("key")->isNull());
}

// Deeper than any stack: one frame for each level would need megabytes.
constexpr int kGreatDepth = 100'000;

// Wraps a value again and again.
PropertyListValue nested(PropertyListValue (*wrapped)(PropertyListValue inner)) {
    PropertyListValue value = 1;
    for (int level = 0; level < kGreatDepth; ++level) value = wrapped(std::move(value));
    return value;
}

PropertyListValue inArray(PropertyListValue inner) {
    PropertyListArray array;
    array.push_back(std::move(inner));
    return array;
}

PropertyListValue inDictionary(PropertyListValue inner) {
    PropertyListDictionary dictionary;
    dictionary.set("key", std::move(inner));
    return dictionary;
}

// Other containers stand before and after the deep one, so that each level has more work left.
PropertyListValue amongOthers(PropertyListValue inner) {
    PropertyListArray array;
    array.push_back(PropertyListArray{PropertyListArray{1}});
    array.push_back(inDictionary(std::move(inner)));
    array.push_back(PropertyListArray{2});
    return array;
}

TEST(PropertyListValue, IsDestroyedAtAnyDepth) {
    for (const auto wrapped : {inArray, inDictionary, amongOthers}) {
        const PropertyListValue value = nested(wrapped);
        EXPECT_FALSE(value.isNull());
    }
}

TEST(PropertyListValue, IsReplacedAndMovedAtAnyDepth) {
    for (const auto wrapped : {inArray, inDictionary}) {
        PropertyListValue value = nested(wrapped);
        value = nested(wrapped);
        PropertyListValue moved = std::move(value);
        moved = 5;
        EXPECT_EQ(moved, PropertyListValue(5));
    }
}

TEST(PropertyListValue, LeavesOthersAloneWhenItIsDestroyed) {
    const PropertyListValue::Object object = std::make_shared<NamelessObject>();
    const PropertyListValue inner(PropertyListArray{PropertyListArray{object}, object});
    {
        const PropertyListValue copy(PropertyListArray{inner, inner, object});
        EXPECT_EQ(object.use_count(), 8);
    }
    EXPECT_EQ(object.use_count(), 3);
    EXPECT_EQ(inner, PropertyListValue(PropertyListArray{PropertyListArray{object}, object}));
}

std::vector<PropertyListValue> oneOfEachKind() {
    return {PropertyListValue(),
            false,
            0,
            "",
            ByteBuffer(),
            Date(),
            PropertyListArray(),
            PropertyListDictionary(),
            PropertyListValue::Object(std::make_shared<NamelessObject>())};
}

TEST(PropertyListValue, EqualsOnlyItsOwnKind) {
    const auto values = oneOfEachKind();
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = 0; j < values.size(); ++j) {
            EXPECT_EQ(values[i] == values[j], i == j) << i << " " << j;
        }
    }
}

TEST(PropertyListValue, IsNoOtherKindThanItsOwn) {
    for (const auto& value : oneOfEachKind()) {
        const int kinds =
            int{value.isNull()} + int{value.as<bool>() != nullptr} +
            int{value.as<Number>() != nullptr} + int{value.as<std::string>() != nullptr} +
            int{value.as<ByteBuffer>() != nullptr} + int{value.as<Date>() != nullptr} +
            int{value.as<PropertyListArray>() != nullptr} +
            int{value.as<PropertyListDictionary>() != nullptr} +
            int{value.as<PropertyListValue::Object>() != nullptr};
        EXPECT_EQ(kinds, 1) << value.variant().index();
    }
}

TEST(PropertyListValue, ComparesByValueAndObjectsByIdentity) {
    EXPECT_EQ(PropertyListValue(1), PropertyListValue(1.0));
    EXPECT_NE(PropertyListValue(1), PropertyListValue(true));
    EXPECT_EQ(PropertyListValue(PropertyListArray{1, "a"}),
              PropertyListValue(PropertyListArray{1u, "a"}));
    EXPECT_NE(PropertyListValue(PropertyListArray{1, 2}),
              PropertyListValue(PropertyListArray{2, 1}));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(PropertyListValue(nan), PropertyListValue(nan));
    const auto object = std::make_shared<NamelessObject>();
    EXPECT_EQ(PropertyListValue(object), PropertyListValue(object));
    EXPECT_NE(PropertyListValue(object), PropertyListValue(std::make_shared<NamelessObject>()));
}

TEST(PropertyListValue, CopiesDoNotShareChanges) {
    const PropertyListValue original(PropertyListArray{1});
    PropertyListValue copy = original;
    copy.as<PropertyListArray>()->push_back(2);
    EXPECT_EQ(original.as<PropertyListArray>()->size(), 1u);
}

TEST(PropertyListDictionary, FindsEveryKeyAtEverySize) {
    for (int count = 0; count <= 40; ++count) {
        const auto dictionary = numbered(count);
        EXPECT_EQ(dictionary.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(dictionary.empty(), count == 0);
        for (int i = 0; i < count; ++i) {
            const auto* value = dictionary.find("key" + std::to_string(i));
            ASSERT_NE(value, nullptr) << count << " " << i;
            EXPECT_EQ(*value, PropertyListValue(i));
        }
        EXPECT_EQ(dictionary.find("key" + std::to_string(count)), nullptr);
        EXPECT_EQ(dictionary.find(""), nullptr);
    }
}

TEST(PropertyListDictionary, KeepsTheOrderOfInsertion) {
    PropertyListDictionary dictionary;
    std::vector<std::string> keys;
    for (int i = 40; i > 0; --i) {
        keys.push_back(std::to_string(i * 7 % 41));
        dictionary.set(keys.back(), i);
        EXPECT_EQ(keysOf(dictionary), keys);
    }
}

TEST(PropertyListDictionary, ReplacesInPlace) {
    for (int count = 1; count <= 40; ++count) {
        auto dictionary = numbered(count);
        for (int i = 0; i < count; ++i) dictionary.set("key" + std::to_string(i), "new");
        EXPECT_EQ(keysOf(dictionary), keysOf(numbered(count)));
        for (const auto& [key, value] : dictionary) EXPECT_EQ(value, PropertyListValue("new"));
    }
}

TEST(PropertyListDictionary, EntersAKeyOnce) {
    PropertyListDictionary dictionary;
    for (int i = 0; i < 40; ++i) {
        const auto [value, isNew] = dictionary.enter(std::to_string(i));
        EXPECT_TRUE(isNew);
        EXPECT_TRUE(value->isNull());
        *value = i;
        EXPECT_EQ(
            dictionary.enter(std::to_string(i)),
            (std::pair(const_cast<PropertyListValue*>(dictionary.find(std::to_string(i))), false)));
    }
    EXPECT_EQ(dictionary.size(), 40u);
    EXPECT_EQ(*dictionary.find("17"), PropertyListValue(17));
}

// Entries move when the dictionary grows, at these sizes among others.
TEST(PropertyListDictionary, EntersAKeyThatAnEntryHolds) {
    const std::string text = "a text of more than 15 characters";
    for (int count = 1; count <= 40; ++count) {
        auto dictionary = numbered(count);
        dictionary.set("key0", text);
        dictionary.set(*dictionary.find("key0")->as<std::string>(), true);
        ASSERT_NE(dictionary.find(text), nullptr) << count;
        EXPECT_EQ(*dictionary.find(text), PropertyListValue(true)) << count;
    }
}

TEST(PropertyListDictionary, HoldsTheSameWhateverRoomIsMade) {
    for (const std::size_t room : {0u, 1u, 5u, 16u, 17u, 100u}) {
        PropertyListDictionary dictionary;
        dictionary.reserve(room);
        EXPECT_TRUE(dictionary.empty());
        const auto expected = numbered(40);
        for (const auto& [key, value] : expected) {
            const PropertyListValue* const before =
                dictionary.begin() == dictionary.end() ? nullptr : &dictionary.begin()->second;
            dictionary.set(key, value);
            if (before != nullptr && dictionary.size() <= room) {
                EXPECT_EQ(before, &dictionary.begin()->second) << room;
            }
        }
        EXPECT_EQ(dictionary, expected) << room;
        EXPECT_EQ(keysOf(dictionary), keysOf(expected)) << room;
    }
}

TEST(PropertyListValue, BecomesWhatIsEmplaced) {
    PropertyListValue value;
    EXPECT_EQ(value.emplace(std::string("text")), "text");
    EXPECT_EQ(value, PropertyListValue("text"));
    value.emplace(PropertyListArray{1, 2}).push_back(3);
    EXPECT_EQ(value, PropertyListValue(PropertyListArray{1, 2, 3}));
    value.emplace(true);
    EXPECT_EQ(value, PropertyListValue(true));
}

// The sizes lie on both sides of the one from which the dictionary has an index.
TEST(PropertyListDictionary, ErasesAnyEntryAtEverySize) {
    for (int count = 1; count <= 40; ++count) {
        for (int erased = 0; erased < count; ++erased) {
            auto dictionary = numbered(count);
            const std::string key = "key" + std::to_string(erased);
            EXPECT_TRUE(dictionary.erase(key));
            EXPECT_FALSE(dictionary.erase(key));
            auto keys = keysOf(numbered(count));
            keys.erase(keys.begin() + erased);
            ASSERT_EQ(keysOf(dictionary), keys);
            EXPECT_EQ(dictionary.find(key), nullptr);
            for (const auto& entry : numbered(count)) {
                if (entry.first == key) continue;
                const auto* value = dictionary.find(entry.first);
                ASSERT_NE(value, nullptr) << count << " " << erased << " " << entry.first;
                EXPECT_EQ(*value, entry.second);
            }
        }
    }
}

TEST(PropertyListDictionary, ErasesByItsOwnKey) {
    for (const int count : {1, 17, 40}) {
        auto dictionary = numbered(count);
        while (!dictionary.empty()) EXPECT_TRUE(dictionary.erase(dictionary.begin()->first));
        EXPECT_EQ(dictionary.find("key0"), nullptr);
    }
}

// If each erasure closed the gap behind it, a loop of erasures would take quadratic time.
TEST(PropertyListDictionary, LeavesTheOthersWhereTheyAreWhenItErasesAFew) {
    auto dictionary = numbered(1000);
    const auto* const last = dictionary.find("key999");
    for (int i = 0; i < 499; ++i) {
        ASSERT_TRUE(dictionary.erase("key" + std::to_string(i)));
        ASSERT_EQ(dictionary.find("key999"), last);
    }
    EXPECT_EQ(dictionary.size(), 501u);
}

TEST(PropertyListDictionary, ErasesAndTakesEntriesInTurn) {
    auto dictionary = numbered(60);
    auto keys = keysOf(dictionary);
    for (int i = 0; i < 400; ++i) {
        const auto place = static_cast<std::size_t>(i * 37) % keys.size();
        const auto erased = keys.begin() + static_cast<std::ptrdiff_t>(place);
        ASSERT_TRUE(dictionary.erase(*erased));
        keys.erase(erased);
        if (i % 3 == 0) {
            keys.push_back("new" + std::to_string(i));
            dictionary.set(keys.back(), i);
        }
        if (keys.size() < 10) {
            for (int k = 0; k < 40; ++k) {
                keys.push_back("more" + std::to_string(1000 * i + k));
                dictionary.set(keys.back(), k);
            }
        }
        ASSERT_EQ(keysOf(dictionary), keys);
        const auto copy = dictionary;
        for (const auto& key : keys) ASSERT_NE(copy.find(key), nullptr) << key;
        EXPECT_EQ(copy, dictionary);
    }
}

TEST(PropertyListDictionary, TakesNewEntriesAfterErasing) {
    auto dictionary = numbered(18);
    dictionary.erase("key0");
    dictionary.erase("key1");
    dictionary.set("key0", "again");
    dictionary.set("key1", "again");
    EXPECT_EQ(dictionary.size(), 18u);
    EXPECT_EQ(*dictionary.find("key0"), PropertyListValue("again"));
    EXPECT_EQ(*dictionary.find("key17"), PropertyListValue(17));
}

TEST(PropertyListDictionary, EqualsWhateverTheOrder) {
    for (const int count : {0, 1, 16, 17, 40}) {
        PropertyListDictionary reversed;
        for (int i = count; i-- > 0;) reversed.set("key" + std::to_string(i), i);
        EXPECT_EQ(reversed, numbered(count));
        EXPECT_FALSE(numbered(count + 1) == reversed);
        if (count == 0) continue;
        reversed.set("key0", "other");
        EXPECT_FALSE(reversed == numbered(count));
        reversed.erase("key0");
        reversed.set("other", 0);
        EXPECT_FALSE(reversed == numbered(count));
    }
}

TEST(PropertyListDictionary, IsIndependentOfItsCopies) {
    auto original = numbered(20);
    PropertyListDictionary copy = original;
    copy.erase("key3");
    copy.set("key4", "changed");
    EXPECT_EQ(original, numbered(20));
    const PropertyListDictionary moved = std::move(original);
    EXPECT_EQ(moved, numbered(20));
}

TEST(PropertyListDictionary, TakesKeysOfAnyBytes) {
    using namespace std::string_literals;
    PropertyListDictionary dictionary;
    dictionary.set("", 1);
    dictionary.set("\0"s, 2);
    dictionary.set("a\0b"s, 3);
    dictionary.set("a", 4);
    EXPECT_EQ(dictionary.size(), 4u);
    EXPECT_EQ(*dictionary.find(""), PropertyListValue(1));
    EXPECT_EQ(*dictionary.find("a\0b"s), PropertyListValue(3));
}

TEST(PropertyListDictionary, StaysQuickWithManyKeys) {
    constexpr int kCount = 100'000;
    auto dictionary = numbered(kCount);
    EXPECT_EQ(dictionary.size(), std::size_t{kCount});
    for (int i = 0; i < kCount; ++i) {
        const auto* value = dictionary.find("key" + std::to_string(i));
        ASSERT_NE(value, nullptr);
        ASSERT_EQ(*value, PropertyListValue(i));
    }
    EXPECT_TRUE(dictionary.erase("key50000"));
    EXPECT_EQ(*dictionary.find("key99999"), PropertyListValue(99'999));
    EXPECT_EQ(dictionary.find("key50000"), nullptr);
}

}  // namespace
