// How much memory reading takes for various texts.
#include <cstddef>
#include <gtest/gtest.h>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "tests/support/peak_memory.h"
#include "tests/support/scarce_memory.h"

using halvane::propertyListFromXml;
using halvane::PropertyListValue;
using halvane::testing::PeakMemory;
using halvane::testing::withEverLessScarceMemory;

namespace {

constexpr std::size_t kSize = std::size_t{1} << 20;

std::string plist(const std::string& content) {
    return "<plist>" + content + "</plist>";
}

// Repeats the item as often as it fits.
std::string arrayOf(const std::string& item, std::size_t size) {
    std::string items;
    while (items.size() + item.size() <= size) items += item;
    return plist("<array>" + items + "</array>");
}

std::string dictionaryOf(std::size_t count, const std::string& value) {
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGHIJKLMNOPQRS";
    std::string entries;
    for (std::size_t i = 0; i < count; ++i) {
        entries += "<key>";
        for (std::size_t rest = i; rest > 0; rest /= kLetters.size()) {
            entries += kLetters[rest % kLetters.size()];
        }
        entries += "</key>" + value;
    }
    return "<dict>" + entries + "</dict>";
}

std::vector<std::pair<std::string, std::string>> hostileTexts() {
    const std::string nested = [] {
        std::string start, end;
        for (int level = 0; level < 250; ++level) {
            start += "<array>";
            end += "</array>";
        }
        return start + end;
    }();
    std::vector<std::pair<std::string, std::string>> texts;
    for (const std::string item :
         {"<true/>", "<dict/>", "<data/>", "<array/>", "<string/>", "<integer>1</integer>",
          "<array><true/></array>", "<array><dict/><dict/></array>",
          "<data>AAAAAAAAAAAAAAAAAAAAAAAA</data>", "<string>of 16 characters</string>"}) {
        texts.emplace_back(item, arrayOf(item, kSize));
    }
    for (const std::size_t count : {1u, 2u, 5u, 9u, 17u, 19u}) {
        const std::string dictionary = dictionaryOf(count, "<true/>");
        texts.emplace_back(dictionary, arrayOf(dictionary, kSize));
    }
    // Small dictionaries after large ones, whose room they could be given.
    for (const std::size_t count : {5u, 16u, 17u, 19u}) {
        for (const char* small : {"<dict></dict>", "<dict><key></key><true/></dict>"}) {
            const std::string both = dictionaryOf(count, "<true/>") + small;
            texts.emplace_back(both, arrayOf(both, kSize));
        }
    }
    texts.emplace_back("nested", arrayOf(nested, kSize));
    texts.emplace_back("\\r", "<?xml version='1.0'?>\r\n" + arrayOf("<true/>", kSize));
    // The counts lie around those where a dictionary grows.
    for (std::size_t count = 20'000; count < 50'000; count += 3'001) {
        texts.emplace_back("keys " + std::to_string(count), plist(dictionaryOf(count, "<true/>")));
    }
    texts.emplace_back("one text", plist("<string>" + std::string(kSize, 'x') + "</string>"));
    texts.emplace_back("one datum", plist("<data>" + std::string(kSize, 'A') + "</data>"));
    texts.emplace_back("references",
                       plist("<string>" + std::string(kSize, ' ') + "&amp;</string>"));
    return texts;
}

TEST(XmlPropertyListMemory, IsSixteenTimesTheTextAtMost) {
    for (const auto& [name, text] : hostileTexts()) {
        std::size_t peak = 0;
        bool isRead = false;
        {
            const PeakMemory memory;
            isRead = propertyListFromXml(text).has_value();
            peak = memory.bytes();
        }
        EXPECT_TRUE(isRead) << name.substr(0, 60);
        EXPECT_LE(peak, 16 * text.size())
            << name.substr(0, 60) << ": "
            << static_cast<double>(peak) / static_cast<double>(text.size());
    }
}

TEST(XmlPropertyListMemory, EndsInNoValueAndNoLoss) {
    const std::string text = plist(
        dictionaryOf(20, "<array><string>of more than 15 characters</string><dict/></array>"));
    const auto expected = propertyListFromXml(text);
    ASSERT_TRUE(expected.has_value());
    std::optional<PropertyListValue> value;
    bool isThrown = false;
    withEverLessScarceMemory(
        [&] {
            try {
                if (auto read = propertyListFromXml(text)) value = *std::move(read);
            } catch (const std::bad_alloc&) {
                isThrown = true;
            }
        },
        [&](bool hasEnded) {
            EXPECT_EQ(std::exchange(isThrown, false), hasEnded);
            if (!hasEnded) {
                EXPECT_EQ(value, expected);
            }
        });
}

}  // namespace
