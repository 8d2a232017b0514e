// A regulatory triplet of the Country element: an operating class and its coverage class.
//
// IEEE 802.11-2020, 9.4.2.8: a triplet whose first octet, the extension identifier, is 201 or more
// is a regulatory triplet.
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_REGULATORY_TUPLE_H
#define HALVANE_IE_REGULATORY_TUPLE_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneRegulatoryTuple {
  public:
    // All fields 0.
    HalvaneRegulatoryTuple() = default;

    // A triplet has 3 bytes. Bytes after them are ignored; fields that a shorter one lacks stay 0.
    // REQUIRES: `tuple` points to `length` bytes.
    static HalvaneRegulatoryTuple initWithTuple_withLength(const std::uint8_t* tuple,
                                                           std::size_t length);

    std::uint8_t extensionIdentifier() const { return extensionIdentifier_; }

    // The operating class, annex E of the standard.
    std::uint8_t regulatoryClass() const { return regulatoryClass_; }

    // In units of 3 microseconds of air propagation time.
    std::uint8_t coverageClass() const { return coverageClass_; }

    // One line without a newline.
    std::string description() const;

  private:
    std::uint8_t extensionIdentifier_ = 0;
    std::uint8_t regulatoryClass_ = 0;
    std::uint8_t coverageClass_ = 0;
};

}  // namespace halvane

#endif
