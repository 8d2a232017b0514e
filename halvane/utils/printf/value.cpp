// Property-list values: scalars as text, containers as indented lines, or the whole value as XML.
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

namespace {

bool isEmptyContainer(const PropertyListValue& value) {
    if (const auto* array = value.as<PropertyListArray>()) return array->empty();
    if (const auto* dictionary = value.as<PropertyListDictionary>()) return dictionary->empty();
    return false;
}

bool isContainer(const PropertyListValue& value) {
    return value.as<PropertyListArray>() != nullptr ||
           value.as<PropertyListDictionary>() != nullptr;
}

// Writes a value that is neither a container nor data. The precision applies only to texts.
class ScalarWriter {
  public:
    ScalarWriter(Output& output, const PrintFFormat& format)
        : output_(output), plain_(format), quoted_(format) {
        applyQuotes(quoted_);
    }

    void operator()(std::monostate) { PrintFWriteText(output_, plain_, kNullText); }
    void operator()(bool value) { PrintFWriteText(output_, quoted_, value ? "true" : "false"); }
    void operator()(const std::string& value) {
        PrintFWriteText(output_, quoted_, cutToPrecision(quoted_, value));
    }
    void operator()(const Number& value) {
        if (const auto integer = value.exactInt64()) {
            writeMessage(output_, quoted_, "%lld", *integer);
        } else if (value.isUnsigned()) {
            writeMessage(output_, quoted_, "%llu", value.uint64());
        } else {
            writeMessage(output_, quoted_, "%f", value.real());
        }
    }
    void operator()(const Date& value) {
        const auto fields = value.fields();
        writeMessage(output_, quoted_, "%04d-%02d-%02d %02d:%02d:%02d", fields.year, fields.month,
                     fields.day, fields.hour, fields.minute, fields.second);
    }
    void operator()(const PropertyListValue::Object& value) {
        if (value == nullptr) return (*this)(std::monostate());
        if (const auto description = value->description()) return (*this)(*description);
        writeMessage(output_, plain_, "<<UNKNOWN CF OBJECT TYPE: %d>>", value->typeNumber());
    }

    // PrintFWriteCFObjectLevel prints these kinds.
    void operator()(const ByteBuffer&) {}
    void operator()(const PropertyListArray&) {}
    void operator()(const PropertyListDictionary&) {}

  private:
    Output& output_;
    PrintFFormat plain_;
    PrintFFormat quoted_;
};

void writeScalar(Output& output, const PrintFFormat& format, const PropertyListValue& value) {
    std::visit(ScalarWriter(output, format), value.variant());
}

void writeDataBlock(Output& output, const ByteBuffer& data, std::uint64_t level) {
    const auto bytes = data.bytes();
    writeHexBlock(output, level * kIndentStep, bytes.data(), bytes.size(), bytes.size());
}

void writeDataLines(Output& output, const ByteBuffer& data, std::uint64_t level) {
    const auto bytes = data.bytes();
    const std::uint64_t indent = level * kIndentStep;
    if (bytes.empty()) {
        output.pad(indent);
        return output.write("(0 bytes)\n");
    }
    PrintFWriteHex(output, indent, bytes.data(), bytes.size(), bytes.size());
}

// Replaces a value that is so deep that printing it might overflow the stack.
void writeTooDeep(Output& output) {
    output.write(kPropertyListTooDeepText);
    output.write("\n");
}

// Writes one element of an array whose elements are at `level`.
void writeElement(Output& output, const PropertyListValue& value, std::uint64_t level,
                  ValueForm form) {
    if (form.isTooDeep()) {
        output.pad(level * kIndentStep);
        return writeTooDeep(output);
    }
    if (const auto* data = value.as<ByteBuffer>()) return writeDataLines(output, *data, level);
    if (!isContainer(value)) output.pad(level * kIndentStep);
    PrintFWriteCFObjectLevel(output, value, level, form);
    output.write("\n");
}

void writeArray(Output& output, const PropertyListArray& array, std::uint64_t level,
                ValueForm form) {
    output.pad(level * kIndentStep);
    if (array.empty()) return output.write("[]");
    output.write("[\n");
    for (const auto& element : array) {
        if (!output.isOpen()) return;
        writeElement(output, element, level + 1, form.within());
    }
    output.pad(level * kIndentStep);
    output.write("]");
}

void writeDictionary(Output& output, const PropertyListDictionary& dictionary, std::uint64_t level,
                     ValueForm form) {
    output.pad(level * kIndentStep);
    if (dictionary.empty()) return output.write("{}");
    output.write("{\n");
    for (const auto& [key, value] : dictionary) {
        if (!output.isOpen()) return;
        PrintFWriteCFObjectApplier(output, key, value, level + 1, form.within());
    }
    output.pad(level * kIndentStep);
    output.write("}");
}

void writeXML(Output& output, const PrintFFormat& format, const PropertyListValue& value) {
    const auto text = xmlPropertyList(value);
    if (!text) return PrintFWriteText(output, format, "<<PLIST NOT XML-ABLE>>");
    PrintFWriteMultiLineText(output, indentOf(format), *text);
}

}  // namespace

void PrintFWriteCFObjectLevel(Output& output, const PropertyListValue& value, std::uint64_t level,
                              ValueForm form) {
    if (const auto* array = value.as<PropertyListArray>()) {
        writeArray(output, *array, level, form);
    } else if (const auto* dictionary = value.as<PropertyListDictionary>()) {
        writeDictionary(output, *dictionary, level, form);
    } else if (const auto* data = value.as<ByteBuffer>()) {
        writeDataBlock(output, *data, level);
    } else {
        writeScalar(output, kPrintFFormatDefault, value);
    }
}

void PrintFWriteCFObjectApplier(Output& output, std::string_view key,
                                const PropertyListValue& value, std::uint64_t level,
                                ValueForm form) {
    output.pad(level * kIndentStep);
    output.write(key);
    output.write("=");
    if (form.isTooDeep()) return writeTooDeep(output);
    const auto* data = value.as<ByteBuffer>();
    if (data != nullptr && (form.flags & kValueFlagDataOnOwnLines) == 0) {
        return writeDataBlock(output, *data, level + 1);
    }
    if (data != nullptr) {
        output.write("\n");
        return writeDataLines(output, *data, level + 1);
    }
    if (isEmptyContainer(value)) {
        return output.write(value.as<PropertyListArray>() != nullptr ? "[]\n" : "{}\n");
    }
    if (isContainer(value)) output.write("\n");
    PrintFWriteCFObjectLevel(output, value, level + 1, form);
    output.write("\n");
}

void convertValue(Output& output, Conversion& conversion, Arguments& arguments) {
    constexpr std::uint8_t kXMLForm = 1;
    const PrintFFormat& format = conversion.format;
    const auto* value = va_arg(arguments.list, const PropertyListValue*);
    if (value == nullptr) return PrintFWriteText(output, format, kNullText);
    if (format.altForm == kXMLForm) return writeXML(output, format, *value);
    if (!isContainer(*value) && value->as<ByteBuffer>() == nullptr) {
        return writeScalar(output, format, *value);
    }
    const unsigned flags = format.altForm > kXMLForm ? unsigned{kValueFlagDataOnOwnLines} : 0;
    PrintFWriteCFObjectLevel(output, *value, format.fieldWidth, {.flags = flags});
    if (isContainer(*value)) output.write("\n");
}

}  // namespace halvane::printing
