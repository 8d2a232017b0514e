// How a Content-Security-Policy names a text that it allows.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_REPORT_SOURCE_HASH_H
#define TOOLS_HALVANE_REPORT_SOURCE_HASH_H

#include <string>
#include <string_view>

namespace halvane::tool {

// "sha256-" and the hash in base64 (Content Security Policy Level 3, 2.3.1).
std::string sourceHash(std::string_view text);

}  // namespace halvane::tool

#endif
