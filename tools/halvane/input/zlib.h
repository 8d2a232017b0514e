// zlib, which is loaded when a gzip file is opened.
#ifndef TOOLS_HALVANE_INPUT_ZLIB_H
#define TOOLS_HALVANE_INPUT_ZLIB_H

#include <zlib.h>

#include "halvane/platform/os/late_library_internal.h"

// What the tool uses of it.
#define HALVANE_ZLIB_NAMES(FUNCTION) \
    FUNCTION(inflate)                \
    FUNCTION(inflateEnd)             \
    FUNCTION(inflateInit2_)          \
    FUNCTION(inflateReset)

namespace halvane::tool {

HALVANE_LATE_LIBRARY(Zlib, zlib, "libz.so.1", HALVANE_ZLIB_NAMES)

}  // namespace halvane::tool

#endif
