#include "halvane/ie/wps_device_type.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string_view>

#include "halvane/base/boxed.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/describe.h"
#include "halvane/base/vendor.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kDeviceTypeSize = 8;
constexpr std::size_t kSMISize = 4;
constexpr std::array<std::uint8_t, kSMISize> kWFASMI = {0x00, 0x50, 0xF2, 0x04};

// A null pointer is a name that a category lacks.
struct Category {
    std::uint16_t id;
    const char* name;
    const char* unlisted;                    // sub-category name before the listed ones are tried
    std::array<const char*, 3> subCategory;  // of the IDs 1, 2, 3
};

constexpr std::array kWFACategories = {
    Category{1, "Computer", nullptr, {"PC", "Server", "MediaCenter"}},
    Category{2, "InputDevice", nullptr, {}},
    Category{3, nullptr, "Printers,Scanners,Faxes,Copiers", {"Printer", "Scanner"}},
    Category{4, "Camera", nullptr, {"DigitalStillCamera"}},
    Category{5, "Storage", nullptr, {"NAS"}},
    Category{6, "NetworkInfrastructure", nullptr, {"AP", "Router", "Switch"}},
    Category{7, "Displays", nullptr, {"Television", "PictureFrame", "Projector"}},
    Category{8, "MultimediaDevices", nullptr, {"DAR", "PVR", "MCX"}},
    Category{9, "GamingDevices", nullptr, {"XBOX", "XBOX360", "Playstation"}},
    Category{10, "Telephone", nullptr, {"WindowsMobile"}},
};

constexpr std::array kTessicCategories = {
    Category{6, "NetworkInfrastructure", nullptr, {"Tessic Hub", "Tessic Relay", "Tessic Tower"}},
    Category{8, "MultimediaDevices", nullptr, {"Tessic Player", "Tessic Recorder", "Tessic Link"}},
};

using Name = std::optional<std::string>;
using Names = std::map<std::string_view, const Name>;

constexpr const char* kWFACompanyName = "Wi-Fi Alliance";

template <typename Categories>
void addNames(Names& names, const Categories& categories) {
    const auto add = [&](const char* name) {
        if (name) names.try_emplace(name, name);
    };
    for (const Category& category : categories) {
        add(category.name);
        add(category.unlisted);
        for (const char* const name : category.subCategory) add(name);
    }
}

// Returns all existing names.
Names makeNames() {
    Names names;
    names.try_emplace(kWFACompanyName, kWFACompanyName);
    names.try_emplace(kVendorCompanyName, kVendorCompanyName);
    addNames(names, kWFACategories);
    addNames(names, kTessicCategories);
    return names;
}

// Returns the stored copy of a name. It is never destroyed, since objects may outlive static data.
const Name* storedName(std::string_view name) {
    static const Names& names = *new Names(makeNames());
    return &names.at(name);
}

const Name& orAbsent(const Name* name) {
    return name ? *name : kFreshValue<Name>.value;
}

void setIfNamed(const Name*& property, const char* name) {
    if (name) property = storedName(name);
}

template <typename Categories>
void nameIDs(const Categories& categories, std::uint64_t categoryID, std::uint64_t subCategoryID,
             const Name*& category, const Name*& subCategory) {
    const auto found = std::ranges::find(categories, categoryID, &Category::id);
    if (found == categories.end()) return;
    setIfNamed(category, found->name);
    setIfNamed(subCategory, found->unlisted);
    if (subCategoryID < 1 || subCategoryID > found->subCategory.size()) return;
    setIfNamed(subCategory, found->subCategory[subCategoryID - 1]);
}

}  // namespace

HalvaneWPSDeviceType HalvaneWPSDeviceType::initWithDeviceType(const ByteBuffer& deviceType) {
    HalvaneWPSDeviceType object;
    object.rawDeviceType_ = deviceType;
    object.isValid_ = true;
    object.parseDeviceType();
    return object;
}

void HalvaneWPSDeviceType::parseDeviceType() {
    if (!rawDeviceType_ || rawDeviceType_->size() != kDeviceTypeSize) {
        isValid_ = false;
        return;
    }
    ByteCursor cursor(*rawDeviceType_);
    categoryID_ = *cursor.u16be();
    smi_ = *cursor.takeBuffer(kSMISize);
    subCategoryID_ = *cursor.u16be();

    if (std::ranges::equal(smi_->bytes(), kWFASMI)) {
        companyName_ = storedName(kWFACompanyName);
    } else if (std::ranges::equal(smi_->bytes(), kVendorSMI)) {
        companyName_ = storedName(kVendorCompanyName);
    } else {
        isValid_ = false;
    }
}

const std::optional<std::string>& HalvaneWPSDeviceType::companyName() const {
    return orAbsent(companyName_);
}

const std::optional<std::string>& HalvaneWPSDeviceType::category() const {
    return orAbsent(category_);
}

const std::optional<std::string>& HalvaneWPSDeviceType::subCategory() const {
    return orAbsent(subCategory_);
}

void HalvaneWPSDeviceType::parseDeviceTypeWFA() {
    nameIDs(kWFACategories, categoryID_, subCategoryID_, category_, subCategory_);
}

void HalvaneWPSDeviceType::parseDeviceTypeTessic() {
    nameIDs(kTessicCategories, categoryID_, subCategoryID_, category_, subCategory_);
}

std::string HalvaneWPSDeviceType::description() const {
    std::string text;
    appendPrintF(text, "    Company      : %s\n", describe(companyName()).c_str());
    appendPrintF(text, "    Category     : %s\n", describe(category()).c_str());
    appendPrintF(text, "    Sub Category : %s\n", describe(subCategory()).c_str());
    return text;
}

}  // namespace halvane
