#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/libsystemd_internal.h"
#include "halvane/platform/bus/message_reader_internal.h"

namespace halvane {

namespace {

template <char kType, typename Wire, typename Held>
bool readBasic(sd_bus_message* source, PropertyListValue& value) {
    Wire wire{};
    if (libsystemd().sd_bus_message_read_basic(source, kType, &wire) < 0) return false;
    value = Held(wire);
    return true;
}

struct BasicType {
    char type;
    bool (*read)(sd_bus_message* source, PropertyListValue& value);
};
constexpr std::array<BasicType, 12> kBasicTypes = {{
    {SD_BUS_TYPE_BYTE, readBasic<SD_BUS_TYPE_BYTE, std::uint8_t, Number>},
    {SD_BUS_TYPE_BOOLEAN, readBasic<SD_BUS_TYPE_BOOLEAN, int, bool>},
    {SD_BUS_TYPE_INT16, readBasic<SD_BUS_TYPE_INT16, std::int16_t, Number>},
    {SD_BUS_TYPE_UINT16, readBasic<SD_BUS_TYPE_UINT16, std::uint16_t, Number>},
    {SD_BUS_TYPE_INT32, readBasic<SD_BUS_TYPE_INT32, std::int32_t, Number>},
    {SD_BUS_TYPE_UINT32, readBasic<SD_BUS_TYPE_UINT32, std::uint32_t, Number>},
    {SD_BUS_TYPE_INT64, readBasic<SD_BUS_TYPE_INT64, std::int64_t, Number>},
    {SD_BUS_TYPE_UINT64, readBasic<SD_BUS_TYPE_UINT64, std::uint64_t, Number>},
    {SD_BUS_TYPE_DOUBLE, readBasic<SD_BUS_TYPE_DOUBLE, double, Number>},
    {SD_BUS_TYPE_STRING, readBasic<SD_BUS_TYPE_STRING, const char*, std::string>},
    {SD_BUS_TYPE_OBJECT_PATH, readBasic<SD_BUS_TYPE_OBJECT_PATH, const char*, std::string>},
    {SD_BUS_TYPE_SIGNATURE, readBasic<SD_BUS_TYPE_SIGNATURE, const char*, std::string>},
}};

// Reads from the message's current position. Each function returns false if the message is
// malformed. sd-bus limits how deep containers nest, which limits the recursion here.
class Reader {
  public:
    explicit Reader(sd_bus_message* source) : source_(source) {}

    // Reads a dictionary with string keys, whose entries have the signature `contents`, braces
    // included.
    bool readDictionary(const char* contents, PropertyListDictionary& entries) {
        const std::string entry(contents + 1, std::strlen(contents) - 2);
        return readContainer(SD_BUS_TYPE_ARRAY, contents, [&] {
            return readContainer(SD_BUS_TYPE_DICT_ENTRY, entry.c_str(), [&] {
                const char* key = nullptr;
                PropertyListValue value;
                if (libsystemd().sd_bus_message_read_basic(source_, SD_BUS_TYPE_STRING, &key) <=
                        0 ||
                    !readValue(value)) {
                    return false;
                }
                if (!value.isNull()) entries.set(key, std::move(value));
                return true;
            });
        });
    }

  private:
    // Whether nothing is left in the container, which is not a failure.
    bool isAtEnd() const { return libsystemd().sd_bus_message_at_end(source_, 0) > 0; }

    template <typename ReadElement>
    bool readContainer(char type, const char* contents, ReadElement readElement) {
        if (libsystemd().sd_bus_message_enter_container(source_, type, contents) <= 0) return false;
        while (!isAtEnd()) {
            if (!readElement()) return false;
        }
        return libsystemd().sd_bus_message_exit_container(source_) >= 0;
    }

    bool skip() { return libsystemd().sd_bus_message_skip(source_, nullptr) >= 0; }

    // Reads the next value. It becomes null if its type is skipped.
    bool readValue(PropertyListValue& value) {
        char type = 0;
        const char* contents = nullptr;
        if (libsystemd().sd_bus_message_peek_type(source_, &type, &contents) <= 0) return false;
        if (type == SD_BUS_TYPE_ARRAY) return readArray(contents, value);
        if (type == SD_BUS_TYPE_VARIANT) {
            return readContainer(type, contents, [&] { return readValue(value); });
        }
        const auto basic = std::ranges::find(kBasicTypes, type, &BasicType::type);
        return basic == kBasicTypes.end() ? skip() : basic->read(source_, value);
    }

    bool readArray(const char* contents, PropertyListValue& value) {
        const std::string_view element = contents;
        if (element == "y") return readData(value);
        if (element.starts_with("{s")) {
            value = PropertyListDictionary();
            return readDictionary(contents, *value.as<PropertyListDictionary>());
        }
        if (element.starts_with('{') || element.starts_with('(')) return skip();
        // As a value, such a number would take 24 times its room.
        if (element == "n" || element == "q") return skip();
        value = PropertyListArray();
        return readElements(contents, *value.as<PropertyListArray>());
    }

    // Counts the elements first: an array that grows takes three times the room.
    bool readElements(const char* contents, PropertyListArray& array) {
        bool isCounted = false;
        return readContainer(SD_BUS_TYPE_ARRAY, contents, [&] {
            if (!std::exchange(isCounted, true)) {
                std::size_t count = 0;
                if (!countElements(count)) return false;
                array.reserve(count);
            }
            PropertyListValue element;
            if (!readValue(element)) return false;
            if (!element.isNull()) array.push_back(std::move(element));
            return true;
        });
    }

    // Counts the elements of the container at whose beginning the message stands, and returns
    // there.
    bool countElements(std::size_t& count) {
        for (count = 0; !isAtEnd(); ++count) {
            if (!skip()) return false;
        }
        return libsystemd().sd_bus_message_rewind(source_, 0) >= 0;
    }

    bool readData(PropertyListValue& value) {
        const void* bytes = nullptr;
        std::size_t size = 0;
        if (libsystemd().sd_bus_message_read_array(source_, SD_BUS_TYPE_BYTE, &bytes, &size) < 0)
            return false;
        value = ByteBuffer(std::span(static_cast<const std::uint8_t*>(bytes), size));
        return true;
    }

    sd_bus_message* const source_;
};

}  // namespace

std::optional<IPCMessage> readBusMessage(sd_bus_message* source) {
    char type = 0;
    const char* contents = nullptr;
    if (libsystemd().sd_bus_message_peek_type(source, &type, &contents) <= 0 ||
        type != SD_BUS_TYPE_ARRAY || std::string_view(contents) != "{sv}") {
        return std::nullopt;
    }
    try {
        PropertyListDictionary entries;
        if (!Reader(source).readDictionary(contents, entries)) return std::nullopt;
        return IPCMessage(std::move(entries));
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace halvane
