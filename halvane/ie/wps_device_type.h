// The device type of Wi-Fi Protected Setup: what kind of device it is, in whose numbering.
//
// Wi-Fi Simple Configuration, "Primary Device Type"; 8 bytes, integers big-endian:
//
//     0-1   category ID
//     2-5   SMI: the OUI, and a type byte, of whoever defined the two IDs
//     6-7   sub-category ID
//
// The IDs mean nothing without the SMI, so naming them is a second step that the caller takes:
// parseDeviceTypeWFA() or parseDeviceTypeTessic().
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_WPS_DEVICE_TYPE_H
#define HALVANE_IE_WPS_DEVICE_TYPE_H

#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneWPSDeviceType {
  public:
    // An empty object: nothing present, not valid.
    HalvaneWPSDeviceType() = default;

    // Decodes the 8 bytes.
    static HalvaneWPSDeviceType initWithDeviceType(const ByteBuffer& deviceType);

    // The bytes as given.
    const std::optional<ByteBuffer>& rawDeviceType() const { return rawDeviceType_; }

    // False for another size than 8 bytes, and for an SMI that is neither the Wi-Fi Alliance's nor
    // the maker's own; the IDs of the latter are decoded all the same.
    bool isValid() const { return isValid_; }

    // 16 bits each; 0 until decoded.
    std::uint64_t categoryID() const { return categoryID_; }
    std::uint64_t subCategoryID() const { return subCategoryID_; }

    // 4 bytes.
    const std::optional<ByteBuffer>& SMI() const { return smi_; }

    // Whose the SMI is; absent for an unknown one.
    const std::optional<std::string>& companyName() const;

    // The names of the IDs; absent until a naming step below knows them.
    const std::optional<std::string>& category() const;
    const std::optional<std::string>& subCategory() const;

    // Decodes rawDeviceType() anew. Only ever clears isValid(); names nothing.
    void parseDeviceType();

    // Names the IDs as the Wi-Fi Alliance does. A category that is not listed changes nothing, a
    // sub-category that is not listed leaves subCategory() as it was. Category 3, printers and the
    // like, is named in subCategory() and leaves category() as it was.
    void parseDeviceTypeWFA();

    // The same in the maker's own numbering: categories 6 and 8.
    void parseDeviceTypeTessic();

    // Lines of four-space-indented, padded labels.
    std::string description() const;

  private:
    using Name = std::optional<std::string>;

    std::optional<ByteBuffer> rawDeviceType_;
    std::optional<ByteBuffer> smi_;
    // The names are few and last as long as the program, so that an object holds none of its own:
    // a stranger's list may be long. Null for an absent one.
    const Name* companyName_ = nullptr;
    const Name* category_ = nullptr;
    const Name* subCategory_ = nullptr;
    std::uint16_t categoryID_ = 0;
    std::uint16_t subCategoryID_ = 0;
    bool isValid_ = false;
};

}  // namespace halvane

#endif
