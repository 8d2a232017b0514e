// The markup of an XML document looked over from end to end, before values are made of it.
#ifndef HALVANE_PLATFORM_PLIST_XML_OUTLINE_INTERNAL_H
#define HALVANE_PLATFORM_PLIST_XML_OUTLINE_INTERNAL_H

#include <cstddef>
#include <string_view>

#include "halvane/base/result.h"
#include "halvane/platform/plist/xml_text_internal.h"

namespace halvane {

struct XmlOutline {
    std::size_t root = 0;  // the offset of the root element
    // Whether every text stands for itself: there is no reference, and no "]]>".
    bool isTextLiteral = false;
};

// The outline of `document`, which is one without its declaration and with plain line ends.
//
// A refusal for what a reader of elements does not see, or would pay for before
// it refuses: elements nested deeper than `maxDepth`, where the root is at depth 1; markup without
// an end; more than one root; text, end tags or CDATA sections outside of it; a DOCTYPE line that
// is not the only one and before it; "--" within a comment; a processing instruction of no name, or
// of the reserved one. Whether the names of tags match is not looked at.
Result<XmlOutline, XmlRefusal> xmlOutline(std::string_view document, std::size_t maxDepth);

}  // namespace halvane

#endif
