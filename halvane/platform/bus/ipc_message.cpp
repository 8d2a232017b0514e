#include "halvane/platform/bus/ipc_message.h"

#include <cstddef>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/number.h"

namespace halvane {

namespace {

// Appends the lines of one message: each value follows the label that names it.
class DescriptionWriter {
  public:
    explicit DescriptionWriter(std::string& text) : text_(text) {}

    void write(const PropertyListDictionary& dictionary, std::size_t level) {
        for (const auto& [key, value] : dictionary) writeEntry(key, value, level);
    }

  private:
    // In a property list the message is at level 1 and its entries at level 2.
    static constexpr std::size_t kDeepestIndent = kPropertyListMaxDepth - 2;

    void writeEntry(const std::string& label, const PropertyListValue& value, std::size_t level) {
        text_.append(4 * level, ' ').append(label).append(" = ");
        if (level > kDeepestIndent) {
            text_.append(kPropertyListTooDeepText).append("\n");
        } else if (const auto* dictionary = value.as<PropertyListDictionary>()) {
            text_.append("dictionary\n");
            write(*dictionary, level + 1);
        } else if (const auto* array = value.as<PropertyListArray>()) {
            text_.append("array\n");
            for (std::size_t i = 0; i < array->size(); ++i) {
                writeEntry(std::to_string(i), (*array)[i], level + 1);
            }
        } else {
            text_.append(scalarText(value)).append("\n");
        }
    }

    static std::string scalarText(const PropertyListValue& value) {
        if (const auto* boolean = value.as<bool>()) return *boolean ? "true" : "false";
        if (const auto* number = value.as<Number>()) return number->description();
        if (const auto* string = value.as<std::string>()) return *string;
        if (const auto* data = value.as<ByteBuffer>()) return data->description();
        if (const auto* date = value.as<Date>()) {
            return std::to_string(date->unixTime()) + " s since 1970";
        }
        if (const auto* object = value.as<PropertyListValue::Object>(); object && *object) {
            return (*object)->description().value_or("object");
        }
        return "null";
    }

    std::string& text_;
};

}  // namespace

std::optional<std::string> IPCMessage::description() const {
    if (entries_.empty()) return std::nullopt;
    std::string text;
    DescriptionWriter(text).write(entries_, 0);
    return text;
}

}  // namespace halvane
