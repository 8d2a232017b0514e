#include <cstring>
#include <string>
#include <type_traits>
#include <variant>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/platform/bus/message_check_internal.h"

namespace halvane {

namespace {

// The nesting limit of arrays, dictionary entries and variants together: 32 arrays and 32
// structures (D-Bus Specification, "Valid Signatures"). The reference bus counts variants too.
constexpr int kMaxDepth = 64;

// Adds up sizes by the D-Bus layout, which aligns each value to its own size.
class Measurer {
  public:
    explicit Measurer(std::size_t limit) : limit_(limit) {}

    // Each function returns false if the value cannot be sent; refusal() then tells why.
    bool addDictionary(const PropertyListDictionary& entries, int depth) {
        if (!addArrayHead(8)) return false;
        for (const auto& [key, value] : entries) {
            align(8);
            if (!addString(key) || !addVariant(value, depth + 2)) return false;
        }
        return true;
    }

    std::size_t size() const { return size_; }
    std::string_view refusal() const { return refusal_; }

  private:
    bool refuse(std::string_view reason) {
        refusal_ = reason;
        return false;
    }

    void align(std::size_t to) { size_ += (to - size_ % to) % to; }

    bool addArrayHead(std::size_t elementAlignment) {
        align(4);
        size_ += 4;
        align(elementAlignment);
        return addBytes(0);
    }

    bool addBytes(std::size_t count) {
        if (size_ > limit_ || count > limit_ - size_) return refuse("the message is too long");
        size_ += count;
        return true;
    }

    bool addString(std::string_view text) {
        align(4);
        if (!addBytes(4 + text.size() + 1)) return false;
        if (text.find('\0') != std::string_view::npos) return refuse("a string holds U+0000");
        return isUtf8(text) || refuse("a string is not UTF-8");
    }

    bool addVariant(const PropertyListValue& value, int depth) {
        if (depth + 1 > kMaxDepth) return refuse("the message nests too deep");
        const char* signature = busSignatureOf(value);
        if (signature == nullptr) return refuse("a value has no type on the bus");
        if (!addBytes(1 + std::strlen(signature) + 1)) return false;
        return std::visit([&](const auto& held) { return addHeld(held, depth + 1); },
                          value.variant());
    }

    bool addHeld(bool, int) {
        align(4);
        return addBytes(4);
    }
    bool addHeld(const Number&, int) {
        align(8);
        return addBytes(8);
    }
    bool addHeld(const std::string& text, int) { return addString(text); }
    bool addHeld(const ByteBuffer& data, int) { return addArrayHead(1) && addBytes(data.size()); }
    bool addHeld(const PropertyListArray& array, int depth) {
        if (!addArrayHead(1)) return false;
        for (const PropertyListValue& value : array) {
            if (!addVariant(value, depth + 1)) return false;
        }
        return true;
    }
    bool addHeld(const PropertyListDictionary& entries, int depth) {
        return addDictionary(entries, depth);
    }
    template <typename Other>
    bool addHeld(const Other&, int) {
        return false;  // it has no signature
    }

    const std::size_t limit_;
    std::size_t size_ = 0;
    std::string_view refusal_;
};

const char* signatureOfNumber(const Number& number) {
    if (number.isReal()) return "d";
    return number.exactInt64() ? "x" : "t";
}

}  // namespace

const char* busSignatureOf(const PropertyListValue& value) {
    return std::visit(
        [](const auto& held) -> const char* {
            using Held = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, bool>) return "b";
            if constexpr (std::is_same_v<Held, Number>) return signatureOfNumber(held);
            if constexpr (std::is_same_v<Held, std::string>) return "s";
            if constexpr (std::is_same_v<Held, ByteBuffer>) return "ay";
            if constexpr (std::is_same_v<Held, PropertyListArray>) return "av";
            if constexpr (std::is_same_v<Held, PropertyListDictionary>) return "a{sv}";
            return nullptr;
        },
        value.variant());
}

BusMessageCheck checkBusMessage(const IPCMessage& message, std::size_t sizeLimit) {
    Measurer measurer(sizeLimit);
    if (measurer.addDictionary(message.entries(), 0)) return {{}, measurer.size()};
    return {measurer.refusal(), 0};
}

}  // namespace halvane
