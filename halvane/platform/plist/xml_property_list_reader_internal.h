// The reader of property lists with a choice that its callers do not need.
#ifndef HALVANE_PLATFORM_PLIST_XML_PROPERTY_LIST_READER_INTERNAL_H
#define HALVANE_PLATFORM_PLIST_XML_PROPERTY_LIST_READER_INTERNAL_H

#include <string_view>

#include "halvane/base/property_list_value.h"
#include "halvane/base/result.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

namespace halvane {

// Whether plainPropertyList() is tried before the careful reader. The results are the same.
enum class PlainReading { Tried, Skipped };

// Returns what propertyListFromXml(xml) returns.
Result<PropertyListValue, XmlPropertyListError> propertyListFromXml(std::string_view xml,
                                                                    PlainReading plainReading);

}  // namespace halvane

#endif
