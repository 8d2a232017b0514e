#include "halvane/ie/tessic_ie.h"

#include <array>
#include <cstddef>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/describe.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kVersionOffset = 5;

struct ProductModel {
    std::int64_t id;
    const char* name;
};

constexpr std::array kProductModels = {
    ProductModel{3, "Tessic Hub"},
    ProductModel{7, "Tessic Hub 2"},
    ProductModel{12, "Tessic Hub Mini"},
    ProductModel{19, "Tessic Hub Pro"},
    ProductModel{26, "Tessic Relay"},
    ProductModel{34, "Tessic Relay 2"},
    ProductModel{45, "Tessic Relay Mini"},
    ProductModel{58, "Tessic Bridge"},
    ProductModel{71, "Tessic Bridge Outdoor"},
    ProductModel{83, "Tessic Tower"},
    ProductModel{96, "Tessic Tower 2"},
    ProductModel{108, "Tessic Tower Storage"},
    ProductModel{117, "Tessic Tower 3"},
};

struct FlagLine {
    bool (HalvaneTessicIE::*isSet)() const;
    const char* label;
};

// The flags in the order of the description. The labels have the spelling of the printed text.
constexpr FlagLine kFlagLines[] = {
    {&HalvaneTessicIE::hasInterferenceRobustness, "Interferemce Robustness"},
    {&HalvaneTessicIE::isUnconfigured, "Unfconigured"},
    {&HalvaneTessicIE::isPPPoEServer, "PPPoE Server"},
    {&HalvaneTessicIE::isGuestNetwork, "Guest Network"},
    {&HalvaneTessicIE::hasLegacyWDS, "Legacy WDS"},
    {&HalvaneTessicIE::isWPSCapable, "WPS Capable"},
    {&HalvaneTessicIE::isWPSActive, "WPS Active"},
    {&HalvaneTessicIE::isSAWCapable, "SAW Capable"},
    {&HalvaneTessicIE::isWoWCapable, "WOW Capable"},
};

}  // namespace

HalvaneTessicIE HalvaneTessicIE::initWithIE(const std::optional<ByteBuffer>& ie) {
    HalvaneTessicIE object;
    object.isValid_ = true;
    object.rawIE_ = ie;
    object.parseIE();
    return object;
}

// An element that includes the last field is valid. Earlier fields are kept in any case.
void HalvaneTessicIE::parseIE() {
    isValid_ = false;
    version_.reset();
    productName_.reset();
    flags_ = 0;
    if (!rawIE_) return;

    ByteCursor cursor(*rawIE_);
    if (!cursor.skip(kVersionOffset)) return;
    version_ = cursor.u8();
    if (const auto productID = cursor.u8()) productName_ = stringValueForProductID(*productID);
    const auto flags = cursor.u16le();
    flags_ = flags.value_or(0);
    isValid_ = flags.has_value();
}

std::string HalvaneTessicIE::stringValueForProductID(std::int64_t productID) {
    for (const ProductModel& model : kProductModels) {
        if (model.id == productID) return model.name;
    }
    return "Unknown";
}

std::string HalvaneTessicIE::description() const {
    std::string text;
    appendPrintF(text, "    IE                       : %s\n",
                 FancyFormatting::formattedHexData(rawIE_).c_str());
    if (!isValid_) return text;
    appendPrintF(text, "    Tessic Version            : %s\n", describe(version_).c_str());
    appendPrintF(text, "    Tessic Product            : %s\n", describe(productName_).c_str());
    for (const auto& [isSet, label] : kFlagLines) {
        appendPrintF(text, "    %-25s: %s\n", label, yesNo((this->*isSet)()));
    }
    return text;
}

}  // namespace halvane
