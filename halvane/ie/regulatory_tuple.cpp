#include "halvane/ie/regulatory_tuple.h"

#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

HalvaneRegulatoryTuple HalvaneRegulatoryTuple::initWithTuple_withLength(const std::uint8_t* tuple,
                                                                        std::size_t length) {
    HalvaneRegulatoryTuple object;
    ByteCursor cursor(std::span(tuple, length));
    object.extensionIdentifier_ = cursor.u8().value_or(0);
    object.regulatoryClass_ = cursor.u8().value_or(0);
    object.coverageClass_ = cursor.u8().value_or(0);
    return object;
}

std::string HalvaneRegulatoryTuple::description() const {
    return stringPrintF("Extension Identifier <%d>, Regulatory Class <%d>, Coverage Class <%d>",
                        extensionIdentifier_, regulatoryClass_, coverageClass_);
}

}  // namespace halvane
