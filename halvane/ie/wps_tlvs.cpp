#include "halvane/ie/wps_tlvs.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <utility>

#include "halvane/base/boxed.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kDeviceTypeSize = 8;
constexpr std::uint16_t kAuthenticationType = 0x1003;
constexpr std::uint16_t kAuthenticationTypeFlags = 0x1004;

constexpr std::array kLabels = {
#define HALVANE_WPS_PROPERTY(type, name, kind, shortest, longest, property, setter, label) label,
#include "halvane/ie/wps_attribute_list.h"
};

constexpr std::array kAttributes = {
#define HALVANE_WPS_PROPERTY(type, name, kind, shortest, longest, property, ...) \
    WPSAttribute{type, WPSValueKind::kind, shortest, longest, WPSProperty::property},
#define HALVANE_WPS_PARSER_ONLY HALVANE_WPS_PROPERTY
#include "halvane/ie/wps_attribute_list.h"
};

// The labels are indexed by property.
constexpr WPSProperty kProperties[] = {
#define HALVANE_WPS_PROPERTY(type, name, kind, shortest, longest, property, ...) \
    WPSProperty::property,
#include "halvane/ie/wps_attribute_list.h"
};
static_assert(std::size(kProperties) == kLabels.size());
static_assert([] {
    for (std::size_t i = 0; i < std::size(kProperties); ++i) {
        if (kProperties[i] != WPSProperty{static_cast<std::uint8_t>(i)}) return false;
    }
    return true;
}());

constexpr std::uint8_t kNoRow = 0xFF;
static_assert(kAttributes.size() < kNoRow);

// The row of each type, as an index into kAttributes.
constexpr auto kRowOfType = [] {
    std::array<std::uint8_t, kWPSLastType - kWPSFirstType + 1> rows{};
    rows.fill(kNoRow);
    for (std::size_t row = 0; row < kAttributes.size(); ++row) {
        rows.at(kAttributes[row].type - kWPSFirstType) = static_cast<std::uint8_t>(row);
    }
    return rows;
}();

const WPSAttribute* attributeOfType(std::uint16_t type) {
    if (type < kWPSFirstType || type > kWPSLastType) return nullptr;
    const std::uint8_t row = kRowOfType[type - kWPSFirstType];
    return row == kNoRow ? nullptr : &kAttributes[row];
}

struct TLV {
    std::uint16_t type;
    ByteBuffer value;
};

// Absent if the header or the value is truncated.
std::optional<TLV> takeTLV(ByteCursor& cursor) {
    const auto type = cursor.u16be();
    const auto length = cursor.u16be();
    if (!type || !length) return std::nullopt;
    auto value = cursor.takeBuffer(*length);
    if (!value) return std::nullopt;
    return TLV{*type, *std::move(value)};
}

// Absent if an attribute that may be empty is empty.
std::optional<Number> takeInteger(ByteCursor& value, std::size_t width) {
    if (width == 4) return value.u32be();
    if (width == 2) return value.u16be();
    return value.u8();
}

std::optional<Number> takeVersion(ByteCursor& value) {
    const auto byte = value.u8();
    if (!byte) return std::nullopt;
    return (*byte >> 4) + (*byte & 0x0F) / 10.0;
}

bool acceptsLength(const WPSAttribute& attribute, std::size_t length) {
    if (length < attribute.shortest || length > attribute.longest) return false;
    return attribute.kind != WPSValueKind::Devices || length % kDeviceTypeSize == 0;
}

// Returns the number of device types in the attributes.
std::size_t countDeviceTypes(const ByteBuffer& tlvs) {
    std::size_t count = 0;
    for (ByteCursor cursor(tlvs);;) {
        const auto type = cursor.u16be();
        const auto length = cursor.u16be();
        if (!length || !cursor.skip(*length)) return count;
        const auto* attribute = attributeOfType(*type);
        if (attribute == nullptr || attribute->kind != WPSValueKind::Devices) continue;
        if (acceptsLength(*attribute, *length)) count += *length / kDeviceTypeSize;
    }
}

// Returns the text after a label, including the newline.
std::string line(const Number& number) {
    return number.description() + '\n';
}

std::string line(const ByteBuffer& bytes) {
    return bytes.description() + '\n';
}

std::string line(const std::vector<ByteBuffer>& buffers) {
    std::string text = "(";
    const char* separator = "";
    for (const ByteBuffer& buffer : buffers) {
        text += separator + buffer.description();
        separator = ", ";
    }
    return text += ")\n";
}

std::string line(const std::vector<HalvaneWPSDeviceType>& deviceTypes) {
    std::string text = "\n";
    for (const HalvaneWPSDeviceType& type : deviceTypes) text += type.description() + '\n';
    return text += '\n';
}

// The colons are aligned, except that the label of updatedDeviceName is one blank short.
int labelWidth(WPSProperty property) {
    return property == WPSProperty::updatedDeviceName ? 33 : 34;
}

}  // namespace

