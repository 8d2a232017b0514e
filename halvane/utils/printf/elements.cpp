// 802.11 element lists, one line per element (IEEE 802.11-2020 clause 9.4.2.1).
#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/base/oui.h"
#include "halvane/base/vendor.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr int kNameColumn = 27;
constexpr int kSubNameColumn = 23;
constexpr int kSubIndent = 8;

constexpr std::uint16_t kWPSConfigMethods = 0x1008;

constexpr const char* kUnknown = "<<UNKNOWN>>";

const char* elementName(std::uint8_t id) {
    switch (id) {
        case kElementIDSSID:
            return "SSID";
        case kElementIDSupportedRates:
            return "Supported Rates";
        case kElementIDDSParameterSet:
            return "DS Parameter Set";
        case kElementIDExtendedSupportedRates:
            return "Extended Supported Rates";
        default:
            return kUnknown;
    }
}

// How the body of a sub-element is printed.
enum class SubForm { kText, kHex };

struct SubElement {
    const char* name;
    SubForm form;
};

// The sub-elements of EasyConnect, by type from 0 on.
constexpr std::array<SubElement, 8> kEasyConnectElements = {{
    {"Name", SubForm::kText},
    {"Model", SubForm::kText},
    {"Flags", SubForm::kHex},
    {"OfferSubTypes", SubForm::kText},
    {"OfferTXT", SubForm::kHex},
    {"SearchTypes", SubForm::kText},
    {"AuthorizedMACs", SubForm::kHex},
    {"ConfigMethods", SubForm::kHex},
}};

SubElement easyConnectElement(std::uint8_t type) {
    return type < kEasyConnectElements.size() ? kEasyConnectElements[type]
                                              : SubElement{kUnknown, SubForm::kHex};
}

SubElement wpsAttribute(std::uint16_t type) {
    return {type == kWPSConfigMethods ? "ConfigMethods" : kUnknown, SubForm::kHex};
}

class ElementPrinter {
  public:
    ElementPrinter(Output& output, int indent)
        : output_(output), indent_(indent), subIndent_(indent + kSubIndent) {}

    void print(ByteCursor cursor) {
        while (!cursor.atEnd() && output_.isOpen()) {
            ByteCursor start = cursor;
            const auto id = cursor.u8();
            const auto length = cursor.u8();
            if (!length) return printBad("### bad IE header:\n%2.1H\n", start.rest());
            const auto body = cursor.take(*length);
            if (!body) return printBad("### bad IE length:\n%2.1H\n", start.rest());
            printElement(*id, *body);
        }
    }

  private:
    using VendorPrinter = void (ElementPrinter::*)(const char* name, ByteCursor body);

    struct Vendor {
        OUI oui;
        std::uint8_t type;
        const char* name;
        VendorPrinter print;
    };
    static const std::array<Vendor, 4> kVendors;

    void printElement(std::uint8_t id, Bytes body) {
        if (id == kElementIDVendorSpecific) {
            printVendor(body);
        } else if (id == kElementIDSSID) {
            output_.print("%*s%3d %-*s '%.*s'\n", indent_, "", int{id}, kNameColumn,
                          elementName(id), sizeOf(body), body.data());
        } else {
            printHex(id, elementName(id), body);
        }
    }

    void printVendor(Bytes body) {
        ByteCursor cursor(body);
        const auto oui = cursor.take(OUI().size());
        const auto type = cursor.u8();
        if (!type) return printBad("### bad vendor IE:\n%2.1H\n", body);
        for (const auto& vendor : kVendors) {
            if (vendor.type == *type && std::ranges::equal(*oui, vendor.oui)) {
                return (this->*vendor.print)(vendor.name, cursor);
            }
        }
        printHex(kElementIDVendorSpecific, "<<UNKNOWN VENDOR>", body);
    }

