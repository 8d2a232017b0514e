// liblzma, which is loaded when an xz file is opened.
#ifndef TOOLS_HALVANE_INPUT_LIBLZMA_H
#define TOOLS_HALVANE_INPUT_LIBLZMA_H

#include <lzma.h>

#include "halvane/platform/os/late_library_internal.h"

// What the tool uses of it.
#define HALVANE_LIBLZMA_NAMES(FUNCTION) \
    FUNCTION(lzma_code)                 \
    FUNCTION(lzma_end)                  \
    FUNCTION(lzma_stream_decoder)

namespace halvane::tool {

HALVANE_LATE_LIBRARY(Liblzma, liblzma, "liblzma.so.5", HALVANE_LIBLZMA_NAMES)

}  // namespace halvane::tool

#endif
