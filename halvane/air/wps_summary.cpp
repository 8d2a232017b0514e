#include "halvane/air/wps_summary.h"

#include <algorithm>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/vendor_attribute_internal.h"
#include "halvane/base/byte_buffer.h"

namespace halvane::air {

namespace {

constexpr ValueName kStates[] = {{1, "Not configured"}, {2, "Configured"}};
constexpr ValueName kPasswordIds[] = {
    {0, "Default (PIN)"}, {1, "User-specified"},      {2, "Machine-specified"},       {3, "Rekey"},
    {4, "PushButton"},    {5, "Registrar-specified"}, {7, "NFC-Connection-Handover"}, {8, "P2Ps"}};
constexpr ValueName kResponseTypes[] = {
    {0, "Enrollee, Info only"}, {1, "Enrollee, open 802.1X"}, {2, "Registrar"}, {3, "AP"}};
constexpr BitField kRfBands[] = {
    {0, 1, "2.4 GHz"}, {1, 1, "5.0 GHz"}, {2, 1, "60 GHz"}, {3, 5, "Reserved"}};
// The octets come in the order of their significance: the first holds the bits 8 to 15.
constexpr BitField kConfigMethods[] = {
    {0, 1, "Keypad"},
    {1, 1, "Virtual PushButton"},
    {2, 1, "Physical PushButton"},
    {4, 1, "P2Ps"},
    {5, 1, "Virtual Display PIN"},
    {6, 1, "Physical Display PIN"},
    {8, 1, "USBA"},
    {9, 1, "Ethernet"},
    {10, 1, "Label"},
    {11, 1, "Display"},
    {12, 1, "External NFC Token"},
    {13, 1, "Integrated NFC Token"},
    {14, 1, "NFC Interface"},
    {15, 1, "PushButton"},
};

constexpr std::uint16_t kConfigMethodsId = 0x1008;
constexpr std::uint16_t kStateId = 0x1044;
constexpr std::uint16_t kUuidE = 0x1047;
constexpr std::uint16_t kUuidR = 0x1048;
constexpr std::uint16_t kVendorExtension = 0x1049;
constexpr std::uint16_t kPrimaryDeviceType = 0x1054;
constexpr OUI kWfaExtension = {0x00, 0x37, 0x2A};

void tellState(ElementReader& reader) {
    std::uint8_t value = 0;
    reader.number("Value", value, {.names = kStates});
}
void tellResponseType(ElementReader& reader) {
    std::uint8_t value = 0;
    reader.number("Value", value, {.names = kResponseTypes});
}
void tellPasswordId(ElementReader& reader) {
    std::uint16_t value = 0;
    reader.bigEndian("Value", value, {.names = kPasswordIds});
}

constexpr auto kDeviceTypeLayout = [](auto& codec, auto& type) {
    codec.bigEndian("Category ID", type.category);
    codec.octets("OUI", type.oui);
    codec.bigEndian("Sub Category ID", type.subcategory);
};
void tellDeviceType(ElementReader& reader) {
    WpsPrimaryDeviceType type;
    kDeviceTypeLayout(reader, type);
}

// The Wi-Fi Alliance's extension: subelements after its OUI.
struct Extension {
    OUI oui{};
    VendorAttributes subelements{};
};
constexpr AttributeRow kSubelements[] = {
    {0, "Version2", tellBigEndian<std::uint8_t>},
    {1, "AuthorizedMACs"},
    {2, "Network Key Shareable", tellFlag},
    {3, "Request to Enroll", tellFlag},
    {4, "Settings Delay Time", tellBigEndian<std::uint8_t>},
    {5, "Registrar Configuration Methods", tellBitFields<2, kConfigMethods>},
    {6, "Multi-AP Extension"},
};
constexpr auto kSubelementNames = attributeNames(kSubelements);
constexpr auto kExtensionLayout = [](auto& codec, auto& extension) {
    codec.octets("Vendor ID", extension.oui);
    if (extension.oui != kWfaExtension) return;
    attributesLayout(
        codec, extension.subelements, kSubelements,
        [&](auto& id) {
            codec.template numberOf<1>("Subelement ID", id, {.names = kSubelementNames});
        },
        [&](auto value) { codec.template sized<std::uint8_t>("Length", 0, value); });
};
void tellExtension(ElementReader& reader) {
    Extension extension;
    kExtensionLayout(reader, extension);
}

constexpr AttributeRow kRows[] = {
    {0x1002, "Association State"},
    {kConfigMethodsId, "Config Methods", tellBitFields<2, kConfigMethods>},
    {0x1009, "Configuration Error"},
    {0x1011, "Device Name", tellText},
    {0x1012, "Device Password ID", tellPasswordId},
    {0x1021, "Manufacturer", tellText},
    {0x1023, "Model Name", tellText},
    {0x1024, "Model Number", tellText},
    {0x103A, "Request Type"},
    {0x103B, "Response Type", tellResponseType},
    {0x103C, "RF Bands", tellBitFields<1, kRfBands>},
    {0x1041, "Selected Registrar", tellFlag},
    {0x1042, "Serial Number", tellText},
    {kStateId, "Wi-Fi Protected Setup State", tellState},
    {kUuidE, "UUID-E"},
    {kUuidR, "UUID-R"},
    {kVendorExtension, "Vendor Extension", tellExtension},
    {0x104A, "Version", tellBigEndian<std::uint8_t>},
    {0x1053, "Selected Registrar Config Methods", tellBitFields<2, kConfigMethods>},
    {kPrimaryDeviceType, "Primary Device Type", tellDeviceType},
    {0x1055, "Secondary Device Type List"},
    {0x1057, "AP Setup Locked", tellFlag},
    {0x106A, "Requested Device Type"},
};
constexpr auto kNames = attributeNames(kRows);

constexpr auto kLayout = [](auto& codec, auto& element) {
    attributesLayout(
        codec, element.attributes, kRows,
        [&](auto& id) { codec.bigEndian("Attribute Type", id, {.names = kNames}); },
        [&](auto value) { codec.bigEndianSized("Length", value); });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(WpsSummary, kLayout)

std::optional<std::uint8_t> WpsSummary::versionOf2() const {
    for (const VendorAttribute& attribute : attributes) {
        if (attribute.id != kVendorExtension) continue;
        const auto extension = decodeBy<Extension>(kExtensionLayout, attribute.value.bytes());
        if (!extension) continue;
        if (const auto version = attributeOctet(extension->subelements, 0)) return version;
    }
    return std::nullopt;
}

std::optional<WpsState> WpsSummary::state() const {
    const auto value = attributeOctet(attributes, kStateId);
    if (!value) return std::nullopt;
    return WpsState(*value);
}

bool WpsSummary::hasConfigMethod(WpsConfigMethod method) const {
    const auto methods = attributeNumber(attributes, kConfigMethodsId).value_or(0);
    return (methods >> static_cast<unsigned>(method) & 1) != 0;
}

std::optional<std::array<std::uint8_t, 16>> WpsSummary::uuid() const {
    for (const std::uint16_t id : {kUuidE, kUuidR}) {
        std::array<std::uint8_t, 16> uuid{};
        const ByteBuffer* value = findAttribute(attributes, id);
        if (value == nullptr || value->size() != uuid.size()) continue;
        std::ranges::copy(*value, uuid.begin());
        return uuid;
    }
    return std::nullopt;
}

std::optional<WpsPrimaryDeviceType> WpsSummary::primaryDeviceType() const {
    const ByteBuffer* value = findAttribute(attributes, kPrimaryDeviceType);
    if (value == nullptr) return std::nullopt;
    return decodeBy<WpsPrimaryDeviceType>(kDeviceTypeLayout, value->bytes());
}

}  // namespace halvane::air