    void printGeneral(const char* name, ByteCursor body) {
        const ByteCursor start = body;
        const auto product = body.u8();
        const auto flags = body.u16be();
        if (!flags) {
            return printBad("### bad Tessic General IE:\n%2.1H\n", ByteCursor(start).rest());
        }
        output_.print("%*s%3d %-*s product ID %d flags 0x%x\n", indent_, "",
                      int{kElementIDVendorSpecific}, kNameColumn, name, int{*product},
                      unsigned{*flags});
    }

    void printDWDS(const char* name, ByteCursor body) {
        printHex(kElementIDVendorSpecific, name, body.rest());
    }

    void printEasyConnect(const char* name, ByteCursor body) {
        printVendorLine(name);
        while (!body.atEnd() && output_.isOpen()) {
            ByteCursor start = body;
            const auto type = body.u8();
            const auto length = body.u8();
            if (!length) {
                return printBad("### EasyConnect IE too small for header:\n%2.1H\n", start.rest());
            }
            const auto value = body.take(*length);
            if (!value) return printBad("### EasyConnect IE bad length:\n%2.1H\n", start.rest());
            printSubElement(easyConnectElement(*type), *value);
        }
    }

    void printWPS(const char* name, ByteCursor body) {
        printVendorLine(name);
        while (!body.atEnd() && output_.isOpen()) {
            ByteCursor start = body;
            const auto type = body.u16be();
            const auto length = body.u16be();
            if (!type || !length) {
                return printBad("### WPS TLV too small for header:\n%2.1H\n", start.rest());
            }
            const auto value = body.take(*length);
            if (!value) return printBad("### WPS TLV bad length:\n%2.1H\n", start.rest());
            printSubElement(wpsAttribute(*type), *value);
        }
    }

    void printHex(std::uint8_t id, const char* name, Bytes body) {
        output_.print("%*s%3d %-*s %2.2H\n", indent_, "", int{id}, kNameColumn, name, body.data(),
                      sizeOf(body), sizeOf(body));
    }

    void printVendorLine(const char* name) {
        output_.print("%*s%3d %-*s\n", indent_, "", int{kElementIDVendorSpecific}, kNameColumn,
                      name);
    }

    void printSubElement(SubElement element, Bytes value) {
        if (element.form == SubForm::kText) {
            output_.print("%*s%-*s '%.*s'\n", subIndent_, "", kSubNameColumn, element.name,
                          sizeOf(value), value.data());
        } else {
            output_.print("%*s%-*s %3.2H", subIndent_, "", kSubNameColumn, element.name,
                          value.data(), sizeOf(value), sizeOf(value));
        }
    }

    void printBad(const char* format, Bytes bytes) {
        output_.print(format, bytes.data(), sizeOf(bytes), sizeOf(bytes));
    }

    static int sizeOf(Bytes bytes) { return static_cast<int>(bytes.size()); }

    Output& output_;
    int indent_;
    int subIndent_;
};

const std::array<ElementPrinter::Vendor, 4> ElementPrinter::kVendors = {{
    {kVendorGeneralOUI, 1, "Tessic General IE", &ElementPrinter::printGeneral},
    {kVendorOUI, kVendorTypeDWDS, "DWDS", &ElementPrinter::printDWDS},
    {kVendorOUI, kVendorTypeEasyConnect, "EasyConnect", &ElementPrinter::printEasyConnect},
    {kWPAOUI, kWPSType, "WPS", &ElementPrinter::printWPS},
}};

}  // namespace

void convertElements(Output& output, const PrintFFormat& format, Arguments& arguments) {
    const auto* data = va_arg(arguments.list, const std::uint8_t*);
    const auto size = va_arg(arguments.list, std::size_t);
    if (data == nullptr && size > 0) return PrintFWriteText(output, format, kNullText);
    constexpr std::uint64_t kWidestIndent = INT32_MAX - kSubIndent;
    const auto indent = static_cast<int>(std::min(indentOf(format), kWidestIndent));
    ElementPrinter(output, indent).print(ByteCursor(std::span(data, size)));
}

}  // namespace halvane::printing
