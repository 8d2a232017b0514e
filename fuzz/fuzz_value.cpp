// The basic values: buffers, numbers, dates and dictionaries agree with naive code, and every value
// can be printed.
#include <algorithm>
#include <cmath>
#include <compare>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/data_order.h"
#include "halvane/base/date.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/utils/printf.h"

#include "fuzz/byte_source.h"
#include "fuzz/property_list_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

using Bytes = std::span<const std::uint8_t>;
__extension__ typedef __int128 Wide;

void checkBuffers(Bytes bytes, std::size_t offset, std::size_t length) {
    const ByteBuffer whole(bytes);
    REQUIRE(ByteBuffer::fromHex(whole.hex()) == whole);
    const ByteBuffer slice = whole.slice(offset, length);
    const std::size_t from = std::min(offset, bytes.size());
    const Bytes expected = bytes.subspan(from, std::min(length, bytes.size() - from));
    REQUIRE(std::ranges::equal(slice.bytes(), expected));
    REQUIRE(slice == ByteBuffer(expected));
    ByteBuffer moved = slice;
    const ByteBuffer target = std::move(moved);
    REQUIRE(target == slice);
    const std::size_t common = std::min(slice.size(), whole.size());
    const int order = std::memcmp(slice.bytes().data(), whole.bytes().data(), common);
    REQUIRE(NSData_Halvane::compare(slice, whole) == (order > 0) - (order < 0));
    REQUIRE(NSData_Halvane::compare(slice, std::optional<ByteBuffer>()) == 1);
    const std::string text(bytes.begin(), bytes.end());
    if (const auto read = ByteBuffer::fromHex(text)) REQUIRE(read->size() <= text.size() / 2);
    REQUIRE(whole.description().size() >= 2 * bytes.size() + 2);
}

void checkNumbers(const Number& a, const Number& b) {
    const auto order = a <=> b;
    REQUIRE((b <=> a) == 0 <=> order);
    REQUIRE((order == std::partial_ordering::unordered) ==
            (std::isnan(a.real()) || std::isnan(b.real())));
    if (!a.isReal() && !b.isReal()) {
        const auto wide = [](const Number& n) {
            return n.isSigned() ? Wide{n.int64()} : Wide{n.uint64()};
        };
        REQUIRE((wide(a) < wide(b)) == (order < 0));
    }
    if (const auto exact = a.exactInt64()) REQUIRE(Number(*exact) == a && a.int64() == *exact);
    if (const auto exact = a.exactUInt64()) REQUIRE(Number(*exact) == a && a.uint64() == *exact);
    if (a.isReal() && std::isfinite(a.real())) {
        REQUIRE(std::strtod(a.description().c_str(), nullptr) == a.real());
    }
}

void checkDates(std::int64_t seconds) {
    const Date date = Date::fromUnixTime(seconds);
    REQUIRE(Date::fromFields(date.fields()) == date);
    const std::time_t time = date.unixTime();
    std::tm expected{};
    REQUIRE(::gmtime_r(&time, &expected) != nullptr);
    const Date::Fields fields = date.fields();
    REQUIRE(fields.year == expected.tm_year + 1900 && expected.tm_mon + 1 == int(fields.month));
    REQUIRE(expected.tm_mday == int(fields.day) && expected.tm_sec == int(fields.second));
}

void checkDictionary(fuzzing::ByteSource source) {
    PropertyListDictionary dictionary;
    std::map<std::string, std::int64_t> model;
    while (!source.empty()) {
        const std::size_t action = source.below(4);
        const std::string key = std::to_string(source.below(40));
        if (action == 0) {
            REQUIRE(dictionary.erase(key) == (model.erase(key) == 1));
        } else if (action == 1) {
            const auto [value, isNew] = dictionary.enter(key);
            REQUIRE(isNew == !model.contains(key));
            *value = 7;
            model[key] = 7;
        } else {
            dictionary.set(key, source.rest().size());
            model[key] = static_cast<std::int64_t>(source.rest().size());
        }
    }
    REQUIRE(dictionary.size() == model.size());
    for (const auto& [key, value] : model) {
        REQUIRE(dictionary.find(key) != nullptr &&
                *dictionary.find(key) == PropertyListValue(value));
    }
    const PropertyListDictionary copy = dictionary;
    REQUIRE(copy == dictionary);
}

class Foreign : public PropertyListObject {
  public:
    explicit Foreign(std::optional<std::string> text) : text_(std::move(text)) {}
    std::optional<std::string> description() const override { return text_; }
    int typeNumber() const override { return 5; }

  private:
    std::optional<std::string> text_;
};

void checkPrinted(const char* format, const void* argument) {
    char* whole = nullptr;
    const int length = ASPrintF(&whole, format, argument);
    REQUIRE(length >= 0 && std::strlen(whole) <= static_cast<std::size_t>(length));
    char part[64];
    REQUIRE(SNPrintF(part, sizeof(part), format, argument) == length);
    std::free(whole);
}

void checkText(PropertyListDictionary dictionary, const std::string& text) {
    PropertyListValue::Object object;
    if (!text.empty()) object = std::make_shared<Foreign>(text);
    if (text.starts_with('x')) object = std::make_shared<Foreign>(std::nullopt);
    const IPCMessage message(dictionary);
    const PropertyListValue plain = dictionary;
    PropertyListArray array = {object, text, plain, PropertyListValue()};
    const PropertyListValue value = std::move(array);
    REQUIRE(!xmlPropertyList(value));  // neither an object nor null has an XML form
    for (const char* format : {"%@", "%''@", "%'.3@", "%3##@", "%20.40@", "%#@", "%-8@|"}) {
        checkPrinted(format, &value);
        checkPrinted(format, &plain);
    }
    checkPrinted("%{xpc}", &message);
    checkPrinted("%2{XPC}", nullptr);
    checkPrinted("%@", nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::ByteSource source(data, size);
    const std::size_t offset = source.byte();
    const std::size_t length = source.byte();
    const Number a = fuzzing::numberFrom(source);
    checkNumbers(a, fuzzing::numberFrom(source));
    checkDates(a.int64());
    checkDates(a.int64() >> 30);
    checkBuffers(source.rest(), offset, length);
    checkDictionary(source);
    const std::string text = source.text(20);
    checkText(fuzzing::dictionaryFrom(source, 4), text);
    return 0;
}
