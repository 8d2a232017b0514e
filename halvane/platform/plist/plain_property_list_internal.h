// A quick reader for property lists in the plain form that writers give them.
#ifndef HALVANE_PLATFORM_PLIST_PLAIN_PROPERTY_LIST_INTERNAL_H
#define HALVANE_PLATFORM_PLIST_PLAIN_PROPERTY_LIST_INTERNAL_H

#include <optional>
#include <string_view>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/plist/xml_text_internal.h"

namespace halvane {

// Returns the value of `body`, an XML document without its declaration, if it is a property list in
// plain form. Absent for anything else, whether that is an error or not: propertyListFromXml() then
// reads the document again, and its careful reader alone decides what is accepted, and names every
// error. A value that is returned is the one that the careful reader would return.
//
// In plain form, tags have no white space inside and no attributes except the version of <plist>.
// There are no comments, processing instructions or CDATA sections, and no DOCTYPE line with an
// internal subset. Elements without content may be whole tags ("<array/>"), and text may have
// references.
// REQUIRES: `body` has only plain line ends, and refusedXmlCharacter(body, version) is absent.
std::optional<PropertyListValue> plainPropertyList(std::string_view body, XmlVersion version);

}  // namespace halvane

#endif