HalvaneWPSTLVs HalvaneWPSTLVs::initWithData(const std::optional<ByteBuffer>& data) {
    HalvaneWPSTLVs object;
    object.rawTLVs_ = data.value_or(ByteBuffer());
    object.parseTLVs();
    return object;
}

void HalvaneWPSTLVs::parseTLVs() {
    isValid_ = true;
    if (!rawTLVs_) return;
    ByteCursor cursor(*rawTLVs_);
    while (const auto tlv = takeTLV(cursor)) {
        const ByteCursor value(tlv->value);
        if (const auto* attribute = attributeOfType(tlv->type)) file(*attribute, value);
        if (tlv->type == kAuthenticationType) {
            file(*attributeOfType(kAuthenticationTypeFlags), value);
        }
        if (cursor.atEnd()) isValid_ = true;
    }
}

void HalvaneWPSTLVs::file(const WPSAttribute& attribute, ByteCursor value) {
    if (acceptsLength(attribute, value.remaining())) {
        storeValue(attribute, value);
    } else {
        isValid_ = false;
    }
}

void HalvaneWPSTLVs::storeValue(const WPSAttribute& attribute, ByteCursor& value) {
    const WPSProperty property = attribute.property;
    switch (attribute.kind) {
        case WPSValueKind::Integer:
            if (auto number = takeInteger(value, attribute.longest)) slot(property) = number;
            return;
        case WPSValueKind::Version:
            if (auto number = takeVersion(value)) slot(property) = number;
            return;
        case WPSValueKind::Bytes:
            slot(property) = std::optional(value.restBuffer());
            return;
        case WPSValueKind::Vendor:
            if (find(property)) slot(property) = std::optional(std::vector{value.restBuffer()});
            return;
        case WPSValueKind::Devices:
            appendDeviceTypes(property, value);
            return;
    }
}

// Counts them first, since a list that grows takes several times the room.
void HalvaneWPSTLVs::appendDeviceTypes(WPSProperty property, ByteCursor& value) {
    using DeviceTypes = std::vector<HalvaneWPSDeviceType>;
    if (!find(property)) slot(property) = std::optional(DeviceTypes());
    auto& types = *std::get<std::optional<DeviceTypes>>(slot(property));
    if (types.empty() && !value.atEnd() && rawTLVs_) types.reserve(countDeviceTypes(*rawTLVs_));
    while (const auto bytes = value.takeBuffer(kDeviceTypeSize)) {
        types.push_back(HalvaneWPSDeviceType::initWithDeviceType(*bytes));
    }
}

const HalvaneWPSTLVs::Value* HalvaneWPSTLVs::find(WPSProperty property) const {
    const auto entry = std::ranges::lower_bound(entries_, property, {}, &Entry::property);
    return entry != entries_.end() && entry->property == property ? &entry->value : nullptr;
}

HalvaneWPSTLVs::Value& HalvaneWPSTLVs::slot(WPSProperty property) {
    const auto entry = std::ranges::lower_bound(entries_, property, {}, &Entry::property);
    if (entry != entries_.end() && entry->property == property) return entry->value;
    return entries_.insert(entry, Entry{property, {}})->value;
}

template <typename Held>
const std::optional<Held>& HalvaneWPSTLVs::get(WPSProperty property) const {
    const Value* value = find(property);
    return value ? std::get<std::optional<Held>>(*value) : kFreshValue<std::optional<Held>>.value;
}

template <typename Held>
void HalvaneWPSTLVs::set(WPSProperty property, std::optional<Held> value) {
    if (value) {
        slot(property) = std::move(value);
    } else {
        std::erase_if(entries_, [&](const Entry& entry) { return entry.property == property; });
    }
}

#define DEFINE_PARSER(type, name)                                                       \
    void HalvaneWPSTLVs::parseDataElement##name##_withLength(const std::uint8_t* value, \
                                                             std::size_t length) {      \
        file(*attributeOfType(type), ByteCursor(std::span(value, length)));             \
    }
#define HALVANE_WPS_PROPERTY(type, name, kind, shortest, longest, property, setter, label) \
    const std::optional<WPSValue<WPSValueKind::kind>>& HalvaneWPSTLVs::property() const {  \
        return get<WPSValue<WPSValueKind::kind>>(WPSProperty::property);                   \
    }                                                                                      \
    void HalvaneWPSTLVs::setter(std::optional<WPSValue<WPSValueKind::kind>> value) {       \
        set(WPSProperty::property, std::move(value));                                      \
    }                                                                                      \
    DEFINE_PARSER(type, name)
#define HALVANE_WPS_PARSER_ONLY(type, name, ...) DEFINE_PARSER(type, name)
#include "halvane/ie/wps_attribute_list.h"
#undef DEFINE_PARSER

std::string HalvaneWPSTLVs::description() const {
    std::string text;
    if (!rawTLVs_) return text;
    for (const Entry& entry : entries_) {
        const auto value = std::visit([](const auto& held) { return line(*held); }, entry.value);
        appendPrintF(text, "    %-*s: %s", labelWidth(entry.property),
                     kLabels[static_cast<std::size_t>(entry.property)], value.c_str());
    }
    return text;
}

}  // namespace halvane
