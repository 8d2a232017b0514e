// Checks the markup of a whole XML document before values are built from it.
#ifndef HALVANE_PLATFORM_PLIST_XML_OUTLINE_INTERNAL_H
#define HALVANE_PLATFORM_PLIST_XML_OUTLINE_INTERNAL_H

#include <cstddef>
#include <string_view>

#include "halvane/base/result.h"
#include "halvane/platform/plist/xml_text_internal.h"

namespace halvane {

struct XmlOutline {
    std::size_t root = 0;  // the offset of the root element
    // Whether all text is literal: there is no reference and no "]]>".
    bool isTextLiteral = false;
};

// Returns the outline of `document`, which has no declaration and only plain line ends.
//
// It refuses what an element reader does not see, or would spend much on before it refuses:
// - elements nested deeper than `maxDepth`, where the root is at depth 1
// - markup without an end
// - more than one root
// - text, end tags or CDATA sections outside the root
// - a DOCTYPE line that is repeated or does not come before the root
// - "--" within a comment
// - a processing instruction without a name, or of the reserved name
// It does not check whether the names of tags match.
Result<XmlOutline, XmlRefusal> xmlOutline(std::string_view document, std::size_t maxDepth);

}  // namespace halvane

#endif
