// The device type of Wi-Fi Protected Setup: the kind of a device, in a numbering of some
// organisation.
//
// Wi-Fi Simple Configuration, "Primary Device Type"; 8 bytes, integers big-endian:
//
//     0-1   category ID
//     2-5   SMI: the OUI and a type byte of the organisation that defined the two IDs
//     6-7   sub-category ID
//
// The IDs are meaningless without the SMI. Naming them is therefore a second step for the caller:
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

    // The given bytes.
    const std::optional<ByteBuffer>& rawDeviceType() const { return rawDeviceType_; }

    // False for a size other than 8 bytes, and for an SMI that is neither the Wi-Fi Alliance's nor
    // the manufacturer's own. The IDs with an unknown SMI are decoded all the same.
    bool isValid() const { return isValid_; }

    // 16 bits each; 0 until decoded.
    std::uint64_t categoryID() const { return categoryID_; }
    std::uint64_t subCategoryID() const { return subCategoryID_; }

    // 4 bytes.
    const std::optional<ByteBuffer>& SMI() const { return smi_; }

    // The organisation of the SMI; absent if it is unknown.
    const std::optional<std::string>& companyName() const;

    // The names of the IDs; absent until a naming step below finds them.
    const std::optional<std::string>& category() const;
    const std::optional<std::string>& subCategory() const;

    // Decodes rawDeviceType() again. It can clear isValid() but not set it, and names nothing.
    void parseDeviceType();

    // Names the IDs in the Wi-Fi Alliance's numbering. An unlisted category changes nothing; an
    // unlisted sub-category leaves subCategory() unchanged. Category 3, printers and the like, is
    // named in subCategory() and leaves category() unchanged.
    void parseDeviceTypeWFA();

    // The same in the manufacturer's own numbering: categories 6 and 8.
    void parseDeviceTypeTessic();

    // Lines with padded labels, indented by four spaces.
    std::string description() const;

  private:
    using Name = std::optional<std::string>;

    std::optional<ByteBuffer> rawDeviceType_;
    std::optional<ByteBuffer> smi_;
    // Null if absent. The names are few and live as long as the program. An object therefore stores
    // no names of its own, since a received list may be long.
    const Name* companyName_ = nullptr;
    const Name* category_ = nullptr;
    const Name* subCategory_ = nullptr;
    std::uint16_t categoryID_ = 0;
    std::uint16_t subCategoryID_ = 0;
    bool isValid_ = false;
};

}  // namespace halvane

#endif
